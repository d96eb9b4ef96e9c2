// Which names a statement reads and writes, and which datanames it joins.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "cobol/keywords.hpp"
#include "procedure_facts.hpp"

namespace {

constexpr std::string_view kData = R"(^WORKING-STORAGE SECTION.
^01 A PIC X(5).
^01 B PIC X(5).
^01 C PIC X(5).
^01 N PIC 9(4).
^01 M PIC 9(4).
^01 K PIC 9(4).
^01 PTR POINTER.
^01 SW PIC X.
^   88 SW-ON VALUE 'Y'.
^01 TAB.
^   05 ROW OCCURS 10 ASCENDING KEY ELEM INDEXED BY IX.
^      10 ELEM PIC X(5).
^01 G.
^   05 GX PIC X(2).
^   05 GY PIC X(3).
^   05 FILLER PIC X.
^01 H.
^   05 HX PIC X(2).
^   05 HY PIC X(1).
^   05 HZ PIC X(3).
^LINKAGE SECTION.
^01 L.
^   05 LX PIC X(2).
^   05 LY PIC X(3).
)";
/// What the table's declaration gives in every case.
constexpr std::string_view kKey = "Key ELEM -> ROW";

void expectStatements(std::vector<StatementCase> cases) {
  for (StatementCase& one : cases) {
    SCOPED_TRACE(one.statement);
    const ProcedureFacts facts = factsOf(kData, one.statement);
    std::string instances = facts.instances();
    const std::string_view declared = "ELEM R";
    ASSERT_TRUE(instances.starts_with(declared)) << instances;
    instances.erase(0, declared.size() + (instances.size() > declared.size() ? 2 : 0));
    EXPECT_EQ(instances, one.instances);
    std::string relations = facts.relations();
    const auto key = relations.find(kKey);
    ASSERT_NE(key, std::string::npos);
    const bool last = key + kKey.size() == relations.size();
    relations.erase(last && key > 0 ? key - 2 : key, kKey.size() + (last && key == 0 ? 0 : 2));
    EXPECT_EQ(relations, one.relations);
  }
}

} // namespace

TEST(Statements, MoveReadsItsSourceAndWritesItsReceivers) {
  expectStatements({
      {"MOVE A TO B C.", "A R 1:6, B W 1:11, C W 1:13", "Move A -> B, Move A -> C"},
      {"MOVE 'A' TO B.", "B W 1:13", ""},
      {"MOVE SPACES TO A.", "A W 1:16", ""},
      {"MOVE A TO A.", "A R 1:6, A W 1:11", ""},
      {"MOVE ELEM (1) TO ELEM (IX).", "ELEM R 1:6, ELEM W 1:18, IX R 1:24", "Subscript IX -> ELEM"},
      {"MOVE A (N:M) TO B.", "A R 1:6, N R 1:9, M R 1:11, B W 1:17", "Move A -> B, Position M -> A, Position N -> A"},
      {"MOVE ELEM OF ROW IN TAB (N + 1) TO A.", "ELEM R 1:6, ROW N 1:14, TAB N 1:21, N R 1:26, A W 1:36",
       "Move ELEM -> A, Subscript N -> ELEM"},
      {"MOVE LENGTH OF A TO N.", "A N 1:16, N W 1:21", "Length A -> N"},
      {"MOVE FUNCTION TRIM(A TRAILING) TO B.", "A R 1:20, B W 1:35", "Move A -> B"},
      {"MOVE FUNCTION REVERSE(A) TO B.", "A R 1:23, B W 1:29", "Computation A -> B"},
      {"MOVE FUNCTION LENGTH(A) TO N.", "A N 1:22, N W 1:28", "Length A -> N"},
      {"MOVE FUNCTION LENGTH(FUNCTION TRIM(A)) TO N.", "A R 1:36, N W 1:43", "Length A -> N"},
      {"MOVE FUNCTION CURRENT-DATE (1:8) TO A.", "A W 1:37", ""},
      {"MOVE RETURN-CODE TO N.", "RETURN-CODE R 1:6, N W 1:21", "Move RETURN-CODE -> N"},
      {"MOVE A TO B\nC.", "A R 1:6, B W 1:11, C W 2:1", "Move A -> B, Move A -> C"},
  });
}

