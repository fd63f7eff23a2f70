#include "workshop.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "processes.h"

namespace tessel::bench {
namespace {

constexpr std::size_t kFileSize = 8192;
constexpr int kContacts = 3;
constexpr int kFirstContact = 500001;

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

}  // namespace

Workshop::Workshop(const std::string& place, std::string tessel, int documents, const std::string& server)
    : folder_(place + "/tessel-bench-" + std::to_string(::getpid())),
      tessel_(std::move(tessel)),
      server_(server),
      schema_("bench" + std::to_string(::getpid()) + "_" + std::to_string(documents)),
      database_(server.empty()
                    ? folder_ + "/bench.db"
                    : server + "&options=-csearch_path%3D" + schema_ + "&vault=" + folder_ + "/vault") {
  std::filesystem::remove_all(folder_);
  std::filesystem::create_directories(Files());
  Clear();
  for (int part = 0; part < documents; ++part)
    WriteFile(Files() + "/part" + std::to_string(part) + ".stp",
              std::string(kFileSize, static_cast<char>('a' + part % 26)));
  WriteFile(folder_ + "/model.json", Model(documents));
  ::setenv("TESSEL_DRIVES", (folder_ + "/out/drives").c_str(), 1);
  if (!server_.empty()) (void)Run({"psql", "-q", server_, "-c", "CREATE SCHEMA " + schema_});
  (void)Run({tessel_, "host", "create", database_, folder_ + "/model.json"});
}

Workshop::~Workshop() {
  std::filesystem::remove_all(folder_);
  if (!server_.empty())
    (void)Run({"psql", "-q", server_, "-c",
               "SET client_min_messages = error; DROP SCHEMA " + schema_ + " CASCADE"});
}

void Workshop::Clear() const {
  std::filesystem::remove_all(folder_ + "/out");
  std::filesystem::create_directories(folder_ + "/out/exchange");
}

std::vector<std::string> Workshop::ExportCommand(int recipients) const {
  std::vector<std::string> command{tessel_,  "export", database_,
                                   "--user", "bench",  "--select",
                                   "1202:1", "--mode", recipients == 0 ? "no-send" : "odette"};
  for (int recipient = 0; recipient < recipients; ++recipient) {
    command.insert(command.end(),
                   {"--recipient", "901_500000:902_" + std::to_string(kFirstContact + recipient)});
  }
  return command;
}

// The first document is the assembly.
std::string Workshop::Model(int documents) const {
  std::string text = R"json({ "alias": "BENCH", "databaseMechanisms": ["Supplier Exchange", "Admin"],
  "classMechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC", "VRKX_DX_TRANSMITTAL", "VRKX_DX_SUPPLIER_COMPANY",
                      "VRKX_DX_SUPPLIER_CONT_PERSON"],
  "sequences": [{ "name": "Exchange", "pattern": "DX-%06d" }],
  "classes": [
    { "id": 10, "name": "USERS", "table": "USERS", "attributes": [
      { "name": "LOGIN", "type": "text", "identifying": true }] },
    { "id": 20, "name": "Admin Setting", "table": "ADMIN_SETTING", "attributes": [
      { "name": "VRKX_VALUE_1", "type": "text" }, { "name": "VRKX_VALUE_LONG", "type": "longText" }] },
    { "id": 900, "name": "Data Exchange", "table": "DATA_EXCHANGE", "mechanisms": ["VRKX_DX_TRANSMITTAL"],
      "attributes": [
      { "name": "VRK_ID", "type": "text", "identifying": true, "sequence": "Exchange" },
      { "name": "VRKX_DX_PROCESS_PHASE", "type": "long" }, { "name": "VRKX_DX_STATUS_INFO", "type": "text" },
      { "name": "VRKX_DX_EXCHANGE_TYPE", "type": "integer" },
      { "name": "VRKX_DX_EXCH_PROTOCOL", "type": "longText" },
      { "name": "VRKX_DX_SEND_TO_COMPANY", "type": "text" },
      { "name": "VRKX_DX_SEND_TO_CONT_PERS", "type": "text" }] },
    { "id": 901, "name": "Company", "table": "COMPANY", "mechanisms": ["VRKX_DX_SUPPLIER_COMPANY"],
      "hierarchicalLink": "Company Contact",
      "attributes": [{ "name": "VRK_ID", "type": "text", "identifying": true }] },
    { "id": 902, "name": "Contact Person", "table": "CONTACT_PERSON",
      "mechanisms": ["VRKX_DX_SUPPLIER_CONT_PERSON"], "attributes": [
      { "name": "VRK_ID", "type": "text", "identifying": true }, { "name": "CN_FIRST_NAME", "type": "text" },
      { "name": "VRKX_DX_INACTIVE", "type": "boolean" }] },
    { "id": 1202, "name": "Part", "table": "PART", "fileBased": true, "hierarchicalLink": "Product Structure",
      "mechanisms": ["VRKX_DX_SUPPLIER_EXCH_DOC"], "attributes": [
      { "name": "VRK_ID", "type": "text", "identifying": true }, { "name": "VRK_DESCRIPTION", "type": "text" },
      { "name": "REVISION", "type": "text" }, { "name": "STATE", "type": "integer", "default": 3 },
      { "name": "FILE_NAME", "type": "text" }, { "name": "CAD_REF_FILE_NAME", "type": "text" },
      { "name": "VRKX_DX_FIRST_LOCK_USE", "type": "boolean", "default": false }] } ],
  "linkClasses": [
    { "id": 2000, "name": "General Link", "table": "GENERAL_LINK" },
    { "id": 2001, "name": "Product Structure", "table": "PRODUCT_STRUCTURE" },
    { "id": 2002, "name": "Company Contact", "table": "COMPANY_CONTACT" } ],
  "users": [{ "login": "bench", "object": "bench" }],
  "objects": [
    { "class": "USERS", "name": "bench", "values": { "LOGIN": "bench" } },
    { "class": "Admin Setting", "name": "settings", "values": { "VRKX_VALUE_1": "Initialization",
      "VRKX_VALUE_LONG": ["[Path]", "ExchangePath=${MODEL_DIR}/out/exchange", ""] } },
    { "class": "Company", "id": 500000, "name": "company", "values": { "VRK_ID": "Company" } })json";
  std::string links = R"json({ "class": "General Link", "from": "bench", "to": "settings" })json";
  for (int contact = 0; contact < kContacts; ++contact) {
    const std::string name = "contact" + std::to_string(contact);
    text += ",\n{ \"class\": \"Contact Person\", \"id\": " + std::to_string(kFirstContact + contact) +
            ", \"name\": \"" + name + "\", \"values\": { \"VRK_ID\": \"" + name + "\" } }";
    links += ",\n{ \"class\": \"Company Contact\", \"from\": \"company\", \"to\": \"" + name + "\" }";
  }
  for (int part = 0; part < documents; ++part) {
    const std::string number = std::to_string(part);
    const std::string name = "part" + number;
    text += ",\n{ \"class\": \"Part\", \"id\": " + std::to_string(part + 1) + ", \"name\": \"" + name +
            "\", \"file\": \"files/" + name + ".stp\", \"values\": { \"VRK_ID\": \"P-" + number +
            "\", \"VRK_DESCRIPTION\": \"Part " + number + "\", \"REVISION\": \"A\" } }";
    if (part > 0) {
      links += ",\n{ \"class\": \"Product Structure\", \"from\": \"part0\", \"to\": \"" + name + "\" }";
    }
  }
  return text + "],\n\"links\": [" + links + "] }\n";
}

}  // namespace tessel::bench
