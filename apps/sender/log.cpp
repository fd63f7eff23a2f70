#include "sender/log.h"

#include <cstdio>
#include <nlohmann/json.hpp>
#include <ostream>

namespace tessel::sender {

std::string TimeText(const LocalTime& time) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month, time.day,
                time.hour, time.minute, time.second);
  return text;
}

std::string OneLine(std::string text) {
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = ' ';
  }
  return text;
}

void StreamLog::Write(const Step& step) {
  const std::string time = TimeText(clock_.Now());
  const bool problem = step.kind == StepKind::kProblem;
  const std::lock_guard guard(mutex_);
  if (json_) {
    nlohmann::ordered_json line{
        {"time", time}, {"step", step.step}, {"problem", problem}, {"text", step.text}};
    if (!step.directory.empty()) line["directory"] = step.directory;
    out_ << line.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) << std::endl;
  } else {
    err_ << time << (problem ? " PROBLEM " : " ") << step.step;
    if (!step.directory.empty()) err_ << " " << OneLine(step.directory);
    err_ << ": " << OneLine(step.text) << std::endl;
  }
}

}  // namespace tessel::sender
