#include "embedded/small_world.h"

namespace tessel::test {
namespace {

constexpr const char* kModelHead = R"json({
  "alias": "SMALL", "language": "GER",
  "databaseMechanisms": ["Supplier Exchange"],
  "classMechanisms": ["DOC", "TRANSMITTAL", "EMPTY"],
  "sequences": [ { "name": "Exchange", "pattern": "DX-%04d%%", "start": 7 } ],
  "attributeSets": { "document": [
    { "name": "VRK_ID", "type": "text", "length": 20, "identifying": true },
    { "name": "VRK_DESCRIPTION", "type": "text", "length": 40 },
    { "name": "STATE", "type": "integer", "default": 1 },
    { "name": "VRK_STATE", "type": "lookup", "target": "State", "default": "Checked In" },
    { "name": "VRK_COMMENT", "type": "longText" },
    { "name": "WEIGHT", "type": "double" },
    { "name": "LOCKED", "type": "boolean" },
    { "name": "LOCKED_BY", "type": "reference", "target": "USERS", "default": -2147483647 },
    { "name": "FILE_NAME", "type": "text", "length": 80 },
    { "name": "CAD_REF_FILE_NAME", "type": "text", "length": 80 } ] },
  "classes": [
    { "id": 10, "name": "USERS", "table": "USERS", "attributes": [
      { "name": "LOGIN", "type": "text", "length": 20, "identifying": true } ] },
    { "id": 11, "name": "State", "table": "VRK_STATE", "lookup": ["Checked In", "Checked Out", "Released"] },
    { "id": 30, "name": "Object Locking", "table": "OBJECT_LOCKING",
      "unique": [["OPER_CLASS_ID", "OPER_OBJECT_ID"]], "attributes": [
      { "name": "OPER_CLASS_ID", "type": "integer" }, { "name": "OPER_OBJECT_ID", "type": "long" } ] },
    { "id": 900, "name": "Data Exchange", "table": "DATA_EXCHANGE", "mechanisms": ["TRANSMITTAL"], "attributes": [
      { "name": "VRK_ID", "type": "text", "length": 20, "identifying": true, "sequence": "Exchange" } ] },
    { "id": 1201, "name": "Assembly", "table": "ASSEMBLY", "fileBased": true, "hierarchicalLink": "Structure",
      "mechanisms": ["DOC"], "attributeSets": ["document"] },
    { "id": 1202, "name": "Part", "table": "PART", "fileBased": true, "mechanisms": ["DOC"],
      "hierarchicalLink": "Structure", "attributeSets": ["document"] } ],
  "linkClasses": [
    { "id": 2000, "name": "General Link", "table": "GENERAL_LINK" },
    { "id": 2001, "name": "Structure", "table": "STRUCTURE", "first": ["Assembly", "Part"],
      "second": ["Assembly", "Part"], "attributes": [ { "name": "QUANTITY", "type": "double", "default": 1 } ] } ],
  "users": [
    { "login": "anna", "password": "secret", "roles": ["Designer", "Unlock"], "object": "anna",
      "settings": { "Colour": "blue" } },
    { "login": "ben", "administrator": true, "language": "ENG", "object": "ben" } ],
  "configuration": { "Colour": "grey", "Size": "${MODEL_DIR}/large" },
  "objects": [
    { "class": "USERS", "id": 100, "name": "anna", "values": { "LOGIN": "anna" } },
    { "class": "USERS", "id": 101, "name": "ben", "values": { "LOGIN": "ben" } })json";

}  // namespace

std::string SmallModel(const std::string& objects, const std::string& links) {
  return kModelHead + (objects.empty() ? "" : ",\n" + objects) + "],\n\"links\": [" + links + "]\n}";
}

std::string Document(const std::string& className, int id, const std::string& file,
                     const std::string& moreValues) {
  const std::string number = std::to_string(id);
  return R"({ "class": ")" + className + R"(", "id": )" + number + R"(, "name": ")" + number + R"(", )" +
         (file.empty() ? "" : R"("file": ")" + file + R"(", )") + R"("values": { "VRK_ID": "D-)" + number +
         "\"" + (moreValues.empty() ? "" : ", " + moreValues) + " } }";
}

std::string Link(const std::string& className, int from, int to) {
  return R"({ "class": ")" + className + R"(", "from": ")" + std::to_string(from) + R"(", "to": ")" +
         std::to_string(to) + "\" }";
}

SmallWorld::SmallWorld(const std::string& objects, const std::string& links)
    : HostedMachine(
          user,
          [&](const TemporaryFolder& machineFolder) {
            for (const std::string file : {"a.stp", "b.stp", "c.stp"})
              machineFolder.Write("model/" + file, "content of " + file);
            return SmallModel(objects, links);
          },
          "secret") {}

}  // namespace tessel::test
