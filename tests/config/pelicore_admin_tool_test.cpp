#include "config/pelicore_admin_tool.h"

#include <gtest/gtest.h>

#include "config/settings_world.h"
#include "support/expect_error.h"

namespace tessel {
namespace {

using test::SettingsWorld;

std::string IdentifierOf(const PcObjectPtr& object) {
  return object ? object->GetText("VRKX_ID") : "nothing";
}

TEST(LinkedAdminObject, TheNamedOneIsTakenElseTheLast) {
  struct Case {
    std::vector<test::Settings> settings;
    const char* found;
  };
  const Case cases[] = {{{{"Other", ""}, {"Initialization", ""}, {"Last", ""}}, "INI-12"},
                        {{{"Initialization", ""}, {"Initialization", ""}}, "INI-11"},
                        {{{"Other", ""}, {"initialization", ""}}, "INI-12"},
                        {{}, "nothing"}};
  for (const Case& each : cases) {
    SettingsWorld world({.settings = each.settings});
    PelicoreAdminTool tool(world.trace.trace);
    EXPECT_EQ(IdentifierOf(tool.adm_GetLinkedAdmObj(world.session, "Initialization", nullptr)), each.found);
  }
}

TEST(LinkedAdminObject, FailingStepsGiveNothingAndNeverRaise) {
  using embedded::HostCall;
  for (const HostCall call : {HostCall::kRetrieve, HostCall::kRead}) {
    SettingsWorld world;
    world.host.FailNext({call, 0, 1, 5, true});
    PelicoreAdminTool tool(world.trace.trace);
    (void)tool.adm_GetLinkedAdmObj(world.session, "Initialization", nullptr);
  }
  SettingsWorld unlinked({.generalLink = false});
  PelicoreAdminTool tool(unlinked.trace.trace);
  EXPECT_EQ(tool.adm_GetLinkedAdmObj(unlinked.session, "Initialization", nullptr), nullptr);
  EXPECT_EQ(tool.adm_GetLinkedAdmObj(nullptr, "Initialization", nullptr), nullptr);
  unlinked.trace.writer->failing = true;
  EXPECT_EQ(tool.adm_GetLinkedAdmObj(unlinked.session, "Initialization", nullptr), nullptr);
}

TEST(LinkedAdminObject, AnotherBaseObjectHasItsOwnSettings) {
  SettingsWorld world;
  const PcObjectPtr settings = world.Object({20, 11});
  PelicoreAdminTool tool(world.trace.trace);
  EXPECT_EQ(tool.adm_GetLinkedAdmObj(world.session, "Initialization", settings), nullptr);
}

TEST(AdminTool, FindsTheOneObjectOfAnIdentifier) {
  SettingsWorld world({.settings = {{"A", ""}, {"B", ""}}});
  PelicoreAdminTool tool(world.trace.trace);
  PcObjectPtr object;
  EXPECT_TRUE(tool.getAdminObject(*world.session, nullptr, "INI-12", object));
  EXPECT_EQ(tool.getValueFromAdminObj(object, "VRKX_VALUE_1"), "B");
  object->SetValue("VRKX_ID", "INI-11");
  ASSERT_EQ(object->Update(*world.session->NewBehavior()), 0);
  EXPECT_FALSE(tool.getAdminObject(*world.session, nullptr, "INI-11", object));
  EXPECT_EQ(object, nullptr);
  EXPECT_FALSE(tool.getAdminObject(*world.session, nullptr, "' or 1=1 --", object));
}

TEST(AdminTool, TheSettingsTextIsReadAndWritten) {
  SettingsWorld world;
  PelicoreAdminTool tool(world.trace.trace);
  EXPECT_FALSE(tool.WriteXMLStringToAdminObj("<x/>"));
  EXPECT_EQ(tool.ReadXMLStringFromAdminobj(nullptr), "");
  tool.DefaultBehavior = world.declarations.startup.DefaultBehavior;
  tool.AdminObject = tool.adm_GetLinkedAdmObj(world.session, "Initialization", nullptr);
  EXPECT_TRUE(tool.WriteXMLStringToAdminObj("<x>\r\nü</x>"));
  const PcObjectPtr fresh = world.Object({20, 11});
  fresh->ReadData();
  EXPECT_EQ(tool.ReadXMLStringFromAdminobj(fresh), "<x>\r\nü</x>");
  world.host.FailNext({embedded::HostCall::kUpdate, 0, 1, 9, false});
  EXPECT_FALSE(tool.WriteXMLStringToAdminObj("<y/>"));
}

TEST(AdminTool, LinkClassesAndMechanismsComeFromTheMetadata) {
  SettingsWorld world({.generalLink = false});
  PelicoreAdminTool tool(world.trace.trace);
  EXPECT_EQ(tool.GetGenLinkCLassID_ByClass(*world.session, 20, 30), 2000);
  EXPECT_EQ(tool.GetGenLinkCLassID_ByClass(*world.session, 30, 20), 2000);
  EXPECT_EQ(tool.GetGenLinkCLassID_ByClass(*world.session, 10, 20), 0);
  EXPECT_EQ(test::ErrorNumberOf([&] { (void)tool.GetGenLinkCLassID_byObject(nullptr, nullptr); }), 91);

  const PcObjectPtr document = world.session->ObjectStore()->NewObject(100);
  EXPECT_TRUE(tool.MechanismManaged(*world.session, document, "VRKX_DX_SUPPLIER_EXCH_DOC"));
  EXPECT_FALSE(tool.MechanismManaged(*world.session, document, "VRKX_DX_TRANSMITTAL"));
  EXPECT_FALSE(tool.MechanismManaged(*world.session, document, "unknown"));
}

TEST(AdminTool, LinkedObjectsOfOneClassAreListed) {
  SettingsWorld world({.settings = {{"A", ""}, {"B", ""}}});
  PelicoreAdminTool tool(world.trace.trace);
  const PcObjectPtr user = world.session->CurrentUser()->UserObject();
  EXPECT_EQ(tool.GetLinkedObjs(user, 20, 2000)->RowCount(), 2);
  EXPECT_EQ(tool.GetAllGenLinkedObjs(user, 20)->KeyOfRow(1), (ObjectKey{20, 12}));
  EXPECT_EQ(tool.GetAllGenLinkedObjs(user, 30)->RowCount(), 0);
}

}  // namespace
}  // namespace tessel
