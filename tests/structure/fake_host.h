// A host that knows just enough for structure files: classes, mechanisms, objects whose values come from a
// source, and record lists in memory.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "host/application.h"
#include "host/error.h"
#include "host/session.h"

namespace tessel::test {

class FakeList : public PcRecordList {
 public:
  using PcRecordList::GetValue;
  using PcRecordList::SetValue;
  FakeList() = default;
  FakeList(const std::vector<std::string>& columns, std::vector<std::vector<Value>> rows)
      : names_(columns), rows_(std::move(rows)) {}

  void AddColumn(const std::string& name, int, int) override { names_.push_back(name); }
  [[nodiscard]] int ColumnCount() const override { return static_cast<int>(names_.size()); }
  [[nodiscard]] int RowCount() const override { return static_cast<int>(rows_.size()); }
  [[nodiscard]] std::string ColumnName(int column) const override { return names_.at(Index(column)); }
  [[nodiscard]] int ColumnLength(int) const override { return 4; }
  [[nodiscard]] int ColumnTypeCode(int) const override { return 3; }
  [[nodiscard]] int FindColumn(std::string_view name) const override {
    const auto found = std::find(names_.begin(), names_.end(), name);
    return found == names_.end() ? -1 : static_cast<int>(found - names_.begin());
  }
  [[nodiscard]] Value GetValue(int column, int row) const override {
    const auto& cells = rows_.at(Index(row));
    return Index(column) < cells.size() ? cells[Index(column)] : Value();
  }
  void SetValue(int column, int row, const Value& value) override {
    if (Index(row) >= rows_.size()) rows_.resize(Index(row) + 1);
    auto& cells = rows_[Index(row)];
    if (cells.size() < names_.size()) cells.resize(names_.size());
    cells.at(Index(column)) = value;
  }
  void WriteToFile(const std::string& title, const std::string& path) const override {
    dumps.push_back(title + " " + path);
    if (dumpFails) throw RuntimeError(error_number::kPathNotFound, "Path not found: " + path);
  }

  bool dumpFails = false;
  mutable std::vector<std::string> dumps;

 private:
  static std::size_t Index(int position) { return static_cast<std::size_t>(position); }
  std::vector<std::string> names_;
  std::vector<std::vector<Value>> rows_;
};

class FakeClass : public PcClass {
 public:
  FakeClass(ClassId id, std::string name, ClassId linkClass, std::vector<std::string> mechanisms)
      : id_(id), name_(std::move(name)), linkClass_(linkClass), mechanisms_(std::move(mechanisms)) {}
  [[nodiscard]] ClassId Id() const override { return id_; }
  [[nodiscard]] std::string Name() const override { return name_; }
  [[nodiscard]] bool IsFileBased() const override { return true; }
  [[nodiscard]] bool IsLinkClass() const override { return false; }
  [[nodiscard]] bool AllowsDesktopLink() const override { return false; }
  [[nodiscard]] std::string IconFileName() const override { return {}; }
  [[nodiscard]] ClassId DefaultHierarchicalLinkClassId() const override { return linkClass_; }
  [[nodiscard]] std::string TableName() const override { return {}; }
  [[nodiscard]] int AttributeCount() const override { return 0; }
  [[nodiscard]] PcAttributePtr Attribute(int) const override { return nullptr; }
  [[nodiscard]] PcAttributePtr FindAttribute(std::string_view) const override { return nullptr; }
  [[nodiscard]] bool HasMechanism(std::string_view name) const override {
    return std::find(mechanisms_.begin(), mechanisms_.end(), name) != mechanisms_.end();
  }
  [[nodiscard]] PcLifeCycleOperationsPtr LifeCycleOperations() const override { return nullptr; }

 private:
  ClassId id_;
  std::string name_;
  ClassId linkClass_;
  std::vector<std::string> mechanisms_;
};

class FakeMechanism : public PcClassMechanism {
 public:
  explicit FakeMechanism(std::string name) : name_(std::move(name)) {}
  [[nodiscard]] int Id() const override { return 1; }
  [[nodiscard]] std::string Name() const override { return name_; }
  [[nodiscard]] int SupportedClassCount() const override { return 0; }
  [[nodiscard]] PcClassPtr SupportedClass(int) const override { return nullptr; }
  [[nodiscard]] bool Supports(ClassId) const override { return false; }

