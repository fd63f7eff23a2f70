#include "embedded/model/model_reader.h"

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>
#include <unordered_set>

#include "embedded/model/metadata_json.h"
#include "host/error.h"
#include "host/names.h"
#include "platform/json_nesting.h"
#include "platform/paths.h"

namespace tessel::embedded {
namespace {

using nlohmann::json;

constexpr const char* kMetadataKeys[] = {"alias",           "language",   "databaseMechanisms",
                                         "classMechanisms", "sequences",  "attributeSets",
                                         "classes",         "linkClasses"};
constexpr std::string_view kDirectoryMark = "${MODEL_DIR}";
// No model nests deeper than its attribute sets; values nested without bounds would exhaust the stack when
// copied.
constexpr int kDeepestNesting = 32;
constexpr std::int64_t kMaxObjectId = std::numeric_limits<ObjectId>::max();

std::size_t CharacterCount(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::count_if(utf8.begin(), utf8.end(), [](char c) { return (c & '\xC0') != '\x80'; }));
}

struct NamedObject {
  const ClassDefinition* definition;
  ObjectId id;
};

// The entry of an object while names are being collected.
struct Draft {
  JsonObject source;
  ClassDefinitionPtr definition;
  ObjectId id;
};

class ModelReader {
 public:
  ModelReader(const ModelSource& source, const json& document, ModelProblems& problems)
      : source_(source), problems_(problems), top_(document, "", problems) {}

  Model Read(bool hasVault) {
    top_.CheckKeys({"alias", "language", "databaseMechanisms", "classMechanisms", "sequences",
                    "attributeSets", "classes", "linkClasses", "users", "configuration", "objects", "links"});
    model_.metadata = ReadMetadata(top_);
    // Objects are read against the metadata; with wrong metadata every object would be a problem.
    problems_.ThrowIfFound();
    StoreMetadata();
    AddLookupValues();
    ReadObjects();
    ReadLinks();
    if (hasVault) CheckVault();
    ReadUsers();
    model_.configuration = ReadSettings(top_, "configuration");
    return std::move(model_);
  }

 private:
  void StoreMetadata() {
    json stored = json::object();
    for (const char* key : kMetadataKeys) {
      if (const json* value = top_.Find(key)) stored[key] = *value;
    }
    model_.metadataText = stored.dump();
  }

  void AddLookupValues() {
    for (const auto& definition : model_.metadata->Classes()) {
      std::int32_t order = 1;
      for (const LookupValue& value : definition->lookupValues) {
        ModelObject object =
            NewObject(definition, value.id, "class \"" + definition->name + "\": lookup value");
        Set(object, attribute::kValueOrder, Value(order++));
        Set(object, "DESCRIPTION", Value(value.description));
        highestId_ = std::max<std::int64_t>(highestId_, value.id);
        ids_.insert({definition->id, value.id});
        model_.objects.push_back(std::move(object));
      }
    }
  }

  void ReadObjects() {
    std::vector<Draft> drafts;
    int number = 0;
    for (const json* entry : top_.Elements("objects")) {
      JsonObject object(*entry, "object number " + std::to_string(++number), problems_);
      if (const std::string name = object.Text("name"); !name.empty())
        object.SetWhere("object \"" + name + "\"");
      object.CheckKeys({"class", "id", "name", "values", "file"});
      if (auto definition = ClassOf(object, false))
        drafts.push_back({object, definition, GivenId(object, *definition)});
    }
    for (Draft& draft : drafts)
      NameObject(draft);
    for (const Draft& draft : drafts) {
      ModelObject object = NewObject(draft.definition, draft.id, draft.source.Where());
      ReadValues(draft.source, object);
      ReadFile(draft.source, object);
      CheckMandatory(draft.source, object);
      model_.objects.push_back(std::move(object));
    }
  }

