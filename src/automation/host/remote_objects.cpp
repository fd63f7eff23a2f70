#include "automation/host/remote_parts.h"
namespace tessel::automation {
namespace {

class RemoteBehavior : public PcBehavior, public Remote {
 public:
  using Remote::Remote;
  void Set(int number, int value) override { self.Put("Setting", number, value); }
  [[nodiscard]] int Get(int number) const override { return NumberOf("Setting", number); }
};

class RemoteAttributeList : public PcAttributeList, public Remote {
 public:
  using Remote::Remote;
  void Add(ClassId classId, const std::string& attribute, const std::string& code) override {
    self.Call("Add", classId, attribute, code);
  }
};

class RemoteObject : public PcObject, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] ClassId GetClassId() const override { return ValueOf("ClassId").AsInt16(); }
  [[nodiscard]] ObjectId GetObjectId() const override { return NumberOf("ObjectId"); }
  [[nodiscard]] PcClassPtr Class() const override { return WrapClass(Under(self.Get("Class"), "PcClass")); }
  [[nodiscard]] std::shared_ptr<PcSession> Session() const override {
    return WrapSession(Under(self.Get("Session"), "PcSession"));
  }
  void ReadData() override { self.Call("ReadData"); }
  [[nodiscard]] bool HasAttribute(std::string_view name) const override {
    return FlagOf("HasAttribute", std::string(name));
  }
  [[nodiscard]] Value GetValue(std::string_view name) const override {
    return ValueOf("Value", std::string(name));
  }
  void SetValue(std::string_view name, const Value& value) override {
    self.Put("Value", std::string(name), value);
  }
  [[nodiscard]] int Add(const PcBehavior& behavior) override { return NumberOf("Add", ObjectOf(behavior)); }
  [[nodiscard]] int Update(const PcBehavior& behavior) override {
    return NumberOf("Update", ObjectOf(behavior));
  }
  [[nodiscard]] int Delete(const PcBehavior& behavior) override {
    return NumberOf("Delete", ObjectOf(behavior));
  }
  [[nodiscard]] Value NextSequenceValue(std::string_view attribute) override {
    return ValueOf("NextSequenceValue", std::string(attribute));
  }
  [[nodiscard]] PcObjectPtr AddLink(PcObject& second, ClassId linkClass,
                                    const PcBehavior& behavior) override {
    return WrapObject(
        Under(self.Get("AddLink", ObjectOf(second), linkClass, ObjectOf(behavior)), "PcObject"));
  }
  [[nodiscard]] PcRecordListPtr Children(const PcAttributeList& attributes,
                                         const PcBehavior& behavior) const override {
    return Retrieved("Children", attributes, behavior);
  }
  [[nodiscard]] PcRecordListPtr Parents(const PcAttributeList& attributes,
                                        const PcBehavior& behavior) const override {
    return Retrieved("Parents", attributes, behavior);
  }
  [[nodiscard]] PcRecordListPtr Relations(const PcAttributeList& attributes,
                                          const PcBehavior& behavior) const override {
    return Retrieved("Relations", attributes, behavior);
  }
  void WriteToFile(const std::string& title, const std::string& path) const override {
    self.Call("WriteToFile", title, path);
  }

 private:
  [[nodiscard]] PcRecordListPtr Retrieved(const char* member, const PcAttributeList& attributes,
                                          const PcBehavior& behavior) const {
    return WrapRecordList(Under(self.Get(member, ObjectOf(attributes), ObjectOf(behavior)), "PcRecordList"));
  }
};

class RemoteObjectList : public PcObjectList, public Remote {
 public:
  using Remote::Remote;
  void Add(PcObjectPtr object) override { self.Call("Add", ObjectOf(object)); }
  [[nodiscard]] int Count() const override { return NumberOf("Count"); }
  [[nodiscard]] PcObjectPtr Item(int index) const override {
    return WrapObject(Under(self.Get("Item", index), "PcObject"));
  }
};

class RemoteQuery : public PcQuery, public Remote {
 public:
  using Remote::Remote;
  void SetSql(const std::string& text) override { self.Put("Sql", text); }
  void SetClass(ClassId classId) override { self.Call("SetClass", classId); }
  void AddSelect(const std::string& attribute) override { self.Call("AddSelect", attribute); }
  void AddCondition(const std::string& attribute, const std::string& op, const Value& value) override {
    self.Call("AddCondition", attribute, op, value);
  }
  [[nodiscard]] PcRecordListPtr Run() override {
    return WrapRecordList(Under(self.Get("Run"), "PcRecordList"));
  }
};

class RemoteObjectStore : public PcObjectStore, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] PcObjectPtr Object(const ObjectKey& key) override {
    return WrapObject(Under(self.Get("Object", key.classId, key.objectId), "PcObject"));
  }
  [[nodiscard]] PcObjectPtr NewObject(ClassId classId) override {
    return WrapObject(Under(self.Get("NewObject", classId), "PcObject"));
  }
  [[nodiscard]] PcObjectListPtr NewObjectList() override {
    return Wrapped<RemoteObjectList>(Under(self.Get("NewObjectList"), "PcObjectList"));
  }
  [[nodiscard]] PcAttributeListPtr NewAttributeList() override {
    return Wrapped<RemoteAttributeList>(Under(self.Get("NewAttributeList"), "PcAttributeList"));
  }
  [[nodiscard]] PcQueryPtr NewQuery() override {
    return Wrapped<RemoteQuery>(Under(self.Get("NewQuery"), "PcQuery"));
  }
};

}  // namespace

PcObjectPtr WrapObject(const LateBound& object) {
  return Wrapped<RemoteObject>(object);
}

PcBehaviorPtr WrapBehavior(const LateBound& object) {
  return Wrapped<RemoteBehavior>(object);
}

PcObjectStorePtr WrapObjectStore(const LateBound& object) {
  return Wrapped<RemoteObjectStore>(object);
}

}  // namespace tessel::automation
