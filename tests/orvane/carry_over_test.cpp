#include "orvane/carry_over.hpp"

#include <filesystem>

#include "cobol/analyse.hpp"
#include "orvane/program_files.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"

using testing::ElementsAre;

namespace orvane {

namespace {

// "KVID shape", the name being the last part of the key without its number.
CarryRow rowOf(const std::string& text) {
  const auto words = platform::splitAt(text, ' ');
  const std::string item = words.at(0).substr(words.at(0).find(':') + 1);
  std::string name = item.substr(item.rfind('.') == item.npos ? 0 : item.rfind('.') + 1);
  name = name.substr(name.starts_with('?') ? 1 : 0, name.find('#'));
  if (name.starts_with('~')) name = "FILLER";
  CarryRow row{words[0], name, std::nullopt, 0};
  if (words.size() > 1) row.shape = row.size = std::stoll(words[1]);
  return row;
}

std::vector<CarryRow> rowsOf(const std::vector<std::string>& texts) {
  std::vector<CarryRow> rows;
  for (const auto& text : texts)
    rows.push_back(rowOf(text));
  return rows;
}

std::string fateOf(const CarryMatch& match, const std::vector<CarryRow>& fresh) {
  const auto key = [&](int row) { return fresh[static_cast<std::size_t>(row)].kvid; };
  if (match.row >= 0) return (match.moved ? "moved to " : "is ") + key(match.row);
  return match.proposed >= 0 ? "perhaps " + key(match.proposed) : "gone";
}

std::vector<std::string> pictureOf(const std::vector<std::string>& old, const std::vector<std::string>& fresh) {
  const auto oldRows = rowsOf(old);
  const auto freshRows = rowsOf(fresh);
  const auto matches = matchRows(oldRows, freshRows);
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < matches.size(); ++i) {
    lines.push_back(oldRows[i].kvid + ' ' + fateOf(matches[i], freshRows));
  }
  return lines;
}

TEST(CarryMatch, findsConstructsAgain) {
  struct Case {
    std::string what;
    std::vector<std::string> old, fresh, expected;
  };
  const std::vector<Case> cases = {
      {"another shape under the same key", {"P:R.A 4"}, {"P:R.A 9"}, {"P:R.A is P:R.A"}},
      {"regrouped: parent of another group",
       {"P:R.G.A 4", "P:R.G.B 4"},
       {"P:S.G.A 4", "P:S.G.B 4"},
       {"P:R.G.A moved to P:S.G.A", "P:R.G.B moved to P:S.G.B"}},
      {"the program is renamed",
       {"OLD:R 9", "OLD:R.A 4"},
       {"NEW:R 9", "NEW:R.A 4"},
       {"OLD:R moved to NEW:R", "OLD:R.A moved to NEW:R.A"}},
      {"two of one name and place: neither", {"P:R.G.A 4"}, {"P:S.G.A 4", "P:T.G.A 4"}, {"P:R.G.A gone"}},
      {"told apart by shape", {"P:R.G.A 4"}, {"P:S.G.A 4", "P:T.G.A 6"}, {"P:R.G.A moved to P:S.G.A"}},
      {"by its name alone, whatever the shape", {"P:R.A 4"}, {"P:S.T.A 6"}, {"P:R.A moved to P:S.T.A"}},
      {"a name that another construct has too",
       {"P:R.A 4", "P:S.A 4"},
       {"P:T.A 6", "P:S.A 4"},
       {"P:R.A gone", "P:S.A is P:S.A"}},
      {"one that is new has the name as well", {"P:R.A 4"}, {"P:T.A 6", "P:S.A 5"}, {"P:R.A gone"}},
      {"renamed, the only one", {"P:R.A 4"}, {"P:R.B 4"}, {"P:R.A perhaps P:R.B"}},
      {"renamed between its neighbours",
       {"P:R 9", "P:R.A 4", "P:R.B 4", "P:R.C 4"},
       {"P:R 9", "P:R.A 4", "P:R.X 4", "P:R.C 4"},
       {"P:R is P:R", "P:R.A is P:R.A", "P:R.B perhaps P:R.X", "P:R.C is P:R.C"}},
      {"renamed with another shape", {"P:R.A 4", "P:R.B 4"}, {"P:R.A 4", "P:R.X 5"}, {"P:R.A is P:R.A", "P:R.B gone"}},
      {"renamed under a renamed parent", {"P:R 4", "P:R.A 4"}, {"P:S 4", "P:S.B 4"}, {"P:R perhaps P:S", "P:R.A gone"}},
      {"two neighbours renamed",
       {"P:R.A 4", "P:R.B 4", "P:R.C 4"},
       {"P:R.A 4", "P:R.X 4", "P:R.Y 4"},
       {"P:R.A is P:R.A", "P:R.B gone", "P:R.C gone"}},
      {"one more stands between the neighbours",
       {"P:R.A 4", "P:R.B 4", "P:R.C 4"},
       {"P:R.A 4", "P:R.X 4", "P:R.Y 4", "P:R.C 4"},
       {"P:R.A is P:R.A", "P:R.B gone", "P:R.C is P:R.C"}},
      {"gone from between its neighbours",
       {"P:R.A 4", "P:R.B 4", "P:R.C 4"},
       {"P:R.A 4", "P:R.C 4"},
       {"P:R.A is P:R.A", "P:R.B gone", "P:R.C is P:R.C"}},
      {"a neighbour came from elsewhere",
       {"P:R.A 4", "P:R.B 4", "P:S.C 4"},
       {"P:R.A 4", "P:R.X 4", "P:R.C 4"},
       {"P:R.A is P:R.A", "P:R.B gone", "P:S.C moved to P:R.C"}},
      {"FILLER between them has another key",
       {"P:R.A 4", "P:R.~A+1 1", "P:R.B 4"},
       {"P:R.X 4", "P:R.~X+1 1", "P:R.B 4"},
       {"P:R.A perhaps P:R.X", "P:R.~A+1 moved to P:R.~X+1", "P:R.B is P:R.B"}},
      {"undeclared names have no place", {"P:A 4", "P:?U 0"}, {"P:A 4", "P:?V 0"}, {"P:A is P:A", "P:?U gone"}},
      {"FILLER is no name", {"P:R.~A+1 4"}, {"P:S.~B+1 5"}, {"P:R.~A+1 gone"}},
      {"an equal path in front: by shape",
       {"P:A 4", "P:A#2 6"},
       {"P:A 8", "P:A#2 4", "P:A#3 6"},
       {"P:A is P:A#2", "P:A#2 is P:A#3"}},
      {"the first of a group is gone", {"P:A 4", "P:A#2 6"}, {"P:A 6"}, {"P:A gone", "P:A#2 is P:A"}},
      {"a group of equal shapes keeps its order",
       {"P:A 4", "P:A#2 4", "P:A#3 4"},
       {"P:A 4", "P:A#2 4"},
       {"P:A is P:A", "P:A#2 is P:A#2", "P:A#3 gone"}},
      {"all shapes of a group changed", {"P:A 4", "P:A#2 6"}, {"P:A 5", "P:A#2 7"}, {"P:A is P:A", "P:A#2 is P:A#2"}},
      {"the rest of a group in order", {"P:A 4", "P:A#2 6"}, {"P:A 6", "P:A#2 9"}, {"P:A is P:A#2", "P:A#2 is P:A"}},
  };
  for (const Case& one : cases)
    EXPECT_EQ(pictureOf(one.old, one.fresh), one.expected) << one.what;
}

/// A program's database through several verifications and some work of the analyst.
class Generations {
 public:
  ~Generations() { platform::dbEngine().settle(); }

