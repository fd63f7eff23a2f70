#include "automation/host/remote_parts.h"
namespace tessel::automation {
namespace {

std::string Text(std::string_view text) {
  return std::string(text);
}

class RemoteAttribute : public PcAttribute, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] std::string Name() const override { return TextOf("Name"); }
  [[nodiscard]] AttributeType Type() const override { return static_cast<AttributeType>(NumberOf("Type")); }
  [[nodiscard]] bool IsIdentifying(std::string_view name) const override {
    return FlagOf("IsIdentifying", Text(name));
  }
  [[nodiscard]] bool IsMandatory() const override { return FlagOf("IsMandatory"); }
  [[nodiscard]] bool HasSequence() const override { return FlagOf("HasSequence"); }
  [[nodiscard]] ClassId TargetClassId() const override { return ValueOf("TargetClassId").AsInt16(); }
};

class RemoteOperation : public PcLifeCycleOperation, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] std::int16_t Id() const override { return ValueOf("Id").AsInt16(); }
  [[nodiscard]] std::string Name() const override { return TextOf("Name"); }
};

class RemoteOperations : public PcLifeCycleOperations, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] PcLifeCycleOperationPtr Item(std::string_view name) const override {
    return Wrapped<RemoteOperation>(Under(self.Get("Item", Text(name)), "PcLifeCycleOperation"));
  }
};

class RemoteClass : public PcClass, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] ClassId Id() const override { return ValueOf("Id").AsInt16(); }
  [[nodiscard]] std::string Name() const override { return TextOf("Name"); }
  [[nodiscard]] bool IsFileBased() const override { return FlagOf("IsFileBased"); }
  [[nodiscard]] bool IsLinkClass() const override { return FlagOf("IsLinkClass"); }
  [[nodiscard]] bool AllowsDesktopLink() const override { return FlagOf("AllowsDesktopLink"); }
  [[nodiscard]] std::string IconFileName() const override { return TextOf("IconFileName"); }
  [[nodiscard]] ClassId DefaultHierarchicalLinkClassId() const override {
    return ValueOf("DefaultHierarchicalLinkClassId").AsInt16();
  }
  [[nodiscard]] std::string TableName() const override { return TextOf("TableName"); }
  [[nodiscard]] int AttributeCount() const override { return NumberOf("AttributeCount"); }
  [[nodiscard]] PcAttributePtr Attribute(int index) const override {
    return Wrapped<RemoteAttribute>(Under(self.Get("Attribute", index), "PcAttribute"));
  }
  [[nodiscard]] PcAttributePtr FindAttribute(std::string_view name) const override {
    return Wrapped<RemoteAttribute>(Under(self.Get("FindAttribute", Text(name)), "PcAttribute"));
  }
  [[nodiscard]] bool HasMechanism(std::string_view name) const override {
    return FlagOf("HasMechanism", Text(name));
  }
  [[nodiscard]] PcLifeCycleOperationsPtr LifeCycleOperations() const override {
    return Wrapped<RemoteOperations>(Under(self.Get("LifeCycleOperations"), "PcLifeCycleOperations"));
  }
};

class RemoteClassMechanism : public PcClassMechanism, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] int Id() const override { return NumberOf("Id"); }
  [[nodiscard]] std::string Name() const override { return TextOf("Name"); }
  [[nodiscard]] int SupportedClassCount() const override { return NumberOf("SupportedClassCount"); }
  [[nodiscard]] PcClassPtr SupportedClass(int index) const override {
    return WrapClass(Under(self.Get("SupportedClass", index), "PcClass"));
  }
  [[nodiscard]] bool Supports(ClassId classId) const override { return FlagOf("Supports", classId); }
};

class RemoteDatabaseMechanism : public PcDatabaseMechanism, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] std::string Name() const override { return TextOf("Name"); }
};

class RemoteMetaData : public PcMetaData, public Remote {
 public:
  using Remote::Remote;
  [[nodiscard]] ClassId ClassIdByName(std::string_view name) const override {
    return ValueOf("ClassIdByName", Text(name)).AsInt16();
  }
  [[nodiscard]] PcClassPtr ClassById(ClassId id) const override {
    return WrapClass(Under(self.Get("ClassById", id), "PcClass"));
  }
  [[nodiscard]] int ClassCount() const override { return NumberOf("ClassCount"); }
  [[nodiscard]] PcClassPtr ClassAt(int index) const override {
    return WrapClass(Under(self.Get("ClassAt", index), "PcClass"));
  }
  [[nodiscard]] PcClassMechanismPtr ClassMechanism(std::string_view name) const override {
    return Wrapped<RemoteClassMechanism>(Under(self.Get("ClassMechanism", Text(name)), "PcClassMechanism"));
  }
  [[nodiscard]] int ClassMechanismCount() const override { return NumberOf("ClassMechanismCount"); }
  [[nodiscard]] PcClassMechanismPtr ClassMechanismAt(int index) const override {
    return Wrapped<RemoteClassMechanism>(Under(self.Get("ClassMechanismAt", index), "PcClassMechanism"));
  }
  [[nodiscard]] PcDatabaseMechanismPtr DatabaseMechanism(std::string_view name) const override {
    return Wrapped<RemoteDatabaseMechanism>(
        Under(self.Get("DatabaseMechanism", Text(name)), "PcDatabaseMechanism"));
  }
  [[nodiscard]] std::vector<PcClassPtr> LinkClassesBetween(ClassId first, ClassId second) const override {
    const LateBound list = Under(self.Get("LinkClassesBetween", first, second), "PcClasses");
    std::vector<PcClassPtr> classes;
    if (!list) return classes;
    const int count = ToValue(list.Get("Count").Raw()).AsInt32();
    for (int index = 0; index < count; ++index)
      classes.push_back(WrapClass(Under(list.Get("Item", index), "PcClass")));
    return classes;
  }
};

}  // namespace

PcMetaDataPtr WrapMetaData(const LateBound& object) {
  return Wrapped<RemoteMetaData>(object);
}

PcClassPtr WrapClass(const LateBound& object) {
  return Wrapped<RemoteClass>(object);
}

}  // namespace tessel::automation
