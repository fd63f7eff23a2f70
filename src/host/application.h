// What the automation runtime offers outside any session: the running client and new engines. Like all of the
// host port it belongs to one thread, the one of the windows; errors are HostErrors with the host's number
// where nothing else is said.
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
  // Reads the client's settings file, by its name alone. Error: HostError when it cannot be read.
  virtual void Initialize(const std::string& iniFileName) = 0;
  // Engine option that takes -1 to switch it on.
  virtual void SetOption(int value) = 0;
  [[nodiscard]] virtual std::string DefaultDatabaseName() const = 0;
  // Error: HostError when the engine does not know the database.
  [[nodiscard]] virtual DatabaseEntry Database(const std::string& name) const = 0;
  // A session without user on the database. Errors: HostError with the database's code.
  [[nodiscard]] virtual PcSessionPtr NewSession(const std::string& databaseName) = 0;
  // Connects a session of NewSession; `option` is the host's own. Error: HostError when the database refuses.
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
  // Closes all sessions. The engine is not used again.
  virtual void Shutdown() = 0;
};
using PcEnginePtr = std::shared_ptr<PcEngine>;

// The running client, "Pelicore.PcApplication".
class PcApplication {
 public:
  virtual ~PcApplication() = default;
  // An empty list, never nothing.
  [[nodiscard]] virtual PcRecordListPtr NewRecordList() = 0;
  // The client's own engine.
  [[nodiscard]] virtual PcEnginePtr Engine() = 0;
};
using PcApplicationPtr = std::shared_ptr<PcApplication>;

class HostRuntime {
 public:
  virtual ~HostRuntime() = default;
  // Nothing when no client runs.
  [[nodiscard]] virtual PcApplicationPtr RunningApplication() = 0;
  // An object of the class "PcRecList.PcRecordList". Error 429 when the class is not there.
  [[nodiscard]] virtual PcRecordListPtr CreateRecordList() = 0;
  // Another engine beside the client's. Error 429 when the class is not there.
  [[nodiscard]] virtual PcEnginePtr CreateEngine() = 0;
};

}  // namespace tessel
