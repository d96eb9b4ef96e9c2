#include "platform/program_file.hpp"

#include <platform/runtime/error.hpp>

using testing::ElementsAre;
using testing::HasSubstr;

namespace platform {

namespace {

std::vector<std::string> query(Database& database, const std::string& sql, const std::vector<std::string>& fields) {
  return linesOf(*database.OpenRecordset(sql), fields);
}

TEST(Recordset, readsStatementsAsTheComponentWritesThem) {
  const ProgramFile program;
  const auto database = program.open();
  database->Execute("alter table Constructs add column [a&dot;b &openbr;x&closebr;_Status] Integer");
  database->Execute("update Constructs  set [a&dot;b &openbr;x&closebr;_Status] =2 where KVID='K3'");

  const struct {
    std::string sql;
    std::vector<std::string> fields, lines;
  } cases[] = {
      {"select * from constructs where [A&DOT;B &openbr;x&closebr;_status] is not NULL",
       {"KVID", "[a&dot;b &openbr;x&closebr;_Status]"},
       {"k3|2"}},
      {"SELECT  Status, Count(*) as cnt from constructs where Status is not NULL group by Status",
       {"status", "CNT"},
       {"0|1", "1|1"}},
      {"select Count(*) as cnt from Constructs where Status = 7", {"cnt"}, {"0"}},
      {"select distinct C.*, R.RelID from Relationships R, Constructs C where C.KVID = R.KVID2  and R.KVID1 = 'K1'  "
       "and R.RelID in ('Move', 'Compare')",
       {"KVID", "Name", "RelID"},
       {"k2|CUST-KEY|Move", "k3|CUST-NAME|Compare"}},
      {"select C.* from Constructs C where C.KVID <> 'K2' and C.offset = 4 and C.Size = 6 ",
       {"Kvid", "classification"},
       {"k3|second"}},
      {"select C.* from Constructs C where C.KVID <> 'k1' and C.offset < 5 and (C.offset + C.Size) > 0 ",
       {"KVID"},
       {"k2", "k3"}},
      {"select KVID, Name from Constructs order by Name desc", {"KVID"}, {"k1", "k3", "k2"}},
      {"select KVID, Name from Constructs order by 2", {"KVID"}, {"k2", "k3", "k1"}},
      {"select KVID as k from Constructs as X where X.Status is null", {"k"}, {"k1"}},
      {"select * from Constructs limit 1", {"KVID"}, {"k1"}},
      {"Constructs", {"KVID", "Status"}, {"k1|-", "k2|0", "k3|1"}},
      {"[constructs]", {"KVID"}, {"k1", "k2", "k3"}},
  };
  for (const auto& [sql, fields, lines] : cases)
    EXPECT_EQ(query(*database, sql, fields), lines) << sql;
}

TEST(Recordset, takesParametersForWhatMustNotStandInATextAndRefusesAWrongNumber) {
  const ProgramFile program;
  const auto database = program.open();
  database->Execute("update Constructs set Name = ? where KVID = ?", {"O'Neil \"x\"", "k1"});
  const auto rows = database->OpenRecordset("select * from Constructs where Name = ?", {"O'Neil \"x\""});
  EXPECT_THAT(linesOf(*rows, {"KVID"}), ElementsAre("k1"));
  EXPECT_THROW(database->OpenRecordset("select * from Constructs where Name = ?"), DatabaseError);
  EXPECT_THROW(database->Execute("update Constructs set Name = 'x'", {1}), DatabaseError);
}

TEST(Recordset, distinguishesStatementsThatDifferInTheirLiteralsOnly) {
  const ProgramFile program;
  const auto database = program.open();
  for (int round = 0; round < 2; ++round) {
    EXPECT_THAT(query(*database, "select * from Constructs where Offset = 0 and KVID <> 'it''s'", {"KVID"}),
                ElementsAre("k1"));
    EXPECT_THAT(query(*database, "select * from Constructs where Offset = 4 and KVID <> 'K2'", {"KVID"}),
                ElementsAre("k3"));
    EXPECT_THAT(
        query(*database, "select 'a' as [x 1], KVID from Constructs where Status > -1 and Size = 6.0", {"x 1", "KVID"}),
        ElementsAre("a|k2", "a|k3"));
  }
}

TEST(Recordset, seeksByKeyWithoutRegardToCaseAndReadsTheRowAnew) {
  const ProgramFile program;
  const auto database = program.open();
  const auto table = database->OpenRecordset("Constructs");
  table->setIndex("id");
  table->Seek("=", "K2");
  ASSERT_FALSE(table->NoMatch());
  EXPECT_EQ(table->Field("Name"), Value("CUST-KEY"));

  program.open()->Execute("update Constructs set Status = 2 where KVID = 'k2'");
  table->Seek("=", "k2");
  EXPECT_EQ(table->Field("Status"), Value(2));

  for (const Value& missing : {Value("k"), Value("k22"), Value(""), Value()}) {
    table->Seek("=", missing);
    EXPECT_TRUE(table->NoMatch());
    EXPECT_THAT(messageOf([&] { table->Edit(); }), HasSubstr("no current row"));
    EXPECT_THROW(table->Field("Name"), DatabaseError);
  }
  table->Seek("=", "k1");
  EXPECT_FALSE(table->NoMatch());
  table->MoveNext();
  EXPECT_EQ(table->Field("KVID"), Value("k2"));
}

TEST(Recordset, refusesAnIndexThatCannotServeASeek) {
  const ProgramFile program;
  const auto database = program.open();
  database->Execute("create index Pair on Constructs(Offset, Size)");
  const auto table = database->OpenRecordset("Constructs");
  EXPECT_THAT(messageOf([&] { table->Seek("=", "k1"); }), HasSubstr("needs an Index"));
  EXPECT_THAT(messageOf([&] { table->setIndex("IdxSize"); }), HasSubstr("no index IdxSize"));
  EXPECT_THAT(messageOf([&] { table->setIndex("Pair"); }), HasSubstr("one column"));
  table->setIndex("ID");
  EXPECT_THAT(messageOf([&] { table->Seek("<", "k1"); }), HasSubstr("="));
}

TEST(Recordset, writesTheAssignedFieldsOfTheRowAndNoOthers) {
  const ProgramFile program;
  const auto database = program.open();
  const auto table = database->OpenRecordset("Constructs");
  table->setIndex("ID");
  table->Seek("=", "k2");
  table->Edit();
  program.open()->Execute("update Constructs set Name = 'OTHER', Status = 2 where KVID = 'k2'");
  table->setField("[status]", 1);
  table->setField("Status", Null{});
  table->setField("Classification", "it's");
  table->Update();
  EXPECT_EQ(table->Field("Name"), Value("OTHER"));
  EXPECT_TRUE(table->Field("Status").isNull());
  EXPECT_THAT(query(*program.open(), "select * from Constructs", {"KVID", "Name", "Status", "Classification"}),
              ElementsAre("k1|CUST-NO|-|-", "k2|OTHER|-|it's", "k3|CUST-NAME|1|second"));
}

TEST(Recordset, refusesWritesThatHaveNoRowNoEditOrNoColumn) {
  const ProgramFile program;
  const auto database = program.open();
  const auto table = database->OpenRecordset("Constructs");
  EXPECT_THAT(messageOf([&] { table->setField("Status", 1); }), HasSubstr("without Edit"));
  EXPECT_THAT(messageOf([&] { table->Update(); }), HasSubstr("without Edit"));
  table->Edit();
  EXPECT_THROW(table->setField("Stat", 1), KeyError);
  EXPECT_THROW(table->Field("Stat"), KeyError);
  table->setField("Status", 2);
  table->MoveNext(); // leaves the assignment behind
  EXPECT_THROW(table->Update(), DatabaseError);

  table->Edit();
  database->Execute("delete from Constructs where KVID = 'k2'");
  table->setField("Status", 1);
  EXPECT_THAT(messageOf([&] { table->Update(); }), HasSubstr("gone"));
  EXPECT_THAT(query(*database, "select * from Constructs", {"KVID", "Status"}), ElementsAre("k1|-", "k3|1"));

  const auto grouped = database->OpenRecordset("select Status, count(*) as n from Constructs group by Status");
  EXPECT_THAT(messageOf([&] { grouped->Edit(); }), HasSubstr("cannot be changed"));
  const auto end = database->OpenRecordset("select * from Constructs where Status = 9");
  EXPECT_TRUE(end->Eof());
  EXPECT_THROW(end->MoveNext(), DatabaseError);
  EXPECT_THROW(end->Field("KVID"), DatabaseError);
}

/// Adds rows up to k<last>, all with status 0.
void fill(Database& database, int last) {
  Savepoint whole(database);
  Insertion rows(database, "Constructs", {"KVID", "Name", "Offset", "Size", "Status"});
  for (int i = 4; i <= last; ++i)
    rows.row("k" + std::to_string(i), "N", i * 10, 2, 0);
  whole.commit();
}

TEST(Recordset, fixesItsRowsAtOpeningAndReadsValuesWhenARowIsReached) {
  const ProgramFile program;
  const auto database = program.open();
  const auto other = program.open();
  fill(*database, 700);
  const auto seeds = database->OpenRecordset("select * from Constructs where Status = 0");
  ASSERT_EQ(seeds->RecordCount(), 698);
  int walked = 0;
  for (; !seeds->Eof(); seeds->MoveNext(), ++walked) {
    if (walked == 300) { // by now it reads many rows ahead
      other->Execute("update Constructs set Status = 0 where KVID = 'k1' or KVID = 'k3'");
      other->Execute("insert into Constructs (KVID, Status) values ('k701', 0)");
      other->Execute("update Constructs set Status = 2, Name = 'LATE' where Offset > 4000");
      other->Execute("delete from Constructs where KVID = 'k500'");
    }
    ASSERT_EQ(seeds->Field("Name").asText() == "LATE", seeds->Field("Offset").asInteger() > 4000) << walked;
  }
  EXPECT_EQ(walked, 697);
  EXPECT_EQ(seeds->RecordCount(), 698);
}

TEST(Recordset, editsInTheWalkWhileASecondConnectionWrites) {
  const ProgramFile program;
  const auto database = program.open();
  const auto other = program.open();
  fill(*database, 300);
  for (const std::string source : {"Constructs", "select KVID, Offset, Status from Constructs where Status >= 0",
                                   "select C.* from Constructs C where Status is not null order by Size desc, KVID"}) {
    database->Execute("update Constructs set Status = 0, Classification = null, Size = 1");
    const auto rows = database->OpenRecordset(source);
    int walked = 0;
    for (; !rows->Eof(); rows->MoveNext(), ++walked) {
      ASSERT_EQ(rows->Field("Status"), Value(0)) << source << " " << walked;
      rows->Edit();
      rows->setField("Status", 2);
      rows->Update();
      ASSERT_EQ(rows->Field("Status"), Value(2));
      other->Execute("update Constructs set Classification = 'seen', Size = Size + 1 where KVID = ?",
                     {rows->Field("KVID")});
    }
    EXPECT_EQ(walked, 300) << source;
    EXPECT_THAT(query(*other,
                      "select count(*) as n from Constructs where Status = 2 and Classification = 'seen' and Size = 2",
                      {"n"}),
                ElementsAre("300"))
        << source;
  }
}

TEST(Recordset, findsItsColumnsAgainAfterTheTableHasChanged) {
  const ProgramFile program;
  const auto database = program.open();
  database->Execute("create index Kept on Constructs(Size)");
  database->Execute("create index Both on Constructs([Name], Size)");
  const auto rows = database->OpenRecordset("select * from Constructs where KVID <> ''");
  const auto table = database->OpenRecordset("Constructs");
  table->setIndex("ID");
  database->Execute("alter table Constructs add column [p_Status] Integer");
  database->Execute("alter table Constructs add column [p_Classification] varchar(255)");
  database->Execute("update Constructs set [p_Status] = Status");
  database->Execute("alter table Constructs drop column Name ");
  rows->MoveNext();
  EXPECT_EQ(rows->Field("p_Status"), Value(0));
  EXPECT_EQ(rows->Field("Classification"), Value("first"));
  EXPECT_THROW(rows->Field("Name"), KeyError);
  table->Seek("=", "k3");
  table->Edit();
  table->setField("p_Classification", "new");
  table->Update();
  EXPECT_THAT(query(*database, "select * from Constructs", {"p_Status", "p_Classification"}),
              ElementsAre("-|-", "0|-", "1|new"));
  EXPECT_TRUE(database->hasIndex("Constructs", "Kept"));
  EXPECT_FALSE(database->hasIndex("Constructs", "Both"));
}

TEST(Recordset, holdsNoLockBetweenTwoCalls) {
  const ProgramFile program;
  const auto database = program.open();
  fill(*database, 1000);
  const auto query = database->OpenRecordset("select * from Constructs where Status = 0");
  const auto table = database->OpenRecordset("Constructs");
  const auto grouped = database->OpenRecordset("select Status, count(*) as n from Constructs group by Status");
  query->MoveNext();
  table->MoveNext();
  table->Edit();
  const auto other = program.open();
  other->Execute("update Constructs set Status = 1");
  // A truncating checkpoint needs that no reader stands in the log and no writer is open.
  const auto checkpoint = other->OpenRecordset("select 1 as one");
  EXPECT_EQ(linesOf(*checkpoint, {"one"}).size(), 1U);
  other->Execute("pragma wal_checkpoint(truncate)");
  EXPECT_EQ(fileSize(program.path() + "-wal"), 0U);
}

TEST(Recordset, overRowsInMemoryIsReadOnly) {
  const auto rows = rowsRecordset({"KVID", "Name"}, {{"a", "X"}, {"b", Null{}}});
  EXPECT_EQ(rows->RecordCount(), 2);
  EXPECT_THROW(rows->Edit(), DatabaseError);
  EXPECT_THROW(rows->Field("None"), KeyError);
  EXPECT_THAT(linesOf(*rows, {"[kvid]", "name"}), ElementsAre("a|X", "b|-"));
  EXPECT_THROW(rows->MoveNext(), DatabaseError);
  EXPECT_TRUE(rowsRecordset({"KVID"}, {})->Eof());
}

} // namespace

} // namespace platform
