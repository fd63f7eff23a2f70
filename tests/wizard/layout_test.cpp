#include <sstream>

#include "support/wizard_script.h"

namespace tessel::test {
namespace {

std::string Number(double value) {
  std::ostringstream text;
  text << value;
  return text.str();
}

// Id, caption, left, top, width and height of every control in tab order.
std::string Describe(const Window& window) {
  std::string lines;
  for (const auto& control : window.Controls()) {
    const Rect& rect = control->Bounds();
    lines += control->Id() + " \"" + control->Caption() + "\" " + Number(rect.left) + "," + Number(rect.top) +
             "," + Number(rect.width) + "," + Number(rect.height) + (control->Visible() ? "" : " hidden") +
             "\n";
  }
  return lines;
}

using Looks = std::map<std::string, std::string>;

// Walks over all pages but the mail page in folder-structure mode and notes what they look like.
Looks LooksOfPages(World& world) {
  Looks looks;
  const auto look = [&](const std::string& page) {
    LookAt(world, page, [&looks, page](Window& window) {
      EXPECT_EQ(window.Title(), "Kestrix");
      looks[page] = Describe(window);
    });
  };
  world.Select({World::kGearbox});
  GoToSendMode(world);
  look("Tessel_1");
  world.driver.Check("Check1(4)").Click("Command1");
  look("Tessel_2");
  CopyAll(world);
  world.driver.Click("Command1");
  look("Tessel_3");
  CollectPair(world, "Acme ", "Smith Jo");
  world.driver.Click("Command1");
  look("Tessel_4a");
  world.driver.ClickNode("TreeView1", 0).Click("Command1");
  look("Tessel_4");
  world.driver.Click("Command1");
  EXPECT_EQ(world.Export("StructureMode"), 0);
  return looks;
}

TEST(Layout, PagesAsFirstShown) {
  World world(SettingLines{{"CustomClient", {"UseCustomForm=True", "UsePartnerList=True"}},
                           {"CustomFormIni", {"MultiLine_1||False", "MultiLine_2||True"}}});
  Looks looks = LooksOfPages(world);
  EXPECT_EQ(looks["Tessel_1"], R"(Command1 "Weiter >>" 4800,4575,2172,372
Command2 "Abbruch" 2400,4575,2052,372
Frame3 "Schritt 1 von 3:   Versandmodus" 0,0,6972,4472
Check1(1) "Mail" 120,360,6495,255
Check1(2) "Mail mit Strukturdatei" 120,840,6495,255
Check1(3) "Odette" 120,1320,6495,255
Check1(4) "Eigener Versandmodus" 120,1800,6495,255
Check1(5) "Ohne Versand" 120,2280,6495,255
)");
  EXPECT_EQ(looks["Tessel_2"], R"(Frame3 "Schritt 2 von 3:   Versendedaten bearbeiten" 0,0,6972,4025
TreeView2 "" 120,240,6570,3675
Check1 "Alle Kopieren" 30,4120,1335,320
Label1 "0 / 0" 1560,4150,615,330 hidden
ProgressBar1 "" 2160,4080,4485,375 hidden
Label2 "" 2640,4200,4335,255 hidden
Command2 "<< Zurück" 0,4575,2052,372
Command3 "Abbruch" 2529,4575,2052,372
Command1 "Bearbeiten" 4800,4575,2172,372
)");
  EXPECT_EQ(looks["Tessel_3"], R"(Frame3 "Schritt 3 von 3:   Empfänger auswählen" 0,0,6972,4472
Label1 "Partnerliste" 120,360,975,255
Label2 "Kontaktpersonen" 3415,360,1215,255
TreeView1 "" 120,600,3210,2205
TreeView2 "" 3415,600,3210,2205
Command4 ">>" 120,3150,495,375
Command5 "<<" 120,3750,495,375
TreeView3 "" 720,3150,5925,975
Command2 "<< Zurück" 120,4575,2052,372
Command3 "Abbruch" 2529,4575,2052,372
Command1 "Versenden" 4800,4575,2172,372
)");
  EXPECT_EQ(looks["Tessel_4a"], R"(Frame3 "No Title" 0,0,6972,4472
Label1 "No Title" 120,480,1815,255
TreeView1 "" 2040,480,4845,3900
Command2 "<< Back" 0,4575,2052,372
Command1 "Versenden!" 4800,4575,2172,372
)");
  EXPECT_EQ(looks["Tessel_4"], R"(Frame3 "No Title" 0,0,6972,4472
Label1(0) "An:" 240,480,3495,255 hidden
Text1(0) "" 2400,480,4215,315 hidden
Text2(0) "" 2400,960,4215,1500 hidden
Text1(1) "" 2400,480,4245,315
Label1(1) "No Title" 240,480,3495,255
Text2(1) "" 2400,795,4245,3480
Label1(2) "No Title" 240,795,3495,255
Command1 "Versenden" 4800,4575,2172,372
)");
}

// Sides of controls after a resize to 9000 by 7000, and again after one to a size at which only some rules
// hold.
struct Side {
  const char* page;
  const char* control;
  Rect large;
  Rect small;
};

TEST(Layout, FollowsTheWindow) {
  World world(kSingleRecipient);
  world.Select({World::kGearbox});
  const Side sides[] = {
      {"Tessel_1", "Command1", {6690, 6100, 2172, 372}, {90, 200, 2172, 372}},
      {"Tessel_1", "Command2", {3474, 6100, 2052, 372}, {174, 200, 2052, 372}},
      {"Tessel_1", "Frame3", {0, 0, 8862, 5997}, {0, 0, 2262, 97}},
      {"Tessel_2", "TreeView2", {120, 240, 8460, 5200}, {120, 240, 1860, 5200}},
      {"Tessel_2", "ProgressBar1", {2160, 5605, 6375, 375}, {2160, 5605, 6375, 375}},
      {"Tessel_2", "Check1", {30, 5645, 1335, 320}, {30, 5645, 1335, 320}},
      {"Tessel_3", "TreeView2", {4360, 600, 4155, 5050}, {1060, 600, 855, 5050}},
      {"Tessel_3", "TreeView3", {720, 3120, 5895, 975}, {720, 3120, 5895, 975}},
      {"Tessel_5", "Text1(3)", {1560, 1680, 6975, 4275}, {1560, 1680, 375, 4275}},
      {"Tessel_5", "Label2", {5490, 6100, 1575, 255}, {5490, 200, 1575, 255}},
  };
  const auto expectSides = [&](const std::string& page, Rect Side::*size) {
    LookAt(world, page, [&sides, page, size](Window& window) {
      for (const Side& side : sides) {
        if (side.page == page) {
          EXPECT_EQ(window.FindById(side.control)->Bounds(), side.*size) << page << " " << side.control;
        }
      }
    });
  };
  const auto resizeBothWays = [&](const std::string& page) {
    world.driver.Resize({0, 0, 9000, 7000});
    expectSides(page, &Side::large);
    world.driver.Resize({0, 0, 2400, 1100});
    expectSides(page, &Side::small);
  };
  GoToSendMode(world);
  resizeBothWays("Tessel_1");
  world.driver.Click("Command1");
  resizeBothWays("Tessel_2");
  CopyAll(world);
  world.driver.Click("Command1");
  resizeBothWays("Tessel_3");
  ChoosePair(world, "Acme ", "Smith Jo");
  world.driver.Click("Command1");
  resizeBothWays("Tessel_5");
  world.driver.Click("Command1");
  EXPECT_EQ(world.Export(), 0);
}

}  // namespace
}  // namespace tessel::test
