// Letter case of ASCII letters, blanks, and other small change of texts: the same for names, settings and
// files everywhere. Characters beyond ASCII stay as they are.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace tessel {

[[nodiscard]] constexpr char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
[[nodiscard]] constexpr char UpperCase(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

[[nodiscard]] inline std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    c = LowerCase(c);
  return lower;
}
[[nodiscard]] inline std::string UpperCase(std::string_view text) {
  std::string upper(text);
  for (char& c : upper)
    c = UpperCase(c);
  return upper;
}

[[nodiscard]] inline bool EqualsIgnoringCase(std::string_view one, std::string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char a, char b) { return LowerCase(a) == LowerCase(b); });
}

// The text without the blanks at its beginning and end; which characters are blank is the caller's to say.
[[nodiscard]] constexpr std::string_view Trimmed(std::string_view text, std::string_view blanks = " \t") {
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Puts `with` in place of every `what`, which is not empty.
inline void ReplaceAll(std::string& text, std::string_view what, std::string_view with) {
  for (auto found = text.find(what); found != std::string::npos; found = text.find(what, found + with.size()))
    text.replace(found, what.size(), with);
}

}  // namespace tessel
