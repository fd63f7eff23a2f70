#include "embedded/store/new_database.h"

#include <filesystem>
#include <memory>
#include <string_view>

#include "embedded/store/schema.h"
#include "embedded/store/transaction.h"
#include "host/error.h"
#include "platform/paths.h"

namespace tessel::embedded {
namespace {

void StoreObjects(Database& database, const Model& model, const std::string& source) {
  for (const ModelObject& object : model.objects) {
    try {
      database.Execute(object.definition->insertStatement, object.values);
    } catch (const DatabaseError& error) {
      throw HostError(source + ": " + object.where + ": the database refuses it: " + error.what(),
                      error.Number());
    }
  }
  database.Execute("UPDATE TESSEL_NUMBER SET NEXT_VALUE = :next WHERE NAME = :name",
                   {Value(model.nextObjectId), Value(kObjectNumber)});
}

void StoreUser(Database& database, const ModelUser& user, std::int32_t id) {
  database.Execute(
      "INSERT INTO TESSEL_USER (ID, LOGIN, PASSWORD, ADMINISTRATOR, LANGUAGE, CLASS_ID, OBJECT_ID) "
      "VALUES (:id, :login, :password, :administrator, :language, :class, :object)",
      {Value(id), Value(user.login), Value(user.password), Value(user.administrator), Value(user.language),
       Value(user.object.classId), Value(user.object.objectId)});
  std::int32_t position = 1;
  for (const std::string& role : user.roles) {
    database.Execute("INSERT INTO TESSEL_ROLE (USER_ID, POSITION, NAME) VALUES (:id, :position, :name)",
                     {Value(id), Value(position++), Value(role)});
  }
  for (const auto& [key, content] : user.settings) {
    database.Execute(
        "INSERT INTO TESSEL_SETTING (USER_ID, SETTING_KEY, CONTENT) VALUES (:id, :key, :content)",
        {Value(id), Value(key), Value(content)});
  }
}

void StoreAccounts(Database& database, const Model& model) {
  std::int32_t id = 1;
  for (const ModelUser& user : model.users)
    StoreUser(database, user, id++);
  for (const auto& [key, content] : model.configuration) {
    database.Execute("INSERT INTO TESSEL_CONFIGURATION (SETTING_KEY, CONTENT) VALUES (:key, :content)",
                     {Value(key), Value(content)});
  }
}

void StoreModel(Database& database, const Model& model, const std::string& source) {
  WriteTransaction transaction(database);
  CreateSchema(database, *model.metadata, model.metadataText, source);
  StoreObjects(database, model, source);
  StoreAccounts(database, model);
  transaction.Commit();
}

void FillVault(const Model& model, FileSystem& files, const std::string& vaultPath,
               const std::string& source) {
  for (const ModelObject& object : model.objects) {
    if (object.file.empty()) continue;
    try {
      files.CopyFile(object.file, paths::Join(vaultPath, object.vaultName), false);
    } catch (const RuntimeError& error) {
      throw HostError(source + ": " + object.where + ": " + error.what(), error.Number());
    }
  }
}

// What the file that claims a database's name says from the moment on in which the vault may bear its final
// name already: a vault without a database is then a remainder, and nobody else's.
constexpr std::string_view kVaultNamed = "vault";

std::string Folder(const std::string& path) {
  const std::string parent = paths::Parent(path);
  return parent.empty() ? "." : parent;
}

// A database in the making: claimed for one process, built under names of its own beside the final ones, and
// removed unless it was given those.
class NewDatabase {
 public:
  NewDatabase(FileSystem& files, const std::string& path)
      : files_(files), finalPath_(path), path_(path + ".new.db"), vaultPath_(VaultPath(path_)) {
    claim_ = files_.Hold(ClaimPath(path), true);
    if (!claim_) throw HostError(path + " is being made by somebody else at this moment");
    try {
      RemoveRemains();
      for (const std::string& taken : {path, VaultPath(path)}) {
        if (files.FileExists(taken) || files.FolderExists(taken)) throw HostError(taken + " exists already");
      }
      files_.CreateFolder(vaultPath_);
    } catch (...) {
      DropClaim();
      throw;
    }
  }
  ~NewDatabase() {
    try {
      RemoveRemains();
    } catch (const std::exception&) {
      return;  // the claim stays, and the next one to make the database removes what it tells of
    }
    DropClaim();
  }
  NewDatabase(const NewDatabase&) = delete;
  NewDatabase& operator=(const NewDatabase&) = delete;