  ClassDefinitionPtr ClassOf(const JsonObject& object, bool linkClass) {
    const std::string name = object.RequiredText("class");
    if (name.empty()) return nullptr;
    ClassDefinitionPtr definition = model_.metadata->FindByName(name);
    if (!definition || definition->linkClass != linkClass) {
      object.Report(std::string("unknown ") + (linkClass ? "link " : "") + "class \"" + name + "\"");
      return nullptr;
    }
    return definition;
  }

  // 0 when the model gives none.
  ObjectId GivenId(const JsonObject& object, const ClassDefinition& definition) {
    const auto id = static_cast<ObjectId>(object.Integer("id", 1, kMaxObjectId, 0));
    if (id == 0) return 0;
    highestId_ = std::max<std::int64_t>(highestId_, id);
    if (!ids_.insert({definition.id, id}).second) {
      object.Report("class \"" + definition.name + "\" has an object " + std::to_string(id) + " already");
    }
    return id;
  }

  ObjectId NextId(const JsonObject& object) {
    if (highestId_ >= kMaxObjectId - 1) {
      object.Report("no object id is left above the highest given one");
      return 0;
    }
    return static_cast<ObjectId>(++highestId_);
  }

  void NameObject(Draft& draft) {
    if (draft.id == 0) draft.id = NextId(draft.source);
    const std::string name = draft.source.Text("name");
    if (name.empty()) return;
    if (!names_.emplace(name, NamedObject{draft.definition.get(), draft.id}).second) {
      draft.source.Report("another object has this name");
    }
  }

  static ModelObject NewObject(const ClassDefinitionPtr& definition, ObjectId id, const std::string& where) {
    ModelObject object;
    object.definition = definition;
    object.where = where;
    for (const auto& attribute : definition->Attributes())
      object.values.push_back(attribute->defaultValue);
    Set(object, attribute::kObjectId, Value(id));
    Set(object, attribute::kClassId, Value(definition->id));
    return object;
  }

  static void Set(ModelObject& object, std::string_view attribute, Value value) {
    const int position = object.definition->Position(attribute);
    if (position >= 0) object.values[static_cast<std::size_t>(position)] = std::move(value);
  }

  static std::string TextOf(const ModelObject& object, std::string_view attribute) {
    const int position = object.definition->Position(attribute);
    return position < 0 ? "" : object.values[static_cast<std::size_t>(position)].AsText();
  }

  void ReadValues(const JsonObject& source, ModelObject& object) {
    const json* values = source.Find("values");
    if (!values) return;
    const JsonObject list(*values, source.Where() + ": \"values\"", problems_);
    for (const std::string& name : list.Keys()) {
      const std::string where = source.Where() + ": attribute \"" + name + "\"";
      const int position = object.definition->Position(name);
      if (position < 0) {
        problems_.Add(where, "class \"" + object.definition->name + "\" has no such attribute");
      } else if (IsSystemAttribute(object, name)) {
        problems_.Add(where, "the host sets this attribute itself");
      } else {
        const auto& attribute = *object.definition->Attributes()[static_cast<std::size_t>(position)];
        object.values[static_cast<std::size_t>(position)] =
            ReadValue(attribute, *list.Find(name.c_str()), where);
      }
    }
  }

  static bool IsSystemAttribute(const ModelObject& object, std::string_view name) {
    return object.definition->Position(name) < (object.definition->linkClass ? 7 : 2);
  }

  Value ReadValue(const AttributeDefinition& attribute, const json& value, const std::string& where) {
    try {
      Value result = ConvertedTo(attribute.type, PlainValue(attribute, value, where));
      const bool tooLong = attribute.length > 0 && result.IsText() &&
                           CharacterCount(result.AsText()) > static_cast<std::size_t>(attribute.length);
      if (tooLong) problems_.Add(where, "longer than " + std::to_string(attribute.length) + " characters");
      return result;
    } catch (const RuntimeError& error) {
      problems_.Add(where, error.what());
      return {};
    }
  }

