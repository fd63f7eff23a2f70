#include "embedded/store/schema.h"

#include <nlohmann/json.hpp>
#include <optional>

#include "embedded/model/metadata_json.h"
#include "embedded/model/model_problems.h"
#include "embedded/store/commit_marks.h"
#include "embedded/store/exchange_sums.h"
#include "embedded/store/transaction.h"
#include "host/names.h"

namespace tessel::embedded {
namespace {

constexpr const char* kHostTables[] = {
    kExchangeSumsTable,
    "CREATE TABLE TESSEL_METADATA (NAME VARCHAR(40) NOT NULL PRIMARY KEY, CONTENT TEXT NOT NULL)",
    "CREATE TABLE TESSEL_NUMBER (NAME VARCHAR(255) NOT NULL PRIMARY KEY, NEXT_VALUE BIGINT NOT NULL)",
    "CREATE TABLE TESSEL_CONFIGURATION (SETTING_KEY VARCHAR(255) NOT NULL PRIMARY KEY, CONTENT TEXT NOT "
    "NULL)",
    "CREATE TABLE TESSEL_USER (ID INTEGER NOT NULL PRIMARY KEY, LOGIN VARCHAR(255) NOT NULL UNIQUE, "
    "PASSWORD VARCHAR(255) NOT NULL, ADMINISTRATOR SMALLINT NOT NULL, LANGUAGE VARCHAR(40) NOT NULL, "
    "CLASS_ID INTEGER NOT NULL, OBJECT_ID BIGINT NOT NULL)",
    "CREATE TABLE TESSEL_ROLE (USER_ID INTEGER NOT NULL REFERENCES TESSEL_USER (ID), POSITION INTEGER NOT "
    "NULL, "
    "NAME VARCHAR(255) NOT NULL, PRIMARY KEY (USER_ID, POSITION))",
    "CREATE TABLE TESSEL_SETTING (USER_ID INTEGER NOT NULL REFERENCES TESSEL_USER (ID), "
    "SETTING_KEY VARCHAR(255) NOT NULL, CONTENT TEXT NOT NULL, PRIMARY KEY (USER_ID, SETTING_KEY))",
    kMarkTable,
    "CREATE TABLE MESSAGE_STORE (ID BIGINT NOT NULL PRIMARY KEY, RECIPIENT TEXT, SENDER TEXT, SUBJECT TEXT, "
    "BODY TEXT, SEND_OPTION INTEGER, SUBMITTED_BY VARCHAR(255), SUBMITTED_AT VARCHAR(40))"};

std::string ColumnType(const AttributeDefinition& attribute, const std::string& text) {
  switch (attribute.type) {
    case AttributeType::kInteger:
      return "INTEGER";
    case AttributeType::kLong:
    case AttributeType::kReference:
    case AttributeType::kLookup:
      return "BIGINT";
    case AttributeType::kDouble:
      return "DOUBLE PRECISION";
    case AttributeType::kBoolean:
      return "SMALLINT";
    default:
      break;
  }
  if (attribute.length == 0) return text;
  const std::string length = std::to_string(attribute.length);
  return text + " CHECK (LENGTH(" + attribute.name + ") <= " + length + ")";
}

bool IsKeyColumn(const std::string& name) {
  return name == attribute::kObjectId || name == attribute::kClassId || name == attribute::kObjectId1 ||
         name == attribute::kClassId1 || name == attribute::kObjectId2 || name == attribute::kClassId2;
}

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names)
    text += (text.empty() ? "" : ", ") + name;
  return text;
}

std::string TableStatement(const ClassDefinition& definition, const std::string& text) {
  std::string columns;
  for (const auto& attribute : definition.Attributes()) {
    columns += (columns.empty() ? "" : ", ") + attribute->name + " " + ColumnType(*attribute, text);
    if (IsKeyColumn(attribute->name)) columns += " NOT NULL";
    if (attribute->name == attribute::kObjectId) columns += " PRIMARY KEY";
  }
  for (const auto& names : definition.uniqueSets)
    columns += ", UNIQUE (" + Joined(names) + ")";
  return "CREATE TABLE " + definition.table + " (" + columns + ")";
}

void CreateClassTable(Database& database, const ClassDefinition& definition) {
  database.ExecuteOnce(TableStatement(definition, database.Dialect().text));
  if (!definition.linkClass) return;
  for (const char* end : {"1", "2"}) {
    database.ExecuteOnce("CREATE INDEX IX_" + definition.table + "_" + end + " ON " + definition.table +
                         " (OBJECT_ID" + end + ", CLASS_ID" + end + ")");
  }
}

void AddNumber(Database& database, const std::string& name, std::int32_t start) {
  database.Execute("INSERT INTO TESSEL_NUMBER (NAME, NEXT_VALUE) VALUES (:name, :start)",
                   {Value(name), Value(start)});
}

}  // namespace

void CreateSchema(Database& database, const Metadata& metadata, const std::string& metadataText,
                  const std::string& source) {
  for (const char* statement : kHostTables)
    database.ExecuteOnce(statement);
  for (const auto& definition : metadata.Classes()) {
    try {
      CreateClassTable(database, *definition);
    } catch (const DatabaseError& error) {
      throw HostError(source + ": class \"" + definition->name + "\": the database refuses the table " +
                          definition->table + ": " + error.what(),
                      error.Number());
    }
  }
  database.Execute("INSERT INTO TESSEL_METADATA (NAME, CONTENT) VALUES (:name, :content)",
                   {Value("model"), Value(metadataText)});
  for (const char* name : {kObjectNumber, kSessionNumber, kMessageNumber})
    AddNumber(database, name, 1);
  for (const auto& [name, sequence] : metadata.sequences) {
    AddNumber(database, SequenceNumberName(name), sequence.start);
  }
}

void StoreVault(Database& database, const std::string& path) {
  database.Execute("INSERT INTO TESSEL_METADATA (NAME, CONTENT) VALUES (:name, :content)",
                   {Value("vault"), Value(path)});
}

std::string StoredVault(Database& database) {
  const QueryResult stored =
      database.Query("SELECT CONTENT FROM TESSEL_METADATA WHERE NAME = :name", {Value("vault")});
  return stored.rows.empty() ? std::string() : stored.rows[0][0].AsText();
}

MetadataPtr LoadMetadata(Database& database) {
  QueryResult stored;
  try {
    stored = database.Query("SELECT CONTENT FROM TESSEL_METADATA WHERE NAME = :name", {Value("model")});
  } catch (const DatabaseError& error) {
    if (error.Number() != kCodeError) throw;  // else a table is not there
    throw HostError(std::string("This is no database of the embedded host: ") + error.what(), error.Number());
  }
  if (stored.rows.empty()) throw HostError("The database holds no metadata");
  ModelProblems problems("metadata of the database");
  const auto json = nlohmann::json::parse(stored.rows[0][0].AsText(), nullptr, false);
  const JsonObject model(json, "", problems);
  MetadataPtr metadata = ReadMetadata(model);
  problems.ThrowIfFound();
  return metadata;
}

std::string SequenceNumberName(const std::string& sequence) {
  return "SEQUENCE " + sequence;
}

std::int32_t DrawNumber(Database& database, const std::string& name) {
  std::optional<WriteTransaction> alone;
  if (!database.Writing()) alone.emplace(database);
  const std::int32_t number = database.NextNumber(name);
  if (alone) alone->Commit();
  return number;
}

}  // namespace tessel::embedded
