// One loaded program on an embedded host: everything that a command needs, wired together.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "embedded/embedded_host.h"
#include "entry/program.h"
#include "entry/start_application.h"
#include "headless/drive_protocol.h"
#include "headless/headless_toolkit.h"
#include "headless/reporting_launcher.h"
#include "messages/trace_file.h"
#include "platform/posix/posix_platform.h"
#include "tessel/command.h"

namespace tessel::cli {

class Workbench : public HookCaller {
 public:
  // Opens the database and logs in. The driver outlives the workbench. Errors: HostError.
  Workbench(const Login& login, Driver& driver);

  [[nodiscard]] const PcSessionPtr& Session() const { return session_; }
  [[nodiscard]] Program& LoadedProgram() { return program_; }
  [[nodiscard]] HeadlessToolkit& Windows() { return toolkit_; }
  [[nodiscard]] StartApplication& Entry() { return entry_; }

  // HookCaller
  [[nodiscard]] std::vector<std::string> HookNames() const override;
  [[nodiscard]] int Call(const HookCall& call) override;
  [[nodiscard]] Value GlobalValue(const std::string& name) const override;

  // The record list of some objects (CLASS:OBJECT, the class by id or name) as the client passes it to a
  // hook: one row an object with all its attributes. Error: HostError naming what is no object.
  [[nodiscard]] PcRecordListPtr ObjectRows(const std::vector<std::string>& objects);

 private:
  [[nodiscard]] PcRecordListPtr ToRecordList(const std::optional<PlainRecords>& records);

  PosixPlatform system_;
  TraceFile traceFile_;
  HeadlessToolkit toolkit_;
  ReportingLauncher launcher_;
  Platform platform_;
  embedded::EmbeddedHost host_;
  Program program_;
  StartApplication entry_;
  PcSessionPtr session_;
};

}  // namespace tessel::cli
