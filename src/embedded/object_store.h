// Objects by key, new objects, lists and queries of a session.
#pragma once

#include <vector>

#include "embedded/object.h"
#include "embedded/session.h"
#include "host/object_store.h"

namespace tessel::embedded {

[[nodiscard]] PcObjectStorePtr NewObjectStore(EmbeddedSessionPtr session);

// As PcObjectStore::Object; counts as a read for planned failures.
[[nodiscard]] std::shared_ptr<EmbeddedObject> FindObject(const EmbeddedSessionPtr& session,
                                                         const ObjectKey& key);

struct AttributeListEntry {
  ClassId classId;
  std::string attribute;
  char code;  // 'S', 'L' or 'F'
};

class AttributeList final : public PcAttributeList {
 public:
  explicit AttributeList(CatalogPtr catalog) : catalog_(std::move(catalog)) {}
  // Error: HostError for an unknown class, attribute or code.
  void Add(ClassId classId, const std::string& attribute, const std::string& code) override;
  [[nodiscard]] const std::vector<AttributeListEntry>& Entries() const { return entries_; }

 private:
  CatalogPtr catalog_;
  std::vector<AttributeListEntry> entries_;
};

}  // namespace tessel::embedded
