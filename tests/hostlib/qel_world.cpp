#include "hostlib/qel_world.h"

namespace tessel::test {
namespace {

constexpr const char* kModel = R"json({
  "alias": "QEL",
  "sequences": [{ "name": "Number", "pattern": "N-%03d", "start": 5 },
                { "name": "Revision", "pattern": "%d" }],
  "attributeSets": { "document": [
    { "name": "VRK_ID", "type": "text", "identifying": true, "mandatory": true, "sequence": "Number" },
    { "name": "REVISION", "type": "text", "default": "A", "sequence": "Revision" },
    { "name": "STATE", "type": "integer", "default": 1 },
    { "name": "VRK_STATE", "type": "reference", "target": "State" },
    { "name": "MATERIAL", "type": "lookup", "target": "Material", "mandatory": true },
    { "name": "OWNER", "type": "reference", "target": "USERS" },
    { "name": "DRAWING", "type": "reference", "target": "Drawing" },
    { "name": "DUE", "type": "dateTime", "mandatory": true },
    { "name": "FILE_TYPE", "type": "text", "mandatory": true },
    { "name": "FILE_NAME", "type": "text" },
    { "name": "VRK_COMMENT", "type": "text" } ] },
  "classes": [
    { "id": 10, "name": "USERS", "table": "USERS",
      "attributes": [{ "name": "LOGIN", "type": "text", "identifying": true }] },
    { "id": 11, "name": "State", "table": "VRK_STATE", "lookup": ["Checked In", "Checked Out", "Released"] },
    { "id": 12, "name": "Material", "table": "MATERIAL",
      "lookup": [{ "id": 9, "description": "Steel" }, { "id": 4, "description": "Brass" },
                 { "id": 6, "description": "Steel" }] },
    { "id": 900, "name": "Exchange", "table": "EXCHANGE",
      "attributes": [{ "name": "VRK_ID", "type": "text", "identifying": true }] },
    { "id": 1201, "name": "Assembly", "table": "ASSEMBLY", "desktop": true, "attributeSets": ["document"],
      "hierarchicalLink": "Structure" },
    { "id": 1202, "name": "Part", "table": "PART", "attributeSets": ["document"] },
    { "id": 1203, "name": "Drawing", "table": "DRAWING",
      "attributes": [{ "name": "VRK_ID", "type": "text", "identifying": true },
                     { "name": "AUTHOR", "type": "reference", "target": "USERS" }] }
  ],
  "linkClasses": [
    { "id": 2000, "name": "General Link", "table": "GENERAL_LINK" },
    { "id": 2001, "name": "Structure", "table": "STRUCTURE", "first": ["Assembly"],
      "second": ["Assembly", "Part"], "attributes": [{ "name": "QUANTITY", "type": "double", "default": 1 }] }
  ],
  "users": [{ "login": "anna", "password": "a", "object": "anna" },
            { "login": "bert", "password": "b", "object": "bert" }],
  "objects": [
    { "class": "USERS", "id": 31, "name": "anna", "values": { "LOGIN": "anna" } },
    { "class": "USERS", "id": 32, "name": "bert", "values": { "LOGIN": "bert" } },
    { "class": "Drawing", "id": 5, "name": "drawing", "values": { "VRK_ID": "D-5", "AUTHOR": "bert" } },
    { "class": "Assembly", "id": 1, "name": "gearbox",
      "values": { "VRK_ID": "A-1", "MATERIAL": "Steel", "DUE": "00:00:00", "FILE_TYPE": "STEP" } },
    { "class": "Assembly", "id": 2, "name": "group",
      "values": { "VRK_ID": "A-2", "MATERIAL": "Steel", "DUE": "00:00:00", "FILE_TYPE": "STEP" } },
    { "class": "Part", "id": 3, "name": "cover",
      "values": { "VRK_ID": "P-3", "MATERIAL": "Brass", "DUE": "00:00:00", "FILE_TYPE": "STEP" } },
    { "class": "Part", "id": 4, "name": "shaft",
      "values": { "VRK_ID": "P-4", "MATERIAL": 4, "VRK_STATE": 3, "OWNER": "anna",
                  "DRAWING": "drawing", "DUE": "31.01.2024 14:25:01", "FILE_TYPE": "STEP",
                  "FILE_NAME": "p4.stp" }, "file": "p4.stp" },
    { "class": "Exchange", "id": 6, "name": "first", "values": { "VRK_ID": "DX-6" } },
    { "class": "Exchange", "id": 7, "name": "second", "values": { "VRK_ID": "DX-7" } }
  ],
  "links": [
    { "class": "Structure", "from": "gearbox", "to": "group" },
    { "class": "Structure", "from": "gearbox", "to": "cover", "values": { "QUANTITY": 2 } },
    { "class": "Structure", "from": "group", "to": "shaft", "values": { "QUANTITY": 3 } },
    { "class": "Structure", "from": "group", "to": "shaft", "values": { "QUANTITY": 4 } },
    { "class": "General Link", "from": "shaft", "to": "drawing" },
    { "class": "General Link", "from": "gearbox", "to": "first" },
    { "class": "General Link", "from": "second", "to": "gearbox" }
  ]
})json";

std::string Model(const TemporaryFolder& folder) {
  folder.Write("model/p4.stp", "shaft");
  return kModel;
}

}  // namespace

QelWorld::QelWorld() : HostedMachine(driver, Model, "a", false) {}

}  // namespace tessel::test
