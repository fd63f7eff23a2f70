#include "platform/paths.h"

#include <gtest/gtest.h>

namespace tessel {
namespace {

TEST(Paths, JoinUsesTheSeparatorOfTheBase) {
  struct Case {
    const char* base;
    const char* name;
    const char* joined;
  };
  const Case cases[] = {
      {R"(C:\temp)", "a", R"(C:\temp\a)"},
      {R"(C:\temp\)", "a", R"(C:\temp\a)"},
      {"C:", "a", R"(C:\a)"},
      {"C:/temp", "a", "C:/temp/a"},
      {"C:/temp/", "a", "C:/temp/a"},
      {"/tmp", "a", "/tmp/a"},
      {"/", "a", "/a"},
      {R"(/tmp\)", "a", R"(/tmp\/a)"},
      {"", "a", "a"},
      {R"(sub\dir)", "a", R"(sub\dir\a)"},
      {"sub", "a", "sub/a"},
      {R"(\\srv\x)", "a", R"(\\srv\x\a)"},
  };
  for (const Case& each : cases)
    EXPECT_EQ(paths::Join(each.base, each.name), each.joined) << each.base;
}

TEST(Paths, ParentAndNameAreCutAtTheLastSeparatorOfThePathsOwnKind) {
  struct Case {
    const char* path;
    const char* parent;
    const char* name;
  };
  const Case cases[] = {
      {R"(C:\a\b.txt)", R"(C:\a)", "b.txt"},
      {R"(C:\a/b.txt)", R"(C:\a)", "b.txt"},
      {R"(/a/b\c)", "/a", R"(b\c)"},
      {"/a", "", "a"},
      {"plain", "", "plain"},
      {R"(C:\a\)", R"(C:\a)", ""},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(paths::Parent(each.path), each.parent) << each.path;
    EXPECT_EQ(paths::FileName(each.path), each.name) << each.path;
  }
}

TEST(Paths, SameNamesForWindowsAndFullPaths) {
  const std::pair<const char*, const char*> same[] = {
      {"a.XML", "A.xml"}, {"\u00DCbersicht", "\u00FCBERSICHT"}, {"\u0416\u0416", "\u0436\u0416"}, {"", ""}};
  for (const auto& [one, other] : same)
    EXPECT_TRUE(paths::IsSameFileName(one, other)) << one;
  EXPECT_FALSE(paths::IsSameFileName("a.xml", "a.xm"));
  EXPECT_FALSE(paths::IsSameFileName("\u00D7", "\u00F7"));
  for (const char* full : {"/a", "C:\\a", "\\\\server\\share", "d:/"})
    EXPECT_TRUE(paths::IsFullPath(full)) << full;
  for (const char* partial : {"", "a", "a/b", "..\\a"})
    EXPECT_FALSE(paths::IsFullPath(partial)) << partial;
}

TEST(Paths, OnlyHarmlessNamesArePlain) {
  for (const char* name : {"a.txt", "Übersicht 1.pdf", "...", ".hidden", "a..b"}) {
    EXPECT_TRUE(paths::IsPlainFileName(name)) << name;
  }
  for (const char* name : {"", ".", "..", "../x", "a/b", R"(a\b)", "C:x", "a\nb", "a\x7F", "a\xFF.stp",
                           "a\xC3", "a\xEF\xBF\xBF"}) {
    EXPECT_FALSE(paths::IsPlainFileName(name)) << name;
  }
  EXPECT_FALSE(paths::IsPlainFileName(std::string_view("a\0b", 3)));
}

}  // namespace
}  // namespace tessel
