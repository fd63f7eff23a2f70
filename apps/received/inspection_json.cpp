#include <nlohmann/json.hpp>
#include <ostream>

#include "received/inspection.h"

namespace tessel::received {
namespace {

using Json = nlohmann::ordered_json;

Json Texts(const NamedTexts& texts) {
  Json json = Json::object();
  for (const auto& [name, text] : texts)
    json[name] = text;
  return json;
}

Json End(const Object& object) {
  return {{"identifier", object.identifier}, {"value", object.value}};
}

Json Objects(const std::vector<Object>& objects, const FileSource* files) {
  Json list = Json::array();
  for (const Object& object : objects) {
    Json json = End(object);
    if (files != nullptr) {
      json["copied"] = object.Copied();
      if (object.Copied()) json["file"] = object.FileName();
      if (object.Copied()) json["present"] = files->Has(object.FileName());
      json["attributes"] = Texts(object.attributes);
    }
    json["below"] = Objects(object.below, files);
    list.push_back(std::move(json));
  }
  return list;
}

}  // namespace

void WriteJson(const FileSource& source, const Exchange& exchange, const std::vector<Problem>& problems,
               std::ostream& out) {
  Json json;
  json["name"] = source.Name();
  json["created"] = exchange.created;
  json["createdBy"] = exchange.createdBy;
  json["structureFile"] = exchange.structureFile;
  json["dataFile"] = exchange.dataFile;
  json["data"] = Texts(exchange.data);
  if (exchange.neutralFormats) json["neutralFormats"] = Texts(exchange.formats);
  json["contents"] = Objects(exchange.selected, &source);
  json["hierarchy"] = Objects(exchange.hierarchy, nullptr);
  json["dependencies"] = Json::array();
  for (const Dependency& dependency : exchange.dependencies) {
    json["dependencies"].push_back({{"first", End(dependency.first)},
                                    {"second", End(dependency.second)},
                                    {"link", dependency.linkName},
                                    {"direction", dependency.direction}});
  }
  json["files"] = Json::array();
  for (const Entry& entry : source.Entries())
    json["files"].push_back({{"name", entry.name}, {"size", entry.size}});
  json["problems"] = Json::array();
  for (const Problem& problem : problems)
    json["problems"].push_back({{"file", problem.file}, {"text", problem.text}});
  // File names may hold bytes that are no text.
  out << json.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
}

}  // namespace tessel::received
