// The metadata of a database: classes, attributes, mechanisms, link classes, operations, number sequences.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "embedded/model/text_map.h"
#include "host/metadata.h"
#include "host/value.h"

namespace tessel::embedded {

// A value converted to what an attribute of the type holds; Null stays Null. Errors: 6 and 13 as in Value.
[[nodiscard]] Value ConvertedTo(AttributeType type, const Value& value);

struct AttributeDefinition final : PcAttribute {
  std::string name;
  AttributeType type = AttributeType::kText;
  int length = 0;  // greatest number of characters, 0 without limit
  bool identifying = false;
  bool mandatory = false;
  std::string sequence;  // name of the number sequence, empty without
  ClassId target = 0;
  Value defaultValue;

  [[nodiscard]] std::string Name() const override { return name; }
  [[nodiscard]] AttributeType Type() const override { return type; }
  [[nodiscard]] bool IsIdentifying(std::string_view asked) const override {
    return identifying && asked == name;
  }
  [[nodiscard]] bool IsMandatory() const override { return mandatory; }
  [[nodiscard]] bool HasSequence() const override { return !sequence.empty(); }
  [[nodiscard]] ClassId TargetClassId() const override { return target; }
};

struct OperationDefinition final : PcLifeCycleOperation {
  std::string name;
  std::int16_t id = 0;
  std::optional<std::int16_t> state;  // written to STATE
  bool copiesFiles = false;

  [[nodiscard]] std::int16_t Id() const override { return id; }
  [[nodiscard]] std::string Name() const override { return name; }
};

struct OperationList final : PcLifeCycleOperations {
  std::vector<std::shared_ptr<const OperationDefinition>> operations;
  [[nodiscard]] PcLifeCycleOperationPtr Item(std::string_view name) const override;
};

struct LookupValue {
  ObjectId id = 0;
  std::string description;
};

struct ClassDefinition final : PcClass {
  ClassId id = 0;
  std::string name;
  std::string table;
  std::string icon;
  bool fileBased = false;
  bool linkClass = false;
  bool desktop = false;
  ClassId hierarchicalLink = 0;
  std::vector<std::string> mechanisms;
  std::vector<std::vector<std::string>> uniqueSets;
  std::vector<LookupValue> lookupValues;
  // Classes that the ends of a link class may have; empty: any.
  std::vector<ClassId> firstEnds;
  std::vector<ClassId> secondEnds;
  std::shared_ptr<OperationList> operations = std::make_shared<OperationList>();
  // Of all attributes in order: one row by OBJECT_ID, and a new row. Set when the metadata takes the class.
  std::string readStatement;
  std::string insertStatement;

  // False when the class has an attribute of that name.
  bool AddAttribute(std::shared_ptr<AttributeDefinition> attribute);
  [[nodiscard]] const std::vector<std::shared_ptr<AttributeDefinition>>& Attributes() const {
    return attributes_;
  }
  // Position of an attribute, -1 when there is none.
  [[nodiscard]] int Position(std::string_view attribute) const;
  [[nodiscard]] bool Has(std::string_view attribute) const { return Position(attribute) >= 0; }
  // All attribute names in order, separated by ", ", each behind the prefix.
  [[nodiscard]] std::string ColumnText(const std::string& prefix = {}) const;
  void MakeStatements();
  // Whether a link of this class may tie the two classes in this order.
  [[nodiscard]] bool MayTie(ClassId first, ClassId second) const;
  // The attribute that describes an object to people: VRK_DESCRIPTION, CN_DESCRIPTION, DESCRIPTION, else the
  // first identifying one; empty when there is none of them.
  [[nodiscard]] std::string DescriptionAttribute() const;

