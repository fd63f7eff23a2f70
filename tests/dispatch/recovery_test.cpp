#include "dispatch/recovery.h"

#include <gtest/gtest.h>

#include "exchange/export_journal.h"
#include "support/export_world.h"

namespace tessel {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* kName = "@@_anna_20240131_154502";
constexpr const char* kFinal = "Export_anna_20240131_154502_New";

class Recovery : public testing::Test {
 protected:
  [[nodiscard]] std::string Directory() const { return world_.folder.Path(std::string("ex/") + kName); }
  [[nodiscard]] std::string JournalFile() const { return std::string("ex/") + kName + ".journal"; }
  // A data exchange object, within a unit of work of the mark when there is one.
  ObjectKey Record(const std::string& mark) {
    const PcUnitOfWorkPtr unit = mark.empty() ? nullptr : world_.session->BeginUnitOfWork(mark);
    const PcObjectPtr record = world_.session->ObjectStore()->NewObject(900);
    EXPECT_EQ(record->Add(*world_.session->NewBehavior()), 0);
    if (unit) unit->Commit();
    return record->Key();
  }
  Lines Recover(const RecoveryOptions& options = {}) {
    Lines steps;
    for (const Recovered& one : RecoverExports(world_.trace.trace, world_.platform.files, *world_.session,
                                               world_.folder.Path("ex"), options))
      steps.push_back(std::to_string(static_cast<int>(one.step)) + " " +
                      one.subject.substr(one.subject.rfind('/') + 1));
    return steps;
  }
  [[nodiscard]] std::string Records() { return world_.Rows("select count(*) from DATA_EXCHANGE"); }

  test::ExportWorld world_;
};

TEST_F(Recovery, BringsWhatWasCutOffToOneEndOrTheOther) {
  const std::string forward = std::string("0 ") + kFinal;
  const std::string removed = std::string("1 ") + kName;
  const struct {
    const char* what;
    std::string lines;
    bool committed;  // the unit of work "mark"
    Lines steps;
    const char* records;
  } cases[] = {
      {"made only", "made\t%D\n", false, {removed}, "0"},
      {"not committed", "made\t%D\nready\t%D\tExport\tmark\n", false, {removed}, "0"},
      {"committed", "made\t%D\nready\t%D\tExport\tmark\n", true, {forward}, "1"},
      {"the line was cut off", "made\t%D\nready\t%D\tExport\tmark", true, {removed}, "1"},
      {"withdrawn", "made\t%D\nready\t%D\tExport\tmark\nmade\t%D\n", true, {removed}, "1"},
      {"host without units, not complete",
       "made\t%D\nrecorded\t%D\t900\t%R\n",
       true,
       {"2 900:%R", removed},
       "0"},
      {"host without units, complete",
       "made\t%D\nrecorded\t%D\t900\t%R\nready\t%D\tExport\t\n",
       true,
       {forward},
       "1"},
      {"lines that lead elsewhere",
       "made\t..\nmade\tother\nready\t../%D\tExport\t\nmade\t%D\n",
       false,
       {removed},
       "0"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.what);
    const ObjectKey record = each.committed ? Record("mark") : ObjectKey{};
    const auto filled = [&](std::string text) {
      for (const auto& [from, to] :
           {std::pair<std::string, std::string>{"%D", kName}, {"%R", std::to_string(record.objectId)}}) {
        for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at))
          text.replace(at, from.size(), to);
      }
      return text;
    };
    world_.folder.Write(std::string("ex/") + kName + "/part.stp", "part");
    world_.folder.Write("ex/other/theirs.stp", "theirs");
    world_.folder.Write(JournalFile(), filled(each.lines));
    Lines steps = each.steps;
    for (std::string& step : steps)
      step = filled(step);
    EXPECT_EQ(Recover({.dryRun = true}), steps);
    EXPECT_EQ(world_.folder.Read(JournalFile()), filled(each.lines)) << "a dry run changes nothing";
    EXPECT_EQ(Recover(), steps);
    const bool isForward = steps.back() == forward;
    EXPECT_EQ(world_.folder.Tree("ex"),
              isForward ? (Lines{std::string(kFinal) + "/", std::string(kFinal) + "/part.stp", "other/",
                                 "other/theirs.stp"})
                        : (Lines{"other/", "other/theirs.stp"}));
    EXPECT_EQ(Records(), each.records);
    EXPECT_EQ(Recover(), Lines{});
    world_.session->ForgetMark("mark");
    if (isForward) world_.platform.files.DeleteFolder(world_.folder.Path(std::string("ex/") + kFinal));
    const PcObjectPtr row = world_.session->ObjectStore()->Object(record);
    if (row) {
      EXPECT_EQ(row->Delete(*world_.session->NewBehavior()), 0);
    }
  }
}

TEST_F(Recovery, LeavesALivingExportAloneAndStraysUnlessTold) {
  const auto journal = [&] {
    world_.folder.MakeFolder("ex");
    return ExportJournal::Begin(world_.platform.files, Directory());
  }();
  journal->Making(Directory());
  world_.folder.Write(std::string("ex/") + kName + "/part.stp", "part");
  world_.folder.Write(std::string("ex/") + kName + "_temp/part.stp", "part");
  world_.folder.Write("ex/@@_bert_20200101_000000/old.stp", "old");
  EXPECT_EQ(Recover(), Lines{});
  EXPECT_EQ(Recover({.removeStrays = true}), Lines{"1 @@_bert_20200101_000000"});
  EXPECT_TRUE(world_.folder.Exists(std::string("ex/") + kName + "_temp/part.stp"));
}

}  // namespace
}  // namespace tessel
