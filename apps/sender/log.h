// Progress of the work: one line a step on standard error, or one JSON object a line on standard output.
#pragma once

#include <iosfwd>
#include <mutex>
#include <string>

#include "platform/operating_system.h"

namespace tessel::sender {

enum class StepKind { kInfo, kProblem };

struct Step {
  std::string directory;  // name of the exchange directory; empty for the program's own steps
  std::string step;       // one word: "taken", "packed", "sent", "stopped", ...
  std::string text;       // for people; names path and cause
  StepKind kind = StepKind::kInfo;
};

class Log {
 public:
  virtual ~Log() = default;
  // Any thread may call it.
  virtual void Write(const Step& step) = 0;
};

class StreamLog : public Log {
 public:
  StreamLog(std::ostream& out, std::ostream& err, bool json, const Clock& clock)
      : out_(out), err_(err), json_(json), clock_(clock) {}
  void Write(const Step& step) override;

 private:
  std::ostream& out_;
  std::ostream& err_;
  bool json_;
  const Clock& clock_;
  std::mutex mutex_;
};

// "yyyy-mm-dd hh:mm:ss".
[[nodiscard]] std::string TimeText(const LocalTime& time);
// The text in one line: control characters become blanks.
[[nodiscard]] std::string OneLine(std::string text);

}  // namespace tessel::sender