  Value PlainValue(const AttributeDefinition& attribute, const json& value, const std::string& where) {
    if (value.is_null()) return {};
    if (value.is_boolean()) return Value(value.get<bool>());
    if (value.is_number()) return Value(value.get<double>());
    if (value.is_array()) return Value(JoinedLines(value, where));
    if (!value.is_string()) {
      problems_.Add(where, "neither a text nor a number nor a Boolean nor a list of lines");
      return {};
    }
    const auto text = value.get<std::string>();
    if (attribute.type == AttributeType::kReference) return ReferenceValue(attribute, text, where);
    if (attribute.type == AttributeType::kLookup) return LookupId(attribute, text, where);
    return Value(Expanded(text));
  }

  std::string JoinedLines(const json& lines, const std::string& where) {
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
      if (i > 0) text += "\r\n";
      if (lines[i].is_string()) {
        text += Expanded(lines[i].get<std::string>());
      } else {
        problems_.Add(where, "line " + std::to_string(i + 1) + " is not a text");
      }
    }
    return text;
  }

  Value ReferenceValue(const AttributeDefinition& attribute, const std::string& name,
                       const std::string& where) {
    const auto found = names_.find(name);
    if (found == names_.end()) {
      problems_.Add(where, "no object has the name \"" + name + "\"");
      return {};
    }
    if (found->second.definition->id != attribute.target) {
      problems_.Add(where, "object \"" + name + "\" is of class \"" + found->second.definition->name + "\"");
    }
    return Value(found->second.id);
  }

  Value LookupId(const AttributeDefinition& attribute, const std::string& text, const std::string& where) {
    const ClassDefinitionPtr target = model_.metadata->Find(attribute.target);
    for (const LookupValue& value : target->lookupValues) {
      if (value.description == text) return Value(value.id);
    }
    problems_.Add(where, "class \"" + target->name + "\" has no value \"" + text + "\"");
    return {};
  }

  [[nodiscard]] std::string Expanded(std::string text) const {
    for (std::size_t at = text.find(kDirectoryMark); at != std::string::npos;
         at = text.find(kDirectoryMark, at + source_.directory.size())) {
      text.replace(at, kDirectoryMark.size(), source_.directory);
    }
    return text;
  }

  void ReadFile(const JsonObject& source, ModelObject& object) {
    const std::string file = source.Text("file");
    if (!file.empty()) {
      if (!object.definition->Has(attribute::kFileName))
        source.Report("\"file\": the class has no attribute FILE_NAME");
      const std::string name = file.substr(file.find_last_of("/\\") + 1);
      for (const char* attribute : {attribute::kFileName, attribute::kCadFileName}) {
        if (TextOf(object, attribute).empty()) Set(object, attribute, Value(name));
      }
      object.file = file.front() == '/' ? file : paths::Join(source_.directory, file);
    }
    for (const char* attribute : {attribute::kFileName, attribute::kCadFileName}) {
      const std::string name = TextOf(object, attribute);
      if (name.empty() || paths::IsPlainFileName(name)) continue;
      problems_.Add(source.Where() + ": attribute \"" + attribute + "\"",
                    "\"" + name + "\" is no plain file name");
    }
    object.vaultName = TextOf(object, attribute::kFileName);
    if (!object.file.empty() && !vaultNames_.insert(object.vaultName).second) {
      source.Report("another object brings a vault file \"" + object.vaultName + "\"; give a FILE_NAME");
    }
  }

  void CheckVault() {
    for (const ModelObject& object : model_.objects) {
      if (object.vaultName.empty() || vaultNames_.contains(object.vaultName)) continue;
      problems_.Add(object.where + ": attribute \"FILE_NAME\"",
                    "no object brings a vault file \"" + object.vaultName + "\"");
    }
  }

  static void CheckMandatory(const JsonObject& source, const ModelObject& object) {
    for (const auto& attribute : object.definition->Attributes()) {
      if (attribute->mandatory && TextOf(object, attribute->name).empty()) {
        source.Report("attribute \"" + attribute->name + "\": a value is mandatory");
      }
    }
  }

