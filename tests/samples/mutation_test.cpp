// Which keys stay when a program is changed: a carried status hangs on them.
#include <cctype>
#include <set>
#include <sstream>

#include "samples/portfolio.hpp"

namespace samples {
namespace {

using ::testing::IsEmpty;
using Keys = std::set<std::string>;
using Edits = std::vector<std::pair<std::string, std::string>>;

cobol::Analysis analysedText(const std::string& text, const std::map<std::string, std::string>& added = {}) {
  auto copybooks = copybookTexts();
  copybooks.insert(added.begin(), added.end());
  return cobol::analyse(text, {}, copybooks);
}

Keys keysOf(const cobol::Analysis& analysis) {
  Keys keys;
  for (const cobol::Construct& item : analysis.constructs)
    keys.insert(item.kvid);
  return keys;
}

Keys without(const Keys& all, const Keys& some) {
  Keys rest;
  std::set_difference(all.begin(), all.end(), some.begin(), some.end(), std::inserter(rest, rest.end()));
  return rest;
}

std::vector<std::string> linesOfText(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);)
    lines.push_back(line);
  return lines;
}

std::string upper(std::string text) {
  for (char& c : text)
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

bool holds(const std::string& line, const std::string& words) {
  const std::size_t at = upper(line).find(words);
  return at != line.npos && (at == 7 || at == line.find_first_not_of(' ')); // lines may have numbers in front
}

std::string replacedAll(std::string text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != text.npos; at = text.find(from, at + to.size()))
    text.replace(at, from.size(), to);
  return text;
}

class Mutation : public ::testing::TestWithParam<std::string> {
 protected:
  const std::string m_text = textOf(bankFolder() / "cobol" / GetParam());
  const std::vector<std::string> m_lines = linesOfText(m_text);
  const cobol::Analysis m_before = analysedText(m_text);
};

TEST_P(Mutation, LinesBetweenChangeNoKey) {
  std::string text;
  for (const std::string& line : m_lines)
    text += line + "\n      *> ONE MORE REMARK\n\n";
  EXPECT_EQ(keysOf(analysedText(text)), keysOf(m_before));
}

TEST_P(Mutation, NewItemsChangeNoOtherKey) {
  std::string text;
  bool added = false;
  for (const std::string& line : m_lines) {
    const bool here = !added && holds(line, "PROCEDURE DIVISION");
    added = added || here;
    if (here) text += "       01  ZZ-NEW PIC X(8).\n";
    text += line + '\n';
  }
  const Keys before = keysOf(m_before);
  const Keys after = keysOf(analysedText(text));
  EXPECT_THAT(without(before, after), IsEmpty());
  EXPECT_EQ(without(after, before), Keys{m_before.programs.front().path + ":ZZ-NEW"});
}

TEST_P(Mutation, TextMovedToACopybookKeepsItsKeys) {
  std::string text;
  std::string moved;
  bool inStorage = false;
  for (const std::string& line : m_lines) {
    if (inStorage && (holds(line, "LINKAGE SECTION") || holds(line, "PROCEDURE DIVISION"))) inStorage = false;
    (inStorage ? moved : text) += line + '\n';
    if (!moved.empty() || !holds(line, "WORKING-STORAGE SECTION")) continue;
    inStorage = true;
    text += "       COPY ZZMOVED.\n";
  }
  ASSERT_FALSE(moved.empty());
  const cobol::Analysis after = analysedText(text, {{"ZZMOVED", moved}});
  EXPECT_EQ(keysOf(after), keysOf(m_before));
  EXPECT_THAT(faultsOf(after), IsEmpty());
}

TEST_P(Mutation, OtherLevelsAndPicturesKeepTheirKeys) {
  std::string text;
  for (std::string line : m_lines) {
    for (const char* level : {"05  ", "10  ", "15  "}) {
      const std::size_t at = line.find_first_not_of(' ');
      if (at != line.npos && line.compare(at, 4, level) == 0) line[at + 1] = line[at + 1] == '0' ? '3' : '8';
    }
    text += line + '\n';
  }
  text = replacedAll(replacedAll(text, "PIC X(", "PIC A("), "pic x(", "pic a(");
  EXPECT_NE(text, m_text);
  EXPECT_EQ(keysOf(analysedText(text)), keysOf(m_before));
}

TEST_P(Mutation, AnotherProgramNameChangesEveryKey) {
  const std::string name = m_before.programs.front().name;
  std::string lower = name;
  for (char& c : lower)
    c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  // As long as the names are, so that nothing moves to another column.
  const std::string text = replacedAll(replacedAll(m_text, name, "ZZOTHR"), lower, "ZZOTHR");
  Keys after;
  for (const std::string& key : keysOf(analysedText(text))) {
    EXPECT_TRUE(key.starts_with("ZZOTHR")) << key;
    after.insert(replacedAll(key, "ZZOTHR", name)); // slots of its own parameters hold it too
  }
  EXPECT_EQ(after, keysOf(m_before));
}

