#include "embedded/store/new_database.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "embedded/sql/postgresql/server_address.h"
#include "embedded/store/database_place.h"
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

// What a database in the making is called, and what it will be called.
struct Names {
  std::string claim;
  std::vector<std::string> files;  // of the database in the making
  std::string newVault;
  std::string vault;
};

Names NamesBeside(const std::string& path) {
  const std::string made = path + ".new.db";
  Names names{path + ".new", {}, made + ".vault", path + ".vault"};
  for (const char* suffix : {"", "-journal", "-wal", "-shm"})
    names.files.push_back(made + suffix);
  return names;
}

// A database in the making: claimed for one process, built under names of its own beside the final ones, and
// removed unless it was given those.
class NewDatabase {
 public:
  // `finished` says whether the database is there under its own name.
  NewDatabase(FileSystem& files, const std::string& subject, Names names, std::function<bool()> finished)
      : files_(files), names_(std::move(names)), finished_(std::move(finished)) {
    claim_ = files_.Hold(names_.claim, true);
    if (!claim_) throw HostError(subject + " is being made by somebody else at this moment");
    try {
      RemoveRemains();
      if (finished_()) throw HostError(subject + " exists already");
      if (files.FileExists(names_.vault) || files.FolderExists(names_.vault))
        throw HostError(names_.vault + " exists already");
      files_.CreateFolder(names_.newVault);
    } catch (...) {
      DropClaim();
      throw;
    }
  }
  ~NewDatabase() {
    try {
      if (doubtful_) return;
      if (!finishedHere_) RemoveRemains();
    } catch (const std::exception&) {
      return;  // the claim stays, and the next one to make the database removes what it tells of
    }
    DropClaim();
  }
  NewDatabase(const NewDatabase&) = delete;
  NewDatabase& operator=(const NewDatabase&) = delete;

  [[nodiscard]] const std::string& Vault() const { return names_.newVault; }

  // The database comes last: from then on it is whole, with its vault, also after a power failure. `name`
  // makes it so.
  void Finish(const std::function<void()>& name) {
    claim_->Append(kVaultNamed);
    files_.MakeDurable(names_.newVault);
    files_.Move(names_.newVault, names_.vault);
    files_.SyncFolder(Folder(names_.vault));
    try {
      name();
    } catch (const RuntimeError& error) {
      // A server that did not answer may have the database; the next one to make it can tell.
      doubtful_ = error.Number() == kCodeConnectionLost;
      if (!doubtful_) files_.DeleteFolder(names_.vault);
      throw;
    }
    finishedHere_ = true;
  }

 private:
  void RemoveRemains() {
    for (const std::string& file : names_.files) {
      if (files_.FileExists(file)) files_.DeleteFile(file);
    }
    if (files_.FolderExists(names_.newVault)) files_.DeleteFolder(names_.newVault);
    if (claim_->Read().starts_with(kVaultNamed) && !finished_() && files_.FolderExists(names_.vault))
      files_.DeleteFolder(names_.vault);
  }

  void DropClaim() noexcept {
    try {
      claim_->Delete();
    } catch (const std::exception&) {
      // A claim that nobody holds is taken by the next one.
    }
  }

  FileSystem& files_;
  Names names_;
  std::function<bool()> finished_;
  std::unique_ptr<HeldFile> claim_;
  bool finishedHere_ = false;
  bool doubtful_ = false;
};

// The folder of a file as a path that leads there from anywhere.
std::string AbsoluteFolderOf(const FileSystem& files, const std::string& path) {
  const std::filesystem::path folder = std::filesystem::absolute(files.NativePath(path)).parent_path();
  // Where drives are mapped, a path with a drive would lead elsewhere.
  if (files.NativePath(folder.string()) != folder.string())
    return "/" + folder.relative_path().generic_string();
  return folder.string();
}

void CreateInFile(FileSystem& files, const std::string& path, const Model& model, const std::string& source,
                  const StatementWatch& watch) {
  const Names names = NamesBeside(path);
  const std::string& made = names.files.front();
  NewDatabase target(files, path, names, [&] { return files.FileExists(path) || files.FolderExists(path); });
  FillVault(model, files, target.Vault(), source);
  {
    DatabaseOptions options;
    options.watch = watch;
    Database database(files.NativePath(made), options);
    StoreModel(database, model, source);
    database.Settle();
  }
  target.Finish([&] {
    files.Move(made, path);
    files.SyncFolder(Folder(path));
  });
}

void CreateOnServer(FileSystem& files, const std::string& address, const Model& model,
                    const std::string& source, const StatementWatch& watch) {
  const std::string vault = ParseServerAddress(address).vault;
  if (!paths::IsFullPath(vault)) {
    throw HostError(
        "The files of a database on a server need a folder that all its users share; its full path belongs "
        "to the address (postgresql://...?vault=/srv/vault)");
  }
  DatabaseOptions options;
  options.watch = watch;
  const auto database = OpenDatabase(files, address, options);
  NewDatabase target(files, "The database " + ShownPlace(address),
                     {vault + ".new", {}, vault + ".new.vault", vault},
                     [&] { return database->HasTable("TESSEL_METADATA"); });
  FillVault(model, files, target.Vault(), source);
  files.MakeDurable(target.Vault());
  WriteTransaction transaction(*database);
  StoreModel(*database, model, source);
  StoreVault(*database, vault);
  target.Finish([&] { transaction.Commit(); });
}

}  // namespace

MetadataPtr FillDatabase(Database& database, const ModelSource& source, FileSystem& files,
                         const std::string& vaultPath) {
  const Model model = ReadModel(source, !vaultPath.empty());
  StoreModel(database, model, source.name);
  if (!vaultPath.empty()) FillVault(model, files, vaultPath, source.name);
  return model.metadata;
}

bool RemoveUnfinishedDatabase(FileSystem& files, const std::string& databasePath) {
  const Names names = NamesBeside(databasePath);
  if (files.FileExists(databasePath) || !files.FileExists(names.claim)) return false;
  const NewDatabase removedAtOnce(files, databasePath, names, [&] { return files.FileExists(databasePath); });
  return true;
}

MetadataPtr CreateDatabase(FileSystem& files, const std::string& place, const std::string& modelPath,
                           const StatementWatch& watch) {
  ModelSource source;
  source.text = files.ReadBytes(modelPath);
  source.name = paths::FileName(modelPath);
  source.directory = AbsoluteFolderOf(files, modelPath);
  const Model model = ReadModel(source, true);
  if (IsServerAddress(place)) {
    CreateOnServer(files, place, model, source.name, watch);
  } else {
    CreateInFile(files, place, model, source.name, watch);
  }
  return model.metadata;
}

}  // namespace tessel::embedded
