#include "embedded/store/database.h"

#include <gtest/gtest.h>

#include <thread>

#include "embedded/client/single_select.h"
#include "embedded/small_world.h"
#include "embedded/store/schema.h"
#include "embedded/store/transaction.h"

namespace tessel::test {
namespace {

using namespace embedded;

TEST(DatabaseTest, ValuesOfEveryKindSurviveTheRoundTrip) {
  Database database(kInMemory);
  database.ExecuteOnce(
      "CREATE TABLE T (K BIGINT PRIMARY KEY, A TEXT, B BIGINT, C DOUBLE PRECISION, D SMALLINT)");
  const std::vector<std::vector<Value>> rows = {
      {Value(1), Value("plain"), Value(-5), Value(1.5), Value(true)},
      {Value(2), Value(), Value(), Value(), Value()},
      {Value(3), Value(std::string("a\0'\";--ü", 9)), Value(2147483647), Value(-1e300), Value(false)},
      {Value(4), Value(""), Value(5e9), Value(0.0), Value(std::int16_t{-1})}};
  for (const auto& row : rows)
    database.Execute("INSERT INTO T VALUES (:k, :a, :b, :c, :d)", row);
  const QueryResult result = database.Query("select k, a, b, c, d from t order by k");
  EXPECT_EQ(result.columns->at(1).name, "A");
  ASSERT_EQ(result.rows.size(), rows.size());
  for (std::size_t row = 0; row < rows.size(); ++row) {
    for (std::size_t cell = 0; cell < 4; ++cell)
      EXPECT_EQ(result.rows[row][cell], rows[row][cell]) << row << cell;
  }
  EXPECT_EQ(result.rows[0][4], Value(-1));
  EXPECT_EQ(result.rows[2][4], Value(0));
}

TEST(DatabaseTest, OneTextServesNullsAndValuesOfSeveralKinds) {
  Database database(kInMemory);
  database.ExecuteOnce("CREATE TABLE T (A)");
  for (const Value& value : {Value(), Value(1), Value("x"), Value(), Value(2.5)}) {
    database.Execute("INSERT INTO T VALUES (:a)", {value});
  }
  EXPECT_EQ(database.Query("SELECT A FROM T WHERE A = :a", {Value(1)}).rows.size(), 1u);
  EXPECT_EQ(database.Query("SELECT A FROM T WHERE A = :a", {Value("x")}).rows.size(), 1u);
  EXPECT_EQ(database.Query("SELECT A FROM T WHERE A IS NULL").rows.size(), 2u);
}

TEST(DatabaseTest, KeepsTheCodesOfRefusalsAndGoesOn) {
  Database database(kInMemory);
  database.ExecuteOnce("CREATE TABLE P (K BIGINT PRIMARY KEY, N VARCHAR(3) CHECK (LENGTH(N) <= 3))");
  database.ExecuteOnce("CREATE TABLE C (K BIGINT REFERENCES P (K))");
  const std::string insert = "INSERT INTO P VALUES (:k, :n)";
  database.Execute(insert, {Value(1), Value("abc")});
  EXPECT_EQ(ErrorNumberOf([&] { database.Execute(insert, {Value(1), Value("abc")}); }), 1555);
  EXPECT_EQ(ErrorNumberOf([&] { database.Execute(insert, {Value(2), Value("abcd")}); }), 275);
  EXPECT_EQ(ErrorNumberOf([&] { database.Execute("INSERT INTO C VALUES (:k)", {Value(9)}); }), 787);
  EXPECT_EQ(ErrorNumberOf([&] { return database.Query("SELECT NOTHING FROM P"); }), 1);
  database.Execute(insert, {Value(3), Value("ab")});
  EXPECT_EQ(database.Query("SELECT K FROM P").rows.size(), 2u);
}

TEST(DatabaseTest, AnUncommittedTransactionLeavesNothingAndABusyDatabaseAnswersWithItsCode) {
  TemporaryFolder folder;
  Database first(folder.Path("x.db"));
  Database second(folder.Path("x.db"), {std::chrono::milliseconds(1), {}});
  first.ExecuteOnce("CREATE TABLE T (A BIGINT)");
  {
    WriteTransaction transaction(first);
    first.Execute("INSERT INTO T VALUES (1)");
    EXPECT_EQ(ErrorNumberOf([&] { second.Execute("INSERT INTO T VALUES (2)"); }), 5);
    EXPECT_TRUE(second.Query("SELECT A FROM T").rows.empty());
  }
  EXPECT_EQ(second.Execute("INSERT INTO T VALUES (2)"), 1);
  EXPECT_EQ(first.Query("SELECT A FROM T").rows.size(), 1u);
}

// A transaction takes numbers in blocks, which nobody notices.
TEST(DatabaseTest, NumbersFollowEachOtherWhateverIsUndone) {
  Database database(kInMemory);
  database.ExecuteOnce("CREATE TABLE TESSEL_NUMBER (NAME TEXT PRIMARY KEY, NEXT_VALUE BIGINT NOT NULL)");
  database.ExecuteOnce("INSERT INTO TESSEL_NUMBER VALUES ('N', 1)");
  const auto draw = [&](std::int32_t first, int count) {
    for (int i = 0; i < count; ++i)
      EXPECT_EQ(DrawNumber(database, "N"), first + i);
  };
  draw(1, 2);
  {
    WriteTransaction outer(database);
    draw(3, 5);
    {
      const WriteTransaction undone(database);
      draw(8, 600);
    }
    const std::int32_t next = DrawNumber(database, "N");
    EXPECT_GE(next, 8);
    draw(next + 1, 9);
    outer.Commit();
    draw(next + 10, 1);
    const WriteTransaction undone(database);
    draw(next + 11, 3);
  }
  const Value next = database.Query("SELECT NEXT_VALUE FROM TESSEL_NUMBER").rows[0][0];
  EXPECT_EQ(next, Value(DrawNumber(database, "N"))) << "nothing is lost by a commit";
  EXPECT_THROW(static_cast<void>(DrawNumber(database, "none")), HostError);
}

TEST(DatabaseTest, SettlesInOneFileOrSaysThatItCannot) {
  TemporaryFolder folder;
  Database database(folder.Path("x.db"), {std::chrono::milliseconds(1), {}});
  database.ExecuteOnce("CREATE TABLE T (A BIGINT)");
  {
    Database reader(folder.Path("x.db"));
    reader.Execute("BEGIN");
    EXPECT_TRUE(reader.Query("SELECT A FROM T").rows.empty());
    database.Execute("INSERT INTO T VALUES (1)");
    EXPECT_EQ(ErrorNumberOf([&] { database.Settle(); }), 5);
  }
  database.Settle();
  folder.Write("moved.db", folder.Read("x.db"));
  EXPECT_EQ(Database(folder.Path("moved.db")).Query("SELECT A FROM T").rows.size(), 1u);
}

TEST(SqlTextTest, OnlyASingleSelectOnTheTablesOfClassesPasses) {
  const char* const allowed[] = {
      "select * from GENERAL_LINK where OBJECT_ID1='5' AND CLASS_ID1='12' AND OBJECT_ID2='7' AND "
      "CLASS_ID2='12'",
      "SELECT * FROM VRK_STATE ORDER BY value_order", " select 'it''s; -- fine' as TEXT from T",
      "select count(*) from MESSAGE_STORE", "select A from T where A in (select B from U)"};
  for (const char* sql : allowed)
    EXPECT_EQ(ErrorOf([&] { CheckSingleSelect(sql); }), "") << sql;
  const char* const refused[] = {"",
                                 "   ",
                                 "delete from T",
                                 "'select' from T",
                                 "with x as (select 1) select * from x",
                                 "select 1; delete from T",
                                 "select 1;",
                                 "select 1 -- comment",
                                 "select /* comment */ 1",
                                 "select 'open",
                                 "select :value",
                                 "select ?1",
                                 "select * from TESSEL_USER",
                                 "select * from \"tessel_user\"",
                                 "select * from [TESSEL_USER]",
                                 "select * from `TESSEL_USER`",
                                 "select * from sqlite_master",
                                 "select * from pragma_table_info('T')"};
  for (const char* sql : refused)
    EXPECT_EQ(ErrorNumberOf([&] { CheckSingleSelect(sql); }), 440) << sql;
}

}  // namespace
}  // namespace tessel::test
