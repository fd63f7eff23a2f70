#include "embedded/model/metadata_json.h"

#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "embedded/model/sql_names.h"
#include "host/ascii.h"
#include "host/error.h"
#include "host/names.h"

namespace tessel::embedded {
namespace {

using nlohmann::json;

constexpr std::int64_t kMaxInt16 = std::numeric_limits<std::int16_t>::max();
constexpr std::int64_t kMaxInt32 = std::numeric_limits<std::int32_t>::max();

struct TypeName {
  const char* name;
  AttributeType type;
};
constexpr TypeName kTypeNames[] = {
    {"text", AttributeType::kText},           {"integer", AttributeType::kInteger},
    {"long", AttributeType::kLong},           {"double", AttributeType::kDouble},
    {"boolean", AttributeType::kBoolean},     {"longText", AttributeType::kLongText},
    {"date", AttributeType::kDate},           {"time", AttributeType::kTime},
    {"reference", AttributeType::kReference}, {"lookup", AttributeType::kLookup},
    {"dateTime", AttributeType::kDateTime},   {"timeStamp", AttributeType::kTimeStamp},
    {"duration", AttributeType::kDuration}};

struct DefaultOperation {
  const char* name;
  std::int16_t id;
  std::int16_t state;
};
constexpr std::int16_t kNoState = -1;
constexpr DefaultOperation kDefaultOperations[] = {
    {"CheckIn", 1, 1}, {"CheckOut", 2, 2},        {"Release", 3, 3},   {"Obsolete", 4, 4},
    {"Approve", 5, 5}, {"CopyFile", 6, kNoState}, {"NewRelease", 7, 2}};

// A key that stands for another definition and is looked up when all classes are known.
struct Pending {
  std::shared_ptr<ClassDefinition> owner;
  JsonObject source;
};
struct PendingAttribute {
  std::shared_ptr<AttributeDefinition> attribute;
  JsonObject source;
};

class MetadataReader {
 public:
  explicit MetadataReader(const JsonObject& model) : model_(model) {}

  std::shared_ptr<Metadata> Read() {
    ReadTop();
    for (const json* entry : model_.Elements("classes"))
      ReadClass(*entry, false);
    for (const json* entry : model_.Elements("linkClasses"))
      ReadClass(*entry, true);
    for (const auto& [owner, source] : pendingClasses_)
      Resolve(*owner, source);
    for (const auto& [attribute, source] : pendingAttributes_)
      Resolve(*attribute, source);
    return metadata_;
  }

 private:
  [[nodiscard]] JsonObject Entry(const json& entry, const char* kind, const char* nameKey = "name") const {
    JsonObject object(entry, std::string(kind) + " ?", model_.ProblemList());
    object.SetWhere(std::string(kind) + " \"" + object.Text(nameKey, "?") + "\"");
    return object;
  }

  void ReadTop() {
    metadata_->alias = model_.RequiredText("alias");
    metadata_->language = model_.Text("language", "GER");
    for (const std::string& name : model_.Texts("databaseMechanisms"))
      metadata_->AddDatabaseMechanism(name);
    for (const std::string& name : model_.Texts("classMechanisms")) {
      if (metadata_->ClassMechanism(name)) model_.Report("class mechanism \"" + name + "\" stands twice");
      metadata_->AddClassMechanism(name);
    }
    for (const json* entry : model_.Elements("sequences"))
      ReadSequence(*entry);
    const json* sets = model_.Find("attributeSets");
    if (!sets) return;
    const JsonObject setList(*sets, "attributeSets", model_.ProblemList());
    for (const std::string& name : setList.Keys())
      attributeSets_[name] = setList.Elements(name.c_str());
  }

  void ReadSequence(const json& entry) {
    const JsonObject source = Entry(entry, "sequence");
    source.CheckKeys({"name", "pattern", "start"});
    SequenceDefinition sequence;
    sequence.name = source.RequiredText("name");
    sequence.start = static_cast<std::int32_t>(source.Integer("start", 0, kMaxInt32, 1));
    if (!ReadPattern(source.RequiredText("pattern"), sequence)) {
      source.Report("\"pattern\" does not hold one %d or %0Nd");
    }
    if (!metadata_->sequences.emplace(sequence.name, sequence).second) source.Report("stands twice");
  }

