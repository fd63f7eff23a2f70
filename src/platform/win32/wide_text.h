// Texts of the Windows API, UTF-16, and ours, UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace tessel::windows {

// Malformed bytes become U+FFFD, one a byte.
[[nodiscard]] std::wstring ToWide(std::string_view utf8);
// Lone surrogates become U+FFFD.
[[nodiscard]] std::string ToUtf8(std::wstring_view text);

}  // namespace tessel::windows
