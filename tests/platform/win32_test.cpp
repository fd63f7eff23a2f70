// What only Windows knows: long and mapped paths, arguments in one line, code pages with filled holes.
#include <gtest/gtest.h>

#include "platform/win32/code_pages.h"
#include "platform/win32/native_paths.h"
#include "platform/win32/wide_text.h"
#include "platform/win32/win32_services.h"

namespace tessel::windows {
namespace {

TEST(Win32Paths, PathsAreMappedAndLongOnesAreMarked) {
  struct Case {
    const char* drives;
    std::string path;
    std::wstring wide;
  };
  const std::string longName(250, 'x');
  const Case cases[] = {
      {"", R"(C:\temp\)", LR"(C:\temp)"},
      {"", "C:/temp/a", LR"(C:\temp\a)"},
      {"", R"(C:\)", LR"(C:\)"},
      {"", R"(\\server\share\x)", LR"(\\server\share\x)"},
      {"", R"(C:\)" + longName, LR"(\\?\C:\)" + ToWide(longName)},
      {"", R"(C:/a/../)" + longName, LR"(\\?\C:\)" + ToWide(longName)},
      {"", R"(\\server\share\)" + longName, LR"(\\?\UNC\server\share\)" + ToWide(longName)},
      {"Z:/drives", R"(C:\temp)", LR"(Z:\drives\C\temp)"},
      {"Z:/drives", R"(c:\..\..\etc)", LR"(Z:\drives\C\etc)"},
      {"Z:/drives", R"(\\server\x)", LR"(Z:\drives\UNC\server\x)"},
      {"Z:/drives", "/tmp/x", LR"(\tmp\x)"},
  };
  for (const Case& each : cases)
    EXPECT_EQ(ToUtf8(NativePaths(each.drives).Wide(each.path)), ToUtf8(each.wide)) << each.path;
}

TEST(Win32Launcher, AnArgumentIsQuotedAsProgramsReadIt) {
  struct Case {
    std::wstring argument;
    std::wstring quoted;
  };
  const Case cases[] = {{L"plain", L"plain"},
                        {L"", L"\"\""},
                        {L"a b", L"\"a b\""},
                        {L"a\\b", L"a\\b"},
                        {L"C:\\a b\\", L"\"C:\\a b\\\\\""},
                        {L"say \"x\"", L"\"say \\\"x\\\"\""},
                        {L"\\\"", L"\"\\\\\\\"\""}};
  for (const Case& each : cases)
    EXPECT_EQ(ToUtf8(QuotedArgument(each.argument)), ToUtf8(each.quoted));
}

TEST(Win32Encodings, HolesThatWindowsFillsStandForNothing) {
  const CodePages pages;
  for (const char byte : {'\x81', '\x8D', '\x8F', '\x90', '\x9D'})
    EXPECT_EQ(pages.Open("windows-1252")->Decode({&byte, 1}), "\xEF\xBF\xBD");
  std::string bytes;
  EXPECT_FALSE(pages.Open("windows-1252")->AppendCodePoint(0x81, bytes));
  EXPECT_FALSE(pages.Open("windows-1252")->AppendCodePoint(0x0100, bytes)) << "no look-alike for a macron";
}

TEST(WideText, SurrogatesAndRubbishAreToldApart) {
  EXPECT_EQ(ToUtf8(ToWide("a\xC3\xA4\xF0\x9F\x98\x80")), "a\xC3\xA4\xF0\x9F\x98\x80");
  EXPECT_EQ(ToUtf8(std::wstring(L"x") + wchar_t(0xD800) + L"y"), "x\xEF\xBF\xBDy");
  EXPECT_EQ(ToWide("\xFF"), std::wstring(1, wchar_t(0xFFFD)));
}

}  // namespace
}  // namespace tessel::windows
