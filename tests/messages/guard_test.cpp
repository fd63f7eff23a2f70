#include "messages/guard.h"

#include <gtest/gtest.h>

#include <new>

#include "support/recording_trace.h"

namespace tessel {
namespace {

using Lines = std::vector<std::string>;

TEST(Guard, AnErrorBecomesATraceLineAndTheFailureValue) {
  test::RecordingTrace recording;
  const auto trap = [&](auto body) { return Guarded(recording.trace, "step (X/Y)", -1, body); };
  EXPECT_EQ(trap([] { return 7; }), 7);
  EXPECT_EQ(trap([]() -> int { throw RuntimeError(76, "gone"); }), -1);
  EXPECT_EQ(trap([]() -> int { throw HostError("refused"); }), -1);
  EXPECT_EQ(trap([]() -> int { throw std::bad_alloc(); }), -1);
  EXPECT_EQ(trap([]() -> int { throw std::logic_error("odd"); }), -1);
  EXPECT_EQ(trap([]() -> int { throw 3; }), -1);
  EXPECT_EQ(recording.writer->Lines(),
            (Lines{"step (X/Y) [76 gone]", "step (X/Y) [440 refused]", "step (X/Y) [7 Out of memory]",
                   "step (X/Y) [51 Internal error: odd]", "step (X/Y) [51 Internal error]"}));
}

TEST(Guard, AFailingTraceWriterIsIgnoredInErrorLinesAlone) {
  test::RecordingTrace recording;
  recording.writer->failing = true;
  EXPECT_EQ(Guarded(recording.trace, "step", -1, []() -> int { throw RuntimeError(5, "x"); }), -1);
  EXPECT_THROW(recording.trace.Write("line"), RuntimeError);
  EXPECT_FALSE(IgnoringErrors([&] { recording.trace.Write("line"); }));
}

TEST(Trace, CallsCarryWhatWritersExpect) {
  test::RecordingTrace recording;
  recording.trace.Start("Start tracing on p_Client_GUI", "c:\\", "p_Client_GUI", true);
  recording.trace.Write("line");
  recording.trace.WriteError("bad", 100'000, "text");
  const auto& entries = recording.writer->entries;
  ASSERT_EQ(entries.size(), 3U);
  EXPECT_EQ(entries[0].directory + "|" + entries[0].name, "c:\\|p_Client_GUI");
  EXPECT_TRUE(entries[0].on);
  EXPECT_EQ(entries[1].directory + "|" + entries[1].name, "C:|Trace");
  EXPECT_FALSE(entries[1].on);
  EXPECT_EQ(entries[2].number, 32767);
}

TEST(Trace, TheWriterIsMadeOnFirstUseAndAgainAfterARelease) {
  int made = 0;
  Trace trace([&made]() -> std::shared_ptr<TraceWriter> {
    ++made;
    return std::make_shared<test::RecordingTraceWriter>();
  });
  trace.Flush();
  EXPECT_EQ(made, 0);
  trace.Write("a");
  trace.Write("b");
  EXPECT_EQ(made, 1);
  trace.Release();
  trace.Write("c");
  EXPECT_EQ(made, 2);
}

}  // namespace
}  // namespace tessel
