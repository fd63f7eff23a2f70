#include "support/wizard_script.h"

namespace tessel::test {
namespace {

const std::string kPage = "Tessel_4";

SettingLines Form(const std::vector<std::string>& entries) {
  return {{"CustomClient", {"UseCustomForm=True"}}, {"CustomFormIni", entries}};
}

// Top, height and width of the text boxes made, in tab order.
std::string Boxes(const Window& window) {
  std::string lines;
  for (const auto& control : window.Controls()) {
    if (control->Kind() != ControlKind::kTextBox || control->Index() == 0) continue;
    const Rect& rect = control->Bounds();
    lines += control->Id() + " " + std::to_string(static_cast<int>(rect.top)) + " " +
             std::to_string(static_cast<int>(rect.height)) + " " +
             std::to_string(static_cast<int>(rect.width)) + "\n";
  }
  return lines;
}

std::string Labels(const Window& window) {
  std::string lines;
  for (const auto& control : window.Controls()) {
    if (control->Name() != "Label1" || !control->Visible()) continue;
    lines += control->Id() + " " + control->Caption() + " " +
             std::to_string(static_cast<int>(control->Bounds().top)) + "\n";
  }
  return lines;
}

// Goes to the page in a window of the given size and leaves it by sending.
template <class Look>
void ShowForm(World& world, double height, double width, Look look) {
  world.Select({World::kGearbox});
  GoToSendData(world, kCustom);
  world.driver.Resize({150, 300, width, height});
  CopyAll(world);
  world.driver.Click("Command1");
  LookAt(world, kPage, look);
}

TEST(CustomInputPage, BuildsItsFieldsFromTheConfiguration) {
  World world(Form({"MultiLine_1||False", "MultiLine_2||True", "MultiLine_3||False"}));
  world.folder.Write("catalogue/caption.Kestrix_GER",
                     "cc001 Auftrag\r\ncc002 Los\r\ncc003 Nummer\r\ncc004 Text\r\n");
  ShowForm(world, 5500, 7100, [](Window& window) {
    EXPECT_EQ(window.Bounds(), (Rect{150, 300, 7100, 5500}));
    EXPECT_EQ(window.FindById("Frame3")->Caption(), "Auftrag");
    EXPECT_EQ(window.FindById("Command1")->Caption(), "Los");
    EXPECT_EQ(Boxes(window), "Text1(1) 480 315 4235\nText2(1) 795 3025 4235\nText1(2) 3820 315 4235\n");
    EXPECT_EQ(Labels(window), "Label1(1) Nummer 480\nLabel1(2) Text 795\nLabel1(3) No Title 3820\n");
  });
  world.driver.Type("Text1(1)", "4711").Type("Text2(1)", "two\nlines").Type("Text1(2)", "last");
  world.driver.Resize({150, 300, 2865, 2475});
  LookAt(world, kPage, [](Window& window) {
    EXPECT_EQ(Boxes(window), "Text1(1) 480 315 4235\nText2(1) 795 3025 4235\nText1(2) 3820 315 4235\n");
  });
  world.driver.Resize({150, 300, 8000, 6000});
  LookAt(world, kPage, [](Window& window) {
    EXPECT_EQ(Boxes(window), "Text1(1) 480 315 5135\nText2(1) 795 3525 5135\nText1(2) 4320 315 5135\n");
  });
  world.driver.Click("Command1");
  EXPECT_EQ(world.Export(), 0);
  const std::string data = world.folder.Read("exchange/Export_anna_20240131_154502_New/Kestrix_Data.xml");
  for (const char* element : {"<CustomText_1>4711</CustomText_1>", "<CustomText_3>last</CustomText_3>"})
    EXPECT_NE(data.find(element), std::string::npos) << element << "\n" << data;
}

TEST(CustomInputPage, EntriesOutOfTheOrdinary) {
  World world(
      Form({"Other||True", "MultiLine_a||1", "MultiLine_b", "MultiLine_c||maybe", "MultiLine_d||true"}));
  ShowForm(world, 6000, 7100, [](Window& window) {
    // Five entries, two of them multi-line: the fixed height is 3 * 315 + 5 * 165 + 1350.
    EXPECT_EQ(
        Boxes(window),
        "Text2(1) 480 1440 4235\nText1(1) 1920 315 4235\nText1(2) 2235 315 4235\nText2(2) 2550 1440 4235\n");
    EXPECT_EQ(Labels(window),
              "Label1(2) No Title 480\nLabel1(3) No Title 1920\nLabel1(4) No Title 2235\n"
              "Label1(5) No Title 2550\n");
  });
  world.driver.Click("Command1");
  EXPECT_EQ(world.Export(), 0);
}

TEST(CustomInputPage, WithoutEntriesThereIsTheSendButton) {
  World world(Form({}));
  ShowForm(world, 6000, 7100, [](Window& window) {
    EXPECT_EQ(Boxes(window) + Labels(window), "");
    EXPECT_EQ(window.FindById("Command1")->Bounds().top, 5100);
  });
  world.driver.Click("Command1");
  EXPECT_EQ(world.Export(), 0);
}

}  // namespace
}  // namespace tessel::test
