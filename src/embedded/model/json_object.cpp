#include "embedded/model/json_object.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace tessel::embedded {
namespace {

const nlohmann::json& EmptyObject() {
  static const nlohmann::json kEmpty = nlohmann::json::object();
  return kEmpty;
}

std::string Quoted(const char* key) {
  return "\"" + std::string(key) + "\"";
}

}  // namespace

JsonObject::JsonObject(const nlohmann::json& json, std::string where, ModelProblems& problems)
    : json_(json.is_object() ? json : EmptyObject()), where_(std::move(where)), problems_(problems) {
  if (!json.is_object()) Report("an object in braces is expected");
}

void JsonObject::CheckKeys(std::initializer_list<std::string_view> known) const {
  for (const auto& [key, value] : json_.items()) {
    if (std::find(known.begin(), known.end(), key) == known.end()) Report("unknown key \"" + key + "\"");
  }
}

const nlohmann::json* JsonObject::Find(const char* key) const {
  const auto found = json_.find(key);
  return found == json_.end() ? nullptr : &*found;
}

std::string JsonObject::Text(const char* key, const std::string& otherwise) const {
  const nlohmann::json* value = Find(key);
  if (!value) return otherwise;
  if (value->is_string()) return value->get<std::string>();
  Report(Quoted(key) + " is not a text");
  return otherwise;
}

std::string JsonObject::RequiredText(const char* key) const {
  std::string text = Text(key);
  const nlohmann::json* value = Find(key);
  if (text.empty() && (!value || value->is_string())) Report(Quoted(key) + " is missing");
  return text;
}

std::int64_t JsonObject::Integer(const char* key, std::int64_t least, std::int64_t greatest,
                                 std::int64_t otherwise) const {
  const nlohmann::json* value = Find(key);
  if (!value) return otherwise;
  if (value->is_number_integer()) {
    const auto number = value->get<std::int64_t>();
    const bool wrapped = value->is_number_unsigned() && number < 0;
    if (!wrapped && number >= least && number <= greatest) return number;
  }
  Report(Quoted(key) + " is not a whole number from " + std::to_string(least) + " to " +
         std::to_string(greatest));
  return otherwise;
}

bool JsonObject::Flag(const char* key) const {
  const nlohmann::json* value = Find(key);
  if (!value) return false;
  if (value->is_boolean()) return value->get<bool>();
  Report(Quoted(key) + " is neither true nor false");
  return false;
}

std::vector<std::string> JsonObject::Texts(const char* key) const {
  std::vector<std::string> texts;
  for (const nlohmann::json* element : Elements(key)) {
    if (element->is_string()) {
      texts.push_back(element->get<std::string>());
    } else {
      Report(Quoted(key) + " holds something that is not a text");
    }
  }
  return texts;
}

std::vector<const nlohmann::json*> JsonObject::Elements(const char* key) const {
  std::vector<const nlohmann::json*> elements;
  const nlohmann::json* list = Find(key);
  if (!list) return elements;
  if (!list->is_array()) {
    Report(Quoted(key) + " is not a list");
    return elements;
  }
  elements.reserve(list->size());
  for (const nlohmann::json& element : *list)
    elements.push_back(&element);
  return elements;
}

std::vector<std::string> JsonObject::Keys() const {
  std::vector<std::string> keys;
  for (const auto& [key, value] : json_.items())
    keys.push_back(key);
  return keys;
}

}  // namespace tessel::embedded
