#include <gtest/gtest.h>

#include "platform/profile_strings_file.h"
#include "support/machine.h"

namespace tessel {
namespace {

class ProfileStringsTest : public testing::Test, public test::Machine {
 protected:
  std::string Get(const std::string& section, const std::string& key, std::size_t size = 256) {
    return profiles_.Get(folder.Path("x.ini"), section, key, "default", size);
  }
  std::int32_t Write(const std::string& section, const std::string& key, const std::string& value) {
    return profiles_.Write(folder.Path("x.ini"), section, key, value);
  }

  ProfileStringsFile profiles_{platform.files, *ansi};
};

TEST_F(ProfileStringsTest, FindsValuesAsTheSystemDoes) {
  folder.Write("x.ini",
               "outside=0\r\n"
               "[Other]\r\nTraceOn=wrong\r\n"
               " [ trace ] behind\r\n"
               "; TraceOn=comment\r\n"
               "no entry\r\n"
               " traceON \t=  False \r\n"
               "TraceOn=second\n"
               "Quoted=\" blanks kept \"\r\n"
               "Single='x'\r\n"
               "Unbalanced=\"x\r\n"
               "Empty=\r\n"
               "Equals=a=b\r\n"
               "Umlaut=\xFC\r\n"
               "[Trace]\r\nLate=1\r\n");
  struct Case {
    const char* section;
    const char* key;
    const char* value;
  };
  const Case cases[] = {
      {"Trace", "TraceOn", "False"},   {"TRACE", "traceon", "False"},  {"Trace", "Quoted", " blanks kept "},
      {"Trace", "Single", "x"},        {"Trace", "Unbalanced", "\"x"}, {"Trace", "Empty", ""},
      {"Trace", "Equals", "a=b"},      {"Trace", "Umlaut", "ü"},       {"Trace", "Late", "default"},
      {"Trace", "Missing", "default"}, {"None", "TraceOn", "default"}, {"Trace", "outside", "default"},
      {"Trace", "no entry", "default"}};
  for (const Case& each : cases)
    EXPECT_EQ(Get(each.section, each.key), each.value) << each.key;
}

TEST_F(ProfileStringsTest, CutsAtTheBufferInCharacters) {
  std::string value;
  for (int i = 0; i < 300; ++i)
    value += '\xFC';
  folder.Write("x.ini", "[s]\r\nk=" + value + "\r\n");
  EXPECT_EQ(Get("s", "k").size(), 255U * 2);
  EXPECT_EQ(Get("s", "none", 4), "def");
}

TEST_F(ProfileStringsTest, MissingAndUnreadableFilesGiveTheDefault) {
  EXPECT_EQ(Get("s", "k"), "default");
  folder.MakeFolder("x.ini");
  EXPECT_EQ(Get("s", "k"), "default");
  EXPECT_EQ(Write("s", "k", "v"), 0);
}

TEST_F(ProfileStringsTest, WritingKeepsTheOtherLines) {
  EXPECT_NE(Write("Trace", "TraceOn", "False"), 0);
  EXPECT_EQ(folder.Read("x.ini"), "[Trace]\r\nTraceOn=False\r\n");

  folder.Write("x.ini", "; head\n[A]\r\na=1\r\n\r\n[B]\r\nb=2\r\n");
  EXPECT_NE(Write("a", "A", "ü"), 0);
  EXPECT_NE(Write("A", "new", "3"), 0);
  EXPECT_NE(Write("C", "c", "4"), 0);
  EXPECT_EQ(folder.Read("x.ini"), "; head\r\n[A]\r\nA=\xFC\r\nnew=3\r\n\r\n[B]\r\nb=2\r\n[C]\r\nc=4\r\n");
}

TEST_F(ProfileStringsTest, AValueCannotForgeALine) {
  EXPECT_EQ(Write("Trace", "TracePath", "x\r\nTraceOn=False"), 0);
  EXPECT_FALSE(folder.Exists("x.ini"));
}

}  // namespace
}  // namespace tessel
