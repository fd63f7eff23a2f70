// Tells the driver of every program that is started.
#pragma once

#include "headless/driver.h"
#include "platform/operating_system.h"

namespace tessel {

class ReportingLauncher : public ProcessLauncher {
 public:
  // Starts through `launcher`, then reports to the driver. Both must outlive it.
  ReportingLauncher(ProcessLauncher& launcher, Driver& driver) : launcher_(launcher), driver_(driver) {}
  std::int32_t Start(const std::string& program, const std::vector<std::string>& arguments) override;

 private:
  ProcessLauncher& launcher_;
  Driver& driver_;
};

}  // namespace tessel
