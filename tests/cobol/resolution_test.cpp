// Which declaration a written name means, and what comes of names that nothing declares.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "procedure_facts.hpp"

namespace {

std::string usedKeys(const ProcedureFacts& facts) {
  std::string all;
  for (const cobol::Instance& i : facts.analysis.instances) {
    if (i.access == cobol::Access::declare) continue;
    all += (all.empty() ? "" : ", ") + facts.analysis.constructs[i.construct].kvid + ' ' + static_cast<char>(i.access);
  }
  return all;
}

} // namespace

TEST(Resolution, QualifiersPickAmongEqualNames) {
  constexpr std::string_view data = R"(^WORKING-STORAGE SECTION.
^01 G.
^   05 S.
^      10 X PIC X.
^01 H.
^   05 S.
^      10 X PIC X.
^   05 Y PIC X.
^01 Y PIC X.
)";
  struct Case {
    std::string_view statement;
    std::string_view keys;
  };
  const Case cases[] = {
      {"DISPLAY X OF G.", "P:G.S.X R, P:G N"},
      {"DISPLAY X IN S OF H.", "P:H.S.X R, P:H.S N, P:H N"},
      {"DISPLAY X.", "P:G.S.X R, P:H.S.X R"},
      {"DISPLAY X OF S.", "P:G.S.X R, P:H.S.X R, P:G.S N, P:H.S N"},
      {"DISPLAY Y.", "P:Y R"}, // the whole chain of the level 01 is given
      {"DISPLAY Y OF H.", "P:H.Y R, P:H N"},
      {"DISPLAY X OF Y.", "P:?Y.X R"},
      {"DISPLAY Z Z.", "P:?Z R, P:?Z R"},
  };
  for (const Case& one : cases) {
    SCOPED_TRACE(one.statement);
    EXPECT_EQ(usedKeys(factsOf(data, one.statement)), one.keys);
  }
  EXPECT_EQ(factsOf(data, "DISPLAY X.").diagnostics(), "Ambiguous X can mean 2 declarations; the use counts for each");
  EXPECT_EQ(factsOf(data, "DISPLAY Z.").diagnostics(), "Unresolved Z is not declared");
}

TEST(Resolution, FilesQualifyAndClausesPreferTheirOwnFile) {
  const ProcedureFacts facts = factsOfSource(R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F1 ASSIGN TO D1 ORGANIZATION INDEXED RECORD KEY K.
           SELECT F2 ASSIGN TO D2 ORGANIZATION INDEXED RECORD KEY K.
       DATA DIVISION.
       FILE SECTION.
       FD F1.
       01 R1.
          05 K PIC X.
       FD F2.
       01 R2.
          05 K PIC X.
       PROCEDURE DIVISION.
           MOVE K OF F1 TO K IN R2 OF F2.
)");
  EXPECT_EQ(usedKeys(facts), "P:F1.R1.K R, P:F2.R2.K R, P:F1.R1.K R, P:F2.R2.K W, P:F2.R2 N");
  EXPECT_EQ(facts.relations(), "Key K -> R1, Key K -> R2, Move K -> K, RecordSlot R1 -> D1, RecordSlot R2 -> D2");
}

TEST(Resolution, NamesDeclaredVeryOftenStillFindTheirOwn) {
  std::string data = "^WORKING-STORAGE SECTION.\n";
  for (int i = 0; i < 100; ++i)
    data += "^01 G" + std::to_string(i) + ".\n^   05 X PIC X.\n";
  EXPECT_EQ(usedKeys(factsOf(data, "MOVE X OF G7 TO X OF G93.")), "P:G7.X R, P:G7 N, P:G93.X W, P:G93 N");
  const ProcedureFacts all = factsOf(data, "DISPLAY X. DISPLAY X.");
  EXPECT_EQ(std::count_if(all.analysis.instances.begin(), all.analysis.instances.end(),
                          [](const cobol::Instance& i) { return i.access == cobol::Access::read; }),
            200);
}

TEST(Resolution, ContainedProgramsSeeGlobalNames) {
  const ProcedureFacts facts = factsOfSource(R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. OUTER.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01 SHARED GLOBAL.
          05 PART PIC X.
       01 OWN PIC X.
       01 HIDDEN PIC X.
       PROCEDURE DIVISION.
           MOVE OWN TO PART.
       IDENTIFICATION DIVISION.
       PROGRAM-ID. INNER.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01 OWN PIC X.
       PROCEDURE DIVISION.
           MOVE PART TO OWN. MOVE 1 TO RETURN-CODE. DISPLAY HIDDEN.
       END PROGRAM INNER.
       END PROGRAM OUTER.
)");
  EXPECT_EQ(usedKeys(facts), "OUTER:OWN R, OUTER:SHARED.PART W, OUTER:SHARED.PART R, OUTER/INNER:OWN W, "
                             "OUTER:!REG.RETURN-CODE W, OUTER/INNER:?HIDDEN R");
}