 private:
  std::string name_;
};

class FakeMetaData : public PcMetaData {
 public:
  [[nodiscard]] ClassId ClassIdByName(std::string_view) const override { return 0; }
  [[nodiscard]] PcClassPtr ClassById(ClassId id) const override {
    const auto found = classes.find(id);
    return found == classes.end() ? nullptr : found->second;
  }
  [[nodiscard]] int ClassCount() const override { return static_cast<int>(classes.size()); }
  [[nodiscard]] PcClassPtr ClassAt(int) const override { return nullptr; }
  [[nodiscard]] PcClassMechanismPtr ClassMechanism(std::string_view) const override { return nullptr; }
  [[nodiscard]] int ClassMechanismCount() const override { return static_cast<int>(mechanisms.size()); }
  [[nodiscard]] PcClassMechanismPtr ClassMechanismAt(int index) const override {
    return std::make_shared<FakeMechanism>(mechanisms.at(static_cast<std::size_t>(index)));
  }
  [[nodiscard]] PcDatabaseMechanismPtr DatabaseMechanism(std::string_view) const override { return nullptr; }
  [[nodiscard]] std::vector<PcClassPtr> LinkClassesBetween(ClassId, ClassId) const override { return {}; }

  std::map<ClassId, PcClassPtr> classes;
  std::vector<std::string> mechanisms;
};

// Where the values of objects come from.
class ObjectSource {
 public:
  virtual ~ObjectSource() = default;
  [[nodiscard]] virtual bool Has(const ObjectKey& key) const = 0;
  // Error: HostError for an attribute that the object lacks.
  [[nodiscard]] virtual Value Get(const ObjectKey& key, std::string_view name) const = 0;
  virtual void Set(const ObjectKey& key, std::string_view name, const Value& value) = 0;
};

class FakeBehavior : public PcBehavior {
 public:
  void Set(int, int) override {}
  [[nodiscard]] int Get(int) const override { return 0; }
};

class FakeUser : public PcUser {
 public:
  [[nodiscard]] int Id() const override { return 1; }
  [[nodiscard]] std::string LoginName() const override { return "user1"; }
  [[nodiscard]] PcObjectPtr UserObject() const override { return nullptr; }
  [[nodiscard]] std::vector<std::string> Roles() const override { return {}; }
  [[nodiscard]] bool IsAdministrator() const override { return false; }
};

class FakeSession;

// Reads through to the source; a value set is stored by Update.
class FakeObject : public PcObject {
 public:
  FakeObject(FakeSession& session, const ObjectKey& key) : session_(session), key_(key) {}
  [[nodiscard]] ClassId GetClassId() const override { return key_.classId; }
  [[nodiscard]] ObjectId GetObjectId() const override { return key_.objectId; }
  [[nodiscard]] PcClassPtr Class() const override;
  [[nodiscard]] std::shared_ptr<PcSession> Session() const override;
  void ReadData() override {}
  [[nodiscard]] bool HasAttribute(std::string_view name) const override { return !name.empty(); }
  [[nodiscard]] Value GetValue(std::string_view name) const override;
  void SetValue(std::string_view name, const Value& value) override { pending_[std::string(name)] = value; }
  [[nodiscard]] int Add(const PcBehavior&) override { return 0; }
  [[nodiscard]] int Update(const PcBehavior&) override;
  [[nodiscard]] int Delete(const PcBehavior&) override { return 0; }
  [[nodiscard]] Value NextSequenceValue(std::string_view) override { return {}; }
  [[nodiscard]] PcObjectPtr AddLink(PcObject&, ClassId, const PcBehavior&) override { return nullptr; }
  [[nodiscard]] PcRecordListPtr Children(const PcAttributeList&, const PcBehavior&) const override {
    return {};
  }
  [[nodiscard]] PcRecordListPtr Parents(const PcAttributeList&, const PcBehavior&) const override {
    return {};
  }
  [[nodiscard]] PcRecordListPtr Relations(const PcAttributeList&, const PcBehavior&) const override {
    return {};
  }
  void WriteToFile(const std::string&, const std::string&) const override {}

