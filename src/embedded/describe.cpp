// What a database holds, as text for people.
#include <ostream>

#include "embedded/accounts.h"
#include "embedded/embedded_host.h"
#include "embedded/model_file.h"
#include "embedded/schema.h"
#include "host/error.h"

namespace tessel::embedded {
namespace {

void PrintUsers(Database& database, std::ostream& out) {
  out << "Users\n";
  for (const Account& account : ReadAccounts(database)) {
    out << "  " << account.loginName << "  " << ObjectKeyText(account.object, '_');
    if (account.administrator) out << "  administrator";
    for (const std::string& role : account.roles)
      out << "  role " << role;
    out << "\n";
  }
}

// Ids, then what identifies and describes the object, and its file.
void PrintObjects(Database& database, const ClassDefinition& definition, std::ostream& out) {
  std::string columns = "OBJECT_ID";
  for (const auto& attribute : definition.Attributes()) {
    if (attribute->identifying) columns += ", " + attribute->name;
  }
  const std::string description = definition.DescriptionAttribute();
  for (const std::string& name : {description, std::string("FILE_NAME")}) {
    if (definition.Has(name) && !definition.FindAttribute(name)->IsIdentifying(name)) columns += ", " + name;
  }
  const QueryResult objects =
      database.Query("SELECT " + columns + " FROM " + definition.table + " ORDER BY OBJECT_ID");
  out << "Class " << definition.id << " " << definition.name << " (" << definition.table
      << "): " << objects.rows.size() << "\n";
  for (const auto& row : objects.rows) {
    out << "  " << definition.id << "_" << row[0].AsText();
    for (std::size_t i = 1; i < row.size(); ++i) {
      if (!row[i].IsNull()) out << "  " << row[i].AsText();
    }
    out << "\n";
  }
}

void PrintLinks(Database& database, const ClassDefinition& definition, std::ostream& out) {
  const QueryResult links =
      database.Query("SELECT OBJECT_ID, CLASS_ID1, OBJECT_ID1, CLASS_ID2, OBJECT_ID2 FROM " +
                     definition.table + " ORDER BY OBJECT_ID");
  out << "Link class " << definition.id << " " << definition.name << " (" << definition.table
      << "): " << links.rows.size() << "\n";
  for (const auto& row : links.rows) {
    out << "  " << definition.id << "_" << row[0].AsText() << "  " << row[1].AsText() << "_"
        << row[2].AsText() << " to " << row[3].AsText() << "_" << row[4].AsText() << "\n";
  }
}

}  // namespace

void DescribeDatabase(FileSystem& files, const std::string& databasePath, std::ostream& out) {
  if (!files.FileExists(databasePath)) {
    throw HostError("There is no database " + databasePath, error_number::kFileNotFound);
  }
  Database database(files.NativePath(databasePath));
  const CatalogPtr catalog = LoadCatalog(database);
  const std::string vault = VaultPath(databasePath);
  out << "Database " << catalog->alias << ", language " << catalog->language << "\n";
  out << "Vault " << vault << ": " << (files.FolderExists(vault) ? files.ListFiles(vault).size() : 0)
      << " files\n";
  PrintUsers(database, out);
  for (const auto& definition : catalog->Classes()) {
    if (definition->linkClass) {
      PrintLinks(database, *definition, out);
    } else {
      PrintObjects(database, *definition, out);
    }
  }
}

}  // namespace tessel::embedded
