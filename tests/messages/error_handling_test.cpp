#include "messages/error_handling.h"

#include <gtest/gtest.h>

#include "host/error.h"
#include "messages/problems.h"
#include "support/machine.h"

namespace tessel {
namespace {

class ErrorHandlingTest : public testing::Test, public test::Machine, public CatalogueLocation {
 protected:
  [[nodiscard]] std::string Folder() const override { return folder.Path("lang"); }
  [[nodiscard]] std::string Language() const override {
    if (!session_) throw RuntimeError(error_number::kObjectNotSet, "no session");
    return language_;
  }

  // The text of "e0010" in a catalogue of one line, filled.
  std::string Filled(const std::string& text, std::string_view value1, std::string_view value2 = {},
                     std::string_view value3 = {}) {
    folder.Write("lang/error.Kestrix_GER", "e0010 " + text + "\r\n");
    return errors_.ErrorHandle("e0010", value1, value2, value3);
  }

  std::string language_ = "GER";
  bool session_ = true;
  Problems problems_;
  ErrorHandling errors_{platform.files, *ansi, *this, problems_};
};

TEST_F(ErrorHandlingTest, FindsTheFirstLineOfACode) {
  folder.Write("lang/error.Kestrix_GER",
               "; a comment\r\n"
               "\r\n"
               "e00\r\n"
               "E0010 capital letter\r\n"
               " e0010 indented\r\n"
               "e0010=Nothing selected\r\n"
               "e0010 second\r\n"
               "e0020\xFC  Gr\xFC\xDF\x65 \x81 \r\n"
               "e0030\r\n"
               "e0040 \r\n"
               "e0050 a\tb\r");
  struct Case {
    const char* code;
    const char* text;
  };
  const Case cases[] = {{"e0010", "Nothing selected"},
                        {"e0020", "  Grüße \uFFFD "},
                        {"e0030", ""},
                        {"e0040", ""},
                        {"e0050", "a\tb"},
                        {"e0060", "no Message found"},
                        {"e001", "no Message found"},
                        {"e00100", "no Message found"},
                        {"E0010", "no Message found"},
                        {"x0010", "no Message found"},
                        {"", "no Message found"},
                        {"p0001", "no Message found"}};
  for (const Case& each : cases)
    EXPECT_EQ(errors_.ErrorHandle(each.code), each.text) << each.code;
}

TEST_F(ErrorHandlingTest, PlaceholdersAreFilledInThreePasses) {
  EXPECT_EQ(Filled("Copied {0} to {1}", "a", "b"), "Copied a to b");
  EXPECT_EQ(Filled("{1} before {0}", "a", "b"), "b before a");
  EXPECT_EQ(Filled("{2}{1}{0}", "a", "b", "c"), "cba");
  EXPECT_EQ(Filled("{5} and {0}", "a"), "{5} and {0}");
  EXPECT_EQ(Filled("{0}{0}{0}{0}", "x"), "xxx{0}");
  EXPECT_EQ(Filled("{0}", "{1}", "y"), "y");
  EXPECT_EQ(Filled("{0}", "{0}"), "{0}");
  EXPECT_EQ(Filled("{0} {x} {1}", "a", "b"), "a {x} {1}");
  EXPECT_EQ(Filled("a {", "x"), "a {");
  EXPECT_EQ(Filled("a {1", "x", "y"), "a y");
  EXPECT_EQ(Filled("a {0\xE4z", "x"), "a xz");
}

TEST_F(ErrorHandlingTest, AnythingMissingGivesTheFallback) {
  EXPECT_EQ(errors_.ErrorHandle("e0010"), "no Message found");  // no folder
  folder.MakeFolder("lang/error.Kestrix_GER");
  EXPECT_EQ(errors_.ErrorHandle("e0010"), "no Message found");  // a folder in its place
  folder.Write("lang/error.Kestrix_", "e0010 without language");
  session_ = false;
  EXPECT_EQ(errors_.ErrorHandle("e0010"), "without language");
  session_ = true;
  folder.Write("secret", "e0010 outside");
  language_ = "/../../secret";
  EXPECT_EQ(errors_.ErrorHandle("e0010"), "no Message found");
}

TEST_F(ErrorHandlingTest, CaptionsFallBackToTheirDefault) {
  EXPECT_EQ(errors_.GetCaptionString("c0008", "Abbruch"), "Abbruch");
  EXPECT_EQ(errors_.GetCaptionString("c0008", ""), "no Message found");
  folder.Write("lang/caption.Kestrix_GER", "c0008 {0}\r\nc0009 \r\n");
  EXPECT_EQ(errors_.GetCaptionString("c0008", "Abbruch"), "{0}");
  EXPECT_EQ(errors_.GetCaptionString("c0009", "Weiter >>"), "");
}

TEST_F(ErrorHandlingTest, TheProtocolGrowsLineByLine) {
  folder.Write("lang/protocol.Kestrix_GER", "p0001 Start\r\np0002 {1} at {0}\r\np0004 \r\n");
  errors_.WriteProtocolString("p0001");
  errors_.WriteProtocolString("p0002", "noon", "me");
  errors_.WriteProtocolString("p0003");
  errors_.WriteProtocolString("p0004");
  EXPECT_EQ(errors_.ProtocolText, "Start\r\nme at noon\r\nno Message found\r\n");
}

}  // namespace
}  // namespace tessel
