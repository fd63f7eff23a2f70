#include "platform/text_encoding.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessel {
namespace {

TEST(Utf8, StepsOverMalformedBytesOneByOne) {
  struct Case {
    std::string_view bytes;
    std::u32string codePoints;
    bool malformed = false;
  };
  const Case cases[] = {
      {"a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", U"a\u00E4\u20AC\U0001F600"},
      {"\xC3", U"\uFFFD", true},                                // cut short
      {"\xC3(", U"\uFFFD(", true},                              // no continuation
      {"\xA4", U"\uFFFD", true},                                // continuation alone
      {"\xC0\xAF", U"\uFFFD\uFFFD", true},                      // overlong
      {"\xE0\x80\xAF", U"\uFFFD\uFFFD\uFFFD", true},            // overlong
      {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD", true},            // surrogate
      {"\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD", true},  // beyond the last
      {"\xFF", U"\uFFFD", true},
  };
  for (const Case& each : cases) {
    std::u32string codePoints;
    bool malformed = false;
    for (std::size_t position = 0; position < each.bytes.size();) {
      codePoints += NextCodePoint(each.bytes, position, malformed);
    }
    EXPECT_EQ(codePoints, each.codePoints) << each.bytes;
    EXPECT_EQ(malformed, each.malformed) << each.bytes;
  }
}

TEST(Utf8, AppendedCodePointsReadBack) {
  for (const char32_t codePoint :
       {U'\x7F', U'\x80', U'\x7FF', U'\x800', U'\xFFFF', U'\x10000', U'\x10FFFF'}) {
    std::string text;
    AppendUtf8(codePoint, text);
    std::size_t position = 0;
    bool malformed = false;
    EXPECT_EQ(NextCodePoint(text, position, malformed), codePoint);
    EXPECT_EQ(position, text.size());
    EXPECT_FALSE(malformed);
  }
}

}  // namespace
}  // namespace tessel