  // Text with one number place; "%%" is a percent sign.
  static bool ReadPattern(std::string_view pattern, SequenceDefinition& sequence) {
    bool placed = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
      std::string& text = placed ? sequence.after : sequence.before;
      if (pattern[i] != '%') {
        text += pattern[i];
        continue;
      }
      if (pattern.substr(i, 2) == "%%") {
        text += '%';
        ++i;
        continue;
      }
      const std::size_t end = pattern.find('d', i);
      if (placed || end == std::string_view::npos || end - i > 4) return false;
      for (const char digit : pattern.substr(i + 1, end - i - 1)) {
        if (digit < '0' || digit > '9') return false;
        sequence.width = sequence.width * 10 + (digit - '0');
      }
      placed = true;
      i = end;
    }
    return placed;
  }

  void ReadClass(const json& entry, bool linkClass) {
    const JsonObject source = Entry(entry, linkClass ? "link class" : "class");
    if (linkClass) {
      source.CheckKeys({"id", "name", "table", "icon", "mechanisms", "attributeSets", "attributes", "unique",
                        "first", "second"});
    } else {
      source.CheckKeys({"id", "name", "table", "icon", "mechanisms", "attributeSets", "attributes", "unique",
                        "fileBased", "desktop", "hierarchicalLink", "operations", "lookup"});
    }
    auto definition = std::make_shared<ClassDefinition>();
    definition->linkClass = linkClass;
    definition->id = static_cast<ClassId>(source.Integer("id", 1, kMaxInt16, 0));
    if (!source.Has("id")) source.Report("\"id\" is missing");
    definition->name = source.RequiredText("name");
    definition->icon = source.Text("icon");
    definition->fileBased = source.Flag("fileBased");
    definition->desktop = source.Flag("desktop");
    ReadTable(source, *definition);
    ReadMechanisms(source, *definition);
    AddSystemAttributes(*definition);
    ReadLookup(source, *definition);
    ReadAttributes(source, *definition);
    ReadUniqueSets(source, *definition);
    ReadOperations(source, *definition);
    if (!metadata_->AddClass(definition)) source.Report("the id or the name is taken by another class");
    pendingClasses_.push_back({definition, source});
  }

  void ReadTable(const JsonObject& source, ClassDefinition& definition) {
    definition.table = source.RequiredText("table");
    if (definition.table.empty()) return;
    if (!IsIdentifier(definition.table)) source.Report("\"table\" is not made of letters, digits and _");
    if (IsReservedTable(definition.table)) source.Report("the table name " + definition.table + " is taken");
    if (!tables_.insert(UpperCase(definition.table)).second)
      source.Report("another class has the table " + definition.table);
  }

  void ReadMechanisms(const JsonObject& source, ClassDefinition& definition) {
    definition.mechanisms = source.Texts("mechanisms");
    for (const std::string& name : definition.mechanisms) {
      if (!metadata_->ClassMechanism(name)) source.Report("unknown class mechanism \"" + name + "\"");
    }
  }

  static void AddPlain(ClassDefinition& definition, const char* name, AttributeType type) {
    auto attribute = std::make_shared<AttributeDefinition>();
    attribute->name = name;
    attribute->type = type;
    definition.AddAttribute(std::move(attribute));
  }

  static void AddSystemAttributes(ClassDefinition& definition) {
    AddPlain(definition, attribute::kObjectId, AttributeType::kLong);
    AddPlain(definition, attribute::kClassId, AttributeType::kInteger);
    if (!definition.linkClass) return;
    AddPlain(definition, attribute::kObjectId1, AttributeType::kLong);
    AddPlain(definition, attribute::kClassId1, AttributeType::kInteger);
    AddPlain(definition, attribute::kObjectId2, AttributeType::kLong);
    AddPlain(definition, attribute::kClassId2, AttributeType::kInteger);
    AddPlain(definition, attribute::kDirection, AttributeType::kInteger);
    definition.Attributes().back()->defaultValue = Value(std::int16_t{1});
  }

