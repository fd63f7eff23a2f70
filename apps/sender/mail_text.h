// Encodings of mail: base64, encoded words, parameters.
#pragma once

#include <string>
#include <string_view>

namespace tessel::sender {

[[nodiscard]] std::string Base64(std::string_view bytes);
// In lines of 76 characters, each ended with CR LF. Bytes in multiples of 57 give whole lines.
[[nodiscard]] std::string Base64Lines(std::string_view bytes);
// Length of Base64Lines of so many bytes.
[[nodiscard]] long long Base64LinesSize(long long bytes);

[[nodiscard]] bool IsAscii(std::string_view text);
// Valid UTF-8 without control characters: malformed bytes become U+FFFD, controls blanks.
[[nodiscard]] std::string CleanText(std::string_view text);
// Encoded words (RFC 2047) of clean text, folded with CR LF and blank, whole characters in each. `used`
// characters stand before it in its first line; no line gets longer than 76.
[[nodiscard]] std::string EncodedWords(std::string_view text, std::size_t used);
// `; name="value"`, or as RFC 2231 has it for what is no plain ASCII.
[[nodiscard]] std::string Parameter(std::string_view name, std::string_view value);

}  // namespace tessel::sender
