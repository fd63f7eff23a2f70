// The lines of a driven conversation: commands in, events out.
#pragma once

#include <iosfwd>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <stdexcept>
#include <string>

namespace tessel {

using Json = nlohmann::ordered_json;

// A command that says what cannot be done or is written wrongly; its text goes to the caller.
class CommandError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Members of a command. Each throws CommandError naming the member when it is missing or of another type.
[[nodiscard]] std::string TextMember(const Json& command, const char* name);
// The fallback serves when the member is missing.
[[nodiscard]] std::string TextMember(const Json& command, const char* name, const std::string& fallback);
[[nodiscard]] double NumberMember(const Json& command, const char* name, double fallback);

class DriveLines {
 public:
  DriveLines(std::istream& input, std::ostream& output) : input_(input), output_(output) {}

  // The next line's JSON object. Blank lines and lines that begin with "#" are passed over. Nothing when the
  // input has ended. Error: CommandError for a line that is no JSON object in UTF-8.
  [[nodiscard]] std::optional<Json> Read();
  // Number of the line last read, from 1.
  [[nodiscard]] int LineNumber() const { return lineNumber_; }

  // Writes one line, always valid UTF-8.
  void Write(const Json& event);
  void WriteError(int line, const std::string& text);
  [[nodiscard]] int ErrorCount() const { return errorCount_; }

 private:
  std::istream& input_;
  std::ostream& output_;
  int lineNumber_ = 0;
  int errorCount_ = 0;
};

}  // namespace tessel
