#include "embedded/store/describe.h"

#include <ostream>

#include "embedded/store/database_place.h"
#include "embedded/store/schema.h"
#include "host/error.h"
#include "host/names.h"

namespace tessel::embedded {
namespace {

// What identifies and describes an object, and its file.
std::vector<std::string> ObjectColumns(const ClassDefinition& definition) {
  std::vector<std::string> columns;
  for (const auto& attribute : definition.Attributes()) {
    if (attribute->identifying) columns.push_back(attribute->name);
  }
  for (const std::string& name : {definition.DescriptionAttribute(), std::string(attribute::kFileName)}) {
    if (definition.Has(name) && !definition.FindAttribute(name)->IsIdentifying(name)) columns.push_back(name);
  }
  return columns;
}

const std::vector<std::string> kLinkColumns{attribute::kClassId1, attribute::kObjectId1, attribute::kClassId2,
                                            attribute::kObjectId2};

DescribedClass Describe(Database& database, const ClassDefinition& definition) {
  DescribedClass described{definition.id, definition.name, definition.table, definition.linkClass, {}};
  const std::vector<std::string> columns = definition.linkClass ? kLinkColumns : ObjectColumns(definition);
  std::string select = attribute::kObjectId;
  for (const std::string& column : columns)
    select += ", " + column;
  const QueryResult objects =
      database.Query("SELECT " + select + " FROM " + definition.table + " ORDER BY OBJECT_ID");
  for (const auto& row : objects.rows) {
    DescribedObject object{{definition.id, row[0].AsInt32()}, {}};
    for (std::size_t i = 1; i < row.size(); ++i) {
      if (!row[i].IsNull()) object.texts.emplace_back(columns[i - 1], row[i].AsText());
    }
    described.objects.push_back(std::move(object));
  }
  return described;
}

void PrintUsers(const std::vector<Account>& users, std::ostream& out) {
  out << "Users\n";
  for (const Account& account : users) {
    out << "  " << account.loginName << "  " << ObjectKeyText(account.object, '_');
    if (account.administrator) out << "  administrator";
    for (const std::string& role : account.roles)
      out << "  role " << role;
    out << "\n";
  }
}

void PrintTexts(const DescribedObject& object, bool link, std::ostream& out) {
  if (link && object.texts.size() == kLinkColumns.size()) {
    out << "  " << object.texts[0].second << "_" << object.texts[1].second << " to " << object.texts[2].second
        << "_" << object.texts[3].second;
    return;
  }
  for (const auto& [column, text] : object.texts)
    out << "  " << text;
}

}  // namespace

DatabaseDescription DescribeDatabase(FileSystem& files, const std::string& place) {
  const auto opened = OpenDatabase(files, place);
  Database& database = *opened;
  const MetadataPtr metadata = LoadMetadata(database);
  const std::string vault = VaultPath(database, place);
  DatabaseDescription description{metadata->alias,
                                  metadata->language,
                                  vault,
                                  files.FolderExists(vault) ? files.ListFiles(vault).size() : 0,
                                  ReadAccounts(database),
                                  {}};
  for (const auto& definition : metadata->Classes())
    description.classes.push_back(Describe(database, *definition));
  return description;
}

void PrintDescription(const DatabaseDescription& description, std::ostream& out) {
  out << "Database " << description.alias << ", language " << description.language << "\n";
  out << "Vault " << description.vault << ": " << description.vaultFiles << " files\n";
  PrintUsers(description.users, out);
  for (const DescribedClass& one : description.classes) {
    out << (one.linkClass ? "Link class " : "Class ") << one.id << " " << one.name << " (" << one.table
        << "): " << one.objects.size() << "\n";
    for (const DescribedObject& object : one.objects) {
      out << "  " << ObjectKeyText(object.key, '_');
      PrintTexts(object, one.linkClass, out);
      out << "\n";
    }
  }
}

}  // namespace tessel::embedded
