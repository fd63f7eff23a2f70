// Which attributes of which class a retrieval returns.
#pragma once

#include <string>
#include <vector>

#include "embedded/model/metadata.h"
#include "host/object.h"

namespace tessel::embedded {

struct AttributeListEntry {
  ClassId classId;
  std::string attribute;
  char code;  // 'S', 'L' or 'F'
};

class AttributeList final : public PcAttributeList {
 public:
  explicit AttributeList(MetadataPtr metadata) : metadata_(std::move(metadata)) {}
  // Error: HostError for an unknown class, attribute or code.
  void Add(ClassId classId, const std::string& attribute, const std::string& code) override;
  [[nodiscard]] const std::vector<AttributeListEntry>& Entries() const { return entries_; }

 private:
  MetadataPtr metadata_;
  std::vector<AttributeListEntry> entries_;
};

}  // namespace tessel::embedded
