// Files: clauses, READ to DELETE, SORT, and the records and slots they join.
#include <gtest/gtest.h>

#include "procedure_facts.hpp"

namespace {

constexpr std::string_view kSource = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. P.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT INFILE ASSIGN TO UT-S-INDD ORGANIZATION INDEXED
               RECORD KEY IN-KEY FILE STATUS IS ST.
           SELECT OUTFILE ASSIGN TO OUTDD RELATIVE KEY RK.
           SELECT WORKFILE ASSIGN TO SORTWK.
       DATA DIVISION.
       FILE SECTION.
       FD INFILE.
       01 IN-REC.
          05 IN-KEY PIC X(4).
          05 IN-TEXT PIC X(6).
       FD OUTFILE RECORD VARYING DEPENDING ON LEN.
       01 OUT-REC PIC X(10).
       SD WORKFILE.
       01 SORT-REC.
          05 SORT-KEY PIC X(4).
          05 SORT-TEXT PIC X(6).
       WORKING-STORAGE SECTION.
       01 ST PIC XX.
       01 RK PIC 9(4).
       01 LEN PIC 9(4).
       01 N PIC 9(4).
       01 AREA1.
          05 A-KEY PIC X(4).
          05 A-TEXT PIC X(6).
       PROCEDURE DIVISION.
       HERE.
)";
constexpr std::string_view kDeclaredInstances = "IN-KEY R, ST W, RK B, LEN B";
constexpr std::string_view kDeclaredRelations =
    "Dependence OUT-REC -> LEN, FileStatus ST -> IN-REC, Key IN-KEY -> IN-REC, Key RK -> OUT-REC, "
    "RecordSlot IN-REC -> INDD, RecordSlot OUT-REC -> OUTDD";

std::string without(std::string text, std::string_view parts) {
  for (std::size_t from = 0; from < parts.size();) {
    const std::size_t to = std::min(parts.find(", ", from), parts.size());
    const std::string_view part = parts.substr(from, to - from);
    const std::size_t at = text.find(part);
    if (at == std::string::npos) return "not declared: " + std::string(part);
    text.erase(at, part.size() + 2);
    from = to + 2;
  }
  while (text.ends_with(", ") || text.ends_with(","))
    text.pop_back();
  return text;
}

} // namespace

TEST(FileStatements, RecordsMeetItemsKeysAndSlots) {
  const std::vector<StatementCase> cases = {
      {"CONTINUE.", "", ""},
      {"OPEN INPUT INFILE OUTPUT OUTFILE. CLOSE INFILE.", "", ""},
      {"READ INFILE NEXT RECORD INTO AREA1 AT END MOVE 1 TO N.", "AREA1 W 1:30, N W 1:53",
       "PartMove IN-KEY -> A-KEY, PartMove IN-TEXT -> A-TEXT, Read IN-REC -> AREA1"},
      {"READ INFILE KEY IS IN-KEY INVALID KEY CONTINUE.", "IN-KEY R 1:20", ""},
      {"WRITE OUT-REC.", "OUT-REC R 1:7", ""},
      {"WRITE OUT-REC FROM AREA1 AFTER ADVANCING N LINES.", "OUT-REC B 1:7, AREA1 R 1:20, N R 1:42",
       "OverlapMove A-KEY -> OUT-REC, OverlapMove A-TEXT -> OUT-REC, Write AREA1 -> OUT-REC"},
      {"REWRITE IN-REC FROM AREA1.", "IN-REC B 1:9, AREA1 R 1:21",
       "PartMove A-KEY -> IN-KEY, PartMove A-TEXT -> IN-TEXT, Write AREA1 -> IN-REC"},
      {"WRITE FILE INFILE FROM AREA1.", "IN-REC I 1:12, AREA1 R 1:24",
       "PartMove A-KEY -> IN-KEY, PartMove A-TEXT -> IN-TEXT, Write AREA1 -> IN-REC"},
      {"START INFILE KEY NOT LESS THAN A-KEY.", "A-KEY R 1:32", "Key A-KEY -> IN-REC"},
      {"DELETE INFILE RECORD INVALID KEY CONTINUE.", "", ""},
      {"SORT WORKFILE ON ASCENDING KEY SORT-KEY\nUSING INFILE OUTPUT PROCEDURE HERE.", "SORT-KEY R 1:32",
       "Key SORT-KEY -> SORT-REC, PartMove IN-KEY -> SORT-KEY, PartMove IN-TEXT -> SORT-TEXT, Sort IN-REC -> SORT-REC"},
      {"MERGE WORKFILE ON DESCENDING KEY SORT-KEY USING INFILE\nGIVING OUTFILE.", "SORT-KEY R 1:34",
       "Key SORT-KEY -> SORT-REC, OverlapMove SORT-KEY -> OUT-REC, OverlapMove SORT-TEXT -> OUT-REC, "
       "PartMove IN-KEY -> SORT-KEY, PartMove IN-TEXT -> SORT-TEXT, Sort IN-REC -> SORT-REC, Sort SORT-REC -> OUT-REC"},
      {"RELEASE SORT-REC FROM AREA1. RETURN WORKFILE INTO AREA1 END\nCONTINUE.",
       "SORT-REC B 1:9, AREA1 R 1:23, AREA1 W 1:51",
       "PartMove A-KEY -> SORT-KEY, PartMove A-TEXT -> SORT-TEXT, PartMove SORT-KEY -> A-KEY, "
       "PartMove SORT-TEXT -> A-TEXT, Read SORT-REC -> AREA1, Write AREA1 -> SORT-REC"},
  };
  for (const StatementCase& one : cases) {
    SCOPED_TRACE(one.statement);
    std::string source(kSource);
    std::string line(11, ' ');
    for (const char c : one.statement)
      line += c == '\n' ? std::string("\n           ") : std::string(1, c);
    const ProcedureFacts facts = factsOfSource(source + line + '\n');
    EXPECT_EQ(without(facts.instances(), kDeclaredInstances), one.instances);
    EXPECT_EQ(without(facts.relations(), kDeclaredRelations), one.relations);
  }
}

