#include <gtest/gtest.h>

#include "embedded/small_world.h"

namespace tessel::test {
namespace {

std::string Documents() {
  return Document("Part", 1, "", R"("VRK_DESCRIPTION": "O'Shea \" -- ; %", "LOCKED": true, "WEIGHT": 1.5)") +
         "," + Document("Part", 2, "", R"("VRK_DESCRIPTION": "plain", "LOCKED": false, "WEIGHT": 2)") + "," +
         Document("Part", 3);
}

class QueryTest : public ::testing::Test {
 protected:
  // VRK_ID of the parts that meet one condition.
  std::string Find(const std::string& attribute, const std::string& op, const Value& value) {
    const PcQueryPtr query = world.session->ObjectStore()->NewQuery();
    query->SetClass(kPart);
    query->AddSelect("VRK_ID");
    query->AddCondition(attribute, op, value);
    return RowsText(*query->Run(), {"VRK_ID"});
  }
  SmallWorld world{Documents()};
};

TEST_F(QueryTest, ConditionsAreBoundAndTyped) {
  struct Case {
    const char* attribute;
    const char* op;
    Value value;
    const char* found;
  };
  const Case cases[] = {
      {"VRK_DESCRIPTION", "=", Value("O'Shea \" -- ; %"), "D-1"},
      {"VRK_DESCRIPTION", "=", Value("' OR '1'='1"), ""},
      {"VRK_DESCRIPTION", "=", Value(), "D-3"},
      {"VRK_DESCRIPTION", "<>", Value(), "D-1; D-2"},
      {"VRK_DESCRIPTION", "LIKE", Value("pl%"), "D-2"},
      {"OBJECT_ID", ">=", Value("2"), "D-2; D-3"},
      {"OBJECT_ID", "<", Value(2.0), "D-1"},
      {"WEIGHT", ">", Value("1.75"), "D-2"},
      {"CLASS_ID", "=", Value(std::int16_t{1202}), "D-1; D-2; D-3"},
      {"LOCKED", "=", Value("FALSE"), "D-2; D-3"},
      {"LOCKED", "=", Value("TRUE"), "D-1"},
      {"LOCKED", "<>", Value(true), "D-2; D-3"},
      {"LOCKED", "=", Value(), "D-2; D-3"},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(Find(each.attribute, each.op, each.value), each.found) << each.attribute << each.op;
  }
}

TEST_F(QueryTest, RefusesWhatTheMetadataDoesNotKnow) {
  EXPECT_EQ(ErrorOf([&] { Find("NOPE", "=", Value(1)); }), "440 Class \"Part\" has no attribute \"NOPE\"");
  EXPECT_EQ(ErrorNumberOf([&] { Find("VRK_ID", "= 1 OR 1 =", Value(1)); }), 440);
  EXPECT_EQ(ErrorNumberOf([&] { Find("OBJECT_ID", "=", Value("1 OR 1=1")); }), 13);
  const PcQueryPtr query = world.session->ObjectStore()->NewQuery();
  EXPECT_NE(ErrorOf([&] { query->SetClass(4711); }), "");
  EXPECT_NE(ErrorOf([&] { query->AddSelect("VRK_ID"); }), "");
  EXPECT_NE(ErrorOf([&] { return query->Run(); }), "");
}

TEST_F(QueryTest, SelectListGivesTypedColumnsEachOnce) {
  const PcQueryPtr query = world.session->ObjectStore()->NewQuery();
  query->SetClass(kPart);
  for (const char* name : {"OBJECT_ID", "CLASS_ID", "LOCKED", "LOCKED"})
    query->AddSelect(name);
  const PcRecordListPtr list = query->Run();
  EXPECT_EQ(list->ColumnCount(), 3);
  EXPECT_EQ(list->GetValue("LOCKED", 0), Value(true));
  EXPECT_EQ(list->KeyOfRow(2), (ObjectKey{kPart, 3}));
}

TEST_F(QueryTest, FreeSqlComparesIdsAsQuotedText) {
  EXPECT_EQ(world.Rows("select VRK_ID from PART where OBJECT_ID='2' AND CLASS_ID = '1202'"), "D-2");
  EXPECT_EQ(world.Rows("select * from VRK_STATE order by value_order desc"),
            "3|11|3|Released; 2|11|2|Checked Out; 1|11|1|Checked In");
  EXPECT_NE(ErrorOf([&] { return world.Rows("select * from NO_TABLE"); }), "");
}

TEST_F(QueryTest, AFreeQueryReadsTheTablesOfClassesAlone) {
  for (const std::string from :
       {"'tessel_user'", "'sqlite_master'", "'pragma_table_list'", "dbstat", "pragma_table_list",
        "PART where exists (select 1 from 'TESSEL_SETTING')", "PART, 'tessel_number'", "json_each('[1]')",
        "pg_class", "information_schema.tables", "PART for update", "U&\"\\0074essel_user\"",
        "(select pg_read_file('/etc/passwd')) X", "(select \"pg_read_file\" ('/etc/passwd')) X",
        "(select query_to_xml('select * from tessel_user', true, false, '')) X",
        "(select E'\\'', query_to_xml('select 1', true, false, ' ')) X", "generate_series(1, 2)",
        "(select set_config('a.b', 'c', false)) X"}) {
    EXPECT_NE(ErrorNumberOf([&] { return world.Rows("select * from " + from); }), 0) << from;
  }
  EXPECT_EQ(
      world.Rows(OnServer() ? "select count(*), (select count(*) from Message_Store) as B from part"
                            : "select count(*), (select count(*) from 'message_store') as B from 'part'"),
      "3|0");
}

}  // namespace
}  // namespace tessel::test