  std::string verify(const std::vector<std::string>& constructs) {
    ++m_now;
    const auto rows = rowsOf(constructs);
    platform::DatabaseBuilder builder(file());
    builder.database().createTable("Constructs", {{"KVID", platform::ColumnKind::key},
                                                  {"Name", platform::ColumnKind::key},
                                                  {"Size", platform::ColumnKind::integer},
                                                  {"Shape", platform::ColumnKind::integer}});
    {
      platform::Insertion insertion(builder.database(), "Constructs", {"KVID", "Name", "Size", "Shape"});
      for (const auto& row : rows)
        insertion.row(row.kvid, row.name, row.size, row.shape);
    }
    const CarryCounts counts = carryOver(
        file(), builder.database(), [&] { return rows; }, m_now);
    builder.finish();
    return std::to_string(counts.carried) + " carried, " + std::to_string(counts.moved) + " moved, " +
           std::to_string(counts.archived) + " archived, " + std::to_string(counts.restored) + " restored";
  }
  void run(const std::string& sql) const { platform::dbEngine().OpenDatabase(file())->Execute(sql); }
  void addProject(const std::string& stem) const {
    run("alter table Constructs add column [" + stem + "_Status] Integer");
    run("alter table Constructs add column [" + stem + "_Classification] varchar(255)");
  }
  std::vector<std::string> lines(const std::string& sql, const std::vector<std::string>& fields) const {
    const auto database = platform::dbEngine().OpenDatabase(file());
    std::vector<std::string> result;
    if (sql == "Archive" && !database->hasTable(sql)) return result;
    for (const auto rows = database->OpenRecordset(sql); !rows->Eof(); rows->MoveNext()) {
      std::string line;
      for (const auto& field : fields)
        line += (line.empty() ? "" : " ") + (rows->Field(field).isNull() ? "-" : rows->Field(field).asText());
      result.push_back(line);
    }
    return result;
  }
  std::vector<std::string> decided(const std::string& stem) const {
    return lines("select * from Constructs where [" + stem + "_Status] is not null or [" + stem +
                     "_Classification] is not null",
                 {"KVID", stem + "_Status", stem + "_Classification"});
  }
  std::vector<std::string> archive() const {
    return lines("Archive", {"KVID", "Project", "Status", "Classification", "ArchivedAt"});
  }
  std::vector<std::string> proposals() const { return lines("Archive", {"KVID", "Project", "Proposed"}); }
  /// `KEY taken` or `KEY refused`, of the project's decisions whose old key matches; "" takes all.
  std::vector<std::string> accept(const std::string& project, const std::string& kvid = "") const {
    std::vector<std::string> result;
    for (const auto& [decision, taken] : acceptProposals(
             file(), project, [&](const ArchivedDecision& one) { return kvid.empty() || one.kvid == kvid; }))
      result.push_back(decision.kvid + (taken ? " taken" : " refused"));
    return result;
  }