TEST(Statements, GroupMovesAreAlignedLeafByLeaf) {
  expectStatements({
      {"MOVE G TO H.", "G R 1:6, H W 1:11",
       "GroupMove G -> H, OverlapMove GY -> HY, OverlapMove GY -> HZ, PartMove GX -> HX"},
      {"MOVE A TO G.", "A R 1:6, G W 1:11", "GroupMove A -> G, OverlapMove A -> GX, OverlapMove A -> GY"},
      {"MOVE A TO TAB.", "A R 1:6, TAB W 1:11", "GroupMove A -> TAB, PartMove A -> ELEM"},
      {"MOVE A TO ROW (1).", "A R 1:6, ROW W 1:11", "Move A -> ROW, PartMove A -> ELEM"},
  });
  expectFacts("^WORKING-STORAGE SECTION.\n^01 A PIC X(5).\n^01 G1.\n^   05 G2.\n^      10 G3 PIC X(5).\n",
              {{"MOVE A TO G1.", "A R 1:6, G1 W 1:11", "Move A -> G1, PartMove A -> G3"}});
  // Z has no bytes: its PICTURE is in a copybook that is not there.
  expectFacts(
      "^WORKING-STORAGE SECTION.\n^01 G.\n^   05 X PIC X(2).\n^   05 Z.\n^01 H.\n^   05 Y PIC X(4).\n^   05 V PIC X.\n",
      {{"MOVE G TO H.", "G R 1:6, H W 1:11", "GroupMove G -> H, OverlapMove X -> Y"}});
}

TEST(Statements, RenamedRangesMoveLikeGroups) {
  constexpr std::string_view data = R"(^WORKING-STORAGE SECTION.
^01 R.
^   05 RA PIC X(2).
^   05 RB.
^      10 RB1 PIC X(2).
^      10 RB2 PIC X(2).
^   05 RC REDEFINES RB PIC X(5).
^   05 RD PIC X(2).
^   05 RE.
^      10 RE1 PIC X(3).
^66 KAB RENAMES RA THRU RB.
^66 KB RENAMES RB.
^66 K1 RENAMES RA.
^66 KE RENAMES RE.
^66 KD RENAMES RD THRU RE.
^01 T.
^   05 TA PIC X(2).
^   05 TB PIC X(4).
^01 E PIC X(3).
)";
  const std::pair<std::string_view, std::string_view> cases[] = {
      {"MOVE K1 TO TA.", "Move K1 -> TA"},
      {"MOVE KAB TO T.",
       "GroupMove KAB -> T, OverlapMove RB1 -> TB, OverlapMove RB2 -> TB, OverlapMove RC -> TB, PartMove RA -> TA"},
      {"MOVE T TO KB.", "GroupMove T -> KB, OverlapMove TA -> RC, OverlapMove TB -> RB2, OverlapMove TB -> RC, "
                        "PartMove TA -> RB1"},
      {"MOVE KE TO E.", "Move KE -> E, PartMove RE1 -> E"},
      {"MOVE KD TO E.", "GroupMove KD -> E, OverlapMove RD -> E, OverlapMove RE1 -> E"},
  };
  for (const auto& [statement, relations] : cases)
    EXPECT_EQ(factsOf(data, statement).relations(), relations) << statement;
}

TEST(Statements, LeavesOfTablesMeetOnceAndTooManyNotAtAll) {
  expectFacts(
      R"(^WORKING-STORAGE SECTION.
^01 MONTHS.
^   05 M1 PIC X(3).
^   05 M2 PIC X(3).
^   05 M3 PIC X(3).
^01 TAB.
^   05 MONTH PIC X(3) OCCURS 3.
^01 SHIFTED.
^   05 FILLER PIC X.
^   05 PART PIC X(2) OCCURS 4.
)",
      {
          {"MOVE MONTHS TO TAB.", "MONTHS R 1:6, TAB W 1:16",
           "GroupMove MONTHS -> TAB, PartMove M1 -> MONTH, PartMove M2 -> MONTH, PartMove M3 -> MONTH"},
          {"MOVE TAB TO SHIFTED.", "TAB R 1:6, SHIFTED W 1:13", "GroupMove TAB -> SHIFTED, OverlapMove MONTH -> PART"},
      });
  std::string data = "^WORKING-STORAGE SECTION.\n^01 G.\n";
  for (int i = 0; i < 5000; ++i)
    data += "^   05 G" + std::to_string(i) + " PIC X.\n";
  data += "^01 H.\n";
  for (int i = 0; i < 5000; ++i)
    data += "^   05 H" + std::to_string(i) + " PIC X.\n";
  const ProcedureFacts many = factsOf(data, "MOVE G TO H.");
  EXPECT_EQ(many.relations(), "GroupMove G -> H");
  EXPECT_THAT(many.diagnostics(), testing::StartsWith("PairsCapped"));
}

