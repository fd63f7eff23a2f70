// The host's description of its database: classes, attributes, mechanisms, link classes, operations.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/object_key.h"
#include "host/type_codes.h"

namespace tessel {

class PcAttribute {
 public:
  virtual ~PcAttribute() = default;
  [[nodiscard]] virtual std::string Name() const = 0;
  [[nodiscard]] virtual AttributeType Type() const = 0;
  // True for the attribute that identifies an object of the class; called with the attribute's own name.
  [[nodiscard]] virtual bool IsIdentifying(std::string_view name) const = 0;
  [[nodiscard]] virtual bool IsMandatory() const = 0;
  [[nodiscard]] virtual bool HasSequence() const = 0;
  // Class that a reference or lookup attribute points to; 0 for the other types.
  [[nodiscard]] virtual ClassId TargetClassId() const = 0;
};
using PcAttributePtr = std::shared_ptr<const PcAttribute>;

class PcLifeCycleOperation {
 public:
  virtual ~PcLifeCycleOperation() = default;
  [[nodiscard]] virtual std::int16_t Id() const = 0;
  [[nodiscard]] virtual std::string Name() const = 0;
};
using PcLifeCycleOperationPtr = std::shared_ptr<const PcLifeCycleOperation>;

class PcLifeCycleOperations {
 public:
  virtual ~PcLifeCycleOperations() = default;
  // By name in any letter case. Error: HostError when the class has no such operation.
  [[nodiscard]] virtual PcLifeCycleOperationPtr Item(std::string_view name) const = 0;
};
using PcLifeCycleOperationsPtr = std::shared_ptr<const PcLifeCycleOperations>;

class PcClass {
 public:
  virtual ~PcClass() = default;
  [[nodiscard]] virtual ClassId Id() const = 0;
  [[nodiscard]] virtual std::string Name() const = 0;
  [[nodiscard]] virtual bool IsFileBased() const = 0;
  [[nodiscard]] virtual bool IsLinkClass() const = 0;
  // Whether objects of the class may be put on a user's desktop.
  [[nodiscard]] virtual bool AllowsDesktopLink() const = 0;
  [[nodiscard]] virtual std::string IconFileName() const = 0;
  // 0 when the class has none.
  [[nodiscard]] virtual ClassId DefaultHierarchicalLinkClassId() const = 0;
  [[nodiscard]] virtual std::string TableName() const = 0;
  [[nodiscard]] virtual int AttributeCount() const = 0;
  // Index from 0; error 9 outside.
  [[nodiscard]] virtual PcAttributePtr Attribute(int index) const = 0;
  // Nothing when the class has no such attribute.
  [[nodiscard]] virtual PcAttributePtr FindAttribute(std::string_view name) const = 0;
  [[nodiscard]] virtual bool HasMechanism(std::string_view name) const = 0;
  [[nodiscard]] virtual PcLifeCycleOperationsPtr LifeCycleOperations() const = 0;
};
using PcClassPtr = std::shared_ptr<const PcClass>;

// A named behaviour and the classes that support it.
class PcClassMechanism {
 public:
  virtual ~PcClassMechanism() = default;
  [[nodiscard]] virtual int Id() const = 0;
  [[nodiscard]] virtual std::string Name() const = 0;
  [[nodiscard]] virtual int SupportedClassCount() const = 0;
  // Index from 0; error 9 outside.
  [[nodiscard]] virtual PcClassPtr SupportedClass(int index) const = 0;
  [[nodiscard]] virtual bool Supports(ClassId classId) const = 0;
};
using PcClassMechanismPtr = std::shared_ptr<const PcClassMechanism>;

class PcDatabaseMechanism {
 public:
  virtual ~PcDatabaseMechanism() = default;
  [[nodiscard]] virtual std::string Name() const = 0;
};
using PcDatabaseMechanismPtr = std::shared_ptr<const PcDatabaseMechanism>;

class PcMetaData {
 public:
  virtual ~PcMetaData() = default;
  // 0 when no class has the name.
  [[nodiscard]] virtual ClassId ClassIdByName(std::string_view name) const = 0;
  // Nothing when there is no such class.
  [[nodiscard]] virtual PcClassPtr ClassById(ClassId id) const = 0;
  // In the order of the metadata.
  [[nodiscard]] virtual int ClassCount() const = 0;
  [[nodiscard]] virtual PcClassPtr ClassAt(int index) const = 0;
  // Nothing when the database does not know the mechanism.
  [[nodiscard]] virtual PcClassMechanismPtr ClassMechanism(std::string_view name) const = 0;
  [[nodiscard]] virtual int ClassMechanismCount() const = 0;
  [[nodiscard]] virtual PcClassMechanismPtr ClassMechanismAt(int index) const = 0;
  [[nodiscard]] virtual PcDatabaseMechanismPtr DatabaseMechanism(std::string_view name) const = 0;
  // Link classes that may tie an object of the first class to one of the second, in the order of the
  // metadata; empty when there is none.
  [[nodiscard]] virtual std::vector<PcClassPtr> LinkClassesBetween(ClassId first, ClassId second) const = 0;
};
using PcMetaDataPtr = std::shared_ptr<const PcMetaData>;

}  // namespace tessel
