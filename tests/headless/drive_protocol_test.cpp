#include "headless/drive_protocol.h"

#include <gtest/gtest.h>

#include <sstream>

#include "headless/sample_pages.h"
#include "host/error.h"

namespace tessel {
namespace {

const std::string kIntoSecondPage = R"({"do":"call","hook":"StartExport"}
{"do":"click","control":"Command1"}
)";

// Hooks of a made-up program; each call sees new pages.
class SampleHooks : public DrivenHooks {
 public:
  SampleHooks(HeadlessToolkit& toolkit, embedded::HostDialogs& dialogs)
      : toolkit_(toolkit), dialogs_(dialogs) {}

  std::vector<std::string> HookNames() const override { return {"StartExport", "Dialogs", "Echo", "Broken"}; }

  int Call(const HookCall& call) override {
    if (call.hook == "Broken") throw RuntimeError(13, "Type mismatch");
    if (call.hook == "Echo") return Echo(call);
    if (call.hook == "Dialogs") return ShowDialogs();
    test::SamplePages pages(toolkit_);
    pages.Run();
    return pages.cancelled ? 1 : 0;
  }

  Value GlobalValue(const std::string& name) const override {
    if (name == "broken") throw HostError("the session is closed");
    return name == "ExportObjCount" ? Value(std::int16_t{3}) : Value();
  }

  std::string dialogAnswers;
  std::string echoed;

 private:
  int Echo(const HookCall& call) {
    echoed += call.operation + (call.second ? " second" : "") + (call.third ? " third" : "");
    for (const auto& row : call.first.value_or(PlainRecords{})) {
      echoed += " |";
      for (const auto& [column, value] : row) {
        echoed += " " + column + "=" + value.AsText() + (value.IsText() ? "(text)" : "");
      }
    }
    return 0;
  }

  int ShowDialogs() {
    const embedded::DialogObject gear{{1201, 1}, "Gear"};
    dialogAnswers += std::to_string(dialogs_.ConfirmLifeCycle({"COPYFILE", "/x", {gear}, {gear}}));
    embedded::ObjectDialogRequest object;
    object.objects = {gear.key};
    object.attributes = {{"DESCRIPTION1", "Gear"}};
    dialogAnswers += " " + std::to_string(dialogs_.ShowObject(object));
    object.modal = false;
    dialogAnswers += " " + std::to_string(dialogs_.ShowObject(object));
    for (const auto position : dialogs_.SelectObjects({"Pick", true, {gear, gear}})) {
      dialogAnswers += " picked" + std::to_string(position);
    }
    const auto login = dialogs_.Login();
    dialogAnswers += login.accepted ? " " + login.loginName + "/" + login.password : " nobody";
    dialogs_.ShowSystemMessage({"one", "two"});
    dialogs_.RefreshObject(gear.key, 2);
    return 0;
  }

  HeadlessToolkit& toolkit_;
  embedded::HostDialogs& dialogs_;
};

class DriveProtocolTest : public ::testing::Test {
 protected:
  // What the commands are answered by, without the "waiting" lines unless they are wanted.
  std::string Drive(const std::string& commands, bool withWaiting = false) {
    std::istringstream input(commands);
    std::ostringstream output;
    DriveProtocol protocol(input, output);
    HeadlessToolkit toolkit(protocol);
    SampleHooks hooks(toolkit, protocol);
    errors_ = protocol.Run(hooks, toolkit);
    dialogAnswers_ = hooks.dialogAnswers;
    echoed_ = hooks.echoed;
    return withWaiting ? output.str() : WithoutWaiting(output.str());
  }

  static std::string WithoutWaiting(const std::string& text) {
    std::istringstream lines(text);
    std::string kept;
    for (std::string line; std::getline(lines, line);) {
      if (line.find(R"j("event":"waiting")j") == std::string::npos) kept += line + "\n";
    }
    return kept;
  }

  // The text of the first error that the commands are answered by.
  std::string FirstError(const std::string& commands) {
    const std::string output = Drive(commands);
    const std::string start = R"j("text":")j";
    const auto error = output.find(R"j("event":"error")j");
    if (error == std::string::npos) return "none";
    const auto text = output.find(start, error) + start.size();
    return output.substr(text, output.find("\"}\n", text) - text);
  }

  int errors_ = 0;
  std::string dialogAnswers_;
  std::string echoed_;
};