  [[nodiscard]] ClassId Id() const override { return id; }
  [[nodiscard]] std::string Name() const override { return name; }
  [[nodiscard]] bool IsFileBased() const override { return fileBased; }
  [[nodiscard]] bool IsLinkClass() const override { return linkClass; }
  [[nodiscard]] bool AllowsDesktopLink() const override { return desktop; }
  [[nodiscard]] std::string IconFileName() const override { return icon; }
  [[nodiscard]] ClassId DefaultHierarchicalLinkClassId() const override { return hierarchicalLink; }
  [[nodiscard]] std::string TableName() const override { return table; }
  [[nodiscard]] int AttributeCount() const override { return static_cast<int>(attributes_.size()); }
  [[nodiscard]] PcAttributePtr Attribute(int index) const override;
  [[nodiscard]] PcAttributePtr FindAttribute(std::string_view attribute) const override;
  [[nodiscard]] bool HasMechanism(std::string_view mechanism) const override;
  [[nodiscard]] PcLifeCycleOperationsPtr LifeCycleOperations() const override { return operations; }

 private:
  std::vector<std::shared_ptr<AttributeDefinition>> attributes_;
  TextMap<int> positions_;
};
using ClassDefinitionPtr = std::shared_ptr<const ClassDefinition>;

// A number sequence: each number is written between two texts, zero-padded to a width.
struct SequenceDefinition {
  std::string name;
  std::string before;
  std::string after;
  int width = 0;
  std::int32_t start = 1;
  [[nodiscard]] std::string Format(std::int32_t number) const;
};

class Metadata final : public PcMetaData {
 public:
  std::string alias;
  std::string language;
  TextMap<SequenceDefinition> sequences;

  void AddDatabaseMechanism(const std::string& name);
  void AddClassMechanism(const std::string& name);
  // Takes a class with all its attributes; its mechanisms are known before. False when the id or the name is
  // taken.
  bool AddClass(std::shared_ptr<ClassDefinition> definition);

  // Classes and link classes in order.
  [[nodiscard]] const std::vector<std::shared_ptr<ClassDefinition>>& Classes() const { return classes_; }
  // Nothing when there is no such class.
  [[nodiscard]] ClassDefinitionPtr Find(ClassId id) const;
  // Whether a class has the table, its name given in upper case.
  [[nodiscard]] bool HasTable(const std::string& upperCaseName) const {
    return tables_.contains(upperCaseName);
  }
  [[nodiscard]] ClassDefinitionPtr FindByName(std::string_view name) const;
  // Error: HostError for an unknown class.
  [[nodiscard]] const ClassDefinition& Required(ClassId id) const;

  [[nodiscard]] ClassId ClassIdByName(std::string_view name) const override;
  [[nodiscard]] PcClassPtr ClassById(ClassId id) const override { return Find(id); }
  [[nodiscard]] int ClassCount() const override { return static_cast<int>(classes_.size()); }
  [[nodiscard]] PcClassPtr ClassAt(int index) const override;
  [[nodiscard]] PcClassMechanismPtr ClassMechanism(std::string_view name) const override;
  [[nodiscard]] int ClassMechanismCount() const override { return static_cast<int>(classMechanisms_.size()); }
  [[nodiscard]] PcClassMechanismPtr ClassMechanismAt(int index) const override;
  [[nodiscard]] PcDatabaseMechanismPtr DatabaseMechanism(std::string_view name) const override;
  [[nodiscard]] std::vector<PcClassPtr> LinkClassesBetween(ClassId first, ClassId second) const override;

 private:
  struct MechanismDefinition;
  struct DatabaseMechanismDefinition;
  std::vector<std::shared_ptr<ClassDefinition>> classes_;
  std::unordered_map<ClassId, std::shared_ptr<ClassDefinition>> byId_;
  TextMap<std::shared_ptr<ClassDefinition>> byName_;
  std::unordered_set<std::string> tables_;
  std::vector<std::shared_ptr<MechanismDefinition>> classMechanisms_;
  std::vector<std::shared_ptr<DatabaseMechanismDefinition>> databaseMechanisms_;
};
using MetadataPtr = std::shared_ptr<const Metadata>;

}  // namespace tessel::embedded
