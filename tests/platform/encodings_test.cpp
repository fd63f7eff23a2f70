// One answer on every system: the tables of iconv and those of Windows.
#include <gtest/gtest.h>

#include "support/expect_error.h"
#include "support/native_adapters.h"

namespace tessel::test {
namespace {

using namespace std::string_view_literals;

// Null for one of the few that not every system has.
std::shared_ptr<const TextEncoding> OpenIfThere(const NativeEncodings& encodings, const std::string& name) {
  if (name != "gb18030" && name != "IBM943") return encodings.Open(name);
  std::shared_ptr<const TextEncoding> encoding;
  EXPECT_LE(ErrorNumberOf([&] { encoding = encodings.Open(name); }), 5);
  return encoding;
}

TEST(Encodings, TextGoesThereAndBack) {
  struct Case {
    const char* encoding;
    std::string_view bytes;
    std::string_view text;
    bool asciiCompatible = true;
  };
  const Case cases[] = {
      {"windows-1252", "Gr\xFC\xDF\x65 \x80", "Grüße €"},
      {"Windows-1252", "\x93x\x94", "\u201Cx\u201D"},
      {"iso-8859-1", "\xE4\x80", "ä\u0080"},
      {"ISO-8859-15", "\xA4", "€"},
      {"iso-8859-7", "\xE1", "α"},
      {"koi8-r", "\xC1", "а"},
      {"IBM850", "\x84", "ä"},
      {"utf-8", "\xC3\xA4\xE2\x82\xAC", "ä€"},
      {"UTF-16", "a\0\x3D\xD8\x00\xDE"sv, "a\U0001F600", false},
      {"utf-16be", "\0a\xD8\x3D\xDE\x00"sv, "a\U0001F600", false},
      {"Shift_JIS", "\x93\xFA\x96\x7B z", "日本 z"},
      {"euc-jp", "\xC6\xFC", "日"},
      {"gb18030", "\xD6\xD0", "中"},
      {"UTF-32LE", "a\0\0\0"sv, "a", false},
  };
  const NativeEncodings encodings;
  for (const Case& each : cases) {
    const auto encoding = OpenIfThere(encodings, each.encoding);
    if (!encoding) continue;
    EXPECT_EQ(encoding->Decode(each.bytes), each.text) << each.encoding;
    EXPECT_EQ(encoding->Encode(each.text), each.bytes) << each.encoding;
    EXPECT_EQ(encoding->IsAsciiCompatible(), each.asciiCompatible) << each.encoding;
  }
}

TEST(Encodings, NoCharacterBringsAByteOrderMark) {
  const NativeEncodings encodings;
  for (const auto& [name, size] : {std::pair("UTF-32", 12U), std::pair("UTF16", 6U)}) {
    const std::string bytes = encodings.Open(name)->Encode("a<ü");
    EXPECT_EQ(bytes.size(), size) << name;
    EXPECT_EQ(encodings.Open(name)->Decode(bytes), "a<ü") << name;
  }
}

TEST(Encodings, WhatIsMissingIsToldAndReplaced) {
  const NativeEncodings encodings;
  struct Case {
    const char* encoding;
    std::string_view text;
    std::string_view bytes;
  };
  const Case cases[] = {{"iso-8859-1", "€1", "?1"},         {"windows-1252", "日", "?"},
                        {"windows-1252", "a\xFF", "a?"},    {"Shift_JIS", "ä日", "?\x93\xFA"},
                        {"Shift_JIS", "a\U000E0041", "a?"}, {"IBM943", "ä日", "?\x93\xFA"},
                        {"UTF-16", "\xFF", "?\0"sv}};
  for (const Case& each : cases) {
    const auto encoding = OpenIfThere(encodings, each.encoding);
    if (!encoding) continue;
    EXPECT_EQ(encoding->Encode(each.text), each.bytes) << each.text;
  }
  std::string bytes = "kept";
  EXPECT_FALSE(encodings.Open("iso-8859-1")->AppendCodePoint(U'\u20AC', bytes));
  EXPECT_EQ(bytes, "kept");
}

TEST(Encodings, BytesThatStandForNothingStayVisible) {
  const NativeEncodings encodings;
  EXPECT_EQ(encodings.Open("windows-1252")->Decode("a\x81z"), "a\uFFFDz");
  EXPECT_EQ(encodings.Open("utf-8")->Decode("a\xFFz"), "a\uFFFDz");
  EXPECT_EQ(encodings.Open("euc-jp")->Decode("a\xC6"), "a\uFFFD");
  EXPECT_EQ(encodings.Open("utf-16")->Decode("\xFF\xFE"
                                             "a\0\x00\xDC\x7A"sv),
            "a\uFFFD\uFFFD");
}

TEST(Encodings, UnknownNamesAreRefused) {
  const NativeEncodings encodings;
  for (const char* name : {"", "no-such-page", "iso-8859-1//IGNORE", "../x", "utf-8 ", "//"}) {
    EXPECT_EQ(ErrorNumberOf([&] { (void)encodings.Open(name); }), 5) << name;
    EXPECT_EQ(ErrorNumberOf([&] { (void)encodings.Open(name); }), 5) << name;
  }
}

}  // namespace
}  // namespace tessel::test