  void ReadLookup(const JsonObject& source, ClassDefinition& definition) {
    if (!source.Has("lookup")) return;
    AddPlain(definition, attribute::kValueOrder, AttributeType::kLong);
    AddPlain(definition, "DESCRIPTION", AttributeType::kText);
    ObjectId next = 1;
    std::set<ObjectId> ids;
    for (const json* entry : source.Elements("lookup")) {
      LookupValue value{next, {}};
      if (entry->is_string()) {
        value.description = entry->get<std::string>();
      } else {
        const JsonObject object(*entry, source.Where() + ": lookup value", model_.ProblemList());
        object.CheckKeys({"id", "description"});
        value.id = static_cast<ObjectId>(object.Integer("id", 1, kMaxInt32, next));
        value.description = object.RequiredText("description");
      }
      if (!ids.insert(value.id).second) {
        source.Report("lookup value \"" + value.description + "\": the id " + std::to_string(value.id) +
                      " is taken");
      }
      next = value.id == kMaxInt32 ? value.id : value.id + 1;
      definition.lookupValues.push_back(std::move(value));
    }
  }

  void ReadAttributes(const JsonObject& source, ClassDefinition& definition) {
    for (const std::string& name : source.Texts("attributeSets")) {
      const auto set = attributeSets_.find(name);
      if (set == attributeSets_.end()) {
        source.Report("unknown attribute set \"" + name + "\"");
        continue;
      }
      for (const json* entry : set->second)
        ReadAttribute(source, *entry, definition);
    }
    for (const json* entry : source.Elements("attributes"))
      ReadAttribute(source, *entry, definition);
  }

  void ReadAttribute(const JsonObject& owner, const json& entry, ClassDefinition& definition) {
    JsonObject source(entry, owner.Where() + ": attribute ?", model_.ProblemList());
    source.SetWhere(owner.Where() + ": attribute \"" + source.Text("name", "?") + "\"");
    source.CheckKeys({"name", "type", "length", "identifying", "mandatory", "sequence", "target", "default"});
    auto attribute = std::make_shared<AttributeDefinition>();
    attribute->name = source.RequiredText("name");
    if (!attribute->name.empty() && !IsIdentifier(attribute->name)) {
      source.Report("the name is not made of letters, digits and _");
    }
    attribute->type = ReadType(source);
    attribute->length = static_cast<int>(source.Integer("length", 0, 1000000, 0));
    attribute->identifying = source.Flag("identifying");
    attribute->mandatory = source.Flag("mandatory");
    attribute->sequence = source.Text("sequence");
    if (!attribute->sequence.empty() && !metadata_->sequences.contains(attribute->sequence)) {
      source.Report("unknown sequence \"" + attribute->sequence + "\"");
    }
    pendingAttributes_.push_back({attribute, source});
    if (!definition.AddAttribute(attribute)) source.Report("the class has an attribute of this name already");
  }

  static AttributeType ReadType(const JsonObject& source) {
    const std::string text = source.RequiredText("type");
    for (const TypeName& entry : kTypeNames) {
      if (text == entry.name) return entry.type;
    }
    if (!text.empty()) source.Report("unknown type \"" + text + "\"");
    return AttributeType::kText;
  }

  static void ReadUniqueSets(const JsonObject& source, ClassDefinition& definition) {
    for (const json* set : source.Elements("unique")) {
      std::vector<std::string> names;
      for (const json& name : *set) {
        if (name.is_string()) names.push_back(name.get<std::string>());
      }
      if (!set->is_array() || names.empty() || names.size() != set->size()) {
        source.Report("\"unique\" is not a list of lists of attribute names");
        continue;
      }
      for (const std::string& name : names) {
        if (!definition.Has(name)) source.Report("\"unique\": the class has no attribute \"" + name + "\"");
      }
      definition.uniqueSets.push_back(std::move(names));
    }
  }

  static void AddOperation(ClassDefinition& definition, const std::string& name, std::int16_t id,
                           std::optional<std::int16_t> state) {
    auto operation = std::make_shared<OperationDefinition>();
    operation->name = name;
    operation->id = id;
    operation->state = state;
    operation->copiesFiles = UpperCase(name) == "COPYFILE";
    definition.operations->operations.push_back(std::move(operation));
  }