 private:
  std::string file() const { return m_folder.file("p.mdb"); }
  platform::TemporaryFolder m_folder;
  std::int64_t m_now = 0;
};

TEST(CarryOver, keepsEveryProjectsDecisionsThroughVerifications) {
  Generations program;
  EXPECT_EQ(program.verify({"P:A 4", "P:B 4", "P:R.C 4"}), "0 carried, 0 moved, 0 archived, 0 restored");
  program.addProject("One");
  program.addProject("a&dot;b [2");
  program.run(
      "update Constructs set [One_Status] = 1, [One_Classification] = 'it''s a key' where KVID in ('P:A', 'P:R.C')");
  program.run("update Constructs set [a&dot;b [2_Status] = 0 where KVID = 'P:A'");
  program.run("update Constructs set [a&dot;b [2_Classification] = 'remark only' where KVID = 'P:B'");
  EXPECT_EQ(program.verify({"P:NEW 4", "P:A 6", "P:B 4", "P:S.C 4"}), "3 carried, 1 moved, 0 archived, 0 restored");
  EXPECT_THAT(program.decided("One"), ElementsAre("P:A 1 it's a key", "P:S.C 1 it's a key"));
  EXPECT_THAT(program.decided("a&dot;b [2"), ElementsAre("P:A 0 -", "P:B - remark only"));
  EXPECT_THAT(program.archive(), ElementsAre());
}

TEST(CarryOver, archivesWhatIsGoneUntilItsConstructComesBack) {
  Generations program;
  program.verify({"P:A 4", "P:B 4"});
  program.addProject("One");
  program.run("update Constructs set One_Status = 2, One_Classification = 'clean' where KVID = 'P:A'");
  EXPECT_EQ(program.verify({"P:B 4"}), "0 carried, 0 moved, 1 archived, 0 restored");
  EXPECT_THAT(program.archive(), ElementsAre("P:A One 2 clean 2"));
  EXPECT_EQ(program.verify({"P:B 4", "P:X 4"}), "0 carried, 0 moved, 0 archived, 0 restored");
  EXPECT_THAT(program.archive(), ElementsAre("P:A One 2 clean 2"));
  EXPECT_EQ(program.verify({"P:A 5"}), "0 carried, 0 moved, 0 archived, 1 restored");
  EXPECT_THAT(program.decided("One"), ElementsAre("P:A 2 clean"));
  EXPECT_THAT(program.archive(), ElementsAre());
}

TEST(CarryOver, archivedDecisionsComeBackWithTheirName) {
  Generations program;
  program.verify({"P:?A 0", "P:?B 0", "P:R.C 1", "P:S.C 1"});
  program.addProject("One");
  program.run("update Constructs set One_Status = 1, One_Classification = KVID where KVID <> ''");
  EXPECT_EQ(program.verify({"P:X 1"}), "0 carried, 0 moved, 4 archived, 0 restored");
  // Of B there are two now, of C two were archived.
  EXPECT_EQ(program.verify({"P:X 1", "P:A 8", "P:R.B 1", "P:T.B 1", "P:T.C 1"}),
            "0 carried, 0 moved, 0 archived, 1 restored");
  EXPECT_THAT(program.decided("One"), ElementsAre("P:A 1 P:?A"));
  EXPECT_EQ(program.archive().size(), 3U);
}

// The archived decision belongs to the construct that went; the one that has the key now was decided on its own.
TEST(CarryOver, archivedDecisionsDoNotOverwriteThoseOfAConstructThatStayed) {
  Generations program;
  program.verify({"P:A 4", "P:A#2 6"});
  program.addProject("One");
  program.run("update Constructs set One_Status = 1, One_Classification = 'first' where KVID = 'P:A'");
  EXPECT_EQ(program.verify({"P:A 6"}), "0 carried, 0 moved, 1 archived, 0 restored");
  EXPECT_THAT(program.decided("One"), ElementsAre());
  EXPECT_EQ(program.verify({"P:A 6", "P:B 1"}), "0 carried, 0 moved, 0 archived, 0 restored");
  EXPECT_THAT(program.decided("One"), ElementsAre());
  EXPECT_THAT(program.archive(), ElementsAre("P:A One 1 first 2"));
}

TEST(CarryOver, carriesTheOnePairOfTheEarlierFormat) {
  Generations program;
  program.verify({"P:A 4", "P:B 4"});
  program.run("alter table Constructs add column Status Integer");
  program.run("alter table Constructs add column Classification varchar(255)");
  program.run("alter table Constructs drop column Shape"); // nor had it shapes
  program.run("update Constructs set Status = 1, Classification = 'old' where KVID <> ''");
  EXPECT_EQ(program.verify({"P:A 4"}), "1 carried, 0 moved, 1 archived, 0 restored");
  EXPECT_THAT(program.lines("select * from Constructs where Status = 1", {"KVID", "Classification"}),
              ElementsAre("P:A old"));
  // What the component makes of it at the next opening.
  program.addProject("One");
  program.run("update Constructs set One_Status = Status, One_Classification = Classification");
  program.run("alter table Constructs drop column Status");
  program.run("alter table Constructs drop column Classification");
  EXPECT_EQ(program.verify({"P:A 4", "P:B 4"}), "1 carried, 0 moved, 0 archived, 1 restored");
  EXPECT_THAT(program.decided("One"), ElementsAre("P:A 1 old", "P:B 1 old"));
}

TEST(CarryOver, proposesANewNameAndGivesItTheDecisionWhenAccepted) {
  Generations program;
  program.verify({"P:A 4", "P:B 4", "P:C 4", "P:D 4"});
  program.addProject("One");
  program.addProject("Two");
  program.run("update Constructs set One_Status = 1, One_Classification = 'key' where KVID in ('P:B', 'P:D')");
  program.run("update Constructs set Two_Classification = 'seen' where KVID = 'P:B'");
  EXPECT_EQ(program.verify({"P:A 4", "P:X 4", "P:C 4"}), "0 carried, 0 moved, 3 archived, 0 restored");
  const auto proposed = ElementsAre("P:B One P:X", "P:B Two P:X", "P:D One -");
  EXPECT_THAT(program.proposals(), proposed);
  EXPECT_THAT(program.decided("One"), ElementsAre()) << "nothing is given before it is confirmed";
  program.verify({"P:A 4", "P:X 4", "P:C 4", "P:E 4"});
  EXPECT_THAT(program.proposals(), proposed) << "another verification keeps them";
  EXPECT_THAT(program.accept("Three"), ElementsAre());
  EXPECT_THAT(program.accept("one"), ElementsAre("P:B taken"));
  EXPECT_THAT(program.decided("One"), ElementsAre("P:X 1 key"));
  EXPECT_THAT(program.decided("Two"), ElementsAre()) << "the other project decides for itself";
  EXPECT_THAT(program.proposals(), ElementsAre("P:B Two P:X", "P:D One -"));
  EXPECT_THAT(program.accept("One"), ElementsAre()) << "D has no proposal";
}

TEST(CarryOver, whatWasDecidedOnTheNewNameStays) {
  Generations program;
  program.verify({"P:A 4", "P:B 4"});
  program.addProject("One");
  program.run("update Constructs set One_Status = 1, One_Classification = 'old' where KVID in ('P:A', 'P:B')");
  program.verify({"P:A 4", "P:X 4"});
  program.run("update Constructs set One_Classification = 'mine' where KVID = 'P:X'");
  EXPECT_THAT(program.accept("One", "P:A"), ElementsAre()) << "not archived";
  EXPECT_THAT(program.accept("One", "P:B"), ElementsAre("P:B refused"));
  EXPECT_THAT(program.decided("One"), ElementsAre("P:A 1 old", "P:X - mine"));
  EXPECT_THAT(program.archive(), ElementsAre("P:B One 1 old 2"));
}

TEST(CarryOver, proposalsFollowTheirConstruct) {
  Generations program;
  program.verify({"P:R 8", "P:R.A 4", "P:R.B 4"});
  program.addProject("One");
  program.run("update Constructs set One_Status = 1 where KVID = 'P:R.B'");
  program.verify({"P:R 8", "P:R.A 4", "P:R.X 4"});
  program.verify({"P:S 8", "P:S.A 4", "P:S.X 4"});
  EXPECT_THAT(program.proposals(), ElementsAre("P:R.B One P:S.X"));
  program.verify({"P:S 8", "P:S.A 4"});
  EXPECT_THAT(program.proposals(), ElementsAre("P:R.B One -"));
}

TEST(CarryOver, readsTheArchiveOfEarlierVersions) {
  Generations program;
  program.verify({"P:A 4", "P:B 4"});
  program.addProject("One");
  program.run("update Constructs set One_Status = 1 where KVID = 'P:B'");
  program.verify({"P:A 4", "P:X 4"});
  program.run("alter table Archive drop column Proposed");
  EXPECT_THAT(program.accept("One"), ElementsAre());
  program.verify({"P:A 4", "P:X 4", "P:Y 4"});
  EXPECT_THAT(program.proposals(), ElementsAre("P:B One -"));
  EXPECT_THAT(program.archive(), ElementsAre("P:B One 1 - 2"));
}

/// What becomes of every construct of a sample program that does not keep its key, when its text is changed.
std::vector<std::string> fatesIn(const std::string& sample,
                                 const std::vector<std::pair<std::string, std::string>>& edits) {
  const std::filesystem::path bank = std::filesystem::path(TARNSIFT_SOURCE_DIR) / "samples" / "bank";
  std::map<std::string, std::string> copybooks;
  for (const auto& entry : std::filesystem::directory_iterator(bank / "copy"))
    copybooks[platform::upper(entry.path().stem().string())] = platform::readText(entry.path().string());
  std::string text = platform::readText((bank / "cobol" / sample).string());
  const auto old = carryRows(cobol::analyse(text, {}, copybooks));
  for (const auto& [from, to] : edits) {
    EXPECT_NE(text.find(from), std::string::npos) << from;
    text = platform::replaceAll(text, from, to);
  }
  const auto fresh = carryRows(cobol::analyse(text, {}, copybooks));
  const auto matches = matchRows(old, fresh);
  std::vector<std::string> lines;
  for (std::size_t i = 0; i < old.size(); ++i)
    if (const std::string fate = fateOf(matches[i], fresh); fate != "is " + old[i].kvid)
      lines.push_back(old[i].kvid.substr(old[i].kvid.find(':') + 1) + ' ' + fate);
  return lines;
}

TEST(CarryMatch, saysForEveryNameOfAChangedSampleWhatBecomesOfIt) {
  const std::string read = "           05  WS-READ                   PIC";
  EXPECT_THAT(fatesIn("BKB020.cbl", {{"WS-READ", "WS-TAKEN"}}),
              ElementsAre("WS-TOTALS.WS-READ perhaps BKB020:WS-TOTALS.WS-TAKEN"));
  EXPECT_THAT(fatesIn("BKB020.cbl", {{"WS-SWITCHES", "WS-SIGNS"}}),
              ElementsAre("WS-SWITCHES perhaps BKB020:WS-SIGNS",
                          "WS-SWITCHES.WS-DAY-END moved to BKB020:WS-SIGNS.WS-DAY-END",
                          "WS-SWITCHES.WS-DAY-END.NO-MORE-DAY moved to BKB020:WS-SIGNS.WS-DAY-END.NO-MORE-DAY",
                          "WS-SWITCHES.WS-SORT-END moved to BKB020:WS-SIGNS.WS-SORT-END",
                          "WS-SWITCHES.WS-SORT-END.NO-MORE-SORTED moved to "
                          "BKB020:WS-SIGNS.WS-SORT-END.NO-MORE-SORTED"));
  EXPECT_THAT(fatesIn("BKB020.cbl", {{"WS-READ ", "?"}, {"WS-POSTED ", "WS-READ "}, {"?", "WS-POSTED "}}),
              ElementsAre());
  EXPECT_THAT(fatesIn("BKB020.cbl", {{read, "           05  WS-COUNTS.\n               10  WS-READ PIC"}}),
              ElementsAre("WS-TOTALS.WS-READ moved to BKB020:WS-TOTALS.WS-COUNTS.WS-READ"));
  EXPECT_THAT(fatesIn("BKB020.cbl", {{"TRANHIST", "OLDHIST"}}), ElementsAre("!FILE.TRANHIST gone"));
  // What is not declared any more is still used, so its name leads somewhere.
  EXPECT_THAT(fatesIn("BKB020.cbl", {{read, "           05  WS-LEFT                   PIC"}}),
              ElementsAre("WS-TOTALS.WS-READ moved to BKB020:?WS-READ"));
}

} // namespace
} // namespace orvane
