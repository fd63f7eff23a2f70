#include "dispatch/exchange_object.h"

#include <gtest/gtest.h>

#include "host/names.h"
#include "support/export_world.h"

namespace tessel {
namespace {

constexpr const char* kFailed =
    "Fehler beim Anlegen des Datenaustauschobjekts (CreateExchangeObject / Kestrix_ExObj)";

class ExchangeObject : public testing::Test {
 protected:
  ExchangeObject() {
    Configuration& settings = world_.declarations.configuration;
    settings.b_UseRootObjRel = settings.b_UseCustomObjRel = settings.b_UseContactPersObjRel = true;
    settings.DisplayAttribCustom1 = settings.DisplayAttribContact1 = "VRK_ID";
    settings.DisplayAttribContact2 = "CN_FIRST_NAME";
    exported_ = world_.ObjectList({{1202, 2}, {1201, 1}, {1201, 1}});
    exported_->AddColumn("ROOT_OBJ", 2, 2);
    for (int row = 0; row < 3; ++row)
      exported_->SetValue("ROOT_OBJ", row, Value(row > 0 ? 1 : 0));
  }
  void Create() {
    const auto store = world_.session->ObjectStore();
    std::vector<PcRecordListPtr> exported;
    if (exported_) exported.push_back(exported_);
    complete_ = Kestrix_ExObj::CreateExchangeObject(
        world_.services, world_.session, 900, objectId_, "protocol\r\n", true, attribute::kExchangeType,
        idValue_, 7, withCompany_ ? store->Object({901, 11}) : nullptr, store->Object({902, 21}), exported);
  }
  std::string Stored(const char* attribute) { return world_.Stored({900, objectId_}, attribute); }
  // Class and object of what is linked below it.
  std::string Links() {
    return world_.Rows(
        "select CLASS_ID2, OBJECT_ID2 from GENERAL_LINK where CLASS_ID1 = 900 and OBJECT_ID1 = " +
        std::to_string(objectId_) + " order by OBJECT_ID");
  }

  bool complete_ = false;
  test::ExportWorld world_;
  PcRecordListPtr exported_;
  bool withCompany_ = true;
  ObjectId objectId_ = 0;
  std::string idValue_;
};

TEST_F(ExchangeObject, RecordsTheExport) {
  Create();
  EXPECT_EQ(idValue_, "DX-007");
  EXPECT_EQ(Stored("VRK_ID"), "DX-007");
  EXPECT_EQ(Stored(attribute::kProcessPhase), "1");
  EXPECT_EQ(Stored(attribute::kStatusInfo), "New (no batch process started)");
  EXPECT_EQ(Stored(attribute::kExchangeType), "1");
  EXPECT_EQ(Stored(attribute::kProtocol), "protocol\r\n");
  EXPECT_EQ(Stored(attribute::kSendToCompany), "Acme");
  EXPECT_EQ(Stored(attribute::kSendToContact), "Smith Jo");
  EXPECT_TRUE(world_.Traced("Customer '11' is linked to ExchangeObject"));
  EXPECT_TRUE(world_.Traced("Contactperson '21' is linked to ExchangeObject"));
  EXPECT_TRUE(world_.Traced("CopiedObj '1' is already linked to ExchangeObject"));
}

TEST_F(ExchangeObject, LinksWhatTheConfigurationAsksFor) {
  struct Case {
    bool roots, all, company, contact;
    const char* links;
  };
  const Case cases[] = {{true, false, true, true, "1201|1; 901|11; 902|21"},
                        {true, true, false, false, "1202|2; 1201|1"},
                        {false, true, true, false, "901|11"},
                        {false, false, false, true, "902|21"}};
  for (const Case& test : cases) {
    Configuration& settings = world_.declarations.configuration;
    settings.b_UseRootObjRel = test.roots;
    settings.b_LinkAllToMainTransObj = test.all;
    settings.b_UseCustomObjRel = test.company;
    settings.b_UseContactPersObjRel = test.contact;
    Create();
    EXPECT_EQ(Links(), test.links);
  }
}

TEST_F(ExchangeObject, WithoutCompanyTheContactIsStillRecorded) {
  withCompany_ = false;
  exported_ = nullptr;
  Create();
  EXPECT_EQ(Links(), "902|21");
  EXPECT_EQ(Stored(attribute::kSendToCompany), "");
}

TEST_F(ExchangeObject, ADisplayAttributeConfiguredEmptyCostsNoLink) {
  world_.declarations.configuration.DisplayAttribCustom1.clear();
  Create();
  EXPECT_TRUE(complete_);
  EXPECT_EQ(Links(), "1201|1; 901|11; 902|21");
  EXPECT_EQ(Stored(attribute::kSendToCompany), "");
  EXPECT_EQ(Stored(attribute::kSendToContact), "Smith Jo");
}

TEST_F(ExchangeObject, ARefusedInsertEndsQuietly) {
  world_.host.FailNext({.call = embedded::HostCall::kInsert, .classId = 900, .code = 19});
  Create();
  EXPECT_FALSE(complete_);
  EXPECT_EQ(objectId_, 0);
  EXPECT_EQ(idValue_, "DX-007");
  EXPECT_TRUE(world_.Traced("inserting new data exchange object does not succeed"));
  EXPECT_FALSE(world_.Traced(kFailed));
  ASSERT_EQ(world_.trace.trace.problems.Kept().size(), 1U);
  EXPECT_EQ(world_.trace.trace.problems.Kept()[0].number, 19);
}

TEST_F(ExchangeObject, ARefusedCompanyTextCostsNoOther) {
  world_.host.FailNext({.call = embedded::HostCall::kUpdate, .classId = 900, .nth = 2, .code = 19});
  Create();
  EXPECT_FALSE(complete_);
  EXPECT_EQ(Links(), "1201|1; 901|11; 902|21");
  EXPECT_EQ(Stored(attribute::kSendToCompany), "");
  EXPECT_EQ(Stored(attribute::kSendToContact), "Smith Jo");
  EXPECT_EQ(world_.trace.trace.problems.Kept().back().number, 19);
}

TEST_F(ExchangeObject, AnErrorLeavesWhatWasDone) {
  exported_ = world_.ObjectList({{1201, 1}, {1202, 999}, {1202, 2}});
  exported_->AddColumn("ROOT_OBJ", 2, 2);
  for (int row = 0; row < 3; ++row)
    exported_->SetValue("ROOT_OBJ", row, Value(1));
  Create();
  EXPECT_FALSE(complete_);
  EXPECT_EQ(Links(), "1201|1");
  EXPECT_EQ(world_.trace.writer->entries.back().text, kFailed);
  EXPECT_EQ(world_.trace.writer->entries.back().number, error_number::kObjectNotSet);
}

TEST_F(ExchangeObject, ARefusedLinkOnlyMissesItsTrace) {
  world_.host.FailNext({.call = embedded::HostCall::kLink, .nth = 2, .code = 19});
  Create();
  EXPECT_FALSE(complete_);
  EXPECT_EQ(Links(), "1201|1; 902|21");
  EXPECT_EQ(Stored(attribute::kSendToCompany), "Acme");
  EXPECT_FALSE(world_.Traced("Customer '11' is linked to ExchangeObject"));
}

}  // namespace
}  // namespace tessel