TEST(FileStatements, KeysOfSeveralItemsHaveANameOfTheirOwn) {
  const ProcedureFacts facts = factsOfSource(R"(       PROGRAM-ID. P.
       ENVIRONMENT DIVISION.
       INPUT-OUTPUT SECTION.
       FILE-CONTROL.
           SELECT F ASSIGN TO DD ORGANIZATION INDEXED
               RECORD KEY WHOLE = K1 K2 OF R.
       DATA DIVISION.
       FILE SECTION.
       FD F.
       01 R.
          05 K1 PIC X(4).
          05 K2 PIC X(6).
       PROCEDURE DIVISION.
           READ F KEY IS WHOLE. START F KEY >= WHOLE.
)");
  EXPECT_EQ(facts.instances(), "K1 R 6:24, K2 R 6:27, R N 6:33");
  EXPECT_EQ(facts.relations(), "Key K1 -> R, Key K2 -> R, RecordSlot R -> DD");
}

TEST(FileStatements, ScreensAndReportsMoveTheirSources) {
  const ProcedureFacts screen = factsOf(R"(^WORKING-STORAGE SECTION.
^01 A PIC X.
^01 B PIC X.
^01 C PIC X.
^SCREEN SECTION.
^01 S.
^   05 S1 LINE 1 PIC X FROM A.
^   05 S2 LINE 2 PIC X TO B.
^   05 S3 LINE 3 PIC X USING C.
)",
                                        "DISPLAY S.");
  EXPECT_EQ(screen.instances(), "A R, B W, C B, S R 1:9");
  EXPECT_EQ(screen.relations(), "Move A -> S1, Move C -> S3, Move S2 -> B, Move S3 -> C");
}

TEST(FileStatements, ReportsTakeTheirSourcesAndSums) {
  const ProcedureFacts report = factsOf(R"(^WORKING-STORAGE SECTION.
^01 A PIC 9.
^01 DEPT PIC 9.
^REPORT SECTION.
^RD REP CONTROL IS DEPT.
^01 DET TYPE DETAIL LINE 1.
^   05 D1 COLUMN 1 PIC 9 SOURCE IS A.
^01 FOOT TYPE CONTROL FOOTING DEPT LINE 2.
^   05 TOT COLUMN 1 PIC 99 SUM A RESET ON DEPT.
^   05 MARK PRESENT WHEN A = 1 AND DEPT IS NUMERIC COLUMN 4 PIC 9.
)",
                                        "GENERATE DET. MOVE PAGE-COUNTER TO A.");
  EXPECT_EQ(report.instances(),
            "DEPT R, A R, DEPT R, A R, DEPT R, A R, DEPT R, DET N 1:10, PAGE-COUNTER R 1:20, A W 1:36");
  EXPECT_EQ(report.relations(), "Addition A -> TOT, Move A -> D1, Move PAGE-COUNTER -> A");
}

TEST(FileStatements, LengthsInValuesNameTheirItem) {
  const ProcedureFacts facts = factsOf(R"(^WORKING-STORAGE SECTION.
^01 A PIC X(9).
^78 L1 VALUE LENGTH OF A.
^01 L2 CONSTANT AS LENGTH A.
^01 L3 CONSTANT AS L2.
)",
                                       "CONTINUE.");
  EXPECT_EQ(facts.instances(), "A N, A N, L2 R");
}

TEST(FileStatements, VariableTablesDependOnTheirCount) {
  const ProcedureFacts table = factsOf(R"(^WORKING-STORAGE SECTION.
^01 N PIC 99.
^01 T.
^   05 E OCCURS 1 TO 9 DEPENDING ON N PIC X.
)",
                                       "CONTINUE.");
  EXPECT_EQ(table.instances(), "N R");
  EXPECT_EQ(table.relations(), "Dependence E -> N");
}

TEST(FileStatements, MessagesPassThroughTheRecordOfACommunicationDescription) {
  const ProcedureFacts facts = factsOf("^WORKING-STORAGE SECTION.\n^01 A PIC X(9).\n^01 N PIC 9.\n"
                                       "^COMMUNICATION SECTION.\n^CD LINE-IN FOR INPUT.\n^01 LINE-REC PIC X(87).\n",
                                       "RECEIVE LINE-IN MESSAGE INTO A.\nSEND LINE-IN FROM A WITH N.\n"
                                       "ACCEPT LINE-IN MESSAGE COUNT.\nENABLE INPUT LINE-IN WITH KEY A.");
  EXPECT_EQ(facts.instances(), "A W 1:30, A R 2:19, N R 2:26, A R 4:31");
  EXPECT_EQ(facts.diagnostics(), "");
}