TEST(Resolution, MethodsSeeTheDataOfTheirClass) {
  const ProcedureFacts facts = factsOfSource(R"(       IDENTIFICATION DIVISION.
       CLASS-ID. ACCOUNT INHERITS BASE.
       IDENTIFICATION DIVISION.
       FACTORY.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01 COUNTER PIC 9.
       PROCEDURE DIVISION.
       IDENTIFICATION DIVISION.
       METHOD-ID. "make".
       PROCEDURE DIVISION.
           ADD 1 TO COUNTER.
       END METHOD "make".
       END FACTORY.
       IDENTIFICATION DIVISION.
       OBJECT.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01 BALANCE PIC 9.
       PROCEDURE DIVISION.
       IDENTIFICATION DIVISION.
       METHOD-ID. CREDIT.
       DATA DIVISION.
       LINKAGE SECTION.
       01 AMOUNT PIC 9.
       PROCEDURE DIVISION USING AMOUNT.
           ADD AMOUNT TO BALANCE.
       END METHOD CREDIT.
       END OBJECT.
       END CLASS ACCOUNT.
)");
  EXPECT_EQ(usedKeys(facts), "ACCOUNT:COUNTER B, ACCOUNT/CREDIT:AMOUNT B, ACCOUNT/CREDIT:AMOUNT R, ACCOUNT:BALANCE B");
  EXPECT_EQ(facts.diagnostics(), "");
}

TEST(Resolution, FunctionsOfTheRepositoryNeedNoWord) {
  const std::string head = R"(       PROGRAM-ID. P.
       ENVIRONMENT DIVISION.
       CONFIGURATION SECTION.
       REPOSITORY. )";
  const std::string rest = R"(
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01 A PIC X.
       01 B PIC X.
       01 PI PIC 9.
       PROCEDURE DIVISION.
           MOVE OWN-ONE (A) TO B. IF OWN-ONE (A) = B CONTINUE.
           MOVE CURRENT-DATE TO A. MOVE PI TO B. MOVE LENGTH OF A TO PI.
           INSPECT TRIM (A) TALLYING PI FOR ALL "X".
           CALL "S" USING BY CONTENT TRIM (A) B.
)";
  const ProcedureFacts facts = factsOfSource(head + "CLASS OTHER FUNCTION OWN-ONE FUNCTION ALL INTRINSIC." + rest);
  EXPECT_EQ(usedKeys(facts), "P:A R, P:B W, P:A R, P:B R, P:A W, P:PI R, P:B W, P:A N, P:PI W, P:A R, P:PI B, "
                             "P:A R, P:B R");
  EXPECT_EQ(facts.relations(),
            "Argument B -> S(2), Comparison A -> B, Computation A -> B, Length A -> PI, Move PI -> B");
  EXPECT_EQ(facts.diagnostics(), "");
  EXPECT_THAT(factsOfSource(head + "CLASS OWN-ONE." + rest).diagnostics(),
              ::testing::HasSubstr("Unresolved OWN-ONE is not declared"));
}

TEST(Resolution, ParametersOfTheProgramMeetItsOwnSlots) {
  const ProcedureFacts facts = factsOfSource(R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. SUB.
       DATA DIVISION.
       LINKAGE SECTION.
       01 DFHCOMMAREA PIC X.
       01 A PIC X.
       01 B PIC X.
       PROCEDURE DIVISION USING A BY VALUE B.
           GOBACK.
)");
  EXPECT_EQ(facts.relations(), "Parameter A -> SUB(1), Parameter B -> SUB(2), Parameter DFHCOMMAREA -> SUB(CA)");
}

TEST(Resolution, PlacesNameParagraphsCallsAndLiterals) {
  const ProcedureFacts facts =
      factsOf("^WORKING-STORAGE SECTION.\n^01 A PIC X.\n",
              "CALL 'SUB'.\n^SEC SECTION 50.\n^0100.\nMOVE 'x' TO A\n^NO-PERIOD-BEFORE.\nCALL A.");
  std::string places;
  for (const auto& place : facts.analysis.places)
    places += place.kindWord + ' ' + place.name + ", ";
  EXPECT_EQ(places, "PARA HERE, CALL SUB, PARA SEC, PARA 0100, PARA NO-PERIOD-BEFORE, CALL A, LIT SUB, LIT x, ");
}

TEST(Resolution, DeepNestingIsReadToItsEnd) {
  constexpr int depth = 100'000;
  std::string text = "COMPUTE A =\n";
  for (int i = 0; i < depth; ++i)
    text += "(\n";
  text += "B\n";
  for (int i = 0; i < depth; ++i)
    text += ")\n";
  text += ".\nIF\n";
  for (int i = 0; i < depth; ++i)
    text += "(\n";
  text += "A = B\n";
  for (int i = 0; i < depth; ++i)
    text += ")\n";
  text += "MOVE T (\n";
  for (int i = 0; i < depth; ++i)
    text += "T (\n";
  text += "A\n";
  for (int i = 0; i < depth; ++i)
    text += ")\n";
  text += ") TO B.";
  const ProcedureFacts facts =
      factsOf("^WORKING-STORAGE SECTION.\n^01 A PIC 9.\n^01 B PIC 9.\n^01 R.\n^   05 T PIC 9 OCCURS 9.\n", text);
  EXPECT_EQ(facts.relations(), "Comparison A -> B, Move B -> A, Move T -> B, Subscript A -> T");
  EXPECT_EQ(facts.analysis.statements, facts.analysis.statementsUnderstood);
}
