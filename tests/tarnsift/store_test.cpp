#include "tarnsift/store/program_database.hpp"

#include "platform/runtime/text.hpp"
#include "tarnsift/fake_host.hpp"
#include "tarnsift/reports/change_size.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

/// The columns of Constructs behind those of the host's analysis, and its indexes of the upgrade.
std::string shapeOf(platform::Database& database) {
  std::string text;
  for (const std::string& field : database.fieldNames("Constructs"))
    if (field != "KVID" && field != "Name" && field != "Offset" && field != "Size") text += field + "\n";
  for (const auto& [table, index] : {std::pair("Relationships", "IdxKVID1"), std::pair("Relationships", "IdxKVID2"),
                                     std::pair("Constructs", "IdxOffset"), std::pair("Constructs", "IdxSize")})
    if (!database.hasIndex(table, index)) text += std::string("without ") + index + "\n";
  return text;
}

class Upgrade : public ::testing::Test {
 protected:
  explicit Upgrade(const std::string& project = "P") : host(project) {}
  std::string shape() { return shapeOf(*host.database("A")); }
  /// The pair of columns of every row.
  std::string values(const std::string& status, const std::string& classification) {
    std::string text;
    for (auto rows = host.database("A")->OpenRecordset("Constructs"); !rows->Eof(); rows->MoveNext())
      text += rows->Field("KVID").asText() + "|" + rows->Field(status).asText() + "|" +
              rows->Field(classification).asText() + "\n";
    return text;
  }
  FakeHost host;
  const Program program{.id = "A",
                        .constructs = "k1 CUST-NO 0 4 W first\n k2 CUST-KEY 4 6 A\n k3 CUST-NAME 4 6 -\n",
                        .projects = {"P", "Q"}};
};

TEST_F(Upgrade, AProgramThatIsNewToTheProjectGetsItsColumnsAndTheIndexes) {
  host.projects = {"P", "Q"};
  host.addWithColumns(program, "Q_Status", "Q_Classification");
  host.run();
  EXPECT_EQ(shape(), "Q_Status\nQ_Classification\nP_Status\nP_Classification\n");
  EXPECT_EQ(values("P_Status", "P_Classification"), "k1||\nk2||\nk3||\n");
  EXPECT_EQ(values("Q_Status", "Q_Classification"), "k1|0|first\nk2|1|\nk3||\n") << "another project's sorting stays";
  EXPECT_EQ(host.state(), "A 0 0 0\n");
}

TEST_F(Upgrade, ColumnsOfGoneProjectsAreDroppedWhateverTheirCase) {
  host.projects = {"p", "Q"};
  host.add(program);
  {
    const auto database = host.database("A");
    for (const char* column : {"OLD_STATUS", "Old_Classification", "q_status", "q_classification", "[a b_Status]",
                               "[a b_Classification]", "MyStatus"})
      database->Execute(std::string("alter table Constructs add column ") + column + " Integer");
    database->Execute("create index IdxOld on Constructs(OLD_STATUS)");
  }
  host.run();
  EXPECT_EQ(shape(), "P_Status\nP_Classification\nq_status\nq_classification\nMyStatus\n");
  EXPECT_EQ(host.state(), "A 1 1 0\n  W k1 CUST-NO: first\n  A k2 CUST-KEY\n");
}

TEST_F(Upgrade, TheEarlierFormatIsSplitOverTheProgramsProjects) {
  host.projects = {"P", "Other", "Q"};
  host.addWithColumns(program, "Status", "Classification");
  host.run();
  EXPECT_EQ(shape(), "P_Status\nP_Classification\nQ_Status\nQ_Classification\n");
  EXPECT_EQ(values("Q_Status", "Q_Classification"), "k1|0|first\nk2|1|\nk3||\n");
  EXPECT_EQ(host.state(), "A 1 1 0\n  W k1 CUST-NO: first\n  A k2 CUST-KEY\n");
}

// What could not be finished before is begun again, not taken for done.
TEST_F(Upgrade, AFailedUpgradeLeavesTheDatabaseAsItWas) {
  host.projects = {"P", "Q"};
  host.addWithColumns(program, "Status", "Classification");
  host.database("A")->Execute("alter table Constructs add column Q_Status Integer");
  host.run();
  EXPECT_EQ(host.counts(), "");
  EXPECT_NE(host.activity.find("Q_Status"), std::string::npos) << host.activity;
  EXPECT_EQ(
      shape(),
      "Status\nClassification\nQ_Status\nwithout IdxKVID1\nwithout IdxKVID2\nwithout IdxOffset\nwithout IdxSize\n");
}

TEST_F(Upgrade, AProgramWithoutAProjectKeepsItsEarlierColumns) {
  host.addWithColumns(program, "Status", "Classification");
  host.programs[0].projects = {};
  host.run();
  const auto database = host.database("A");
  tarnsift::UpgradeProgramDatabase(*database, "A");
  EXPECT_EQ(shape(), "Status\nClassification\nP_Status\nP_Classification\n");
  EXPECT_EQ(values("Status", "Classification"), "k1|0|first\nk2|1|\nk3||\n");
}