TEST_F(DriveProtocolTest, AnExportFromCallToResult) {
  EXPECT_EQ(Drive(R"j(# an export that is nearly given up
{"do":"call","hook":"StartExport"}

{"do":"click","control":"Command1"}
{"do":"close"}
{"do":"answer","answer":"no"}
{"do":"select","control":"TreeView3","node":"Shaft","button":"right"}
{"do":"menu","item":"Additional Values"}
{"do":"click","control":"Command1"}
{"do":"answer","answer":"ok"}
)j",
                  true),
            R"j({"event":"waiting","for":"call"}
{"event":"shown","window":"Tessel_0","title":"Kestrix"}
{"event":"waiting","for":"action","window":"Tessel_0"}
{"event":"hidden","window":"Tessel_0"}
{"event":"shown","window":"Tessel_1","title":"Kestrix"}
{"event":"waiting","for":"action","window":"Tessel_1"}
{"event":"box","title":"Cancel","text":"Do you really want to cancel the data export process?","icon":"none","buttons":["yes","no"]}
{"event":"waiting","for":"box"}
{"event":"waiting","for":"action","window":"Tessel_1"}
{"event":"menu","window":"Tessel_1","menu":"mnuKontext","items":[{"item":"mnuAddValues","caption":"Additional Values"},{"item":"mnuOther","caption":"Other"}]}
{"event":"waiting","for":"menu"}
{"event":"waiting","for":"action","window":"Tessel_1"}
{"event":"progress","window":"Tessel_1","control":"ProgressBar1","value":1,"maximum":3}
{"event":"progress","window":"Tessel_1","control":"ProgressBar1","value":2,"maximum":3}
{"event":"progress","window":"Tessel_1","control":"ProgressBar1","value":3,"maximum":3}
{"event":"box","title":"Kestrix","text":"Kopiervorgang \"erfolgreich\"","icon":"information","buttons":["ok"]}
{"event":"waiting","for":"box"}
{"event":"hidden","window":"Tessel_1"}
{"event":"result","hook":"StartExport","result":0}
{"event":"waiting","for":"call"}
{"event":"end-of-input"}
)j");
  EXPECT_EQ(errors_, 0);
}

TEST_F(DriveProtocolTest, EndOfInputCancelsWhereverTheProgramStands) {
  const std::string end = "{\"event\":\"end-of-input\"}\n";
  const std::string question =
      R"j({"event":"box","title":"Cancel","text":"Do you really want to cancel the data export process?","icon":"none","buttons":["yes","no"]}
)j";
  const std::string cancelled = R"j({"event":"hidden","window":"Tessel_1"}
{"event":"result","hook":"StartExport","result":1}
)j";
  const auto tail = [](const std::string& output, const std::string& expected) {
    return output.substr(output.size() - std::min(output.size(), expected.size()));
  };
  EXPECT_EQ(tail(Drive(kIntoSecondPage), end + question + cancelled), end + question + cancelled);
  const std::string inBox = end + question + cancelled;
  EXPECT_EQ(tail(Drive(kIntoSecondPage + R"j({"do":"close"})j"), question + inBox), question + inBox);
  EXPECT_EQ(Drive(""), end);

  Drive(R"j({"do":"call","hook":"Dialogs"})j");
  EXPECT_EQ(dialogAnswers_, "2 2 1 nobody");
}

