// The same walks through the pages over the headless toolkit and in real windows: a person sees the same.
#include <gtest/gtest.h>

#include "walks/walk.h"

namespace tessel::test {
namespace {

using Settings = std::map<std::string, std::string>;

constexpr ObjectKey kGearbox{1201, 4711};
constexpr ObjectKey kShafts{1201, 4712};
constexpr ObjectKey kOil{1202, 4732};
constexpr ObjectKey kDrawing{1203, 4743};
constexpr ObjectKey kStopped{900, 701};

Hooks Export(const std::vector<ObjectKey>& documents, const std::string& operation = {}) {
  return [=](HostedProgram& hosted) {
    PcRecordListPtr none;
    hosted.Entry().CollectSelObjs(hosted.Session(), "", hosted.ObjectRows(documents), nullptr, none);
    hosted.Entry().StartExport(hosted.Session(), operation, nullptr, nullptr, none);
  };
}

// Makes a walk over both toolkits, each in a company of its own.
void Compare(const Walk& walk, const Hooks& hooks, const Settings& settings = {}) {
  SampleCompany first(settings);
  SampleCompany second(settings);
  std::string headless = WalkHeadless(first, walk, hooks);
  std::string drawn = WalkDrawn(second, walk, hooks);
  for (auto* text : {&headless, &drawn}) {
    for (const SampleCompany* company : {&first, &second}) {
      const std::string path = company->Folder().Path();
      for (auto at = text->find(path); at != std::string::npos; at = text->find(path))
        text->replace(at, path.size(), "FOLDER");
    }
  }
  EXPECT_EQ(drawn, headless);
  EXPECT_EQ(second.Exchanged(), first.Exchanged());
}

Walk ToSendData(int mode) {
  Walk walk;
  walk.Enter();
  if (mode != 2) walk.Click("Check1(" + std::to_string(mode) + ")");
  return walk.Click("Command1");
}

TEST(Walks, MailToTwoRecipientsWithMenuAndRefusals) {
  Walk walk = ToSendData(1);
  walk.Click("Check1").Enter().Enter();
  walk.Click("Command4").Answer();
  walk.ClickNode("TreeView1", 0).ClickNode("TreeView2", 0).Click("Command4");
  walk.Click("Command4").Answer();
  walk.ClickNode("TreeView1", 1).ClickNode("TreeView2", 1).Click("Command4");
  walk.ClickNode("TreeView3", 1, MouseButton::kRight).Choose("mnuAddValues");
  walk.ClickNode("TreeView3", 0, MouseButton::kRight).Choose("");
  walk.Click("Command1");
  walk.Type("Text1(2)", "Gears & shafts").Type("Text1(3)", "one\ntwo").Click("Command1");
  walk.Type("Text1(2)", "Again").Click("Command1");
  Compare(walk, Export({kGearbox, kShafts}));
}

TEST(Walks, BackForwardAndResized) {
  Walk walk = ToSendData(3);
  walk.Resize({150, 300, 9000, 7500}).Click("Command2").Resize({300, 150, 7500, 6000}).Click("Command1");
  walk.ClickNodeBox("TreeView2", 1).ClickNode("TreeView2", 1).Press("TreeView2", U' ');
  walk.Click("Check1").Click("Check1").Click("Check1").Click("Command1").Click("Command1");
  walk.Resize({450, 450, 12000, 9000}).ClickNode("TreeView1", 2).Click("Command2").Click("Command1");
  walk.ClickNode("TreeView1", 1).ClickNode("TreeView2", 0).Click("Command4").ClickNode("TreeView3", 0);
  walk.Click("Command5")
      .Click("Command1")
      .Answer()
      .ClickNode("TreeView2", 1)
      .Click("Command4")
      .Click("Command1");
  walk.Type("Text1(2)", "Shafts").Click("Command1");
  Compare(walk, Export({kGearbox, kShafts}));
}

TEST(Walks, ObjectByObjectInTheHostsWindow) {
  Walk walk = ToSendData(5);
  walk.Click("Command1").AnswerLifeCycle(2);
  walk.Click("Command1").AnswerLifeCycle(7);
  walk.Click("Command1").AnswerLifeCycle(1);
  walk.ClickNode("TreeView2", 1).Click("Command1").AnswerLifeCycle(1).Click("Command1");
  Compare(walk, Export({kGearbox, kShafts}));
}

TEST(Walks, FolderStructureAndCustomForm) {
  Walk walk = ToSendData(4);
  walk.Click("Check1").Enter().Enter();
  walk.ClickNode("TreeView1", 0).ClickNode("TreeView2", 0).Click("Command4").Click("Command1");
  walk.Enter().Answer().Click("Command2");
  walk.ClickNode("TreeView1", 1).ClickNode("TreeView2", 0).Click("Command4").Click("Command1");
  walk.ClickNode("TreeView1", 1).Enter();
  walk.Resize({150, 150, 9000, 7500}).Type("Text1(1)", "4500012345").Type("Text2(1)", "a\nb");
  walk.Close().Answer(MessageAnswer::kNo).Click("Command1");
  Compare(walk, Export({kGearbox}, "StructureMode"), {{"UsePartnerList", "True"}, {"UseCustomForm", "True"}});
}

TEST(Walks, EveryWayOut) {
  const Settings keep{{"EnableKeepSelection", "True"}};
  Compare(Walk().Escape().Answer(MessageAnswer::kYes), Export({kGearbox}), keep);
  Compare(Walk().Close(), Export({kGearbox}));
  Compare(ToSendData(1).Escape().Answer(MessageAnswer::kNo), Export({kGearbox}), keep);
  Compare(ToSendData(1).Click("Check1").Enter().Enter().Close().Answer(), Export({kGearbox}));
}

TEST(Walks, HooksWithoutPages) {
  Compare(Walk().Answer().Answer().Answer(), [](HostedProgram& hosted) {
    PcRecordListPtr none;
    StartApplication& entry = hosted.Entry();
    const PcSessionPtr& session = hosted.Session();
    entry.StartExport(session, "", nullptr, nullptr, none);
    entry.CollectSelObjs(session, "", hosted.ObjectRows({kOil}), nullptr, none);
    entry.LockObject(session, "", hosted.ObjectRows({kShafts}), nullptr, none);
    entry.UnlockObject(session, "", hosted.ObjectRows({kDrawing}), nullptr, none);
    entry.GetLatestDataExObj(session, "", hosted.ObjectRows({kShafts}));
  });
}

}  // namespace
}  // namespace tessel::test
