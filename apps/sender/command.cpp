// Send mode 4: the configured program with its arguments, never through a shell.
#include <cstring>

#include "host/error.h"
#include "sender/mail_text.h"
#include "sender/status_texts.h"
#include "sender/system.h"
#include "sender/transfer.h"

namespace tessel::sender {
namespace {

constexpr std::size_t kMostOutput = 16'000;
constexpr int kTryAgain = 75;  // the customary status of a failure that passes

// The value of a placeholder's name; the placeholder itself for an unknown one.
std::string ValueOf(const TransferJob& job, const std::string& name) {
  if (name == "directory") return job.files.NativePath(job.directory.Path());
  if (name == "zip") return job.files.NativePath(job.package);
  if (name == "structure") return job.files.NativePath(job.directory.In(job.data.structureFileName));
  if (name == "data") return job.files.NativePath(job.directory.In(job.database.Rules().dataFileName));
  if (name == "id") return job.identifier;
  for (std::size_t i = 0; i < 99 && name.starts_with("text"); ++i) {
    if (name == "text" + std::to_string(i + 1))
      return i < job.data.customTexts.size() ? job.data.customTexts[i] : std::string();
  }
  return "{" + name + "}";
}

// Values are not looked through for placeholders again.
std::string Replaced(const TransferJob& job, const std::string& argument) {
  std::string result;
  for (std::size_t at = 0; at < argument.size();) {
    const auto end = argument[at] == '{' ? argument.find('}', at) : std::string::npos;
    if (end == std::string::npos) {
      result += argument[at++];
    } else {
      result += ValueOf(job, argument.substr(at + 1, end - at - 1));
      at = end + 1;
    }
  }
  return result;
}

// Lines of clean text.
std::string CleanOutput(const std::string& output) {
  std::string text;
  for (const std::string& line : SplitText(output, "\n"))
    text += (text.empty() ? "" : "\r\n") + CleanText(line);
  text.erase(text.find_last_not_of(" \r\n") + 1);
  return text;
}

Outcome Judge(const TransferJob& job, const ProgramResult& result) {
  using Kind = Outcome::Kind;
  const std::string& program = job.settings.commandProgram;
  const std::string output = CleanOutput(result.output);
  const auto ended = [&](Kind kind, StatusText how, const std::string& value = {}) -> Outcome {
    const std::string text = TextOf(job.language, how, {program, value});
    return {kind, output.empty() ? text : TextOf(job.language, StatusText::kProgramSaid, {text, output}), {}};
  };
  const std::string status = std::to_string(result.status);
  switch (result.end) {
    case ProgramResult::End::kNotStarted:
      return ended(Kind::kRefused, StatusText::kNotStarted, std::strerror(result.status));
    case ProgramResult::End::kTimedOut:
      return ended(Kind::kUnknown, StatusText::kProgramSlow);
    case ProgramResult::End::kKilled:
      return ended(Kind::kUnknown, StatusText::kProgramKilled, status);
    default:
      break;
  }
  if (result.status != 0) {
    return ended(result.status == kTryAgain ? Kind::kLater : Kind::kRefused, StatusText::kProgramStatus,
                 status);
  }
  if (result.output.find(job.settings.commandSuccessText) == std::string::npos)
    return ended(Kind::kRefused, StatusText::kProgramSilent, job.settings.commandSuccessText);
  const std::string how = TextOf(job.language, StatusText::kByCommand, {program});
  return {Kind::kSent, TextOf(job.language, StatusText::kSent, {how, job.identifier}), output};
}

}  // namespace

Outcome RunCommand(const TransferJob& job) {
  if (job.settings.commandProgram.empty())
    return {Outcome::Kind::kRefused, TextOf(job.language, StatusText::kNoProgram), {}};
  std::vector<std::string> arguments;
  for (const std::string& argument : job.settings.commandArguments) {
    arguments.push_back(Replaced(job, argument));
    if (arguments.back().find('\0') != std::string::npos)
      return {Outcome::Kind::kRefused, TextOf(job.language, StatusText::kProgramNul), {}};
  }
  job.begin();
  const auto limit = std::chrono::duration_cast<std::chrono::milliseconds>(job.settings.commandTimeout);
  return Judge(job, RunProgram(job.files.NativePath(job.settings.commandProgram), arguments,
                               job.files.NativePath(job.directory.Path()), limit, kMostOutput));
}

}  // namespace tessel::sender
