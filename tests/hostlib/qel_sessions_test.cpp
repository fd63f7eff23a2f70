#include "hostlib/qel_world.h"

namespace tessel::test {
namespace {

class StartPelicore : public QelFunctionPoolTest {
 protected:
  // The login name of the session, "refused" without one.
  std::string Start(const std::string& name, const std::string& password, std::int16_t useCurrent) {
    if (!pool_.StartPelicore(engine_, started_, name, password, useCurrent)) return "refused";
    return started_->CurrentUser()->LoginName();
  }
  PcEnginePtr engine_;
  PcSessionPtr started_;
};

TEST_F(StartPelicore, LogsInAsTheGivenUserTheCurrentOneOrThroughTheDialog) {
  world_.driver.AnswerLogin({true, "bert", "b"}).AnswerLogin({true, "bert", "wrong"}).AnswerLogin({});
  EXPECT_EQ(Start("bert", "b", 0), "bert");
  EXPECT_EQ(engine_->SessionCount(), 1);
  EXPECT_EQ(Start("", "", 0), "bert");
  // A new engine has no session with a user but the one being made.
  EXPECT_EQ(Start("", "", -1), "refused");
  for (const char* dialog : {"wrong password", "cancelled"})
    EXPECT_EQ(Start("", "", 0), "refused") << dialog;
}

TEST_F(StartPelicore, StopsTheEngineAfterARefusedLogin) {
  EXPECT_EQ(Start("anna", "wrong", 0), "refused");
  EXPECT_EQ(engine_->SessionCount(), 0);
  EXPECT_THROW(static_cast<void>(started_->Users()), HostError);  // closed
  EXPECT_EQ(Start("", "a", 0), "refused");                        // a password alone is a login too
  EXPECT_EQ(world_.driver.Transcript(), "");
}

TEST_F(QelFunctionPoolTest, KnowsClassesBehavioursAndDirectories) {
  EXPECT_EQ(pool_.GetClassId(session_, "Drawing"), 1203);
  EXPECT_EQ(pool_.GetClassId(session_, "Nothing"), 0);
  const PcBehaviorPtr behavior = pool_.Behavior(session_, 4, 3, 2, 1);
  for (int number = 1; number <= 4; ++number)
    EXPECT_EQ(behavior->Get(number), 5 - number);
  pool_.SetViewDir(session_, "C:\\view");
  pool_.SetWorkDir(session_, "C:\\work");
  EXPECT_EQ(pool_.GetViewDir(session_), "C:\\view");
  EXPECT_EQ(pool_.GetWorkDir(session_), "C:\\work");
  EXPECT_EQ(session_.ConfigurationValue("$Local\\Directory Structure\\ReadOnlyDir"), "C:\\view");
}

TEST_F(QelFunctionPoolTest, KeepsAMessageInTheMessageStore) {
  pool_.SendExternalMessage(session_, "to@example.com", "from@example.com", "Subject", "It's text", 3);
  EXPECT_EQ(world_.Rows("select RECIPIENT, SENDER, SUBJECT, BODY, SEND_OPTION from MESSAGE_STORE"),
            "to@example.com|from@example.com|Subject|It's text|3");
}

TEST_F(QelFunctionPoolTest, ReadsAndWritesSettingsOfAnIniFile) {
  pool_.IniFile(world_.folder.Path("settings.ini"));
  EXPECT_EQ(pool_.ReadSetting("Mail", "Server", "none"), "none");
  EXPECT_EQ(pool_.ReadSetting("Mail", "Server", ""), "");
  pool_.WriteSetting("Mail", "Server", std::string(300, 'x'));
  EXPECT_EQ(pool_.ReadSetting("Mail", "Server", "none"), std::string(255, 'x'));
}

TEST_F(QelFunctionPoolTest, TracesOnlyIntoAFileThatExists) {
  const std::string path = world_.folder.Path("library.txt");
  pool_.TraceFile(path);
  pool_.PutTrace(TracePair{"Ids", Value("x")});
  pool_.PutTraceRecList(world_.host.CreateRecordList(), "Title");
  EXPECT_FALSE(world_.folder.Exists("library.txt"));
  world_.folder.Write("library.txt", "");
  pool_.PutTrace(TracePair{"Ids", TraceArray{0, {Value("x"), Value("y")}}}, TracePair{"Left out", {}},
                 TracePair{"Id", Value(7)});
  EXPECT_EQ(world_.folder.Read("library.txt"), "Ids(00): >>x<<\r\nIds(01): >>y<<\r\nId: >>7<<\r\n");
  pool_.PutTraceObject(world_.Object({1203, 5}), "Drawing");
  EXPECT_NE(world_.folder.Read("library.txt").find("VRK_ID:   D-5"), std::string::npos);
}

}  // namespace
}  // namespace tessel::test