  void ReadOperations(const JsonObject& source, ClassDefinition& definition) {
    if (definition.linkClass) return;
    if (!source.Has("operations")) {
      for (const DefaultOperation& entry : kDefaultOperations) {
        AddOperation(definition, entry.name, entry.id,
                     entry.state == kNoState ? std::nullopt : std::optional(entry.state));
      }
      return;
    }
    for (const json* entry : source.Elements("operations")) {
      JsonObject operation(*entry, source.Where() + ": operation", model_.ProblemList());
      operation.CheckKeys({"name", "id", "state"});
      const auto state = static_cast<std::int16_t>(operation.Integer("state", 0, kMaxInt16, 0));
      AddOperation(definition, operation.RequiredText("name"),
                   static_cast<std::int16_t>(operation.Integer("id", 1, kMaxInt16, 0)),
                   operation.Has("state") ? std::optional(state) : std::nullopt);
    }
  }

  ClassId ResolveClass(const JsonObject& source, const std::string& key, const std::string& name) const {
    const ClassId id = metadata_->ClassIdByName(name);
    if (id == 0) source.Report("\"" + key + "\": unknown class \"" + name + "\"");
    return id;
  }

  void Resolve(ClassDefinition& definition, const JsonObject& source) {
    if (definition.linkClass) {
      for (const auto& name : source.Texts("first"))
        definition.firstEnds.push_back(ResolveClass(source, "first", name));
      for (const auto& name : source.Texts("second")) {
        definition.secondEnds.push_back(ResolveClass(source, "second", name));
      }
      return;
    }
    const std::string link = source.Text("hierarchicalLink");
    if (link.empty()) return;
    definition.hierarchicalLink = ResolveClass(source, "hierarchicalLink", link);
    const ClassDefinitionPtr linkClass = metadata_->Find(definition.hierarchicalLink);
    if (linkClass && !linkClass->linkClass)
      source.Report("\"hierarchicalLink\": \"" + link + "\" is no link class");
  }

  void Resolve(AttributeDefinition& attribute, const JsonObject& source) {
    const bool pointing =
        attribute.type == AttributeType::kReference || attribute.type == AttributeType::kLookup;
    if (pointing) {
      const std::string target = source.RequiredText("target");
      if (!target.empty()) attribute.target = ResolveClass(source, "target", target);
    } else if (source.Has("target")) {
      source.Report("only a reference or a lookup has a \"target\"");
    }
    if (const json* value = source.Find("default"))
      attribute.defaultValue = DefaultValue(attribute, *value, source);
  }

  Value DefaultValue(const AttributeDefinition& attribute, const json& value,
                     const JsonObject& source) const {
    try {
      if (value.is_boolean()) return ConvertedTo(attribute.type, Value(value.get<bool>()));
      if (value.is_number()) return ConvertedTo(attribute.type, Value(value.get<double>()));
      if (!value.is_string()) {
        source.Report("\"default\" is neither a text nor a number nor a Boolean");
        return {};
      }
      const auto text = value.get<std::string>();
      if (attribute.type != AttributeType::kLookup) return ConvertedTo(attribute.type, Value(text));
      const ClassDefinitionPtr target = metadata_->Find(attribute.target);
      if (!target) return {};
      for (const LookupValue& entry : target->lookupValues) {
        if (entry.description == text) return Value(entry.id);
      }
      source.Report("\"default\": class \"" + target->name + "\" has no value \"" + text + "\"");
    } catch (const RuntimeError& error) {
      source.Report(std::string("\"default\": ") + error.what());
    }
    return {};
  }

  const JsonObject& model_;
  std::shared_ptr<Metadata> metadata_ = std::make_shared<Metadata>();
  std::map<std::string, std::vector<const json*>> attributeSets_;
  std::set<std::string> tables_;
  std::vector<Pending> pendingClasses_;
  std::vector<PendingAttribute> pendingAttributes_;
};

}  // namespace

std::shared_ptr<Metadata> ReadMetadata(const JsonObject& model) {
  return MetadataReader(model).Read();
}

}  // namespace tessel::embedded