 private:
  FakeSession& session_;
  ObjectKey key_;
  std::map<std::string, Value> pending_;
};

class FakeStore : public PcObjectStore {
 public:
  explicit FakeStore(FakeSession& session) : session_(session) {}
  [[nodiscard]] PcObjectPtr Object(const ObjectKey& key) override;
  [[nodiscard]] PcObjectPtr NewObject(ClassId) override { return nullptr; }
  [[nodiscard]] PcObjectListPtr NewObjectList() override { return nullptr; }
  [[nodiscard]] PcAttributeListPtr NewAttributeList() override { return nullptr; }
  [[nodiscard]] PcQueryPtr NewQuery() override { return nullptr; }

 private:
  FakeSession& session_;
};

class FakeSession : public PcSession {
 public:
  explicit FakeSession(ObjectSource& objectSource) : source(objectSource) {}
  [[nodiscard]] PcUserPtr CurrentUser() const override { return std::make_shared<FakeUser>(); }
  [[nodiscard]] std::vector<PcUserPtr> Users() const override { return {}; }
  [[nodiscard]] std::string DatabaseAlias() const override { return {}; }
  [[nodiscard]] std::string Identifier() const override { return {}; }
  [[nodiscard]] std::string Language() const override { return "GER"; }
  [[nodiscard]] std::string ConfigurationValue(const std::string&) const override { return {}; }
  void SetConfigurationValue(const std::string&, const std::string&) override {}
  [[nodiscard]] PcBehaviorPtr NewBehavior() override { return std::make_shared<FakeBehavior>(); }
  [[nodiscard]] PcGlobalData& GlobalData() override { throw HostError("no global data"); }
  [[nodiscard]] PcMetaDataPtr MetaData() const override { return metaData; }
  [[nodiscard]] PcObjectStorePtr ObjectStore() override { return std::make_shared<FakeStore>(*this); }
  [[nodiscard]] PcSequencePtr RelatedObject(const PcAttribute&) const override { return nullptr; }
  [[nodiscard]] std::shared_ptr<PcService> CreateService(std::string_view) override { return nullptr; }
  [[nodiscard]] std::shared_ptr<PcEngine> Engine() const override { return nullptr; }
  void Close() override {}

  ObjectSource& source;
  std::shared_ptr<FakeMetaData> metaData = std::make_shared<FakeMetaData>();
  int objectsRead = 0;
  int updateCode = 0;
};

inline PcClassPtr FakeObject::Class() const {
  return session_.metaData->ClassById(key_.classId);
}
inline std::shared_ptr<PcSession> FakeObject::Session() const {
  return session_.shared_from_this();
}
inline Value FakeObject::GetValue(std::string_view name) const {
  if (!pending_.empty()) {
    const auto found = pending_.find(std::string(name));
    if (found != pending_.end()) return found->second;
  }
  return session_.source.Get(key_, name);
}
inline int FakeObject::Update(const PcBehavior&) {
  if (session_.updateCode != 0) return session_.updateCode;
  for (const auto& [name, value] : pending_)
    session_.source.Set(key_, name, value);
  return 0;
}
inline PcObjectPtr FakeStore::Object(const ObjectKey& key) {
  ++session_.objectsRead;
  return session_.source.Has(key) ? std::make_shared<FakeObject>(session_, key) : nullptr;
}

class FakeRuntime : public HostRuntime {
 public:
  [[nodiscard]] PcApplicationPtr RunningApplication() override { return nullptr; }
  [[nodiscard]] PcRecordListPtr CreateRecordList() override { return std::make_shared<FakeList>(); }
  [[nodiscard]] PcEnginePtr CreateEngine() override { return nullptr; }
};

}  // namespace tessel::test