  void ReadLinks() {
    int number = 0;
    for (const json* entry : top_.Elements("links")) {
      JsonObject link(*entry, "link number " + std::to_string(++number), problems_);
      link.SetWhere(link.Where() + " (" + link.Text("from", "?") + " to " + link.Text("to", "?") + ")");
      link.CheckKeys({"class", "from", "to", "direction", "values"});
      const ClassDefinitionPtr definition = ClassOf(link, true);
      const NamedObject* first = Named(link, "from");
      const NamedObject* second = Named(link, "to");
      if (!definition || !first || !second) continue;
      if (!definition->MayTie(first->definition->id, second->definition->id)) {
        link.Report("link class \"" + definition->name + "\" does not tie class \"" +
                    first->definition->name + "\" to class \"" + second->definition->name + "\"");
      }
      ModelObject object = NewObject(definition, NextId(link), link.Where());
      Set(object, attribute::kObjectId1, Value(first->id));
      Set(object, attribute::kClassId1, Value(first->definition->id));
      Set(object, attribute::kObjectId2, Value(second->id));
      Set(object, attribute::kClassId2, Value(second->definition->id));
      Set(object, attribute::kDirection,
          Value(static_cast<std::int16_t>(link.Integer("direction", -32768, 32767, 1))));
      ReadValues(link, object);
      model_.objects.push_back(std::move(object));
    }
    model_.nextObjectId = static_cast<ObjectId>(highestId_ + 1);
  }

  const NamedObject* Named(const JsonObject& source, const char* key) {
    const std::string name = source.RequiredText(key);
    if (name.empty()) return nullptr;
    const auto found = names_.find(name);
    if (found != names_.end()) return &found->second;
    source.Report("\"" + std::string(key) + "\": no object has the name \"" + name + "\"");
    return nullptr;
  }

  void ReadUsers() {
    std::unordered_set<std::string> logins;
    for (const json* entry : top_.Elements("users")) {
      JsonObject source(*entry, "user ?", problems_);
      source.SetWhere("user \"" + source.Text("login", "?") + "\"");
      source.CheckKeys({"login", "password", "roles", "administrator", "language", "object", "settings"});
      ModelUser user;
      user.login = source.RequiredText("login");
      user.password = source.Text("password");
      user.language = source.Text("language");
      user.administrator = source.Flag("administrator");
      user.roles = source.Texts("roles");
      user.settings = ReadSettings(source, "settings");
      if (const NamedObject* object = Named(source, "object"))
        user.object = {object->definition->id, object->id};
      if (!logins.insert(user.login).second) source.Report("another user has this login name");
      model_.users.push_back(std::move(user));
    }
  }

  std::map<std::string, std::string> ReadSettings(const JsonObject& source, const char* key) {
    std::map<std::string, std::string> settings;
    const json* value = source.Find(key);
    if (!value) return settings;
    const JsonObject list(*value, source.Where() + (source.Where().empty() ? "" : ": ") + "\"" + key + "\"",
                          problems_);
    for (const std::string& name : list.Keys())
      settings[name] = Expanded(list.Text(name.c_str()));
    return settings;
  }

  const ModelSource& source_;
  ModelProblems& problems_;
  JsonObject top_;
  Model model_;
  std::map<std::string, NamedObject> names_;
  std::unordered_set<ObjectKey> ids_;
  std::unordered_set<std::string> vaultNames_;
  std::int64_t highestId_ = 0;
};

json ParsedDocument(const ModelSource& source) {
  if (NestsDeeperThan(source.text, kDeepestNesting)) {
    throw HostError(source.name + ": values are nested too deeply");
  }
  try {
    return json::parse(source.text, nullptr, true, true);
  } catch (const json::exception& error) {
    const std::string text = error.what();
    const std::size_t prefix = text.find("] ");
    throw HostError(source.name + ": " + (prefix == std::string::npos ? text : text.substr(prefix + 2)));
  }
}

}  // namespace

Model ReadModel(const ModelSource& source, bool hasVault) {
  const json document = ParsedDocument(source);
  ModelProblems problems(source.name);
  Model model = ModelReader(source, document, problems).Read(hasVault);
  problems.ThrowIfFound();
  return model;
}

}  // namespace tessel::embedded
