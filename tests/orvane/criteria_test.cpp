#include <gtest/gtest.h>

#include "cobol/analyse.hpp"
#include "orvane/named_criteria.hpp"
#include "orvane/options.hpp"
#include "platform/runtime/error.hpp"

namespace {

const char* const kText = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. CRIT.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO FDD.
       DATA DIVISION.
       FILE SECTION.
       FD  F.
       01  F-REC.
           05  F-KEY PIC X(8).
       WORKING-STORAGE SECTION.
       01  W-GROUP.
           05  W-KEY PIC X(8).
           05  W-AMT PIC S9(7)V99 COMP-3.
           05  FILLER PIC X(8).
       01  W-DATE PIC 9(6).
       77  W-LONE PIC 9(6) COMP.
       88  W-ON VALUE 1.
       PROCEDURE DIVISION.
           MOVE F-KEY TO W-KEY
           MOVE 1 TO W-AMT
           CALL 'SUB' USING W-DATE
           EXEC SQL SELECT A INTO :W-LONE FROM T END-EXEC
           IF W-ON DISPLAY F-KEY END-IF
           STOP RUN.
)";

std::string matching(const orvane::Criterion& matches) {
  static const orvane::StoreData data = orvane::packAnalysis(cobol::analyse(kText, cobol::Options{}, {}), 1,
                                                             [](const std::string& path) { return path; });
  std::string names;
  for (std::uint32_t i = 0; i < data.constructs.size(); ++i)
    if (matches(data, i)) names += (names.empty() ? "" : " ") + std::string(data.text(data.constructs[i].name));
  return names;
}

std::string matching(const std::string& criterion) {
  return matching(orvane::criterionNamed(criterion));
}

} // namespace

TEST(Criteria, MatchWhatTheySayAndNothingElse) {
  const std::pair<const char*, const char*> kCases[] = {
      {"Names:w-key", "W-KEY"},
      {"Names:?-KEY", "F-KEY W-KEY"},
      {"Names:*KEY* but not F*", "W-KEY"},
      {"Names:FILLER", ""},
      {"Names:*KEY* & Declaration:Level 5 & Use:FileRecord", "F-KEY"},
      {"Names:FILLER & Declaration:Kind filler", "FILLER"}, // a part that asks for it brings FILLER in
      {"Declaration:Level 5", "F-KEY W-KEY W-AMT"},
      {"Declaration:Level 77-88", "W-LONE W-ON"},
      {"Declaration:Picture x(8)", "F-KEY W-KEY"},
      {"Declaration:Picture S9*", "W-AMT"},
      {"Declaration:Usage COMP-3", "W-AMT"},
      {"Declaration:Usage COMP*", "W-AMT W-LONE"},
      {"Declaration:Size 5", "W-AMT"},
      {"Declaration:Size 6-7", "W-DATE"},
      {"Declaration:Size 0", ""},
      {"Declaration:Kind condition", "W-ON"},
      {"Declaration:Kind filler", "FILLER"},
      {"Declaration:Kind call-slot", "SUB(1)"},
      {"Use:Unused", "F-REC W-GROUP"},
      {"Use:ReadOnly", "F-KEY W-ON"},
      {"Use:WrittenOnly", "W-KEY W-AMT W-LONE"},
      {"Use:FileRecord", "F-REC F-KEY"},
      {"Use:Call", "W-DATE"},
      {"Use:Embedded", "W-LONE"},
      {"Across:call SUB(1)", "SUB(1)"},
      {"Across:call sub(1) from CALLER at 1-6", "W-DATE"},
      {"Across:file FDD", "F-REC FDD"},
      {"Across:file FDD with OTHER at 1-8", "F-REC F-KEY"},
      {"Across:file FDD at 3-4", "F-KEY"},
      {"Across:file FDD at 9-12", ""},
  };
  std::set<std::string> tested;
  for (const auto& [criterion, names] : kCases)
    EXPECT_EQ(matching(criterion), names) << criterion;
  for (const auto& kind : orvane::criterionKinds()) {
    const std::string head = std::string(kind.tab) + ":" + std::string(kind.word);
    EXPECT_TRUE(std::any_of(std::begin(kCases), std::end(kCases), [&](const auto& c) {
      return std::string(c.first).starts_with(head);
    })) << head;
  }
}

TEST(Criteria, RefuseWhatTheyDoNotUnderstand) {
  for (const char* name : {"", "Names", "Names:[A", "Declaration:Level x", "Declaration:Size 8-2", "Declaration:Size",
                           "Declaration:Kind thing", "Use:Unused really", "Use:", "Across:file",
                           "Across:file FDD at 0-8", "Across:call SUB(1) at x", "Colour:Red"})
    EXPECT_THROW(orvane::criterionNamed(name), platform::Error) << name;
  EXPECT_EQ(orvane::nameOfPatterns("", "OLD*"), "Names:* but not OLD*");
}

TEST(Criteria, OfAProjectAreItsFilterAndWhatWasSaved) {
  platform::Document options = orvane::optionTemplate();
  const auto project = [&](const std::string& name) { return matching(orvane::projectCriterion(options, name)); };
  EXPECT_THROW(project("Filters:Patterns"), platform::Error); // an empty filter would place everything
  const std::string patterns = "//CASE[@NAME='Patterns']";
  const auto add = [&](const std::string& list, const std::string& value, const std::string& ticked) {
    platform::Node entry = options.createElement("STRING");
    entry.setAttribute("VALUE", value);
    entry.setAttribute("CHECKED", ticked);
    options.selectSingleNode(patterns + list).appendChild(entry);
  };
  add("/GROUP/STRINGS", "*key*", "true");
  add("/GROUP/STRINGS", "w-amt", "true");
  add("/GROUP/STRINGS", "*", "false");
  add("/STRINGS", "F*", "true");
  EXPECT_EQ(project("filters:patterns"), "W-KEY W-AMT");

  orvane::saveCriterion(options, {" eight bytes ", "Declaration:Size 8"});
  orvane::saveCriterion(options, {"dates", "Names:*DATE*"});
  orvane::saveCriterion(options, {"Eight Bytes", "Declaration:Size 8 & Names:W*"});
  EXPECT_EQ(project("Saved:eight bytes"), "W-KEY");
  EXPECT_EQ(orvane::savedCriteria(options).size(), 2u);
  EXPECT_THROW(orvane::saveCriterion(options, {"bad", "Size 8"}), platform::Error);
  EXPECT_THROW(orvane::saveCriterion(options, {"it's", "Names:*"}), platform::Error);
  EXPECT_THROW(orvane::saveCriterion(options, {"loop", "Saved:dates"}), platform::Error);
  orvane::removeCriterion(options, "DATES");
  EXPECT_THROW(project("Saved:dates"), platform::Error);
}
