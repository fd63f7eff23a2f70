#include <gtest/gtest.h>

#include "embedded/small_world.h"

namespace tessel::test {
namespace {

// What LFCStage2 was called with, as text.
struct Recorded {
  std::string operation;
  std::string rows;
  std::string links;
  int calls = 0;
};

class CopyWorld : public SmallWorld {
 public:
  CopyWorld(const std::string& objects, const std::string& links) : SmallWorld(objects, links) {
    folder.MakeFolder("out");
    host.SetLfcStage2([this](const PcSessionPtr&, const std::string& operation, const PcRecordListPtr& first,
                             const PcRecordListPtr& second, const PcRecordListPtr& third) {
      EXPECT_EQ(third, nullptr);
      recorded.operation = operation;
      recorded.rows = RowsText(*first, {"CLASS_ID", "OBJECT_ID", "OPERATION_ID", "FILE_NAME"});
      recorded.links = RowsText(*second, {"CLASS_ID", "OBJECT_ID1", "OBJECT_ID2", "VRK_DIRECTION"});
      ++recorded.calls;
    });
  }

  void Copy(ClassId classId, ObjectId id, int overwrite = 1) {
    const auto parameters = host.CreateRecordList();
    parameters->AddColumn("DIRECTORY", 255, 1);
    parameters->AddColumn("FILE_OVERWRITE", 2, 2);
    parameters->SetValue("DIRECTORY", 0, Value(folder.Path("out")));
    parameters->SetValue("FILE_OVERWRITE", 0, Value(overwrite));
    const PcObjectPtr object = Object(classId, id);
    const auto operation = object->Class()->LifeCycleOperations()->Item("CopyFile");
    CreateService<PcSessionUtil>(*session)->RunOperation(*object, *operation, true, nullptr, parameters);
  }
  std::string CopyError(ClassId classId, ObjectId id, int overwrite = 1) {
    return ErrorOf([&] { Copy(classId, id, overwrite); });
  }
  std::vector<std::string> Copied() const { return folder.Tree("out"); }

