// Lines of a driven conversation: each is read or refused, and every event is one line of JSON.
#include <nlohmann/json.hpp>
#include <sstream>

#include "fuzzing.h"
#include "headless/drive_json.h"

namespace {

using namespace tessel;

void ReadMembers(const Json& command) {
  const auto tried = [](const auto& read) {
    try {
      (void)read();
    } catch (const CommandError&) {
      // Refused, which is an answer.
    }
  };
  for (const char* name : {"first", "second", "third"})
    tried([&] { return RecordsMember(command, name); });
  tried([&] { return ReadBoxAnswer(command, MessageButtons::kYesNo); });
  tried([&] { return ReadLifeCycleAnswer(command); });
  tried([&] { return ReadObjectAnswer(command); });
  tried([&] { return ReadLoginAnswer(command).loginName.size(); });
  tried([&] { return ReadPositions(command, {}).size(); });
  tried([&] { return TextMember(command, "do"); });
  tried([&] { return NumberMember(command, "width", 1); });
}

void CheckAnswer(const std::string& text) {
  std::istringstream none;
  std::ostringstream out;
  DriveLines lines(none, out);
  lines.WriteError(1, text);
  const std::string line = out.str();
  fuzz::Require(line.find('\n') == line.size() - 1, "an event is not one line");
  fuzz::Require(Json::accept(line), "an event is no JSON");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  std::istringstream in(text);
  std::ostringstream out;
  DriveLines lines(in, out);
  for (bool more = true; more;) {
    try {
      const std::optional<Json> command = lines.Read();
      more = command.has_value();
      if (more) ReadMembers(*command);
    } catch (const CommandError& error) {
      CheckAnswer(error.what());
    }
  }
  CheckAnswer(text);
  return 0;
}