TEST(Statements, CorrespondingJoinsNamesUnderBothGroups) {
  constexpr std::string_view data = R"(^WORKING-STORAGE SECTION.
^01 G1.
^   05 V PIC 9(3).
^   05 W PIC 9(3) OCCURS 2.
^   05 SUB.
^      10 X PIC X.
^      10 Y PIC X.
^   05 FILLER PIC X.
^01 G2.
^   05 SUB.
^      10 Y PIC X.
^      10 Z PIC X.
^   05 W PIC 9(3).
^   05 V PIC 9(5).
)";
  expectFacts(data, {
                        {"MOVE CORRESPONDING G1 TO G2.", "G1 R 1:20, G2 W 1:26", "Move V -> V, Move Y -> Y"},
                        {"ADD CORR G1 TO G2.", "G1 R 1:10, G2 B 1:16", "Addition V -> V"},
                    });
  expectFacts(R"(^WORKING-STORAGE SECTION.
^01 G1.
^   05 EDITED PIC ZZ9.
^   05 FLOATING COMP-2.
^   05 WHOLE BINARY-LONG UNSIGNED.
^   05 BLANKED PIC 999 BLANK WHEN ZERO.
^   05 SCALED PIC SPP9 COMP-3.
^01 G2.
^   05 EDITED PIC 999.
^   05 FLOATING PIC S9(5)V99.
^   05 WHOLE COMP-1.
^   05 BLANKED PIC 999.
^   05 SCALED PIC 9.
)",
              {{"SUBTRACT CORR G1 FROM G2.", "G1 R 1:15, G2 B 1:23",
                "Addition FLOATING -> FLOATING, Addition SCALED -> SCALED, Addition WHOLE -> WHOLE"}});
}

TEST(Statements, ArithmeticChangesResultsButOnlyWritesWhatIsGiven) {
  expectStatements({
      {"ADD N TO M.", "N R 1:5, M B 1:10", "Addition N -> M"},
      {"ADD 1 TO N.", "N B 1:10", ""},
      {"ADD N 1 TO M GIVING K.", "N R 1:5, M R 1:12, K W 1:21", "Addition M -> K, Addition N -> K"},
      {"ADD N M GIVING K ROUNDED ON SIZE ERROR MOVE A TO B.", "N R 1:5, M R 1:7, K W 1:16, A R 1:45, B W 1:50",
       "Addition M -> K, Addition N -> K, Move A -> B"},
      {"SUBTRACT N FROM M.", "N R 1:10, M B 1:17", "Addition N -> M"},
      {"SUBTRACT N FROM M GIVING K.", "N R 1:10, M R 1:17, K W 1:26", "Addition M -> K, Addition N -> K"},
      {"MULTIPLY N BY M.", "N R 1:10, M B 1:15", "Computation N -> M"},
      {"MULTIPLY N BY 2 GIVING K.", "N R 1:10, K W 1:24", "Computation N -> K"},
      {"DIVIDE N INTO M.", "N R 1:8, M B 1:15", "Computation N -> M"},
      {"DIVIDE N BY 3 GIVING M REMAINDER K.", "N R 1:8, M W 1:22, K W 1:34", "Computation N -> K, Computation N -> M"},
      {"COMPUTE N = M.", "N W 1:9, M R 1:13", "Move M -> N"},
      {"COMPUTE N ROUNDED = (M - 1) * 2 + K.", "N W 1:9, M R 1:22, K R 1:35", "Addition K -> N, Computation M -> N"},
      {"COMPUTE N = - M.", "N W 1:9, M R 1:15", "Addition M -> N"},
      {"COMPUTE N = FUNCTION MAX (M K).", "N W 1:9, M R 1:27, K R 1:29", "Move K -> N, Move M -> N"},
      {"COMPUTE N = FUNCTION MOD (M 7) + LENGTH OF A.", "N W 1:9, M R 1:27, A N 1:44",
       "Computation M -> N, Length A -> N"},
      {"COMPUTE N M = K ** 2.", "N W 1:9, M W 1:11, K R 1:15", "Computation K -> M, Computation K -> N"},
  });
}

