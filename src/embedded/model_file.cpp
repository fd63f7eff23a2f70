#include "embedded/model_file.h"

#include <filesystem>

#include "embedded/schema.h"
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
  CreateSchema(database, *model.catalog, model.metadata, source);
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

// Database and vault under temporary names, removed unless they were given their final ones.
class NewDatabase {
 public:
  NewDatabase(FileSystem& files, const std::string& path)
      : files_(files), finalPath_(path), path_(path + ".new"), vaultPath_(VaultPath(path_)) {
    for (const std::string& taken : {path, VaultPath(path)}) {
      if (files.FileExists(taken) || files.FolderExists(taken)) throw HostError(taken + " exists already");
    }
    Remove();
    files_.CreateFolder(vaultPath_);
  }
  ~NewDatabase() { Remove(); }
  NewDatabase(const NewDatabase&) = delete;
  NewDatabase& operator=(const NewDatabase&) = delete;

  [[nodiscard]] const std::string& Path() const { return path_; }
  [[nodiscard]] const std::string& Vault() const { return vaultPath_; }

  void Finish() {
    files_.Move(vaultPath_, VaultPath(finalPath_));
    try {
      files_.Move(path_, finalPath_);
    } catch (const RuntimeError&) {
      files_.DeleteFolder(VaultPath(finalPath_));
      throw;
    }
  }

 private:
  void Remove() noexcept {
    try {
      for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
        if (files_.FileExists(path_ + suffix)) files_.DeleteFile(path_ + suffix);
      }
      if (files_.FolderExists(vaultPath_)) files_.DeleteFolder(vaultPath_);
    } catch (const RuntimeError&) {
      // What cannot be removed keeps its temporary name; the error on its way tells what went wrong.
    }
  }

  FileSystem& files_;
  std::string finalPath_;
  std::string path_;
  std::string vaultPath_;
};

}  // namespace

std::string VaultPath(const std::string& databasePath) {
  return databasePath + ".vault";
}

CatalogPtr FillDatabase(Database& database, const ModelSource& source, FileSystem& files,
                        const std::string& vaultPath) {
  const Model model = ReadModel(source, !vaultPath.empty());
  StoreModel(database, model, source.name);
  if (!vaultPath.empty()) FillVault(model, files, vaultPath, source.name);
  return model.catalog;
}

void CreateDatabase(FileSystem& files, const std::string& databasePath, const std::string& modelPath) {
  ModelSource source;
  source.text = files.ReadBytes(modelPath);
  source.name = paths::FileName(modelPath);
  const std::filesystem::path native = files.NativePath(modelPath);
  source.directory = std::filesystem::absolute(native).parent_path().string();
  const Model model = ReadModel(source, true);
  NewDatabase target(files, databasePath);
  FillVault(model, files, target.Vault(), source.name);
  {
    Database database(files.NativePath(target.Path()));
    StoreModel(database, model, source.name);
    database.Settle();
  }
  target.Finish();
}

}  // namespace tessel::embedded
