#include "embedded/file_copy.h"

#include <unordered_set>

#include "host/error.h"
#include "platform/paths.h"

namespace tessel::embedded {
namespace {

constexpr std::int16_t kFileCopied = 6;
constexpr std::int16_t kNoFile = 0;

std::string Name(const ObjectKey& key) {
  return "object " + ObjectKeyText(key, '_');
}

}  // namespace

FileCopy::FileCopy(EmbeddedSession& session, const std::vector<ObjectKey>& roots)
    : session_(session), objects_(ReadStructure(session, roots)) {}

std::string FileCopy::VaultFile(const StructureObject& object) const {
  return paths::Join(session_.Core().vaultPath, object.vaultName);
}

void FileCopy::CheckName(const StructureObject& object) const {
  for (const std::string& name : {object.vaultName, object.fileName}) {
    if (!paths::IsPlainFileName(name)) {
      throw HostError("The file name \"" + name + "\" of " + Name(object.key) + " is no plain file name");
    }
  }
  if (session_.Core().vaultPath.empty() || !session_.Core().Files().FileExists(VaultFile(object))) {
    throw HostError("The vault has no file \"" + object.vaultName + "\" of " + Name(object.key),
                    error_number::kFileNotFound);
  }
}

void FileCopy::Check(const std::string& directory, bool overwrite) const {
  CopyLedger planned;
  for (const StructureObject& object : objects_) {
    if (object.vaultName.empty()) continue;
    CheckName(object);
    if (const CopiedFile* other = planned.Find(directory, object.fileName)) {
      throw HostError("The file name \"" + object.fileName + "\" belongs to " + Name(other->owner) +
                          " and to " + Name(object.key),
                      error_number::kFileAlreadyExists);
    }
    planned.Add(directory, {object.fileName, object.key});
    CheckTarget(object, directory, overwrite);
  }
}

void FileCopy::CheckTarget(const StructureObject& object, const std::string& directory,
                           bool overwrite) const {
  const FileSystem& files = session_.Core().Files();
  const CopiedFile* earlier = session_.Copies().Find(directory, object.fileName);
  if (earlier && earlier->owner != object.key && files.FileExists(paths::Join(directory, earlier->name))) {
    throw HostError("In " + directory + " the file \"" + earlier->name + "\" is that of " +
                        Name(earlier->owner) + " and cannot be that of " + Name(object.key),
                    error_number::kFileAlreadyExists);
  }
  if (!overwrite && files.FileExists(paths::Join(directory, object.fileName))) {
    throw HostError(paths::Join(directory, object.fileName) + " exists already",
                    error_number::kFileAlreadyExists);
  }
}

void FileCopy::Run(const std::string& directory, bool overwrite) {
  if (directory.empty()) throw HostError("The copy has no directory");
  Check(directory, overwrite);
  for (const StructureObject& object : objects_) {
    if (object.vaultName.empty()) continue;
    try {
      session_.Core().Files().CopyFile(VaultFile(object), paths::Join(directory, object.fileName), overwrite);
    } catch (const RuntimeError& error) {
      throw HostError("Copying the file of " + Name(object.key) + ": " + error.what(), error.Number());
    }
    session_.Copies().Add(directory, {object.fileName, object.key});
  }
}

PcRecordListPtr FileCopy::CopiedRows() const {
  const auto rows = session_.Core().NewRecordList();
  rows->AddColumn("CLASS_ID", ColumnType::kInteger);
  rows->AddColumn("OBJECT_ID", ColumnType::kLong);
  rows->AddColumn("OPERATION_ID", ColumnType::kInteger);
  rows->AddColumn("FILE_NAME", ColumnType::kText);
  for (const StructureObject& object : objects_) {
    rows->AppendRow({Value(object.key.classId), Value(object.key.objectId),
                     Value(object.vaultName.empty() ? kNoFile : kFileCopied), Value(object.fileName)});
  }
  return rows;
}

PcRecordListPtr FileCopy::Links() const {
  const auto rows = session_.Core().NewRecordList();
  rows->AddColumn("CLASS_ID", ColumnType::kInteger);
  rows->AddColumn("OBJECT_ID", ColumnType::kLong);
  rows->AddColumn("OBJECT_ID1", ColumnType::kLong);
  rows->AddColumn("CLASS_ID1", ColumnType::kInteger);
  rows->AddColumn("OBJECT_ID2", ColumnType::kLong);
  rows->AddColumn("CLASS_ID2", ColumnType::kInteger);
  rows->AddColumn("VRK_DIRECTION", ColumnType::kInteger);
  std::unordered_set<ObjectKey> copied;
  for (const StructureObject& object : objects_)
    copied.insert(object.key);
  for (const StructureObject& object : objects_) {
    for (const auto& link : session_.Core().catalog->Classes()) {
      if (!link->linkClass) continue;
      const QueryResult found = session_.Sql().Query(
          "SELECT CLASS_ID, OBJECT_ID, OBJECT_ID1, CLASS_ID1, OBJECT_ID2, CLASS_ID2, VRK_DIRECTION FROM " +
              link->table + " WHERE OBJECT_ID1 = :object AND CLASS_ID1 = :class ORDER BY OBJECT_ID",
          {Value(object.key.objectId), Value(object.key.classId)});
      for (const auto& row : found.rows) {
        if (copied.contains(ObjectKey{row[5].AsInt16(), row[4].AsInt32()})) rows->AppendRow(row);
      }
    }
  }
  return rows;
}

}  // namespace tessel::embedded