TEST_F(Upgrade, ASecondOpeningChangesNothing) {
  host.projects = {"P", "Q"};
  host.addWithColumns(program, "Q_Status", "Q_Classification");
  host.run();
  const auto schema = [this] {
    std::string text;
    for (auto rows = host.database("A")->OpenRecordset("select sql, rootpage from sqlite_master"); !rows->Eof();
         rows->MoveNext())
      text += rows->Field("sql").asText() + rows->Field("rootpage").asText() + "\n";
    return text;
  };
  const std::string before = schema();
  host.run();
  EXPECT_EQ(schema(), before);
}

class UpgradeOfAnOddName : public Upgrade {
 protected:
  UpgradeOfAnOddName() : Upgrade("a.b [x]") {}
};

TEST_F(UpgradeOfAnOddName, TheColumnsCarryTheEscapedName) {
  Program odd = program;
  odd.projects = {"a.b [x]"};
  host.addWithColumns(odd, "Other_Status", "Other_Classification");
  host.run();
  EXPECT_EQ(tarnsift::globals().StatusColumn, "[a&dot;b &openbr;x&closebr;_Status]");
  EXPECT_EQ(shape(), "a&dot;b &openbr;x&closebr;_Status\na&dot;b &openbr;x&closebr;_Classification\n");
  host.database("A")->Execute("update Constructs set " + tarnsift::globals().StatusColumn + " = 2 where KVID = 'k3'");
  host.close();
  platform::removeAll(host.path("Projects/a.b [x]/TARNSIFT"));
  host.run();
  EXPECT_EQ(host.state(), "A 0 0 1\n  C k3 CUST-NAME\n");
}

TEST(Names, EscapeColumnName) {
  const std::string umlauts = "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4";
  const std::vector<std::pair<std::string, std::string>> kCases = {
      {"Plain Name-1", "Plain Name-1"},
      {"a&b", "a&amp;b"},
      {"[&]", "&openbr;&amp;&closebr;"},
      {"!=.`'\"", "&bang;&eq;&dot;&backsqoute;&sqoute;&qoute;"},
      {std::string(48, 'x'), std::string(48, 'x')},
      {std::string(47, 'x') + "..", std::string(47, 'x') + "&"},
      {umlauts + std::string(45, 'x'), umlauts + std::string(44, 'x')},
  };
  for (const auto& [name, escaped] : kCases)
    EXPECT_EQ(tarnsift::EscapeColumnName(name), escaped) << name;
}

TEST(Counts, AreRightAlignedInTenCharacters) {
  const std::vector<std::pair<std::string, std::string>> kCases = {{"12", "        12"},
                                                                   {" 9 ", "         9"},
                                                                   {"", "          "},
                                                                   {"1234567890", "1234567890"},
                                                                   {" 12345678901 ", "12345678901"}};
  for (const auto& [text, padded] : kCases)
    EXPECT_EQ(tarnsift::PadCount(text), padded) << text;
  EXPECT_LT(tarnsift::PadCount(9), tarnsift::PadCount(12)) << "texts sort as numbers";
}

TEST(Counts, TheDatabaseStandsBesideTheAnalysisFile) {
  EXPECT_EQ(tarnsift::DatabasePath("Analysis\\A.B.kva"), "Analysis\\A.B.mdb");
  EXPECT_EQ(tarnsift::DatabasePath(".kva"), ".mdb");
}

TEST(ChangeSize, IsProposedFromTheCounts) {
  struct {
    std::vector<std::int64_t> counts;
    std::string limits;
    std::string sizes;
  } const kCases[] = {
      {{3, 10, 50}, "4 27 50", "S M XL"},
      {{7, 0, 7}, "7 7 7", "XL - XL"},
      {{5, 6}, "6 6 6", "S XL"},
      {{1, 4, 2, 3}, "2 3 4", "S XL M L"},
      {{1000000, 2000000}, "1000000 1500000 2000000", "M XL"},
      {{4}, "4 4 4", "XL"},
  };
  for (const auto& c : kCases) {
    const tarnsift::SizeLimits limits = tarnsift::proposeSizeLimits(c.counts);
    EXPECT_EQ(std::to_string(limits.s) + " " + std::to_string(limits.m) + " " + std::to_string(limits.l), c.limits);
    std::vector<std::string> sizes;
    for (const auto count : c.counts)
      sizes.push_back(count == 0 ? "-" : std::string(tarnsift::changeSize(count, limits)));
    EXPECT_EQ(platform::joined(sizes, " "), c.sizes) << c.limits;
  }
  EXPECT_EQ(tarnsift::changeSize(50, {4, 27, 51}), "L") << "the analyst raised the last limit";
}

} // namespace
} // namespace tarnsift_test
