// The host's object store: objects by key, new objects, queries.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/metadata.h"
#include "host/object.h"
#include "host/record_list.h"

namespace tessel {

// Either a free SQL text, or a search of one class with a select list and conditions joined by "and".
class PcQuery {
 public:
  virtual ~PcQuery() = default;
  // A single "select" statement on the database's tables.
  virtual void SetSql(const std::string& text) = 0;

  // Class query. Errors: HostError for a class, attribute or operator that the metadata does not know.
  virtual void SetClass(ClassId classId) = 0;
  virtual void AddSelect(const std::string& attribute) = 0;
  // Operators "=", "<>", "<", "<=", ">", ">=" and "like". The value is bound, never pasted; for a Boolean
  // attribute the texts "TRUE" and "FALSE" serve, and Null counts as false.
  virtual void AddCondition(const std::string& attribute, const std::string& op, const Value& value) = 0;

  // The rows in the database's order; upper-case column names. Error: HostError with the database's code.
  [[nodiscard]] virtual PcRecordListPtr Run() = 0;
};
using PcQueryPtr = std::shared_ptr<PcQuery>;

class PcObjectList {
 public:
  virtual ~PcObjectList() = default;
  virtual void Add(PcObjectPtr object) = 0;
  [[nodiscard]] virtual int Count() const = 0;
  // Index from 0; error 9 outside.
  [[nodiscard]] virtual PcObjectPtr Item(int index) const = 0;
};
using PcObjectListPtr = std::shared_ptr<PcObjectList>;

class PcObjectStore {
 public:
  virtual ~PcObjectStore() = default;
  // Nothing when the database has no such object or class.
  [[nodiscard]] virtual PcObjectPtr Object(const ObjectKey& key) = 0;
  // An unsaved object. Error: HostError for an unknown class.
  [[nodiscard]] virtual PcObjectPtr NewObject(ClassId classId) = 0;
  [[nodiscard]] virtual PcObjectListPtr NewObjectList() = 0;
  [[nodiscard]] virtual PcAttributeListPtr NewAttributeList() = 0;
  [[nodiscard]] virtual PcQueryPtr NewQuery() = 0;
};
using PcObjectStorePtr = std::shared_ptr<PcObjectStore>;

}  // namespace tessel
