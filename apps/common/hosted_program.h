// One loaded program on an embedded host, wired together as the client would load it: what the command line
// and the desktop client share.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "embedded/embedded_host.h"
#include "entry/program.h"
#include "entry/start_application.h"
#include "messages/trace_file.h"
#include "platform/operating_system.h"

namespace tessel {

struct HostedLogin {
  std::string database;
  std::string user;
  std::string password;
  std::string language;  // empty: the user's or the database's own
};

class HostedProgram {
 public:
  // Opens the database and logs in. What the platform refers to, the toolkit and the dialogs outlive it.
  // Errors: HostError.
  HostedProgram(const HostedLogin& login, const Platform& platform, Toolkit& toolkit,
                embedded::HostDialogs& dialogs);

  [[nodiscard]] const PcSessionPtr& Session() const { return session_; }
  [[nodiscard]] Program& LoadedProgram() { return program_; }
  [[nodiscard]] StartApplication& Entry() { return entry_; }
  // The newest error line of the trace with its description, for a person who cannot look there; empty when
  // there was none.
  [[nodiscard]] const std::string& LastError() const { return lastError_; }

  [[nodiscard]] PcRecordListPtr NewRecordList() { return host_.CreateRecordList(); }
  // The record list of some objects as the client passes it to a hook: one row an object with all its
  // attributes. Error: HostError naming what is no object.
  [[nodiscard]] PcRecordListPtr ObjectRows(const std::vector<ObjectKey>& keys);

 private:
  Platform platform_;
  TraceFile traceFile_;
  std::string lastError_;
  embedded::EmbeddedHost host_;
  Program program_;
  StartApplication entry_;
  PcSessionPtr session_;
};

// Sets a cell; a column that the list does not have yet is added with the shape that the client gives it.
void SetCell(PcRecordList& list, int row, const std::string& column, const Value& value);

// The same services with another pauser and launcher.
[[nodiscard]] Platform WithServices(const Platform& platform, Pauser& pauser, ProcessLauncher& launcher);

}  // namespace tessel
