#include "platform/posix/native_paths.h"

#include <gtest/gtest.h>

namespace tessel::posix {
namespace {

TEST(NativePaths, DrivePathsLieInTheDrivesDirectory) {
  struct Case {
    const char* path;
    const char* native;
  };
  const Case cases[] = {
      {R"(C:\temp\Exchange)", "/drives/C/temp/Exchange"},
      {R"(c:\)", "/drives/C"},
      {"c:", "/drives/C"},
      {R"(D:/a\b//c\)", "/drives/D/a/b/c"},
      {R"(C:\..\..\etc\passwd)", "/drives/C/etc/passwd"},
      {R"(C:\a\..\..\..\b\.\c)", "/drives/C/b/c"},
      {R"(\\server\data\x)", "/drives/UNC/server/data/x"},
      {R"(\\..\..\etc)", "/drives/UNC/etc"},
      {R"(\temp)", "/drives/C/temp"},
      {"/tmp/x", "/tmp/x"},
      {R"(/tmp/a\b)", R"(/tmp/a\b)"},
      {R"(sub\dir/x)", "sub/dir/x"},
      {"", ""},
  };
  const NativePaths paths("/drives");
  for (const Case& each : cases)
    EXPECT_EQ(paths.Native(each.path), each.native) << each.path;
}

}  // namespace
}  // namespace tessel::posix
