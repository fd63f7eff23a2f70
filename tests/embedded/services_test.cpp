#include <gtest/gtest.h>

#include "embedded/small_world.h"

namespace tessel::test {
namespace {

TEST(SessionTest, UserLanguageAndSettings) {
  SmallWorld world;
  EXPECT_EQ(world.session->DatabaseAlias(), "SMALL");
  EXPECT_EQ(world.session->Language(), "GER");
  const PcUserPtr user = world.session->CurrentUser();
  EXPECT_EQ(user->LoginName(), "anna");
  EXPECT_EQ(user->Roles(), (std::vector<std::string>{"Designer", "Unlock"}));
  EXPECT_FALSE(user->IsAdministrator());
  EXPECT_EQ(user->UserObject()->Key(), (ObjectKey{10, 100}));

  const PcSessionPtr ben = world.host.OpenSession("ben");
  EXPECT_EQ(ben->Language(), "ENG");
  EXPECT_EQ(world.host.OpenSession("ben", "", "FRA")->Language(), "FRA");
  EXPECT_NE(ben->Identifier(), world.session->Identifier());
  EXPECT_TRUE(ben->Users().at(1)->IsAdministrator());
  for (const char* wrong : {"", "Secret", "secret "}) {
    EXPECT_NE(ErrorOf([&] { return world.host.OpenSession("anna", wrong); }), "") << wrong;
  }
  EXPECT_NE(ErrorOf([&] { return world.host.OpenSession("' OR '1'='1"); }), "");

  EXPECT_EQ(world.session->ConfigurationValue("Colour"), "blue");
  EXPECT_EQ(ben->ConfigurationValue("Colour"), "grey");
  EXPECT_EQ(ben->ConfigurationValue("Nothing"), "");
  ben->SetConfigurationValue("Colour", "red");
  ben->SetConfigurationValue("Colour", "green");
  EXPECT_EQ(world.host.OpenSession("ben")->ConfigurationValue("Colour"), "green");
  EXPECT_EQ(world.session->ConfigurationValue("Colour"), "blue");
}

TEST(SessionTest, GlobalDataBelongsToTheSession) {
  SmallWorld world;
  PcGlobalData& data = world.session->GlobalData();
  EXPECT_TRUE(data.Get("ExportObjCount").IsNull());
  EXPECT_EQ(data.Position("isKestrix"), 0);
  data.Remove("isKestrix");
  data.Set("a", Value(1));
  data.Set("isKestrix", Value("True"));
  data.Set("a", Value(2));
  EXPECT_EQ(data.Get("a"), Value(2));
  EXPECT_GE(data.Position("isKestrix"), 1);
  data.Remove("isKestrix");
  EXPECT_EQ(data.Position("isKestrix"), 0);
  EXPECT_TRUE(world.host.OpenSession("ben")->GlobalData().Get("a").IsNull());
}

TEST(SessionTest, AClosedSessionRefusesAndLeavesTheEngine) {
  SmallWorld world;
  const PcEnginePtr engine = world.session->Engine();
  EXPECT_EQ(engine->SessionCount(), 1);
  const PcObjectPtr user = world.session->CurrentUser()->UserObject();
  engine->Session(0)->Close();
  EXPECT_EQ(engine->SessionCount(), 0);
  EXPECT_EQ(ErrorOf([&] { user->ReadData(); }), "440 The session is not connected to the database");
  EXPECT_EQ(ErrorNumberOf([&] { return engine->Session(0); }), 9);
}

TEST(EngineTest, AnEngineOfItsOwnConnectsAndLogsIn) {
  SmallWorld world;
  const PcEnginePtr engine = world.host.CreateEngine();
  engine->Initialize("Pelicore32.ini");
  engine->SetOption(-1);
  const DatabaseEntry entry = engine->Database(engine->DefaultDatabaseName());
  EXPECT_NE(ErrorOf([&] { return engine->Database("OTHER"); }), "");
  const PcSessionPtr session = engine->NewSession(entry.name);
  EXPECT_EQ(session->CurrentUser(), nullptr);
  EXPECT_NE(ErrorOf([&] { return engine->Login(*session, "anna", "secret"); }), "") << "no connection";
  EXPECT_NE(ErrorOf([&] { engine->OpenConnection(*session, "elsewhere.db", "", -1); }), "");
  engine->OpenConnection(*session, entry.connectionText, entry.password, -1);
  EXPECT_EQ(engine->FirstSessionLogin().first, "");
  EXPECT_FALSE(engine->Login(*session, "anna", "wrong"));
  EXPECT_TRUE(engine->Login(*session, "anna", "secret"));
  EXPECT_EQ(engine->FirstSessionLogin(), (std::pair<std::string, std::string>{"anna", "secret"}));

  const PcSessionPtr second = engine->NewSession(entry.name);
  engine->OpenConnection(*second, entry.connectionText, entry.password, -1);
  const auto dialog = CreateService<PcCommonGUI>(*second)->NewLoginDialog();
  EXPECT_EQ(dialog->ShowModal(), 2);
  world.user.login = {true, "ben", "wrong"};
  EXPECT_EQ(dialog->ShowModal(), 0);
  world.user.login = {true, "ben", ""};
  EXPECT_EQ(dialog->ShowModal(), 1);
  EXPECT_EQ(second->CurrentUser()->LoginName(), "ben");
  engine->Shutdown();
  EXPECT_EQ(engine->SessionCount(), 0);
  EXPECT_EQ(world.session->Engine()->SessionCount(), 1) << "the client's engine is another one";
}

TEST(ServicesTest, UnknownServicesCannotBeCreated) {
  SmallWorld world;
  EXPECT_EQ(ErrorNumberOf([&] { return world.session->CreateService("PcGUISrv.Nothing"); }), 429);
}

TEST(ServicesTest, MessagesAreKeptInTheDatabase) {
  SmallWorld world;
  const auto store = CreateService<PcMessageStore>(*world.session);
  for (const char* subject : {"first", "it's \"second\""}) {
    const auto message = store->NewMessage();
    message->SetAddress("to@example.com", 1);
    message->SetAddress("from@example.com", 2);
    message->SetSubject(subject);
    message->SetText("line 1\r\nline 2");
    message->Submit(3);
  }
  EXPECT_EQ(
      world.Rows("select ID, RECIPIENT, SENDER, SUBJECT, BODY, SEND_OPTION, SUBMITTED_BY from MESSAGE_STORE"),
      "1|to@example.com|from@example.com|first|line 1\r\nline 2|3|anna; "
      "2|to@example.com|from@example.com|it's \"second\"|line 1\r\nline 2|3|anna");
}

TEST(ServicesTest, TheObjectDialogShowsDisplayTexts) {
  SmallWorld world(Document("Part", 3, "", R"("LOCKED_BY": "anna")"));
  const auto gui = CreateService<PcGUIServices>(*world.session);
  const auto dialog = gui->NewObjectDialog(1);
  EXPECT_EQ(dialog->PageCount(), 0);
  dialog->SetObject(world.Object(kPart, 3));
  dialog->SetTitle("A part");
  EXPECT_EQ(dialog->PageCount(), 1);
  dialog->SelectPage(1);
  EXPECT_EQ(dialog->ShowModal(), 1);
  const auto text = [&](const std::string& name) {
    for (const auto& [attribute, value] : world.user.shownAttributes) {
      if (attribute == name) return value;
    }
    return std::string("none");
  };
  EXPECT_EQ(text("VRK_ID"), "D-3");
  EXPECT_EQ(text("VRK_STATE"), "Checked In");
  EXPECT_EQ(text("LOCKED_BY"), "anna");
  gui->ActiveWindow()->RefreshObject({kPart, 3}, 1);
  gui->ShowSystemMessage(1, 2, {"a", "b"});
  EXPECT_EQ(
      world.user.Take(),
      "object dialog mode 1 \"A part\" page 1 modal 1202:3\nrefresh 1202:3 mode 1\nsystem message a b\n");
}

TEST(ServicesTest, SelectionsOfferObjectsAndWhatHangsBelow) {
  SmallWorld world(Document("Assembly", 1) + "," + Document("Part", 3) + "," + Document("Part", 4),
                   Link("Structure", 1, 4));
  const auto gui = CreateService<PcCommonGUI>(*world.session);
  EXPECT_EQ(gui->SelectObjects({"F", kPart, "Pick", true, false}), nullptr);
  world.user.picks = {1, 0, 99};
  EXPECT_EQ(RowsText(*gui->SelectObjects({"F", kPart, "Pick", true, false}), {"CLASS_ID", "OBJECT_ID"}),
            "1202|4; 1202|3");
  EXPECT_EQ(gui->SelectObjects({"F", kPart, "Pick", false, false})->RowCount(), 1);
  EXPECT_EQ(RowsText(*gui->SelectObjects({"F", kAssembly, "Pick", true, true}), {"CLASS_ID", "OBJECT_ID"}),
            "1202|4; 1201|1");
  world.user.picks = {0};
  EXPECT_EQ(gui->SelectFromQuery()->Key(), (ObjectKey{10, 100}));
  EXPECT_NE(ErrorOf([&] { return gui->SelectObjects({"F", 4711, "", true, false}); }), "");
}

TEST(RuntimeTest, WithoutARunningClientThereIsNoApplication) {
  SmallWorld world;
  EXPECT_EQ(world.host.RunningApplication()->Engine(), world.session->Engine());
  embedded::HostOptions options = HostOptionsOf(world, world.user);
  options.clientRuns = false;
  embedded::EmbeddedHost host(SmallModel(), world.folder.Path(), options);
  EXPECT_EQ(host.RunningApplication(), nullptr);
  EXPECT_EQ(host.CreateRecordList()->RowCount(), 0);
}

}  // namespace
}  // namespace tessel::test