  [[nodiscard]] static std::string ClaimPath(const std::string& path) { return path + ".new"; }
  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] const std::string& Vault() const { return vaultPath_; }

  // The database gets its name last: from then on it is whole, with its vault, also after a power failure.
  void Finish() {
    claim_->Append(kVaultNamed);
    files_.MakeDurable(vaultPath_);
    files_.Move(vaultPath_, VaultPath(finalPath_));
    files_.SyncFolder(Folder(finalPath_));
    try {
      files_.Move(path_, finalPath_);
    } catch (const RuntimeError&) {
      files_.DeleteFolder(VaultPath(finalPath_));
      throw;
    }
    files_.SyncFolder(Folder(finalPath_));
  }

 private:
  void RemoveRemains() {
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
      if (files_.FileExists(path_ + suffix)) files_.DeleteFile(path_ + suffix);
    }
    for (const std::string& vault : {vaultPath_, VaultPath(finalPath_)}) {
      const bool ours =
          vault == vaultPath_ || (claim_->Read().starts_with(kVaultNamed) && !files_.FileExists(finalPath_));
      if (ours && files_.FolderExists(vault)) files_.DeleteFolder(vault);
    }
  }

  void DropClaim() noexcept {
    try {
      claim_->Delete();
    } catch (const std::exception&) {
      // A claim that nobody holds is taken by the next one.
    }
  }

  FileSystem& files_;
  std::string finalPath_;
  std::string path_;
  std::string vaultPath_;
  std::unique_ptr<HeldFile> claim_;
};

// The folder of a file as a path that leads there from anywhere.
std::string AbsoluteFolderOf(const FileSystem& files, const std::string& path) {
  const std::filesystem::path folder = std::filesystem::absolute(files.NativePath(path)).parent_path();
  // Where drives are mapped, a path with a drive would lead elsewhere.
  if (files.NativePath(folder.string()) != folder.string())
    return "/" + folder.relative_path().generic_string();
  return folder.string();
}

}  // namespace

std::string VaultPath(const std::string& databasePath) {
  return databasePath + ".vault";
}

MetadataPtr FillDatabase(Database& database, const ModelSource& source, FileSystem& files,
                         const std::string& vaultPath) {
  const Model model = ReadModel(source, !vaultPath.empty());
  StoreModel(database, model, source.name);
  if (!vaultPath.empty()) FillVault(model, files, vaultPath, source.name);
  return model.metadata;
}

bool RemoveUnfinishedDatabase(FileSystem& files, const std::string& databasePath) {
  const std::string claim = NewDatabase::ClaimPath(databasePath);
  if (files.FileExists(databasePath) || !files.FileExists(claim)) return false;
  const NewDatabase removedAtOnce(files, databasePath);
  return true;
}

MetadataPtr CreateDatabase(FileSystem& files, const std::string& databasePath, const std::string& modelPath,
                           const StatementWatch& watch) {
  ModelSource source;
  source.text = files.ReadBytes(modelPath);
  source.name = paths::FileName(modelPath);
  source.directory = AbsoluteFolderOf(files, modelPath);
  const Model model = ReadModel(source, true);
  NewDatabase target(files, databasePath);
  FillVault(model, files, target.Vault(), source.name);
  {
    DatabaseOptions options;
    options.watch = watch;
    Database database(files.NativePath(target.Path()), options);
    StoreModel(database, model, source.name);
    database.Settle();
  }
  target.Finish();
  return model.metadata;
}

}  // namespace tessel::embedded