TEST(Statements, SetReachesIndexesConditionsPointersAndAddresses) {
  expectStatements({
      {"SET IX TO N.", "IX W 1:5, N R 1:11", "Move N -> IX"},
      {"SET IX UP BY N.", "IX B 1:5, N R 1:14", "Addition N -> IX"},
      {"SET IX DOWN BY 1.", "IX B 1:5", ""},
      {"SET SW-ON TO TRUE.", "SW I 1:5, SW-ON W 1:5", ""},
      {"SET PTR TO ADDRESS OF A.", "PTR W 1:5, A N 1:23", "Pointer A -> PTR"},
      {"SET ADDRESS OF L TO PTR.", "L W 1:16, PTR R 1:21", "Pointer PTR -> L"},
      {"SET ADDRESS OF L TO ADDRESS OF G.", "L W 1:16, G N 1:32",
       "Address G -> L, PartMove GX -> LX, PartMove GY -> LY"},
      {"SET PTR TO NULL.", "PTR W 1:5", ""},
      {"SET N TO M + 1.", "N W 1:5, M R 1:10", "Addition M -> N"},
      {"SET K TO ELEM (IX) + 1.", "K W 1:5, ELEM R 1:10, IX R 1:16", "Addition ELEM -> K, Subscript IX -> ELEM"},
      {"SET PTR TO ADDRESS OF ELEM (N).", "PTR W 1:5, ELEM N 1:23, N R 1:29",
       "Pointer ELEM -> PTR, Subscript N -> ELEM"},
  });
}

TEST(Statements, InitializeWritesItsItems) {
  expectStatements({
      {"INITIALIZE A G.", "A W 1:12, G W 1:14", ""},
      {"INITIALIZE A REPLACING ALPHANUMERIC DATA BY B.", "A W 1:12, B R 1:45", "Move B -> A"},
  });
}

TEST(Statements, StringsReadPiecesAndChangeTargets) {
  expectStatements({
      {"STRING A DELIMITED BY C 'X' DELIMITED SIZE INTO B\nWITH POINTER N.", "A R 1:8, C R 1:23, B B 1:49, N B 2:14",
       "Position N -> B, String A -> B"},
      {"UNSTRING A DELIMITED BY ALL C OR ',' INTO B DELIMITER IN SW\nCOUNT IN N POINTER M TALLYING IN K.",
       "A R 1:10, C R 1:29, B W 1:43, SW W 1:58, N W 2:10, M B 2:20, K B 2:34",
       "Comparison C -> A, Position M -> A, Tally A -> K, Tally A -> N, Unstring A -> B"},
      {"INSPECT A TALLYING N FOR ALL B.", "A R 1:9, N B 1:20, B R 1:30", "Inspection B -> A, Tally A -> N"},
      {"INSPECT A REPLACING ALL B BY C AFTER INITIAL SW.", "A B 1:9, B R 1:25, C R 1:30, SW R 1:46",
       "Inspection B -> A, Inspection C -> A, Inspection SW -> A"},
      {"INSPECT A CONVERTING 'AB' TO B.", "A B 1:9, B R 1:30", "Inspection B -> A"},
      {"INSPECT A TALLYING N FOR CHARACTERS M FOR LEADING 'X'\nREPLACING FIRST 'Y' BY C.",
       "A B 1:9, N B 1:20, M B 1:37, C R 2:24", "Inspection C -> A, Tally A -> M, Tally A -> N"},
  });
}

