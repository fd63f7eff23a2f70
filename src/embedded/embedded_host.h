// The embedded host: a small product data management system on an SQL database, in place of the Pelicore
// client. Used from one thread; several hosts, in one process or in many, may use one database file.
// The settings of a PcBehavior, the retrieval mode among them, are kept and change nothing.
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <string>

#include "embedded/failures.h"
#include "embedded/host_dialogs.h"
#include "host/application.h"
#include "host/error.h"
#include "platform/file_system.h"

namespace tessel::embedded {

// Configuration keys.
inline constexpr const char* kIconsDirKey = "$Local\\Directory Structure\\ICONS_DIR";
inline constexpr const char* kViewDirKey = "$Local\\Directory Structure\\ReadOnlyDir";
inline constexpr const char* kWorkDirKey = "$Local\\Directory Structure\\USER_DIR";

// Codes of refused writes beside those of the database.
inline constexpr int kCodeObjectGone = 9001;  // the row was deleted meanwhile, or never added
inline constexpr int kCodeAlreadyAdded = 9002;

// Called during "COPYFILE", before the operation returns: session, operation, copied rows, links, nothing.
using LifeCycleHook =
    std::function<void(const PcSessionPtr&, const std::string& operation, const PcRecordListPtr&,
                       const PcRecordListPtr&, const PcRecordListPtr&)>;

struct HostOptions {
  // Both required, and outlive the host and its sessions.
  FileSystem* files = nullptr;
  HostDialogs* dialogs = nullptr;
  LifeCycleHook lfcStage2;
  // Of sessions that are opened without one; empty: the user's, else the database's.
  std::string language;
  // Before the database's configuration, behind the user's own settings.
  std::map<std::string, std::string> configuration;
  // Directory of the files of a database in memory; empty: it has none.
  std::string vaultPath;
  // False: HostRuntime finds no running client, so that callers start an engine of their own.
  bool clientRuns = true;
  std::chrono::milliseconds busyTimeout{10000};
};

// The login name is unknown or the password is wrong; the database itself was opened.
class LoginRefused : public HostError {
 public:
  explicit LoginRefused(const std::string& loginName);
};

struct HostCore;

class EmbeddedHost final : public HostRuntime {
 public:
  // Opens a database file. Errors: HostError when it does not exist or is none of this host.
  EmbeddedHost(const std::string& databasePath, HostOptions options);
  // A database in memory, made from a model (docs/model-file.md) given as text. All sessions share one
  // connection. Error: HostError listing what is wrong with the model.
  EmbeddedHost(const std::string& modelText, const std::string& modelDirectory, HostOptions options);
  ~EmbeddedHost() override;

  // A session of the client's engine with the user logged in. An empty language: see HostOptions. Errors:
  // LoginRefused, HostError.
  [[nodiscard]] PcSessionPtr OpenSession(const std::string& loginName, const std::string& password = {},
                                         const std::string& language = {});

  void SetLfcStage2(LifeCycleHook hook);
  void FailNext(const PlannedFailure& failure);
  void ClearFailures();

  [[nodiscard]] std::string Alias() const;
  [[nodiscard]] PcMetaDataPtr MetaData() const;

  [[nodiscard]] PcApplicationPtr RunningApplication() override;
  [[nodiscard]] PcRecordListPtr CreateRecordList() override;
  [[nodiscard]] PcEnginePtr CreateEngine() override;

 private:
  void Start();

  std::shared_ptr<HostCore> core_;
  PcEnginePtr engine_;
  PcApplicationPtr application_;
};

// Lists what is in a database: metadata, users, objects and links.
void DescribeDatabase(FileSystem& files, const std::string& databasePath, std::ostream& out);

}  // namespace tessel::embedded
