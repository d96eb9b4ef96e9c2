#include "platform/program_file.hpp"

#include <thread>

#include <platform/files/files.hpp>
#include <platform/runtime/error.hpp>

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace platform {

namespace {

TEST(Database, knowsTablesFieldsAndIndexesWithoutRegardToCaseAndBrackets) {
  const ProgramFile program;
  const auto database = program.open();
  EXPECT_TRUE(database->hasTable("constructs"));
  EXPECT_FALSE(database->hasTable("Programs"));
  EXPECT_TRUE(database->hasField("CONSTRUCTS", "[status]"));
  EXPECT_FALSE(database->hasField("Constructs", "Stat"));
  EXPECT_FALSE(database->hasField("Programs", "Status"));
  EXPECT_TRUE(database->hasIndex("Constructs", "id"));
  EXPECT_FALSE(database->hasIndex("Relationships", "ID"));
  EXPECT_THAT(database->fieldNames("relationships"), ElementsAre("KVID1", "KVID2", "RelID"));
  EXPECT_THAT(messageOf([&] { database->fieldNames("Programs"); }), HasSubstr("no table Programs"));
}

TEST(Database, keepsIndexNamesApartByTable) {
  const ProgramFile program;
  const auto database = program.open();
  database->Execute("create index ID on Relationships(KVID1)");
  database->Execute("CREATE UNIQUE INDEX [by name] ON Constructs ( [Name] )");
  EXPECT_THROW(database->Execute("create index id on Constructs(Name)"), DatabaseError);
  database->Execute("drop index id on Constructs");
  EXPECT_FALSE(database->hasIndex("Constructs", "ID"));
  EXPECT_TRUE(database->hasIndex("Relationships", "ID"));
  EXPECT_TRUE(database->hasIndex("Constructs", "by name"));
  EXPECT_THAT(messageOf([&] { database->Execute("drop index idxKVID1 on Relationships"); }),
              HasSubstr("no such index"));
}

TEST(Database, dropsAColumnWithTheIndexesThatMentionItOrLeavesAllAsItWas) {
  const ProgramFile program;
  const auto database = program.open();
  database->Execute("create index OnlyPlaced on Constructs(Size) where [Status] is not null");
  database->Execute("create index Status on Constructs(Size)"); // the name alone is no mention
  EXPECT_THROW(database->Execute("alter table Constructs drop column Nothing"), DatabaseError);
  EXPECT_TRUE(database->hasIndex("Constructs", "OnlyPlaced"));
  database->Execute("ALTER TABLE [Constructs] DROP COLUMN [status] ");
  EXPECT_FALSE(database->hasField("Constructs", "Status"));
  EXPECT_FALSE(database->hasIndex("Constructs", "OnlyPlaced"));
  EXPECT_TRUE(database->hasIndex("Constructs", "Status"));
}

TEST(Database, tellsFileStatementAndReasonInOneLine) {
  const ProgramFile program;
  const auto database = program.open();
  const struct {
    std::string statement, reason;
  } cases[] = {
      {"select * from\nConstructs where [Nope] = 1",
       "no such column: Nope [select * from Constructs where [Nope] = 1]"},
      {"select * from Constructs where \"Nope\" = 1", "no such column: Nope"},
      {"Programs", "no such table: Programs"},
      {"selct", "no such table: selct"},
      {"update Constructs", "neither a table nor a select"},
      {"", "neither a table nor a select"},
      {"select 1; select 2", "more than one statement"},
      {"select * from Constructs where Name = 'open", "unrecognized token"},
  };
  for (const auto& [statement, reason] : cases) {
    const std::string message = messageOf([&] { database->OpenRecordset(statement); });
    EXPECT_THAT(message, HasSubstr(program.path() + ": ")) << statement;
    EXPECT_THAT(message, HasSubstr(reason)) << statement;
    EXPECT_EQ(message.find('\n'), std::string::npos);
  }
  EXPECT_THAT(messageOf([&] { database->Execute("  -- nothing"); }), HasSubstr("no statement"));
}

TEST(Savepoint, undoesAllUnlessItIsCommitted) {
  const ProgramFile program;
  const auto database = program.open();
  const auto working = [&] {
    return linesOf(*database->OpenRecordset("select KVID from Constructs where Status = 9"), {"KVID"});
  };
  {
    Savepoint whole(*database);
    database->Execute("update Constructs set Status = 9");
    database->Execute("alter table Constructs drop column Name");
    EXPECT_FALSE(ignoring([&] { database->Execute("drop index idxSize on Constructs"); }));
    EXPECT_EQ(working().size(), 3U);
  }
  EXPECT_THAT(working(), IsEmpty());
  EXPECT_TRUE(database->hasField("Constructs", "Name"));
  {
    Savepoint outer(*database);
    database->Execute("update Constructs set Status = 9 where KVID = 'k1'");
    {
      Savepoint inner(*database);
      database->Execute("update Constructs set Status = 9 where KVID = 'k2'");
    }
    {
      Savepoint inner(*database);
      database->Execute("update Constructs set Status = 9 where KVID = 'k3'");
      inner.commit();
    }
    outer.commit();
  }
  EXPECT_THAT(working(), ElementsAre("k1", "k3"));
}

TEST(Insertion, writesEveryKindOfFieldAndRefusesAWrongNumber) {
  const ProgramFile program;
  const auto database = program.open();
  enum class Kind { item = 7 };
  database->createTable(
      "All", {{"a", ColumnKind::integer}, {"b", ColumnKind::number}, {"c", ColumnKind::text}, {"d", ColumnKind::blob}});
  Insertion rows(*database, "[All]", {"a", "[b]", "c", "d"});
  EXPECT_EQ(rows.row(Kind::item, 0.5, std::string("text"), Blob{std::string_view("\0\1", 2)}), 1);
  EXPECT_EQ(rows.row(std::optional<int>(), Value(2), std::string_view(), Value("v")), 2);
  EXPECT_THROW(rows.row(1, 2, 3), DatabaseError);
  rows.row(std::optional<int>(3), true, "", Null{});
  EXPECT_THAT(linesOf(*database->OpenRecordset("All"), {"a", "b", "c", "d"}),
              ElementsAre(std::string("7|0.5|text|\0\1", 13), "-|2||v", "3|1||-"));
}

TEST(DatabaseBuilder, replacesAFileWholeAndLeavesNothingWithoutFinish) {
  const ProgramFile program;
  {
    const auto database = program.open();
    database->Execute("update Constructs set Status = 2");
  }
  {
    DatabaseBuilder builder(program.path());
    builder.database().Execute("create table T (A)");
    EXPECT_THROW(builder.database().Execute("create table T (A)"), DatabaseError);
  }
  EXPECT_TRUE(program.open()->hasTable("Constructs"));
  {
    DatabaseBuilder builder(program.path());
    builder.database().Execute("create table T (A)");
    builder.finish();
  }
  EXPECT_THAT(walkFiles(program.folder().path()), ElementsAre("program.mdb"));
  EXPECT_FALSE(program.open()->hasTable("Constructs"));
  EXPECT_TRUE(program.open()->hasTable("T"));
}

TEST(DatabaseBuilder, isNotFinishedUnderAnInsertionAndNotTwice) {
  const TemporaryFolder folder;
  DatabaseBuilder builder(folder.file("x.mdb"));
  builder.database().createTable("T", {{"A", ColumnKind::key}});
  {
    Insertion rows(builder.database(), "T", {"A"});
    EXPECT_THAT(messageOf([&] { builder.finish(); }), HasSubstr("still there"));
    rows.row("k");
  }
  builder.finish();
  EXPECT_THROW(builder.finish(), DatabaseError);
  EXPECT_EQ(dbEngine().OpenDatabase(folder.file("x.mdb"))->OpenRecordset("T")->RecordCount(), 1);
  dbEngine().settle();
}

TEST(DatabaseBuilder, startsEmptyWhateverWasBuiltBefore) {
  const TemporaryFolder folder;
  const auto build = [&](const std::string& file, const std::string& table, int rows, bool finish) {
    DatabaseBuilder builder(folder.file(file));
    builder.database().createTable(table, {{"A", ColumnKind::integer}, {"B", ColumnKind::text}});
    {
      Insertion insertion(builder.database(), table, {"A", "B"});
      for (int i = 0; i < rows; ++i)
        insertion.row(i, std::string(200, 'x'));
    }
    builder.database().Execute("create index A on " + table + "(A)");
    if (finish) builder.finish();
  };
  build("large.mdb", "T", 20000, true);
  build("dropped.mdb", "T", 20000, false);
  build("small.mdb", "T", 2, true);
  build("other.mdb", "U", 0, true);
  EXPECT_THAT(walkFiles(folder.path()), ElementsAre("large.mdb", "other.mdb", "small.mdb"));
  EXPECT_LT(fileSize(folder.file("small.mdb")), 40000U) << "no page of the large one";
  const auto check = [&](const std::string& file, const std::string& sql) {
    return dbEngine().OpenDatabase(folder.file(file))->OpenRecordset(sql)->Field("a").asText();
  };
  EXPECT_EQ(check("large.mdb", "select integrity_check as a from pragma_integrity_check"), "ok");
  EXPECT_EQ(check("large.mdb", "select count(*) as a from T where A >= 10000"), "10000");
  EXPECT_EQ(check("small.mdb", "select integrity_check as a from pragma_integrity_check"), "ok");
  EXPECT_EQ(check("small.mdb", "select count(*) as a from T"), "2");
  EXPECT_EQ(check("other.mdb", "select group_concat(name) as a from sqlite_master where name not like 'sqlite%'"),
            "U,U_A");
  dbEngine().settle();
}

TEST(DatabaseBuilder, writesNothingOfATransactionThatWasUndone) {
  const TemporaryFolder folder;
  {
    DatabaseBuilder builder(folder.file("x.mdb"));
    builder.database().Execute("rollback"); // as SQLite itself does when memory is out
    builder.database().Execute("create table Lost (A)");
    EXPECT_THAT(messageOf([&] { builder.finish(); }), HasSubstr("undone"));
  }
  EXPECT_THAT(walkFiles(folder.path()), IsEmpty());
  DatabaseBuilder next(folder.file("y.mdb"));
  EXPECT_FALSE(next.database().hasTable("Lost"));
}

TEST(DatabaseBuilder, buildsOnSeveralThreads) {
  const TemporaryFolder folder;
  constexpr int kThreads = 4, kFiles = 20;
  std::vector<std::jthread> threads;
  for (int thread = 0; thread < kThreads; ++thread)
    threads.emplace_back([&folder, thread] {
      for (int i = 0; i < kFiles; ++i) {
        DatabaseBuilder builder(folder.file(std::to_string(thread) + "-" + std::to_string(i)));
        builder.database().createTable("T", {{"A", ColumnKind::integer}});
        for (int row = 0; row <= i; ++row)
          Insertion(builder.database(), "T", {"A"}).row(thread);
        builder.finish();
      }
    });
  threads.clear();
  for (const std::string& file : walkFiles(folder.path())) {
    const auto rows =
        dbEngine().OpenDatabase(folder.file(file))->OpenRecordset("select sum(A) as a, count(*) as n from T");
    const std::int64_t count = std::stoi(file.substr(2)) + 1;
    EXPECT_EQ(rows->Field("n").asInteger(), count) << file;
    EXPECT_EQ(rows->Field("a").asInteger(), count * std::stoi(file.substr(0, 1))) << file;
  }
  dbEngine().settle();
  EXPECT_EQ(walkFiles(folder.path()).size(), static_cast<std::size_t>(kThreads * kFiles));
}

TEST(DatabaseBuilder, refusesToReplaceAFileInUseAndAFolderThatIsMissing) {
  const ProgramFile program;
  const auto used = program.open();
  DatabaseBuilder builder(program.path());
  builder.database().Execute("create table T (A)");
  EXPECT_THAT(messageOf([&] { builder.finish(); }), HasSubstr("still in use"));
  EXPECT_TRUE(used->hasTable("Constructs"));
  EXPECT_THAT(messageOf([&] { DatabaseBuilder other(program.folder().file("none/x.mdb")); }),
              HasSubstr("No such file"));
}

} // namespace

} // namespace platform
