// What the automation runtime offers outside any session: the running client and new engines.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "host/record_list.h"
#include "host/session.h"

namespace tessel {

// One database that an engine can connect to.
struct DatabaseEntry {
  std::string name;
  std::string connectionText;
  std::string password;
};

class PcEngine {
 public:
  virtual ~PcEngine() = default;
  virtual void Initialize(const std::string& iniFileName) = 0;
  // Engine option that takes -1 to switch it on.
  virtual void SetOption(int value) = 0;
  [[nodiscard]] virtual std::string DefaultDatabaseName() const = 0;
  // Error: HostError when the engine does not know the database.
  [[nodiscard]] virtual DatabaseEntry Database(const std::string& name) const = 0;
  // A session without user on the database. Errors: HostError with the database's code.
  [[nodiscard]] virtual PcSessionPtr NewSession(const std::string& databaseName) = 0;
  virtual void OpenConnection(PcSession& session, const std::string& connectionText,
                              const std::string& password, int option) = 0;
  // False when the login name is unknown or the password is wrong.
  [[nodiscard]] virtual bool Login(PcSession& session, const std::string& loginName,
                                   const std::string& password) = 0;
  // Login name and password of the user of the first session; empty texts when there is none.
  [[nodiscard]] virtual std::pair<std::string, std::string> FirstSessionLogin() const = 0;
  [[nodiscard]] virtual int SessionCount() const = 0;
  // Index from 0; error 9 outside.
  [[nodiscard]] virtual PcSessionPtr Session(int index) const = 0;
  virtual void Shutdown() = 0;
};
using PcEnginePtr = std::shared_ptr<PcEngine>;

// The running client, "Pelicore.PcApplication".
class PcApplication {
 public:
  virtual ~PcApplication() = default;
  [[nodiscard]] virtual PcRecordListPtr NewRecordList() = 0;
  [[nodiscard]] virtual PcEnginePtr Engine() = 0;
};
using PcApplicationPtr = std::shared_ptr<PcApplication>;

class HostRuntime {
 public:
  virtual ~HostRuntime() = default;
  // Nothing when no client runs.
  [[nodiscard]] virtual PcApplicationPtr RunningApplication() = 0;
  // An object of the class "PcRecList.PcRecordList".
  [[nodiscard]] virtual PcRecordListPtr CreateRecordList() = 0;
  [[nodiscard]] virtual PcEnginePtr CreateEngine() = 0;
};

}  // namespace tessel
