#include "messages/trace_line.h"

#include <algorithm>

namespace tessel {
namespace {

bool BreaksLine(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte < 0x20 && c != '\t') || byte == 0x7F;
}

}  // namespace

std::string OneLine(std::string_view text) {
  if (std::none_of(text.begin(), text.end(), BreaksLine)) return std::string(text);
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string line;
  for (const char c : text) {
    if (BreaksLine(c)) {
      const auto byte = static_cast<unsigned char>(c);
      line.append({'<', kDigits[byte >> 4], kDigits[byte & 0xF], '>'});
    } else {
      line += c;
    }
  }
  return line;
}

}  // namespace tessel
