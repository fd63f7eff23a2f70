#include "headless/reporting_launcher.h"

namespace tessel {

std::int32_t ReportingLauncher::Start(const std::string& program, const std::vector<std::string>& arguments) {
  const std::int32_t processId = launcher_.Start(program, arguments);
  driver_.ProcessStarted(program, arguments, processId);
  return processId;
}

}  // namespace tessel
