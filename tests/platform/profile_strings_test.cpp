#include <gtest/gtest.h>

#include "platform/profile_strings_file.h"
#include "support/machine.h"

namespace tessel {
namespace {

// Over our own reader of the files, and over what the system offers.
class ProfileStringsTest : public testing::TestWithParam<bool>, public test::Machine {
 protected:
  std::string Get(const std::string& section, const std::string& key, std::size_t size = 256) {
    return Profiles().Get(folder.Path("x.ini"), section, key, "default", size);
  }
  std::int32_t Write(const std::string& section, const std::string& key, const std::string& value) {
    return Profiles().Write(folder.Path("x.ini"), section, key, value);
  }
  ProfileStrings& Profiles() { return GetParam() ? platform.profiles : own_; }

 private:
  ProfileStringsFile own_{platform.files, *ansi};
};

INSTANTIATE_TEST_SUITE_P(OwnAndSystem, ProfileStringsTest, testing::Bool());

TEST_P(ProfileStringsTest, FindsValuesAsTheSystemDoes) {
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

TEST_P(ProfileStringsTest, CutsAtTheBufferInCharacters) {
  std::string value;
  for (int i = 0; i < 300; ++i)
    value += '\xFC';
  folder.Write("x.ini", "[s]\r\nk=" + value + "\r\n");
  EXPECT_EQ(Get("s", "k").size(), 255U * 2);
  EXPECT_EQ(Get("s", "none", 4), "def");
}

TEST_P(ProfileStringsTest, MissingAndUnreadableFilesGiveTheDefault) {
  EXPECT_EQ(Get("s", "k"), "default");
  folder.MakeFolder("x.ini");
  EXPECT_EQ(Get("s", "k"), "default");
  EXPECT_EQ(Write("s", "k", "v"), 0);
}

TEST_P(ProfileStringsTest, WritingKeepsTheOtherLines) {
  EXPECT_NE(Write("Trace", "TraceOn", "False"), 0);
  EXPECT_EQ(Get("trace", "traceon"), "False");

  folder.Write("x.ini", "; head\n[A]\r\na=1\r\n\r\n[B]\r\nb=2\r\n");
  EXPECT_NE(Write("a", "A", "ü"), 0);
  EXPECT_NE(Write("A", "new", "3"), 0);
  EXPECT_NE(Write("C", "c", "4"), 0);
  EXPECT_EQ(Get("A", "a") + Get("A", "new") + Get("B", "b") + Get("C", "c"), "ü324");
  EXPECT_NE(folder.Read("x.ini").find("; head\r\n[A]\r\n"), std::string::npos);
  EXPECT_NE(folder.Read("x.ini").find("=\xFC\r\nnew=3\r\n"), std::string::npos);
}

TEST_P(ProfileStringsTest, AValueCannotForgeALine) {
  EXPECT_EQ(Write("Trace", "TracePath", "x\r\nTraceOn=False"), 0);
  EXPECT_FALSE(folder.Exists("x.ini"));
}

}  // namespace
}  // namespace tessel
