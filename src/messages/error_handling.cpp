#include "messages/error_handling.h"

#include "messages/guard.h"
#include "platform/file_system.h"
#include "platform/paths.h"
#include "platform/text_encoding.h"

namespace tessel {
namespace {

constexpr const char* kNoMessage = "no Message found";
constexpr std::size_t kCodeLength = 5;

// Name of the catalogue file of a code without the language; empty for a code of no kind.
std::string CatalogueName(std::string_view code) {
  if (code.starts_with('p')) return "protocol.Kestrix_";
  if (code.starts_with('e')) return "error.Kestrix_";
  if (code.starts_with('c')) return "caption.Kestrix_";
  return {};
}

// The text behind the code and its one separator character.
std::string CatalogueText(const std::string& line) {
  std::size_t start = kCodeLength;
  bool malformed = false;
  if (start < line.size()) (void)NextCodePoint(line, start, malformed);
  return line.substr(start);
}

// Three passes, each from the start of the text: a placeholder in a value that was filled in is found by the
// next pass, and a brace that begins none stops all later ones.
std::string FillPlaceholders(std::string text, std::string_view value1, std::string_view value2,
                             std::string_view value3) {
  const std::string_view values[] = {value1, value2, value3};
  for (std::size_t pass = 0; pass < std::size(values); ++pass) {
    const auto brace = text.find('{');
    if (brace == std::string::npos || brace + 1 >= text.size()) return text;
    const char digit = text[brace + 1];
    if (digit < '0' || digit > '2') return text;
    std::size_t rest = brace + 2;
    bool malformed = false;
    if (rest < text.size()) (void)NextCodePoint(text, rest, malformed);
    text.replace(brace, rest - brace, values[static_cast<std::size_t>(digit - '0')]);
  }
  return text;
}

}  // namespace

std::string ErrorHandling::ReadCatalogueText(std::string_view code) const {
  std::string text = kNoMessage;
  PassingOver(problems_, "Reading the text " + std::string(code) + " of the catalogue", [&] {
    std::string language;
    IgnoringErrors([&] { language = location_.Language(); });
    const std::string folder = location_.Folder();
    const std::string name = CatalogueName(code);
    // The language comes from the host and must not lead out of the folder.
    if (name.empty() || !paths::IsPlainFileName(name + language) || !files_.FolderExists(folder)) return;
    const std::string file = paths::Join(folder, name + language);
    if (!files_.FileExists(file)) return;
    files_.ReadLines(file, [&](std::string_view line) {
      if (line.substr(0, kCodeLength) != code) return true;
      text = CatalogueText(ansi_.Decode(line));
      return false;
    });
  });
  return text;
}

std::string ErrorHandling::ErrorHandle(std::string_view code, std::string_view value1,
                                       std::string_view value2, std::string_view value3) const {
  return FillPlaceholders(ReadCatalogueText(code), value1, value2, value3);
}

void ErrorHandling::WriteProtocolString(std::string_view code, std::string_view value1,
                                        std::string_view value2, std::string_view value3) {
  const std::string text = ErrorHandle(code, value1, value2, value3);
  if (!text.empty()) ProtocolText.append(text).append("\r\n");
}

std::string ErrorHandling::GetCaptionString(std::string_view code, std::string_view defaultText) const {
  std::string text = ReadCatalogueText(code);
  if (!defaultText.empty() && text == kNoMessage) return std::string(defaultText);
  return text;
}

}  // namespace tessel
