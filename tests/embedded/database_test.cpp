#include "embedded/store/database.h"

#include <gtest/gtest.h>

#include <thread>

#include "embedded/client/single_select.h"
#include "embedded/small_world.h"
#include "embedded/sql/postgresql/server_address.h"
#include "embedded/store/schema.h"
#include "embedded/store/transaction.h"

namespace tessel::test {
namespace {

using namespace embedded;

FileSystem& Files() {
  static Machine machine;
  return machine.platform.files;
}

TEST(DatabaseTest, ValuesOfEveryKindSurviveTheRoundTrip) {
  EmptyDatabase empty(Files());
  Database& database = *empty.database;
  database.ExecuteOnce(
      "CREATE TABLE T (K BIGINT PRIMARY KEY, A TEXT, B BIGINT, C DOUBLE PRECISION, D SMALLINT)");
  const std::vector<std::vector<Value>> rows = {
      {Value(1), Value("plain"), Value(-5), Value(1.5), Value(true)},
      {Value(2), Value(), Value(), Value(), Value()},
      {Value(3), Value(OnServer() ? "a'\";--:x ü" : std::string("a\0'\";--ü", 9)), Value(2147483647),
       Value(-1e300), Value(false)},
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
  EmptyDatabase empty(Files());
  Database& database = *empty.database;
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
  EmptyDatabase empty(Files());
  Database& first = *empty.database;
  const auto other = OpenDatabase(Files(), empty.place, {std::chrono::milliseconds(1), {}});
  Database& second = *other;
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

// The server ends the connection of a client whose process or network has come to a halt.
void EndConnection(Database& database, const std::string& place) {
  const Value process = database.Query("SELECT pg_backend_pid()").rows.at(0).at(0);
  static_cast<void>(
      OpenDatabase(Files(), place)->Query("SELECT pg_terminate_backend(CAST(:pid AS INT), 5000)", {process}));
}

TEST(DatabaseTest, ALostConnectionLeavesNothingHalfDoneAndIsMadeAgain) {
  if (!OnServer()) GTEST_SKIP() << "a file has no connection";
  EmptyDatabase empty(Files());
  Database& database = *empty.database;
  database.ExecuteOnce("CREATE TABLE T (A BIGINT)");
  const std::string insert = "INSERT INTO T VALUES (:a)";
  const std::string count = "SELECT count(*) FROM T";
  const auto rows = [&] { return database.Query(count).rows.at(0).at(0).AsInt32(); };
  for (const bool inStatement : {true, false}) {
    WriteTransaction transaction(database);
    database.Execute(insert, {Value(1)});
    EndConnection(database, empty.place);
    if (inStatement) {
      EXPECT_EQ(ErrorNumberOf([&] { database.Execute(insert, {Value(2)}); }), kCodeConnectionLost);
      EXPECT_EQ(ErrorNumberOf([&] { database.Execute(insert, {Value(2)}); }), kCodeUndone);
    }
    EXPECT_EQ(ErrorNumberOf([&] { transaction.Commit(); }), inStatement ? kCodeUndone : kCodeConnectionLost);
  }
  EXPECT_EQ(rows(), 0);
  EndConnection(database, empty.place);
  EXPECT_EQ(database.Execute(insert, {Value(3)}), 1) << "between two transactions";
  {
    const ReadSnapshot snapshot(database);
    EXPECT_EQ(rows(), 1);
    const std::uint64_t before = database.StateNumber();
    EndConnection(database, empty.place);
    EXPECT_EQ(ErrorNumberOf(rows), kCodeConnectionLost);
    EXPECT_EQ(rows(), 1) << "another moment";
    EXPECT_NE(database.StateNumber(), before);
  }
  EXPECT_EQ(rows(), 1);
}

TEST(DatabaseTest, AFailedStatementLeavesItsTransactionUsable) {
  EmptyDatabase empty(Files());
  Database& database = *empty.database;
  database.ExecuteOnce("CREATE TABLE T (A BIGINT NOT NULL PRIMARY KEY)");
  const std::string insert = "INSERT INTO T VALUES (:a)";
  const ReadSnapshot snapshot(database);
  EXPECT_EQ(ErrorNumberOf([&] { return database.Query("SELECT B FROM T"); }), kCodeError);
  EXPECT_TRUE(database.Query("SELECT A FROM T").rows.empty());
  WriteTransaction outer(database);
  database.Execute(insert, {Value(1)});
  EXPECT_EQ(ErrorNumberOf([&] { database.Execute(insert, {Value(1)}); }), kCodePrimaryKey);
  EXPECT_EQ(ErrorNumberOf([&] { return database.Query("SELECT B FROM T"); }), kCodeError);
  EXPECT_NE(ErrorNumberOf([&] { return database.QueryTables("SELECT B FROM T", [](auto) { return true; }); }),
            0);
  {
    WriteTransaction inner(database);
    database.Execute(insert, {Value(2)});
  }
  database.Execute(insert, {Value(3)});
  outer.Commit();
  EXPECT_EQ(database.Query("SELECT A FROM T ORDER BY A").rows,
            (std::vector<std::vector<Value>>{{Value(1)}, {Value(3)}}));
}

TEST(ServerAddressTest, OursIsTakenOutAndThePasswordIsNotShown) {
  const ServerAddress address = ParseServerAddress(
      "postgresql://anna:se%40cret@db:5433/site?vault=/srv/a%20b&sslmode=require&password=x");
  EXPECT_EQ(address.connection, "postgresql://anna:se%40cret@db:5433/site?sslmode=require&password=x");
  EXPECT_EQ(address.vault, "/srv/a b");
  EXPECT_EQ(address.shown, "postgresql://anna@db:5433/site?vault=/srv/a%20b&sslmode=require");
  EXPECT_FALSE(IsServerAddress("/home/postgresql/site.db"));
  EXPECT_NE(ErrorOf([] { return ParseServerAddress("postgres://db/site?vault=%zz"); }), "");
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
