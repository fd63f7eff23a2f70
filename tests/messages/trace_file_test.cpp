#include "messages/trace_file.h"

#include <gtest/gtest.h>

#include "support/native_adapters.h"
#include "support/temporary_folder.h"

namespace tessel {
namespace {

// Counts the appends, which cost a failing file system its time.
class CountingFiles : public test::NativeFileSystem {
 public:
  using Files = test::NativeFileSystem;
  using Files::Files;
  void AppendBytes(const std::string& path, std::string_view bytes) override {
    ++appends;
    Files::AppendBytes(path, bytes);
  }
  int appends = 0;
};

class TraceFileTest : public testing::Test {
 protected:
  void Start(const std::string& name, bool on = true) {
    trace_.Start("Start tracing on " + name + " at: 1", folder_.Path(), name, on);
  }
  std::string Log(const std::string& name) {
    trace_.Flush();
    return folder_.Exists(name + ".log") ? folder_.Read(name + ".log") : "none";
  }

  test::TemporaryFolder folder_;
  CountingFiles files_{folder_.Path("drives")};
  test::NativeEncodings encodings_;
  TraceFile file_{files_, encodings_.Open("windows-1252")};
  Trace trace_{file_.Factory()};
};

TEST_F(TraceFileTest, LinesLandInTheFileOfTheHook) {
  trace_.Write("before any start");
  Start("p_GUI");
  trace_.Write("Verzeichnis für Übergabe: C:\\temp\\new");
  trace_.WriteError("failed (X/Y)", 76, "Path not found");
  Start("p_Lock");
  trace_.Write("locked");
  trace_.Release();
  trace_.Write("after the release");
  EXPECT_EQ(Log("p_GUI"),
            "Start tracing on p_GUI at: 1\r\n"
            "Verzeichnis f\xFCr \xDC"
            "bergabe: C:\\temp\\new\r\n"
            "failed (X/Y) [76 Path not found]\r\n");
  EXPECT_EQ(Log("p_Lock"), "Start tracing on p_Lock at: 1\r\nlocked\r\nafter the release\r\n");
}

TEST_F(TraceFileTest, TheSwitchOfTheStartCounts) {
  Start("p", true);
  Start("p", false);
  trace_.Write("line");
  EXPECT_EQ(Log("p"), "Start tracing on p at: 1\r\n");
  Start("p", true);
  EXPECT_EQ(Log("p"), "Start tracing on p at: 1\r\nStart tracing on p at: 1\r\n");
}

TEST_F(TraceFileTest, DataCannotForgeALine) {
  Start("p");
  trace_.Write("value: x\r\nStart tracing on q\x1B[2J\ty");
  trace_.WriteError("bad", 5, "a\nb");
  EXPECT_EQ(Log("p"),
            "Start tracing on p at: 1\r\n"
            "value: x<0D><0A>Start tracing on q<1B>[2J\ty\r\n"
            "bad [5 a<0A>b]\r\n");
}

TEST_F(TraceFileTest, ErrorsAndReleasesReachTheDiskAtOnceOthersInBlocks) {
  Start("p");
  const int before = files_.appends;
  for (int i = 0; i < 100; ++i)
    trace_.Write("line");
  EXPECT_EQ(files_.appends, before);
  trace_.WriteError("bad", 5, "x");
  EXPECT_EQ(files_.appends, before + 1);
  for (int i = 0; i < 10'000; ++i)
    trace_.Write("line");
  EXPECT_LT(files_.appends, before + 20);
  trace_.Release();
  EXPECT_EQ(folder_.Read("p.log").size(),
            std::string("Start tracing on p at: 1\r\nbad [5 x]\r\n").size() + 10'100 * 6);
}

TEST_F(TraceFileTest, AnUnwritablePlaceIsTriedOnceAHook) {
  trace_.Start("Start tracing on p", folder_.Path("none"), "p", true);
  EXPECT_EQ(files_.appends, 1);
  for (const char* nowhere : {"", "relative"})
    trace_.Start("Start tracing on p", nowhere, "p", true);
  EXPECT_EQ(files_.appends, 1);
  trace_.Start("Start tracing on p", folder_.Path("none"), "p", true);
  files_.appends = 1;
  for (int i = 0; i < 5'000; ++i)
    trace_.WriteError("line", 5, "x");
  EXPECT_EQ(files_.appends, 1);
  Start("p");
  EXPECT_EQ(Log("p"), "Start tracing on p at: 1\r\n");
}

TEST_F(TraceFileTest, ANameCannotLeaveTheDirectory) {
  trace_.Start("Start tracing on x", folder_.MakeFolder("sub"), "../x", true);
  trace_.Write("line");
  trace_.Flush();
  EXPECT_EQ(folder_.Tree(), std::vector<std::string>{"sub/"});
}

}  // namespace
}  // namespace tessel
