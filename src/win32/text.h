// Text between the core (UTF-8) and Windows (UTF-16). What is invalid becomes U+FFFD, nothing fails.
#pragma once

#include <string>
#include <string_view>

namespace tessel::win32 {

[[nodiscard]] std::wstring ToWide(std::string_view text);
[[nodiscard]] std::string FromWide(std::wstring_view text);

// For captions where Windows takes "&" for the mark of an Alt letter.
[[nodiscard]] std::wstring Literal(const std::string& text);
// As a list shows it: on one line, runs of white space as one space, none at the ends.
[[nodiscard]] std::wstring OnOneLine(const std::string& text);
// Line breaks as an edit control has them, and back.
[[nodiscard]] std::wstring WithEditBreaks(const std::string& text);
[[nodiscard]] std::string WithoutEditBreaks(std::wstring_view text);

}  // namespace tessel::win32
