// Settings text: sections and keys of INI text, and the line reader.
#include "config/pelicore_admin_tool.h"
#include "config/string_tool.h"
#include "fuzzing.h"

namespace {

using namespace tessel;
using fuzz::Require;

// Lines put together again are the text.
void CheckLines(const std::string& text) {
  StringTool lines;
  lines.OpenString(text);
  std::string again;
  while (!lines.EndOfString()) {
    again += lines.ReadLine();
    again += "\r\n";
  }
  Require(again == text || again == text + "\r\n", "the lines are not the text");
}

void CheckSection(const std::string& text, const std::string& section, const std::string& key) {
  const std::vector<std::string> lines = PelicoreAdminTool::IniSectionLines(text, section);
  if (lines.size() < 30000) {
    Require(PelicoreAdminTool::IniValue_Count(text, section) == static_cast<int>(lines.size()),
            "the count is not that of the lines");
  }
  const std::string value = PelicoreAdminTool::IniValue_Retrieve(text, section, key, "\x01none");
  if (value == "\x01none") return;
  Require(value.find('=') == std::string::npos && value.find("\r\n") == std::string::npos,
          "a value holds more than one entry");
  Require(text.find(key + "=" + value) != std::string::npos, "a value that is not in the text");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Input input(data, size);
  const std::string section = input.Part();
  const std::string key = input.Part();
  const std::string text = input.Rest();
  CheckLines(text);
  CheckSection(text, section, key);
  CheckSection(text, "Path", "ExchangePath");
  return 0;
}