TEST(Statements, ControlReadsWhatSteers) {
  expectStatements({
      {"IF A = B MOVE A TO C ELSE NEXT SENTENCE.", "A R 1:4, B R 1:8, A R 1:15, C W 1:20",
       "Comparison A -> B, Move A -> C"},
      {"PERFORM HERE N TIMES.", "N R 1:14", ""},
      {"PERFORM N TIMES MOVE A TO B END-PERFORM.", "N R 1:9, A R 1:22, B W 1:27", "Move A -> B"},
      {"PERFORM HERE THRU HERE WITH TEST AFTER UNTIL SW-ON.", "SW-ON R 1:46", ""},
      {"PERFORM VARYING N FROM M BY K UNTIL N > 5 AFTER IX FROM 1\nBY 1 UNTIL IX = N MOVE A TO B END-PERFORM.",
       "N B 1:17, M R 1:24, K R 1:29, N R 1:37, IX B 1:49, IX R 2:12, N R 2:17, A R 2:24, B W 2:29",
       "Addition K -> N, Comparison IX -> N, Move A -> B, Move M -> N"},
      {"GO TO HERE HERE DEPENDING ON N.", "N R 1:30", ""},
      {"SEARCH ROW VARYING N AT END MOVE A TO B\nWHEN ELEM (IX) = A CONTINUE END-SEARCH.",
       "ROW R 1:8, N B 1:20, A R 1:34, B W 1:39, ELEM R 2:6, IX R 2:12, A R 2:18",
       "Comparison ELEM -> A, Index N -> ROW, Move A -> B, Subscript IX -> ELEM"},
      {"SEARCH ALL ROW WHEN ELEM (IX) = A NEXT SENTENCE.", "ROW R 1:12, ELEM R 1:21, IX R 1:27, A R 1:33",
       "Comparison ELEM -> A, Subscript IX -> ELEM"},
      {"EVALUATE N WHEN M THRU K CONTINUE WHEN 5 CONTINUE WHEN OTHER\nMOVE A TO B END-EVALUATE.",
       "N R 1:10, M R 1:17, K R 1:24, A R 2:6, B W 2:11", "Comparison N -> K, Comparison N -> M, Move A -> B"},
      {"EVALUATE TRUE ALSO A WHEN N > M ALSO B CONTINUE\nWHEN SW-ON ALSO ANY CONTINUE END-EVALUATE.",
       "A R 1:20, N R 1:27, M R 1:31, B R 1:38, SW-ON R 2:6", "Comparison A -> B, Comparison N -> M"},
      {"EVALUATE N > M WHEN TRUE CONTINUE WHEN A = B CONTINUE.", "N R 1:10, M R 1:14, A R 1:40, B R 1:44",
       "Comparison A -> B, Comparison N -> M"},
      {"EVALUATE N WHEN 1 IF A = B CONTINUE WHEN M CONTINUE.", "N R 1:10, A R 1:22, B R 1:26, M R 1:42",
       "Comparison A -> B, Comparison N -> M"},
      {"EVALUATE N WHEN 1 IF A = B SEARCH ROW WHEN SW-ON CONTINUE\nEND-IF WHEN M CONTINUE END-EVALUATE.",
       "N R 1:10, A R 1:22, B R 1:26, ROW R 1:35, SW-ON R 1:44, M R 2:13", "Comparison A -> B, Comparison N -> M"},
      {"EXIT PERFORM CYCLE. GOBACK. STOP RUN. CONTINUE.", "", ""},
      {"CONTINUE AFTER N + 1 SECONDS. MOVE A TO B.", "N R 1:16, A R 1:36, B W 1:41", "Move A -> B"},
  });
}

