// EXEC SQL, CICS and DLI: which way the host variables go.
#include <gtest/gtest.h>

#include "procedure_facts.hpp"

namespace {

constexpr std::string_view kData = R"(^WORKING-STORAGE SECTION.
^01 A PIC X(5).
^01 B PIC X(5).
^01 I PIC S9(4) COMP.
^01 KEY1 PIC X(5).
^01 RC PIC S9(8) COMP.
^01 LEN PIC S9(4) COMP.
^01 REC.
^   05 FLD PIC X(5).
^01 FILE-NAME PIC X(8) VALUE 'ACCTDAT '.
^01 MENUI.
^   05 MI PIC X.
^01 MENUO.
^   05 MO PIC X.
)";

} // namespace

TEST(ExecStatements, SqlHostVariablesHaveADirection) {
  expectFacts(kData, {
                         {"EXEC SQL SELECT X, ':B' INTO :A:I, :REC.FLD FROM T\nWHERE K = :KEY1 END-EXEC.",
                          "A W 1:31, I W 1:33, REC N 1:37, FLD W 1:41, KEY1 R 2:12",
                          "ExecKey KEY1 -> A, ExecKey KEY1 -> FLD, ExecKey KEY1 -> I"},
                         {"EXEC SQL FETCH C1 INTO :A INDICATOR :I END-EXEC.", "A W 1:25, I W 1:38", ""},
                         {"EXEC SQL INSERT INTO T (X, Y) VALUES (:A, :B) END-EXEC.", "A R 1:40, B R 1:44", ""},
                         {"EXEC SQL UPDATE T SET X = :A WHERE Y = :B END-EXEC.", "A R 1:28, B R 1:41", ""},
                         {"EXEC SQL SET :A = CURRENT DATE, :B = :KEY1 END-EXEC.", "A W 1:15, B W 1:34, KEY1 R 1:39",
                          "ExecKey KEY1 -> B"},
                         {"EXEC SQL GET DIAGNOSTICS CONDITION 1 :A = X, :B = Y END-EXEC.", "A W 1:39, B W 1:47", ""},
                         {"EXEC SQL PREPARE S INTO :REC FROM :A END-EXEC.", "REC B 1:26, A R 1:36", ""},
                         {"EXEC SQL FETCH C INTO DESCRIPTOR :REC END-EXEC.", "REC W 1:35", ""},
                         {"EXEC SQL SET CONNECTION :A END-EXEC.", "A R 1:26", ""},
                         {"EXEC SQL CALL PROC (:A, :B) END-EXEC.", "A B 1:22, B B 1:26", ""},
                         {"EXEC SQL DECLARE C1 CURSOR FOR SELECT A FROM T\nWHERE B = :B END-EXEC.", "B R 2:12", ""},
                     });
}

TEST(ExecStatements, CicsOptionsHaveADirection) {
  expectFacts(
      kData,
      {
          {"EXEC CICS READ FILE('CUST') INTO(REC) RIDFLD(KEY1)\nLENGTH(LEN) RESP(RC) END-EXEC.",
           "REC W 1:34, KEY1 R 1:46, LEN B 2:8, RC W 2:18", "Key KEY1 -> REC, Read CUST -> REC"},
          {"EXEC CICS READNEXT FILE(FILE-NAME) INTO(REC)\nRIDFLD(KEY1) END-EXEC.",
           "FILE-NAME R 1:25, REC W 1:41, KEY1 B 2:8", "Key KEY1 -> REC, Read ACCTDAT -> REC"},
          {"EXEC CICS WRITEQ TS QUEUE(KEY1) FROM(REC) END-EXEC.", "KEY1 R 1:27, REC R 1:38", "Write REC -> ?(KEY1)"},
          {"EXEC CICS READQ TS QUEUE(FLD) INTO(REC) END-EXEC.", "FLD R 1:26, REC W 1:36", "Read ?(REC.FLD) -> REC"},
          {"EXEC CICS REWRITE FILE('CUST') FROM(REC)\nLENGTH(LENGTH OF REC) END-EXEC.", "REC R 1:37, REC N 2:18",
           "Write REC -> CUST"},
          {"EXEC CICS LINK PROGRAM('SUB') COMMAREA(REC) END-EXEC.", "REC B 1:40", "Argument REC -> SUB(CA)"},
          {"EXEC CICS XCTL PROGRAM(A) COMMAREA(REC) END-EXEC.", "A R 1:24, REC R 1:36", "Argument REC -> ?(CA)"},
          {"EXEC CICS SEND MAP('MENU') ERASE END-EXEC.", "", "Write MENUO -> MENU"},
          {"EXEC CICS RECEIVE MAP('MENU') INTO(REC) END-EXEC.", "REC W 1:36", "Read MENU -> REC"},
          {"EXEC CICS RECEIVE MAP('MENU') END-EXEC.", "", "Read MENU -> MENUI"},
          {"EXEC CICS ASSIGN APPLID(A) END-EXEC.", "A W 1:25", ""},
          {"EXEC CICS ASKTIME ABSTIME(RC) END-EXEC.", "RC W 1:27", ""},
          {"EXEC CICS FORMATTIME ABSTIME(RC) DATESEP(B) YYMMDD(A)\nEND-EXEC.", "RC R 1:30, B R 1:42, A W 1:52", ""},
          {"EXEC CICS HANDLE CONDITION ERROR(HERE) END-EXEC.", "", ""},
          {"IF RC = DFHRESP(NORMAL) CONTINUE.", "RC R 1:4", ""},
      });
}

TEST(ExecStatements, DliWritesItsAreasOnly) {
  expectFacts(kData,
              {
                  {"EXEC DLI GU USING PCB(1) SEGMENT(CUSTSEG) INTO(REC)\nWHERE(CUSTKEY=KEY1) END-EXEC.",
                   "REC W 1:48, KEY1 R 2:15", ""},
                  {"EXEC DLI REPL SEGMENT(CUSTSEG) FROM(REC) SEGLENGTH(LEN)\nEND-EXEC.", "REC R 1:37, LEN R 1:52", ""},
              });
}

TEST(ExecStatements, CursorsAmongTheDeclarationsCount) {
  std::string data(kData);
  data += "    EXEC SQL DECLARE C1 CURSOR FOR\n      SELECT X FROM T WHERE Y = :KEY1 END-EXEC.\n";
  const ProcedureFacts facts = factsOf(data, "CONTINUE.");
  EXPECT_EQ(facts.instances(), "KEY1 R");
}

TEST(ExecStatements, EveryBlockOfTheDataDivisionCountsAlsoWithoutPeriods) {
  const ProcedureFacts facts = factsOf(R"(^WORKING-STORAGE SECTION.
^01 A PIC X.
^01 B PIC X.
    EXEC SQL INCLUDE SQLCA END-EXEC
    EXEC SQL DECLARE C1 CURSOR FOR SELECT X FROM T WHERE X > :A END-EXEC
    EXEC SQL DECLARE C2 CURSOR FOR
         SELECT X FROM T WHERE X < :B END-EXEC
^01 C PIC X.
^LINKAGE SECTION.
    EXEC SQL DECLARE C3 CURSOR FOR SELECT X FROM T WHERE X = :C END-EXEC.
)",
                                       "MOVE A TO C.");
  std::map<std::string, int> usages;
  for (const auto& use : facts.analysis.instances)
    if (use.isUsage()) ++usages[facts.analysis.constructs[use.construct].name];
  EXPECT_EQ(usages, (std::map<std::string, int>{{"A", 2}, {"B", 1}, {"C", 2}}));
}