TEST_F(DriveProtocolTest, BadLinesAreAnsweredAndPassedOver) {
  const std::pair<const char*, const char*> cases[] = {
      {R"j([1])j", "not a JSON object"},
      {R"j("click")j", "not a JSON object"},
      {R"j({})j", R"j(\"do\" must be a text)j"},
      {R"j({"do":5})j", R"j(\"do\" must be a text)j"},
      {R"j({"do":"dance"})j", "there is no command dance"},
      {R"j({"do":"click","control":"Command1"})j", "no window is open"},
      {R"j({"do":"answer","answer":"ok"})j", R"j(\"answer\" is not possible now)j"},
      {R"j({"do":"call"})j", R"j(\"hook\" must be a text)j"},
      {R"j({"do":"call","hook":"Nope"})j", "there is no hook Nope"},
      {R"j({"do":"call","hook":"Broken"})j", "Broken failed with error 13: Type mismatch"},
      {R"j({"do":"call","hook":"Echo","first":{}})j", R"j(\"first\" must be an array of objects or null)j"},
      {R"j({"do":"call","hook":"Echo","first":[1]})j", R"j(\"first\" must be an array of objects or null)j"},
      {R"j({"do":"call","hook":"Echo","first":[{"A":[]}]})j",
       "cell A must be a number, text, Boolean or null"},
      {R"j({"do":"window"})j", "no window is open"},
      {R"j({"do":"global"})j", R"j(\"name\" must be a text)j"},
      {R"j({"do":"global","name":"broken"})j", "broken cannot be read: the session is closed"},
      {R"j({"do":"click","control":"Command1","when":"busy"})j", "none"},
      {R"j({"do":"call","hook":"Echo","when":"busy"})j",
       R"j(\"call\" cannot wait until the program is busy)j"},
  };
  for (const auto& [line, error] : cases)
    EXPECT_EQ(FirstError(line), error) << line;

  const std::string broken[] = {
      "{",
      "{\"do\":\"\xFF\"}",
      "{\"do\":1e999}",
      std::string(100000, '['),
      R"j({"do":"click","when":"busy","deep":)j" + std::string(100000, '[') + std::string(100000, ']') + "}",
      std::string("{\"do\":\"window\0\"}", 16)};
  for (const auto& line : broken) {
    const std::string output = Drive(line + "\n" + R"j({"do":"global","name":"ExportObjCount"})j");
    EXPECT_EQ(output.find(R"j({"event":"error","line":1,"text":"not a JSON object)j"), 0U) << output;
    EXPECT_NE(output.find(R"j({"event":"global","name":"ExportObjCount","value":3})j"), std::string::npos);
    EXPECT_EQ(errors_, 1);
  }
}

TEST_F(DriveProtocolTest, RefusedActionsChangeNothingAndNameTheirLine) {
  const std::pair<const char*, const char*> cases[] = {
      {R"j({"do":"click","control":"Command4"})j", "Command4 is disabled"},
      {R"j({"do":"check","control":"Check1(3)"})j", "Check1(3) is inside Frame4, which is hidden"},
      {R"j({"do":"click","control":"Command1","window":"Tessel_0"})j", "window Tessel_0 is hidden"},
      {R"j({"do":"select","control":"TreeView3","node":-1})j", "TreeView3 has no node -1"},
      {R"j({"do":"select","control":"TreeView3","node":4294967296})j", "TreeView3 has no node -1"},
      {R"j({"do":"select","control":"TreeView3"})j", R"j(\"node\" must be a position, a text or a tag)j"},
      {R"j({"do":"select","control":"TreeView3","node":0,"button":"middle"})j",
       R"j(\"button\" must be \"left\" or \"right\")j"},
      {R"j({"do":"key","control":"TreeView3","key":"ab"})j",
       R"j(\"key\" must be one character or a key's name)j"},
      {R"j({"do":"key","key":"x"})j",
       R"j(a window answers \"enter\" and \"escape\"; any other key needs a \"control\")j"},
      {R"j({"do":"type","control":"Text1(0)"})j", R"j(\"text\" must be a text)j"},
      {R"j({"do":"resize","width":"wide"})j", R"j(\"width\" must be a number)j"},
      {R"j({"do":"resize","width":-1})j", "no window can be dragged there"},
      {R"j({"do":"call","hook":"Echo"})j", R"j(\"call\" is not possible now)j"},
      {R"j({"do":"window","window":"Tessel_9"})j", "there is no window Tessel_9"},
      {R"j({"do":"type","control":"Text1(0)","text":"","when":"idle"})j", R"j(\"when\" must be \"busy\")j"},
  };
  for (const auto& [line, error] : cases) {
    EXPECT_EQ(FirstError(kIntoSecondPage + line), error) << line;
    EXPECT_EQ(errors_, 1);
  }
  const std::string inBox = kIntoSecondPage + R"j({"do":"close"})j" + "\n";
  EXPECT_EQ(FirstError(inBox + R"j({"do":"click","control":"Command1"})j"),
            R"j(\"click\" is not possible now)j");
  EXPECT_EQ(FirstError(inBox + R"j({"do":"answer","answer":"ok"})j"),
            R"j(\"answer\" must be one of \"yes\", \"no\")j");
  EXPECT_NE(Drive(inBox + R"j({"do":"answer"})j").find(R"j({"event":"error","line":4,)j"), std::string::npos);
}

TEST_F(DriveProtocolTest, AWindowIsDescribedWithAllItsControls) {
  const std::string output = Drive(R"j({"do":"call","hook":"StartExport"}
{"do":"key","key":"enter"}
{"do":"type","control":"Text1(0)","text":"Grüße\nzweite Zeile"}
{"do":"check","control":"Check1(1)"}
{"do":"select","control":"TreeView3","node":1}
{"do":"toggle","control":"TreeView3","node":"1201_1"}
{"do":"resize","left":0,"top":15.5,"width":8000,"height":6000}
{"do":"window"}
{"do":"windows"}
)j");
  EXPECT_EQ(errors_, 0);
  const char* const expected[] = {
      R"j({"event":"window","window":"Tessel_1","title":"Kestrix","visible":true,)j"
      R"j("bounds":{"left":0,"top":15.5,"width":8000,"height":6000},"controls":[)j"
      R"j({"control":"Frame3","kind":"frame","caption":"","visible":true,"enabled":true,)j",
      R"j({"control":"Check1(1)","kind":"check-box","caption":"","visible":true,"enabled":true,"frame":"Frame3",)j"
      R"j("bounds":{"left":0,"top":0,"width":0,"height":0},"checked":true},)j",
      R"j({"control":"Check1(3)","kind":"check-box","caption":"","visible":false,)j",
      R"j("text":"Grüße","multi-line":false})j",
      R"j("value":0,"maximum":3})j",
      R"j("nodes":[{"text":"Gear","tag":"1201_1","checked":true},{"text":"Shaft","tag":"1201_2","checked":false}],"selected":1})j",
      R"j({"event":"windows","windows":["Tessel_1"]})j",
  };
  for (const char* part : expected)
    EXPECT_NE(output.find(part), std::string::npos) << part << "\n" << output;
}

TEST_F(DriveProtocolTest, RecordsReachTheHookAsWritten) {
  EXPECT_EQ(
      Drive(
          R"j({"do":"call","hook":"Echo","operation":"StructureMode","first":[{"CLASS_ID":1201,"OBJECT_ID":4711},{"B":null,"A":"4","C":true,"D":-2147483649,"E":0.5}],"third":[]})j"),
      R"j({"event":"result","hook":"Echo","result":0}
{"event":"end-of-input"}
)j");
  EXPECT_EQ(echoed_,
            "StructureMode third | CLASS_ID=1201 OBJECT_ID=4711 | B= A=4(text) C=True D=-2147483649 E=0.5");
}

TEST_F(DriveProtocolTest, HostDialogsAreShownAndAnswered) {
  EXPECT_EQ(
      Drive(R"j({"do":"call","hook":"Dialogs"}
{"do":"answer","answer":"close"}
{"do":"answer","answer":"ok"}
{"do":"answer","answer":"ok","positions":[2]}
{"do":"answer","answer":"ok","positions":[1,0,1]}
{"do":"answer","answer":"ok","login":"mueller","password":"geheim"}
)j"),
      R"j({"event":"dialog","dialog":"life-cycle","operation":"COPYFILE","directory":"/x","objects":[{"object":"1201:1","description":"Gear"}],"affected":[{"object":"1201:1","description":"Gear"}]}
{"event":"dialog","dialog":"object","mode":1,"title":"","page":0,"modal":true,"objects":["1201:1"],"attributes":{"DESCRIPTION1":"Gear"}}
{"event":"dialog","dialog":"object","mode":1,"title":"","page":0,"modal":false,"objects":["1201:1"],"attributes":{"DESCRIPTION1":"Gear"}}
{"event":"dialog","dialog":"selection","title":"Pick","multiple":true,"candidates":[{"object":"1201:1","description":"Gear"},{"object":"1201:1","description":"Gear"}]}
{"event":"error","line":4,"text":"no candidate has the position 2"}
{"event":"dialog","dialog":"login"}
{"event":"system-message","texts":["one","two"]}
{"event":"refresh","object":"1201:1","mode":2}
{"event":"result","hook":"Dialogs","result":0}
{"event":"end-of-input"}
)j");
  EXPECT_EQ(dialogAnswers_, "7 1 1 picked1 picked0 mueller/geheim");
}

TEST_F(DriveProtocolTest, EndlessPageTurnsEndInAnErrorAndNotInACrash) {
  std::string commands = kIntoSecondPage;
  for (int turn = 0; turn < 400; ++turn) {
    commands += R"({"do":"click","control":"Command2"}
{"do":"click","control":"Command1"}
)";
  }
  const std::string output = Drive(commands);
  EXPECT_NE(output.find("StartExport failed with error 28: Out of stack space"), std::string::npos);
}

TEST_F(DriveProtocolTest, HeldBackActionsRunWhileTheProgramIsBusy) {
  const std::string output = Drive(R"j({"do":"call","hook":"StartExport"}
{"do":"click","control":"Command1"}
{"do":"close","when":"busy"}
{"do":"click","control":"Command4","when":"busy"}
{"do":"click","control":"Command1"}
{"do":"answer","answer":"yes"}
{"do":"answer","answer":"ok"}
)j");
  const std::string expectedEnd = R"j({"event":"hidden","window":"Tessel_1"}
{"event":"box","title":"Kestrix","text":"Kopiervorgang \"erfolgreich\"","icon":"information","buttons":["ok"]}
{"event":"error","line":4,"text":"the program was not busy any more"}
{"event":"result","hook":"StartExport","result":1}
{"event":"end-of-input"}
)j";
  ASSERT_GE(output.size(), expectedEnd.size());
  EXPECT_EQ(output.substr(output.size() - expectedEnd.size()), expectedEnd);
}

}  // namespace
}  // namespace tessel