TEST(Statements, ConditionsPairWhatTheyCompare) {
  expectStatements({
      {"IF A = 'X' OR B AND NOT > C CONTINUE.", "A R 1:4, B R 1:15, C R 1:27", "Comparison A -> B, Comparison A -> C"},
      {"IF (N + M) * 2 > K CONTINUE.", "N R 1:5, M R 1:9, K R 1:18", "Comparison M -> K, Comparison N -> K"},
      {"IF A = (B OR C) CONTINUE.", "A R 1:4, B R 1:9, C R 1:14", "Comparison A -> B, Comparison A -> C"},
      {"IF NOT (A = B AND (N < M OR K NOT LESS THAN N)) CONTINUE.",
       "A R 1:9, B R 1:13, N R 1:20, M R 1:24, K R 1:29, N R 1:45",
       "Comparison A -> B, Comparison K -> N, Comparison N -> M"},
      {"IF A IS NUMERIC AND B ALPHABETIC OR N IS NOT ZERO CONTINUE.", "A R 1:4, B R 1:21, N R 1:37", ""},
      {"IF A NUMERIC MOVE A TO B.", "A R 1:4, A R 1:19, B W 1:24", "Move A -> B"},
      {"IF SW-ON OR A = B CONTINUE.", "SW-ON R 1:4, A R 1:13, B R 1:17", "Comparison A -> B"},
      {"IF A GREATER THAN OR EQUAL TO B OR EQUAL C CONTINUE.", "A R 1:4, B R 1:31, C R 1:42",
       "Comparison A -> B, Comparison A -> C"},
      {"IF N = LENGTH OF A CONTINUE.", "N R 1:4, A N 1:18", ""},
      {"IF FUNCTION LENGTH (FUNCTION TRIM (A)) > N OR M CONTINUE.", "A R 1:36, N R 1:42, M R 1:47", ""},
      {"IF FUNCTION UPPER-CASE (A) = B CONTINUE.", "A R 1:25, B R 1:30", "Comparison A -> B"},
      {"IF N >= M AND N <> K CONTINUE.", "N R 1:4, M R 1:9, N R 1:15, K R 1:20",
       "Comparison N -> K, Comparison N -> M"},
  });
}

TEST(Statements, CallsMeetParameterSlots) {
  expectStatements({
      {"CALL 'sub' USING A BY CONTENT B BY VALUE N OMITTED\nBY REFERENCE C RETURNING K.",
       "A B 1:18, B R 1:31, N R 1:42, C B 2:14, K W 2:26",
       "Argument A -> SUB(1), Argument B -> SUB(2), Argument C -> SUB(5), Argument N -> SUB(3), Argument SUB(0) -> K"},
      {"CALL A USING 'X' B ON EXCEPTION CONTINUE END-CALL.", "A R 1:6, B B 1:18", "Argument B -> ?(2)"},
      {"CALL 'S' USING LENGTH OF A ADDRESS OF B.", "A N 1:26, B B 1:39", ""},
      {"CALL 'S' USING BY VALUE 1 SIZE 4 N BY VALUE SIZE 8 M.", "N R 1:34, M R 1:52",
       "Argument M -> S(3), Argument N -> S(2)"},
      {"CANCEL 'S' A.", "A R 1:12", ""},
      {"ENTRY 'E2' USING L.", "L B 1:18", "Parameter L -> E2(1)"},
      {"ALLOCATE L RETURNING PTR.", "L W 1:10, PTR W 1:22", "Pointer L -> PTR"},
      {"FREE PTR.", "PTR W 1:6", ""},
  });
}

TEST(Statements, TableSortsAndScreenTraffic) {
  expectStatements({
      {"SORT ROW ON DESCENDING KEY ELEM DUPLICATES.", "ROW B 1:6, ELEM R 1:28", ""},
      {"ACCEPT A FROM DATE YYYYMMDD.", "A W 1:8", ""},
      {"ACCEPT A FROM SYSIN.", "A W 1:8", ""},
      {"ACCEPT A FROM B.", "A W 1:8, B R 1:15", "Move B -> A"},
      {"DISPLAY A 'X' FUNCTION TRIM (B) N UPON CONSOLE.", "A R 1:9, B R 1:30, N R 1:33", ""},
      {"DISPLAY A AT LINE N COLUMN 5 WITH NO ADVANCING.", "A R 1:9, N R 1:19", ""},
      {"DISPLAY A ERASE EOS.", "A R 1:9", ""},
      {"XML GENERATE A FROM G COUNT IN N END-XML.", "A W 1:14, G R 1:21, N W 1:32", "String G -> A, Tally G -> N"},
      {"XML GENERATE A FROM G NAMESPACE IS B NAMESPACE-PREFIX C\nWITH ENCODING N.",
       "A W 1:14, G R 1:21, B R 1:36, C R 1:55, N R 2:15", "String G -> A"},
      {"XML PARSE A WITH ENCODING N PROCESSING PROCEDURE P2.", "A R 1:11, N R 1:27", ""},
      {"MOVE A::\"get\" (N)::NEXT-ONE TO B.", "A R 1:6, N R 1:16, B W 1:32", ""},
      {"SET PTR TO ACCOUNT::\"open\" (A, B).", "PTR W 1:5, A R 1:29, B R 1:32", ""},
      {"JSON GENERATE A FROM G COUNT N NAME OF GX IS 'x'\nSUPPRESS GY END-JSON MOVE GX TO A.",
       "A W 1:15, G R 1:22, N W 1:30, GX N 1:40, GY N 2:10, GX R 2:27, A W 2:33",
       "Move GX -> A, String G -> A, Tally G -> N"},
      {"JSON PARSE A INTO G NAME OF GX IS 'x'.", "A R 1:12, G W 1:19, GX N 1:29", "Unstring A -> G"},
  });
}