  Recorded recorded;
};

using Names = std::vector<std::string>;

std::string Structure() {
  return Document("Assembly", 1, "a.stp", R"("VRK_DESCRIPTION": "Top")") + "," + Document("Assembly", 2) +
         "," + Document("Part", 3, "b.stp", R"("FILE_NAME": "p3.stp", "CAD_REF_FILE_NAME": "shaft.stp")") +
         "," + Document("Part", 4, "c.stp", R"("CAD_REF_FILE_NAME": "")");
}

TEST(CopyTest, CopiesAllBelowOnceAndReportsRowsAndLinks) {
  // A cycle leads from 1202:4 back to the top; a general link ties 1202:3 to the top, another the user.
  CopyWorld world(Structure(), Link("Structure", 1, 3) + "," + Link("Structure", 1, 2) + "," +
                                   Link("Structure", 2, 3) + "," + Link("Structure", 2, 4) + "," +
                                   Link("Structure", 4, 1) + "," + Link("General Link", 3, 1) + "," +
                                   R"({"class": "General Link", "from": "3", "to": "anna"})");
  world.Copy(kAssembly, 1);
  EXPECT_EQ(world.Copied(), (Names{"a.stp", "c.stp", "shaft.stp"}));
  EXPECT_EQ(world.folder.Read("out/shaft.stp"), "content of b.stp");
  EXPECT_EQ(world.recorded.operation, "CopyFile");
  EXPECT_EQ(world.recorded.rows, "1201|1|6|a.stp; 1202|3|6|shaft.stp; 1201|2|0|; 1202|4|6|c.stp");
  EXPECT_EQ(world.recorded.links, "2001|1|3|1; 2001|1|2|1; 2000|3|1|1; 2001|2|3|1; 2001|2|4|1; 2001|4|1|1");
}

TEST(CopyTest, ASharedPartIsReplacedAndAnotherObjectsFileIsNot) {
  CopyWorld world(Document("Assembly", 1, "a.stp") + "," + Document("Part", 3, "b.stp") + "," +
                      Document("Part", 4, "c.stp", R"("FILE_NAME": "p4", "CAD_REF_FILE_NAME": "B.STP")"),
                  Link("Structure", 1, 3));
  world.Copy(kAssembly, 1);
  world.Copy(kPart, 3);
  EXPECT_TRUE(world.CopyError(kPart, 3, 0).starts_with("58 "));
  const std::string error = world.CopyError(kPart, 4);
  EXPECT_NE(error.find("object 1202_3"), std::string::npos) << error;
  EXPECT_NE(error.find("object 1202_4"), std::string::npos) << error;
  EXPECT_EQ(world.folder.Read("out/b.stp"), "content of b.stp");
  EXPECT_EQ(world.recorded.calls, 2);
  std::filesystem::remove(world.folder.Path("out/b.stp"));
  EXPECT_EQ(world.CopyError(kPart, 4), "") << "the earlier file is gone";
}

TEST(CopyTest, RefusalsComeBeforeTheFirstFile) {
  struct Case {
    const char* attribute;
    const char* name;
    const char* part;  // of the message
  };
  const Case cases[] = {
      {"CAD_REF_FILE_NAME", "../escape.stp", "no plain file name"},
      {"CAD_REF_FILE_NAME", "sub/b.stp", "no plain file name"},
      {"CAD_REF_FILE_NAME", "sub\\b.stp", "no plain file name"},
      {"CAD_REF_FILE_NAME", "..", "no plain file name"},
      {"CAD_REF_FILE_NAME", "C:b.stp", "no plain file name"},
      {"FILE_NAME", "../../etc/passwd", "no plain file name"},
      {"FILE_NAME", "missing.stp", "has no file \"missing.stp\" of object 1202_3"},
      {"CAD_REF_FILE_NAME", "A.stp", "belongs to object 1201_1 and to object 1202_3"},
  };
  for (const Case& each : cases) {
    CopyWorld world(Document("Assembly", 1, "a.stp") + "," + Document("Part", 3, "b.stp"),
                    Link("Structure", 1, 3));
    const PcObjectPtr part = world.Object(kPart, 3);
    part->SetValue(each.attribute, Value(each.name));
    ASSERT_EQ(part->Update(*world.behavior), 0);
    const std::string error = world.CopyError(kAssembly, 1);
    EXPECT_NE(error.find(each.part), std::string::npos) << each.name << ": " << error;
    EXPECT_EQ(world.Copied(), Names{}) << each.name;
    EXPECT_EQ(world.recorded.calls, 0);
  }
}

TEST(CopyTest, AWatchMayCancelInTheMiddleOfAFile) {
  CopyWorld world(Document("Assembly", 1, "a.stp") + "," + Document("Part", 3, "b.stp"),
                  Link("Structure", 1, 3));
  std::vector<embedded::CopyStep> steps;
  bool cancels = false;
  world.host.SetCopyWatch([&](const embedded::CopyStep& step) {
    steps.push_back(step);
    return !cancels || steps.size() < 3;
  });
  world.Copy(kAssembly, 1);
  ASSERT_GE(steps.size(), 1U);
  EXPECT_EQ(steps[0].files, 2U);

  std::filesystem::resize_file(world.folder.Path("vault/b.stp"), 20'000'000);
  std::filesystem::remove(world.folder.Path("out/b.stp"));
  steps.clear();
  cancels = true;
  EXPECT_NE(world.CopyError(kAssembly, 1).find("cancelled"), std::string::npos);
  EXPECT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps.back().fileName, "b.stp");
  EXPECT_LT(steps.back().bytesDone, steps.back().bytes);
  EXPECT_EQ(world.Copied(), Names{"a.stp"});
  EXPECT_EQ(world.recorded.calls, 1);
}

TEST(CopyTest, AMissingDirectoryKeepsTheFileSystemsNumber) {
  CopyWorld world(Document("Part", 3, "b.stp"), "");
  std::filesystem::remove(world.folder.Path("out"));
  EXPECT_TRUE(world.CopyError(kPart, 3).starts_with("76 "));
  EXPECT_EQ(world.recorded.calls, 0);
}

TEST(CopyTest, TheViewAsksFirstAndTakesItsDirectoryFromTheGlobalData) {
  CopyWorld world(Structure(), Link("Structure", 1, 3));
  world.session->GlobalData().Set("ExDir", Value(world.folder.Path("out")));
  const auto show = [&](int answer) {
    world.user.lifeCycleAnswer = answer;
    const auto view = CreateService<PcCommonGUI>(*world.session)->NewLifeCycleView();
    const PcObjectListPtr objects = world.session->ObjectStore()->NewObjectList();
    objects->Add(world.Object(kAssembly, 1));
    view->SetObjects(objects);
    view->SetOperation(world.Object(kAssembly, 1)->Class()->LifeCycleOperations()->Item("COPYFILE"));
    view->SetFlag(false);
    view->Show();
    return view->Result();
  };
  EXPECT_EQ(show(2), 2);
  EXPECT_EQ(show(7), 7);
  EXPECT_EQ(world.Copied(), Names{});
  EXPECT_EQ(show(1), 1);
  EXPECT_EQ(show(1), 1) << "a second copy of the same object replaces the files";
  EXPECT_EQ(world.Copied(), (Names{"a.stp", "shaft.stp"}));
  const embedded::LifeCycleRequest& request = world.user.lifeCycle;
  EXPECT_EQ(request.operation, "CopyFile");
  EXPECT_EQ(request.directory, world.folder.Path("out"));
  ASSERT_EQ(request.affected.size(), 2u);
  EXPECT_EQ(request.affected[0].description, "Top");
  EXPECT_EQ(request.affected[1].key, (ObjectKey{kPart, 3}));
}

TEST(LifeCycleTest, CheckInAndReleaseWriteStateAndComment) {
  SmallWorld world(Document("Part", 3));
  const PcObjectPtr part = world.Object(kPart, 3);
  const auto run = [&](const char* name) {
    const auto parameters = world.host.CreateRecordList();
    parameters->AddColumn("COMMENT", 255, 1);
    parameters->SetValue("COMMENT", 0, Value(std::string("by ") + name));
    CreateService<PcSessionUtil>(*world.session)
        ->RunOperation(*part, *part->Class()->LifeCycleOperations()->Item(name), true, nullptr, parameters);
    return world.Rows("select STATE, VRK_COMMENT from PART");
  };
  EXPECT_EQ(run("RELEASE"), "3|by RELEASE");
  EXPECT_EQ(run("checkin"), "1|by checkin");
  world.host.FailNext({embedded::HostCall::kUpdate, kPart, 1, 77});
  EXPECT_EQ(ErrorNumberOf([&] { run("RELEASE"); }), 77);
  EXPECT_EQ(world.Rows("select STATE from PART"), "1");
  EXPECT_EQ(ErrorOf([&] { run("MELT"); }), "440 The class has no life-cycle operation \"MELT\"");
}

}  // namespace
}  // namespace tessel::test
