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
  // The file that the trace goes to; empty when it is not written.
  [[nodiscard]] std::string TraceFileName() const { return traceFile_.FileName(); }

  // Called several times a second while the host copies files: false cancels the copy, as the person's
  // cancel on the page does. Between the calls window events run.
  void SetCopyWatch(embedded::CopyWatch watch) { copyWatch_ = std::move(watch); }

  [[nodiscard]] PcRecordListPtr NewRecordList() { return host_.CreateRecordList(); }
  // The record list of some objects as the client passes it to a hook: one row an object with all its
  // attributes. Error: HostError naming what is no object.
  [[nodiscard]] PcRecordListPtr ObjectRows(const std::vector<ObjectKey>& keys);

 private:
  [[nodiscard]] bool CopyGoesOn(Toolkit& toolkit, const embedded::CopyStep& step);

  Platform platform_;
  embedded::CopyWatch copyWatch_;
  bool cancelledBefore_ = false;  // by an earlier export
  TraceFile traceFile_;
  embedded::EmbeddedHost host_;
  Program program_;
  StartApplication entry_;
  PcSessionPtr session_;
};

// The same services with another pauser and launcher.
[[nodiscard]] Platform WithServices(const Platform& platform, Pauser& pauser, ProcessLauncher& launcher);

}  // namespace tessel