TEST(Statements, RelationKindsStandInTheOrderOfTheirNumbers) {
  const auto& kinds = cobol::relationKinds();
  ASSERT_EQ(kinds.size(), static_cast<std::size_t>(cobol::RelationKind::ExecKey) + 1);
  std::string high;
  for (std::size_t i = 0; i < kinds.size(); ++i) {
    EXPECT_EQ(static_cast<std::size_t>(kinds[i].kind), i);
    if (kinds[i].affinity == cobol::Affinity::high) high += std::string(kinds[i].name) + ' ';
  }
  EXPECT_EQ(high, "Move PartMove Addition Comparison Condition Overlay Address Read Write Argument Parameter ");
}

TEST(Statements, EveryVerbEndsWhateverFollows) {
  const std::string_view awkward[] = {
      "ADDRESS",       "FUNCTION", "LENGTH",        "ADDRESS OF",        "A FUNCTION", "KEY ADDRESS TO FUNCTION",
      "A ( ADDRESS )", "\n^P9 A",  "ERROR ON\n^P9", "INTO ADDRESS FROM", "= ::",       "ALL"};
  for (cobol::NameId id = 1; id < cobol::keywordCount(); ++id) {
    const std::string verb(cobol::textOf(cobol::keywordOf(id)));
    if (cobol::classOf(id) != cobol::WordClass::verb || verb == "COPY" || verb == "REPLACE" || verb.starts_with("EXEC"))
      continue; // those read on to an end of their own
    std::string text;
    for (const std::string_view words : awkward)
      text += verb + ' ' + std::string(words) + '\n';
    const ProcedureFacts facts = factsOf(kData, text + ".\n^P8.\nMOVE A TO B.\n");
    ASSERT_FALSE(facts.analysis.instances.empty()) << verb;
    EXPECT_EQ(facts.analysis.constructs[facts.analysis.instances.back().construct].name, "B") << verb;
  }
}

TEST(Statements, ABrokenStatementCostsItselfOnly) {
  expectStatements({
      {"MOVE 1,5 TO N.", "N W 1:13", ""},
      {"FROBNICATE A, NOBODY B. MOVE A TO B.", "A R 1:12, B R 1:22, A R 1:30, B W 1:35", "Move A -> B"},
      {"MOVE A OVER B MOVE B TO C.", "A R 1:6, B R 1:13, B R 1:20, C W 1:25", "Move B -> C"},
      {"ADD A TO TO B. MOVE A ( TO B.\nMOVE B TO C.", "A R 1:5, B R 1:13, A R 1:21, B R 1:28, B R 2:6, C W 2:11",
       "Move B -> C"},
  });
  const ProcedureFacts facts = factsOf(kData, "FROBNICATE A. MOVE A TO B. MOVE A OVER B.");
  EXPECT_EQ(facts.analysis.statements, 3U);
  EXPECT_EQ(facts.analysis.statementsUnderstood, 1U);
  EXPECT_EQ(facts.diagnostics(), "StatementUnknown FROBNICATE is not understood from FROBNICATE on, "
                                 "StatementUnknown MOVE is not understood from OVER on");
}
