#include <gtest/gtest.h>

#include "config/pelicore_admin_tool.h"
#include "config/string_tool.h"

namespace tessel {
namespace {

using Lines = std::vector<std::string>;

TEST(IniText, FindsExactlyTheEntriesThatAreOne) {
  struct Case {
    const char* what;
    std::string text;
    const char* value;
  };
  const Case cases[] = {
      {"an entry", "[Path]\r\nExchangePath=D:\\Exchange\r\n", "D:\\Exchange"},
      {"last line without end", "[Path]\r\nExchangePath=x", "x"},
      {"one character", "[Path]\r\nExchangePath=\r\n", ""},
      {"blanks around the sign", "[Path]\r\nExchangePath = x\r\n", "default"},
      {"blank before the key", "[Path]\r\n ExchangePath=x\r\n", "default"},
      {"blanks in the value", "[Path]\r\nExchangePath= x \r\n", " x "},
      {"second sign", "[Path]\r\nExchangePath=a=b\r\n", "default"},
      {"second sign, then a good one", "[Path]\r\nExchangePath==\r\nExchangePath=c\r\n", "c"},
      {"small letters", "[Path]\r\nexchangepath=x\r\n", "default"},
      {"no sign", "[Path]\r\nExchangePath\r\nExchangePath=x\r\n", "x"},
      {"comment", "[Path]\r\n#ExchangePath=x\r\n", "default"},
      {"two of one key", "[Path]\r\nExchangePath=a\r\nExchangePath=b\r\n", "a"},
      {"text behind the header", "[Path] old\r\nExchangePath=x\r\n", "x"},
      {"longer section name", "[PathX]\r\nExchangePath=x\r\n", "default"},
      {"blank before the header", " [Path]\r\nExchangePath=x\r\n", "default"},
      {"section in small letters", "[path]\r\nExchangePath=x\r\n", "default"},
      {"another section between", "[Path]\r\n[B]\r\nExchangePath=x\r\n", "default"},
      {"section's second part", "[Path]\r\na=b\r\n[B]\r\n[Path]\r\nExchangePath=x\r\n", "default"},
      {"line that begins with a bracket", "[Path]\r\n[\r\nExchangePath=x\r\n", "default"},
      {"before the section", "ExchangePath=x\r\n[Path]\r\n", "default"},
      {"LF alone", "[Path]\nExchangePath=x\n", "default"},
      {"CR alone", "[Path]\rExchangePath=x\r", "default"},
      {"LF inside a value", "[Path]\r\nExchangePath=a\nb\r\n", "a\nb"},
      {"no text", "", "default"},
      {"header alone", "[Path]", "default"},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(PelicoreAdminTool::IniValue_Retrieve(each.text, "Path", "ExchangePath", "default"), each.value)
        << each.what;
  }
  EXPECT_EQ(PelicoreAdminTool::IniValue_Retrieve("[S]\r\n#k=x\r\n=y\r\n", "S", "#k", ""), "x");
  EXPECT_EQ(PelicoreAdminTool::IniValue_Retrieve("[S]\r\n#k=x\r\n=y\r\n", "S", "", ""), "y");
}

TEST(IniText, CountsLinesThatAreNeitherEmptyNorComments) {
  const std::string text = "[A]\r\na=1\r\n#c\r\n\r\nb\r\n[B]\r\n \r\nx==\r\n[A]\r\nlate";
  EXPECT_EQ(PelicoreAdminTool::IniValue_Count(text, "A"), 2);
  EXPECT_EQ(PelicoreAdminTool::IniSectionLines(text, "A"), (Lines{"a=1", "b"}));
  EXPECT_EQ(PelicoreAdminTool::IniSectionLines(text, "B"), (Lines{" ", "x=="}));
  EXPECT_EQ(PelicoreAdminTool::IniValue_Count(text, "C"), 0);
}

TEST(StringTool, ReadsLinesUntilTheEnd) {
  const auto linesOf = [](const std::string& text) {
    StringTool tool;
    tool.OpenString(text);
    Lines lines;
    while (!tool.EndOfString())
      lines.emplace_back(tool.ReadLine());
    return lines;
  };
  EXPECT_EQ(linesOf("a\r\nb"), (Lines{"a", "b"}));
  EXPECT_EQ(linesOf("a\r\nb\r\n"), (Lines{"a", "b"}));
  EXPECT_EQ(linesOf("\r\n\r\nx"), (Lines{"", "", "x"}));
  EXPECT_EQ(linesOf("a\nb\rc\r"), (Lines{"a\nb\rc\r"}));
  EXPECT_EQ(linesOf(""), Lines{});

  StringTool tool;
  EXPECT_EQ(tool.ReadLine(), "");
  tool.OpenString("a\r\nb");
  EXPECT_EQ(tool.ReadLine(), "a");
  tool.ResetPosition();
  EXPECT_EQ(tool.ReadLine(), "a");
  tool.CloseString();
  EXPECT_TRUE(tool.EndOfString());
}

}  // namespace
}  // namespace tessel
