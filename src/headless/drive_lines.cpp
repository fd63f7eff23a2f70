#include "headless/drive_lines.h"

#include <istream>
#include <nlohmann/json.hpp>
#include <ostream>

#include "platform/json_nesting.h"

namespace tessel {

namespace {

// No command nests deeper than its rows; values nested without bounds would exhaust the stack when copied.
constexpr int kDeepestNesting = 32;

[[noreturn]] void ThrowWrongMember(const char* name, const char* expected) {
  throw CommandError("\"" + std::string(name) + "\" must be " + expected);
}

bool IsPassedOver(const std::string& line) {
  const auto start = line.find_first_not_of(" \t\r");
  return start == std::string::npos || line[start] == '#';
}

Json ParseObject(const std::string& line) {
  if (NestsDeeperThan(line, kDeepestNesting)) throw CommandError("not a JSON object: nested too deeply");
  Json command;
  try {
    command = Json::parse(line);
  } catch (const Json::exception& error) {
    throw CommandError(std::string("not a JSON object: ") + error.what());
  }
  if (!command.is_object()) throw CommandError("not a JSON object");
  return command;
}

}  // namespace

std::string TextMember(const Json& command, const char* name) {
  const auto found = command.find(name);
  if (found == command.end() || !found->is_string()) ThrowWrongMember(name, "a text");
  return found->get<std::string>();
}

std::string TextMember(const Json& command, const char* name, const std::string& fallback) {
  return command.contains(name) ? TextMember(command, name) : fallback;
}

double NumberMember(const Json& command, const char* name, double fallback) {
  const auto found = command.find(name);
  if (found == command.end()) return fallback;
  if (!found->is_number()) ThrowWrongMember(name, "a number");
  return found->get<double>();
}

std::optional<Json> DriveLines::Read() {
  std::string line;
  while (std::getline(input_, line)) {
    ++lineNumber_;
    if (!IsPassedOver(line)) return ParseObject(line);
  }
  return std::nullopt;
}

void DriveLines::Write(const Json& event) {
  output_ << event.dump(-1, ' ', false, Json::error_handler_t::replace) << std::endl;
}

void DriveLines::WriteError(int line, const std::string& text) {
  ++errorCount_;
  Write({{"event", "error"}, {"line", line}, {"text", text}});
}

}  // namespace tessel
