// One loaded program in front of a driver: everything that a command needs, wired together.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "common/hosted_program.h"
#include "headless/drive_protocol.h"
#include "headless/headless_toolkit.h"
#include "headless/reporting_launcher.h"
#include "platform/native/native_platform.h"
#include "tessel/command.h"

namespace tessel::cli {

class Workbench : public DrivenHooks {
 public:
  // Opens the database and logs in. The driver outlives the workbench. Errors: HostError.
  Workbench(const Login& login, Driver& driver);

  [[nodiscard]] const PcSessionPtr& Session() const { return hosted_.Session(); }
  [[nodiscard]] HostedProgram& Hosted() { return hosted_; }
  [[nodiscard]] Program& LoadedProgram() { return hosted_.LoadedProgram(); }
  [[nodiscard]] HeadlessToolkit& Windows() { return toolkit_; }
  [[nodiscard]] StartApplication& Entry() { return hosted_.Entry(); }
  [[nodiscard]] std::string TraceFileName() const { return hosted_.TraceFileName(); }

  void SetCopyWatch(embedded::CopyWatch watch) { hosted_.SetCopyWatch(std::move(watch)); }

  // DrivenHooks
  [[nodiscard]] std::vector<std::string> HookNames() const override;
  [[nodiscard]] int Call(const HookCall& call) override;
  [[nodiscard]] Value GlobalValue(const std::string& name) const override;

  // The record list of some objects (CLASS:OBJECT, the class by id or name) as the client passes it to a
  // hook: one row an object with all its attributes. Error: HostError naming what is no object.
  [[nodiscard]] PcRecordListPtr ObjectRows(const std::vector<std::string>& objects);

 private:
  [[nodiscard]] PcRecordListPtr ToRecordList(const std::optional<PlainRecords>& records);

  NativePlatform system_;
  HeadlessToolkit toolkit_;
  ReportingLauncher launcher_;
  HostedProgram hosted_;
};

}  // namespace tessel::cli