INSTANTIATE_TEST_SUITE_P(Bank, Mutation, ::testing::ValuesIn(programNames()),
                         [](const auto& given) { return given.param.substr(0, given.param.find('.')); });

std::string edited(std::string text, const Edits& edits) {
  for (const auto& [from, to] : edits) {
    EXPECT_NE(text.find(from), text.npos) << from;
    text = replacedAll(text, from, to);
  }
  return text;
}

TEST(Mutations, LoseAndGiveTheKeysThatTheRuleSays) {
  struct Case {
    std::string what;
    Edits edits;
    Keys lost;
    Keys given;
  };
  const std::string total = "BKB020:WS-TOTALS.";
  const std::string count = "           05  WS-READ                   PIC";
  const std::string next = "           05  WS-POSTED                 PIC";
  const std::vector<Case> cases = {
      {"renamed", {{"WS-READ", "WS-TAKEN"}}, {total + "WS-READ"}, {total + "WS-TAKEN"}},
      {"group renamed",
       {{"WS-SWITCHES", "WS-SIGNS"}},
       {"BKB020:WS-SWITCHES", "BKB020:WS-SWITCHES.WS-DAY-END", "BKB020:WS-SWITCHES.WS-DAY-END.NO-MORE-DAY",
        "BKB020:WS-SWITCHES.WS-SORT-END", "BKB020:WS-SWITCHES.WS-SORT-END.NO-MORE-SORTED"},
       {"BKB020:WS-SIGNS", "BKB020:WS-SIGNS.WS-DAY-END", "BKB020:WS-SIGNS.WS-DAY-END.NO-MORE-DAY",
        "BKB020:WS-SIGNS.WS-SORT-END", "BKB020:WS-SIGNS.WS-SORT-END.NO-MORE-SORTED"}},
      {"exchanged", {{"WS-READ ", "?"}, {"WS-POSTED ", "WS-READ "}, {"?", "WS-POSTED "}}, {}, {}},
      {"regrouped",
       {{count, "           05  WS-COUNTS.\n               10  WS-READ PIC"}},
       {total + "WS-READ"},
       {total + "WS-COUNTS", total + "WS-COUNTS.WS-READ"}},
      {"under a FILLER", {{count, "           05  FILLER.\n               10  WS-READ PIC"}}, {}, {total + "~^+1"}},
      {"declared again behind", {{next, "           05  WS-READ PIC X.\n" + next}}, {}, {total + "WS-READ#2"}},
      {"file renamed",
       {{"HISTORY-FILE", "OLD-FILE"}},
       {"BKB020:HISTORY-FILE.HI-RECORD", "BKB020:HISTORY-FILE.HI-RECORD.HI-MOVEMENT",
        "BKB020:HISTORY-FILE.HI-RECORD.HI-BALANCE-AFTER", "BKB020:HISTORY-FILE.HI-RECORD.HI-RUN-DATE"},
       {"BKB020:OLD-FILE.HI-RECORD", "BKB020:OLD-FILE.HI-RECORD.HI-MOVEMENT",
        "BKB020:OLD-FILE.HI-RECORD.HI-BALANCE-AFTER", "BKB020:OLD-FILE.HI-RECORD.HI-RUN-DATE"}},
      {"assigned elsewhere", {{"TRANHIST", "OLDHIST"}}, {"BKB020:!FILE.TRANHIST"}, {"BKB020:!FILE.OLDHIST"}},
      {"not declared any more",
       {{count, "           05  WS-LEFT                   PIC"}},
       {total + "WS-READ"},
       {total + "WS-LEFT", "BKB020:?WS-READ"}},
  };
  const std::string text = textOf(bankFolder() / "cobol" / "BKB020.cbl");
  const Keys before = keysOf(analysedText(text));
  for (const Case& one : cases) {
    const Keys after = keysOf(analysedText(edited(text, one.edits)));
    EXPECT_EQ(without(before, after), one.lost) << one.what;
    EXPECT_EQ(without(after, before), one.given) << one.what;
  }
}

// Declared in front of an equal path, an item takes its key over; the one behind gets the number.
TEST(Mutations, AnEqualPathInFrontTakesTheKey) {
  const std::string count = "           05  WS-READ                   PIC";
  const std::string text = textOf(bankFolder() / "cobol" / "BKB020.cbl");
  const cobol::Analysis after = analysedText(edited(text, {{count, "           05  WS-READ PIC XX.\n" + count}}));
  std::map<std::string, std::string> pictures;
  for (const cobol::Construct& item : after.constructs)
    pictures[item.kvid] = item.picture;
  EXPECT_EQ(pictures["BKB020:WS-TOTALS.WS-READ"], "XX");
  EXPECT_EQ(pictures["BKB020:WS-TOTALS.WS-READ#2"], "S9(7)");
}

} // namespace
} // namespace samples
