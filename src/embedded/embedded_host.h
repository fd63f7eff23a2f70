// The embedded host: a small product data management system on an SQL database, in place of the Pelicore
// client. Used from one thread; several hosts, in one process or in many, may use one database file.
// The settings of a PcBehavior, the retrieval mode among them, are kept and change nothing.
#pragma once

#include <memory>
#include <string>

#include "embedded/session/failures.h"
#include "embedded/session/host_options.h"
#include "host/application.h"
#include "host/error.h"

namespace tessel::embedded {

// The login name is unknown or the password is wrong; the database itself was opened.
class LoginRefused : public HostError {
 public:
  explicit LoginRefused(const std::string& loginName);
};

struct HostCore;

class EmbeddedHost final : public HostRuntime {
 public:
  // Opens a database file, or a database on a server by its address (docs/postgresql.md). Errors: HostError
  // when it does not exist or is none of this host.
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
  void SetCopyWatch(CopyWatch watch);
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

}  // namespace tessel::embedded
