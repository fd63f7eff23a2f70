#include "embedded/model/metadata.h"

#include <algorithm>

#include "host/ascii.h"
#include "host/error.h"
#include "host/names.h"

namespace tessel::embedded {
namespace {

template <class Element>
const Element& At(const std::vector<Element>& elements, int index, const char* what) {
  if (index < 0 || static_cast<std::size_t>(index) >= elements.size()) {
    throw RuntimeError(error_number::kSubscriptOutOfRange,
                       "Subscript out of range: " + std::string(what) + " " + std::to_string(index));
  }
  return elements[static_cast<std::size_t>(index)];
}

bool Allows(const std::vector<ClassId>& ends, ClassId id) {
  return ends.empty() || std::find(ends.begin(), ends.end(), id) != ends.end();
}

}  // namespace

Value ConvertedTo(AttributeType type, const Value& value) {
  if (value.IsNull()) return value;
  switch (type) {
    case AttributeType::kInteger:
      return Value(value.AsInt16());
    case AttributeType::kLong:
    case AttributeType::kReference:
    case AttributeType::kLookup:
      return Value(value.AsInt32());
    case AttributeType::kDouble:
      return Value(value.AsDouble());
    case AttributeType::kBoolean:
      return Value(value.AsBoolean());
    default:
      return value.IsText() ? value : Value(value.AsText());
  }
}

PcLifeCycleOperationPtr OperationList::Item(std::string_view name) const {
  const std::string upperName = UpperCase(name);
  for (const auto& operation : operations) {
    if (UpperCase(operation->name) == upperName) return operation;
  }
  throw HostError("The class has no life-cycle operation \"" + std::string(name) + "\"");
}

bool ClassDefinition::AddAttribute(std::shared_ptr<AttributeDefinition> attribute) {
  if (!positions_.emplace(attribute->name, AttributeCount()).second) return false;
  attributes_.push_back(std::move(attribute));
  return true;
}

int ClassDefinition::Position(std::string_view attribute) const {
  const auto found = positions_.find(attribute);
  return found == positions_.end() ? -1 : found->second;
}

std::string ClassDefinition::ColumnText(const std::string& prefix) const {
  std::string text;
  for (const auto& attribute : attributes_)
    text += (text.empty() ? "" : ", ") + prefix + attribute->name;
  return text;
}

void ClassDefinition::MakeStatements() {
  readStatement = "SELECT " + ColumnText() + " FROM " + table + " WHERE OBJECT_ID = :key";
  insertStatement = "INSERT INTO " + table + " (" + ColumnText() + ") VALUES (" + ColumnText(":") + ")";
}

bool ClassDefinition::MayTie(ClassId first, ClassId second) const {
  return linkClass && Allows(firstEnds, first) && Allows(secondEnds, second);
}

std::string ClassDefinition::DescriptionAttribute() const {
  for (const char* attribute : {attribute::kDescription, attribute::kNamedDescription, "DESCRIPTION"}) {
    if (Has(attribute)) return attribute;
  }
  for (const auto& attribute : attributes_) {
    if (attribute->identifying) return attribute->name;
  }
  return {};
}

PcAttributePtr ClassDefinition::Attribute(int index) const {
  return At(attributes_, index, "attribute");
}

PcAttributePtr ClassDefinition::FindAttribute(std::string_view attribute) const {
  const int position = Position(attribute);
  return position < 0 ? nullptr : attributes_[static_cast<std::size_t>(position)];
}

bool ClassDefinition::HasMechanism(std::string_view mechanism) const {
  return std::find(mechanisms.begin(), mechanisms.end(), mechanism) != mechanisms.end();
}

std::string SequenceDefinition::Format(std::int32_t number) const {
  std::string digits = std::to_string(number);
  if (static_cast<int>(digits.size()) < width) {
    digits.insert(0, static_cast<std::size_t>(width) - digits.size(), '0');
  }
  return before + digits + after;
}

struct Metadata::MechanismDefinition final : PcClassMechanism {
  int id = 0;
  std::string name;
  std::vector<PcClassPtr> classes;

  [[nodiscard]] int Id() const override { return id; }
  [[nodiscard]] std::string Name() const override { return name; }
  [[nodiscard]] int SupportedClassCount() const override { return static_cast<int>(classes.size()); }
  [[nodiscard]] PcClassPtr SupportedClass(int index) const override {
    return At(classes, index, "supported class");
  }
  [[nodiscard]] bool Supports(ClassId classId) const override {
    return std::any_of(classes.begin(), classes.end(),
                       [&](const PcClassPtr& supported) { return supported->Id() == classId; });
  }
};

struct Metadata::DatabaseMechanismDefinition final : PcDatabaseMechanism {
  std::string name;
  [[nodiscard]] std::string Name() const override { return name; }
};

void Metadata::AddDatabaseMechanism(const std::string& name) {
  auto mechanism = std::make_shared<DatabaseMechanismDefinition>();
  mechanism->name = name;
  databaseMechanisms_.push_back(std::move(mechanism));
}

void Metadata::AddClassMechanism(const std::string& name) {
  auto mechanism = std::make_shared<MechanismDefinition>();
  mechanism->id = ClassMechanismCount() + 1;
  mechanism->name = name;
  classMechanisms_.push_back(std::move(mechanism));
}

bool Metadata::AddClass(std::shared_ptr<ClassDefinition> definition) {
  if (byId_.contains(definition->id) || byName_.contains(definition->name)) return false;
  definition->MakeStatements();
  byId_.emplace(definition->id, definition);
  tables_.insert(UpperCase(definition->table));
  byName_.emplace(definition->name, definition);
  for (const auto& mechanism : classMechanisms_) {
    if (definition->HasMechanism(mechanism->name)) mechanism->classes.push_back(definition);
  }
  classes_.push_back(std::move(definition));
  return true;
}

ClassDefinitionPtr Metadata::Find(ClassId id) const {
  const auto found = byId_.find(id);
  return found == byId_.end() ? nullptr : found->second;
}

ClassDefinitionPtr Metadata::FindByName(std::string_view name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? nullptr : found->second;
}

const ClassDefinition& Metadata::Required(ClassId id) const {
  const auto found = byId_.find(id);
  if (found == byId_.end()) throw HostError("The database has no class " + std::to_string(id));
  return *found->second;
}

ClassId Metadata::ClassIdByName(std::string_view name) const {
  const auto found = byName_.find(name);
  return found == byName_.end() ? ClassId{0} : found->second->id;
}

PcClassPtr Metadata::ClassAt(int index) const {
  return At(classes_, index, "class");
}

PcClassMechanismPtr Metadata::ClassMechanism(std::string_view name) const {
  for (const auto& mechanism : classMechanisms_) {
    if (mechanism->name == name) return mechanism;
  }
  return nullptr;
}

PcClassMechanismPtr Metadata::ClassMechanismAt(int index) const {
  return At(classMechanisms_, index, "class mechanism");
}

PcDatabaseMechanismPtr Metadata::DatabaseMechanism(std::string_view name) const {
  for (const auto& mechanism : databaseMechanisms_) {
    if (mechanism->name == name) return mechanism;
  }
  return nullptr;
}

std::vector<PcClassPtr> Metadata::LinkClassesBetween(ClassId first, ClassId second) const {
  std::vector<PcClassPtr> result;
  for (const auto& definition : classes_) {
    if (definition->MayTie(first, second)) result.push_back(definition);
  }
  return result;
}

}  // namespace tessel::embedded
