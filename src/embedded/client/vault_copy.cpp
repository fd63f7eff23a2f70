#include "embedded/client/vault_copy.h"

#include <algorithm>
#include <chrono>

#include "embedded/client/keyed_rows.h"
#include "host/error.h"
#include "host/names.h"
#include "platform/paths.h"

namespace tessel::embedded {
namespace {

constexpr std::int16_t kFileCopied = 6;
constexpr std::int16_t kNoFile = 0;

std::string Name(const ObjectKey& key) {
  return "object " + ObjectKeyText(key, '_');
}

std::size_t FileCount(const std::vector<StructureObject>& objects) {
  return static_cast<std::size_t>(
      std::count_if(objects.begin(), objects.end(),
                    [](const StructureObject& object) { return !object.vaultName.empty(); }));
}

// Asks the host's watch after every piece of a large file, and now and then after small ones, since it lets
// window events run, which costs more than a small file.
class Watch {
 public:
  Watch(const CopyWatch& watch, std::size_t files) : watch_(watch) { step_.files = files; }

  [[nodiscard]] bool Begin() { return Ask(); }
  [[nodiscard]] FileSystem::CopyProgress OfFile(const std::string& name) {
    if (!watch_) return nullptr;
    return [this, &name](std::uint64_t done, std::uint64_t all) {
      const bool fileDone = done == all;
      if (fileDone) ++step_.filesDone;
      step_.bytesCopied = ofFilesBefore_ + done;
      if (fileDone) ofFilesBefore_ += all;
      const bool last = fileDone && step_.filesDone == step_.files;
      if (fileDone && !last && Clock::now() - asked_ < kPause) return true;
      step_.fileName = name;
      step_.bytesDone = done;
      step_.bytes = all;
      return Ask();
    };
  }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::chrono::milliseconds kPause{40};

  bool Ask() {
    const bool goesOn = !watch_ || watch_(step_);
    asked_ = Clock::now();
    return goesOn;
  }

  const CopyWatch& watch_;
  CopyStep step_;
  std::uint64_t ofFilesBefore_ = 0;
  Clock::time_point asked_;
};

}  // namespace

VaultCopy::VaultCopy(EmbeddedSession& session, const std::vector<ObjectKey>& roots)
    : session_(session), objects_(ReadStructure(session, roots)) {}

std::string VaultCopy::VaultFile(const StructureObject& object) const {
  return paths::Join(session_.Core().vaultPath, object.vaultName);
}

void VaultCopy::CheckName(const StructureObject& object) const {
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

void VaultCopy::Check(const std::string& directory, bool overwrite) const {
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

void VaultCopy::CheckTarget(const StructureObject& object, const std::string& directory,
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

bool VaultCopy::CopyOne(const StructureObject& object, const std::string& directory, bool overwrite,
                        const FileSystem::CopyProgress& progress) const {
  try {
    return session_.Core().Files().CopyFile(VaultFile(object), paths::Join(directory, object.fileName),
                                            overwrite, progress);
  } catch (const RuntimeError& error) {
    throw HostError("Copying the file of " + Name(object.key) + ": " + error.what(), error.Number());
  }
}

bool VaultCopy::Run(const std::string& directory, bool overwrite) {
  if (directory.empty()) throw HostError("The copy has no directory");
  Check(directory, overwrite);
  Watch watch(session_.Core().options.copyWatch, FileCount(objects_));
  if (!watch.Begin()) return false;
  for (const StructureObject& object : objects_) {
    if (object.vaultName.empty()) continue;
    if (!CopyOne(object, directory, overwrite, watch.OfFile(object.fileName))) return false;
    session_.Copies().Add(directory, {object.fileName, object.key});
  }
  return true;
}

PcRecordListPtr VaultCopy::CopiedRows() const {
  const auto rows = session_.Core().NewRecordList();
  rows->AddColumn(attribute::kClassId, ColumnType::kInteger);
  rows->AddColumn(attribute::kObjectId, ColumnType::kLong);
  rows->AddColumn(attribute::kOperationId, ColumnType::kInteger);
  rows->AddColumn(attribute::kFileName, ColumnType::kText);
  for (const StructureObject& object : objects_) {
    rows->AppendRow({Value(object.key.classId), Value(object.key.objectId),
                     Value(object.vaultName.empty() ? kNoFile : kFileCopied), Value(object.fileName)});
  }
  return rows;
}

PcRecordListPtr VaultCopy::Links() const {
  const auto rows = session_.Core().NewRecordList();
  rows->AddColumn(attribute::kClassId, ColumnType::kInteger);
  rows->AddColumn(attribute::kObjectId, ColumnType::kLong);
  rows->AddColumn(attribute::kObjectId1, ColumnType::kLong);
  rows->AddColumn(attribute::kClassId1, ColumnType::kInteger);
  rows->AddColumn(attribute::kObjectId2, ColumnType::kLong);
  rows->AddColumn(attribute::kClassId2, ColumnType::kInteger);
  rows->AddColumn(attribute::kDirection, ColumnType::kInteger);
  std::unordered_map<ObjectKey, std::size_t> places;
  for (std::size_t i = 0; i < objects_.size(); ++i)
    places.emplace(objects_[i].key, i);
  constexpr std::size_t kBlock = 1000;  // the links of so many objects are held beside the list
  for (std::size_t begin = 0; begin < objects_.size(); begin += kBlock)
    AppendLinks(*rows, places, begin, std::min(begin + kBlock, objects_.size()));
  return rows;
}

// Those that begin at the objects of a range.
void VaultCopy::AppendLinks(MemoryRecordList& rows, const std::unordered_map<ObjectKey, std::size_t>& places,
                            std::size_t begin, std::size_t end) const {
  std::vector<ObjectId> ids;
  for (std::size_t i = begin; i < end; ++i)
    ids.push_back(objects_[i].key.objectId);
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());  // objects of two classes may share one
  std::vector<std::vector<std::vector<Value>>> found(end - begin);
  for (const auto& link : session_.Core().metadata->Classes()) {
    if (!link->linkClass) continue;
    ReadKeyedRows(
        session_.Sql(),
        "SELECT CLASS_ID, OBJECT_ID, OBJECT_ID1, CLASS_ID1, OBJECT_ID2, CLASS_ID2, VRK_DIRECTION FROM " +
            link->table + " WHERE OBJECT_ID1",
        " ORDER BY OBJECT_ID", ids, [&](std::vector<Value>& row) {
          const auto first = places.find({row[3].AsInt16(), row[2].AsInt32()});
          if (first == places.end() || first->second < begin || first->second >= end) return;
          if (!places.contains({row[5].AsInt16(), row[4].AsInt32()})) return;
          found[first->second - begin].push_back(std::move(row));
        });
  }
  for (const auto& links : found) {
    for (const auto& row : links)
      rows.AppendRow(row);
  }
}

}  // namespace tessel::embedded
