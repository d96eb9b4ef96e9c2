#include "cobol/data_picture.hpp"

namespace {

using cobol_test::diagnosticsOf;
using cobol_test::layoutOf;
using cobol_test::readAndLayOut;
using cobol_test::relationsOf;
using cobol_test::workingStorage;

TEST(Layout, PutsRecordsOnBasesOfTheirOwn) {
  EXPECT_EQ(layoutOf("01 A PIC X(3).\n"
                     "01 CUSTOMER.\n"
                     "   05 CUST-NO PIC 9(4).\n"
                     "   05 CUST-ID PIC 9(15) COMP-3.\n"
                     "   05 PIC X.\n"
                     "77 B PIC S9(4) COMP JUST BLANK WHEN ZERO."),
            "01 A @0+0 len 3 PIC X(3) DISPLAY\n"
            "01 CUSTOMER @32+0 len 13\n"
            "05 CUST-NO @32+0 len 4 PIC 9(4) DISPLAY\n"
            "05 CUST-ID @32+4 len 8 PIC 9(15) COMP-3\n"
            "05 FILLER @32+12 len 1 PIC X DISPLAY\n"
            "77 B @64+0 len 2 PIC S9(4) COMP flags JB\n");
}

TEST(Layout, InheritsUsageAndSignFromTheGroup) {
  EXPECT_EQ(layoutOf("01 A COMP-3.\n"
                     "   05 B PIC S9(5).\n"
                     "   05 C PIC X(5).\n"
                     "   05 D PIC 9(4) COMP.\n"
                     "01 S SIGN IS TRAILING SEPARATE CHARACTER.\n"
                     "   05 T PIC S9(3).\n"
                     "   05 U PIC S9(3) COMP-3.\n"
                     "   05 V PIC S9(3) LEADING.\n"
                     "   05 W PIC 9(3)."),
            "01 A @0+0 len 10 COMP-3\n"
            "05 B @0+0 len 3 PIC S9(5) COMP-3\n"
            "05 C @0+3 len 5 PIC X(5) DISPLAY\n"
            "05 D @0+8 len 2 PIC 9(4) COMP\n"
            "01 S @32+0 len 12\n"
            "05 T @32+0 len 4 PIC S9(3) DISPLAY\n"
            "05 U @32+4 len 2 PIC S9(3) COMP-3\n"
            "05 V @32+6 len 3 PIC S9(3) DISPLAY\n"
            "05 W @32+9 len 3 PIC 9(3) DISPLAY\n");
}

TEST(Layout, AcceptsLevelsThatSkip) {
  EXPECT_EQ(layoutOf("01 A.\n  03 B.\n    07 C PIC X.\n   05 D PIC XX.\n 02 E PIC X(3)."),
            "01 A @0+0 len 6\n"
            "03 B @0+0 len 3\n"
            "07 C @0+0 len 1 PIC X DISPLAY\n"
            "05 D @0+1 len 2 PIC XX DISPLAY\n"
            "02 E @0+3 len 3 PIC X(3) DISPLAY\n");
}

// The worked examples of the SYNCHRONIZED clause.
TEST(Synchronized, PutsSlackBehindTheItemBefore) {
  EXPECT_EQ(layoutOf("01 A.\n 05 B PIC X(5).\n 05 C.\n  10 D PIC XX.\n  10 E PIC S9(6) COMP SYNC.\n"
                     "01 F.\n 05 G PIC X(5).\n 05 H PIC XX.\n 05 I.\n  10 J PIC S9(6) COMP SYNC.\n"
                     "01 K.\n 05 L.\n  10 M PIC X.\n 05 N PIC S9(4) COMP SYNC."),
            "01 A @0+0 len 12\n"
            "05 B @0+0 len 5 PIC X(5) DISPLAY\n"
            "05 C @0+5 len 7\n"
            "10 D @0+5 len 2 PIC XX DISPLAY\n"
            "10 E @0+8 len 4 PIC S9(6) COMP flags Y\n"
            "01 F @32+0 len 12\n"
            "05 G @32+0 len 5 PIC X(5) DISPLAY\n"
            "05 H @32+5 len 2 PIC XX DISPLAY\n"
            "05 I @32+8 len 4\n"
            "10 J @32+8 len 4 PIC S9(6) COMP flags Y\n"
            "01 K @64+0 len 4\n"
            "05 L @64+0 len 2\n"
            "10 M @64+0 len 1 PIC X DISPLAY\n"
            "05 N @64+2 len 2 PIC S9(4) COMP flags Y\n");
}

TEST(Synchronized, PadsEachOccurrence) {
  EXPECT_EQ(layoutOf("01 A.\n 05 B PIC X.\n 05 C OCCURS 10.\n  10 D PIC X.\n  10 E PIC S9(4)V99 COMP SYNC.\n"
                     "  10 F PIC S9(3) COMP SYNC.\n  10 G PIC X(5)."),
            "01 A @0+0 len 161\n"
            "05 B @0+0 len 1 PIC X DISPLAY\n"
            "05 C @0+1 len 16 x10 dims 10x16\n"
            "10 D @0+1 len 1 PIC X DISPLAY dims 10x16\n"
            "10 E @0+4 len 4 PIC S9(4)V99 COMP dims 10x16 flags Y\n"
            "10 F @0+8 len 2 PIC S9(3) COMP dims 10x16 flags Y\n"
            "10 G @0+10 len 5 PIC X(5) DISPLAY dims 10x16\n");
}

TEST(Synchronized, OnARecordHoldsForAllItemsInIt) {
  EXPECT_EQ(
      layoutOf("01 A SYNC.\n 05 B PIC X(11).\n 05 C PIC S9999 COMP.\n 05 D PIC S99999 COMP.\n 05 E PIC S9999 COMP.\n"
               " 05 F PIC S9(5) COMP-3."),
      "01 A @0+0 len 25 flags Y\n"
      "05 B @0+0 len 11 PIC X(11) DISPLAY flags Y\n"
      "05 C @0+12 len 2 PIC S9999 COMP flags Y\n"
      "05 D @0+16 len 4 PIC S99999 COMP flags Y\n"
      "05 E @0+20 len 2 PIC S9999 COMP flags Y\n"
      "05 F @0+22 len 3 PIC S9(5) COMP-3 flags Y\n");
}

TEST(Synchronized, NaturalRulePutsSlackInsideTheNewGroup) {
  EXPECT_EQ(layoutOf("01 A.\n 05 B PIC X(5).\n 05 C.\n  10 D PIC S9(10) COMP SYNC.\n 05 E.\n  10 F PIC X.\n"
                     " 05 G PIC S9(4) COMP SYNC.",
                     {.sync = cobol::SyncRule::natural}),
            "01 A @0+0 len 20\n"
            "05 B @0+0 len 5 PIC X(5) DISPLAY\n"
            "05 C @0+5 len 11\n"
            "10 D @0+8 len 8 PIC S9(10) COMP flags Y\n"
            "05 E @0+16 len 1\n"
            "10 F @0+16 len 1 PIC X DISPLAY\n"
            "05 G @0+18 len 2 PIC S9(4) COMP flags Y\n");
}

TEST(Redefines, SharesTheRootAndPushesWhatFollows) {
  const auto run = readAndLayOut(workingStorage("01 A.\n 05 B PIC X(4).\n 05 C REDEFINES B PIC 9(4).\n"
                                                " 05 D REDEFINES C.\n  10 E PIC X(3).\n  10 F PIC X(3).\n 05 G PIC X.\n"
                                                "01 H REDEFINES A PIC X(20).\n01 I PIC X."));
  EXPECT_EQ(picture(run), "01 A @0+0 len 7\n"
                          "05 B @0+0 len 4 PIC X(4) DISPLAY\n"
                          "05 C @0+0 len 4 PIC 9(4) DISPLAY\n"
                          "05 D @0+0 len 6\n"
                          "10 E @0+0 len 3 PIC X(3) DISPLAY\n"
                          "10 F @0+3 len 3 PIC X(3) DISPLAY\n"
                          "05 G @0+6 len 1 PIC X DISPLAY\n"
                          "01 H @0+0 len 20 PIC X(20) DISPLAY\n"
                          "01 I @48+0 len 1 PIC X DISPLAY\n");
  EXPECT_EQ(diagnosticsOf(run), "RedefinesLonger 8\n");
  EXPECT_EQ(diagnosticsOf(readAndLayOut(workingStorage("01 A.\n 05 B PIC X.\n 05 C PIC X(8).\n"
                                                       " 05 D REDEFINES C PIC S9(8) COMP SYNC.\n"
                                                       " 05 E REDEFINES C PIC S9(8) COMP.\n"))),
            "SyncMisaligned 8\n");
  EXPECT_EQ(relationsOf(run), "C Redefinition B <7:24>\nD Redefinition B <8:24>\nH Redefinition A <12:23>\n");
}

TEST(Redefines, TakesTheNearestSiblingOfTheName) {
  const auto run = readAndLayOut(workingStorage("01 A.\n 05 B.\n  10 X PIC XX.\n  10 Y PIC X.\n 05 X PIC X(8).\n"
                                                " 05 Z REDEFINES X PIC 9(8).\n 05 N REDEFINES NOWHERE PIC X."));
  EXPECT_EQ(relationsOf(run), "Z Redefinition X <10:24>\nN Redefinition X <11:24>\n");
  EXPECT_EQ(diagnosticsOf(run), "RedefinesUnknown 11\n");
}

TEST(Renames, SpansFromItsFirstToItsLastItem) {
  const auto run =
      readAndLayOut(workingStorage("01 A.\n 05 B.\n  10 C PIC X(2).\n  10 D PIC X(3).\n 05 E.\n  10 C PIC X(4).\n"
                                   "66 R1 RENAMES D.\n66 R2 RENAMES D THRU C OF E.\n66 R3 RENAMES E THRU NONE."));
  EXPECT_EQ(picture(run), "01 A @0+0 len 9\n"
                          "05 B @0+0 len 5\n"
                          "10 C @0+0 len 2 PIC X(2) DISPLAY\n"
                          "10 D @0+2 len 3 PIC X(3) DISPLAY\n"
                          "05 E @0+5 len 4\n"
                          "10 C @0+5 len 4 PIC X(4) DISPLAY\n"
                          "66 R1 @0+2 len 3\n"
                          "66 R2 @0+2 len 7\n"
                          "66 R3 @0+0 len 0\n");
  EXPECT_EQ(diagnosticsOf(run), "RenamesBad 13\n");
  EXPECT_EQ(relationsOf(run),
            "R1 Renaming D <11:22>\nR2 Renaming D <12:22>\nR2 Renaming C <12:29>\nR3 Renaming E <13:22>\n");
}

TEST(Renames, HasNoPlaceWithoutARecord) {
  const auto run = readAndLayOut(workingStorage("66 R RENAMES D.\n01 A PIC X(4).\n88 YES VALUE 'Y'."));
  std::vector<std::int64_t> offsets;
  for (const auto& item : run.analysis.constructs)
    offsets.push_back(item.offset);
  EXPECT_EQ(offsets, (std::vector<std::int64_t>{-1, 0, -2})) << "it would meet what begins at 0";
}

TEST(Occurs, NestsAndCountsOwnOccurrencesOnly) {
  EXPECT_EQ(
      layoutOf(
          "01 A OCCURS 2.\n 05 B OCCURS 12 TIMES INDEXED BY I J.\n  10 C PIC X OCCURS 3.\n  10 D PIC S9(3) COMP-3.\n"
          "  88 E VALUE 1 THRU 3 7.\n 05 F PIC X."),
      "01 A @0+0 len 61 x2 dims 2x61\n"
      "05 B @0+0 len 5 x12 dims 2x61,12x5\n"
      "00 I @-1 INDEX\n"
      "00 J @-2 INDEX\n"
      "10 C @0+0 len 1 x3 PIC X DISPLAY dims 2x61,12x5,3x1\n"
      "10 D @0+3 len 2 PIC S9(3) COMP-3 dims 2x61,12x5\n"
      "88 E @-3 = 1 THRU 3 7\n"
      "05 F @0+60 len 1 PIC X DISPLAY dims 2x61\n");
}

TEST(Occurs, DependingTakesTheMaximumAndMarksWhatMoves) {
  const auto run =
      readAndLayOut(workingStorage("01 N PIC 99.\n01 A.\n 05 B PIC X.\n 05 C OCCURS 1 TO 10 DEPENDING ON N.\n"
                                   "  10 D PIC X(3).\n 05 E.\n  10 F PIC X.\n 05 G REDEFINES B PIC X.\n"
                                   "01 H.\n 05 I PIC X OCCURS UNBOUNDED DEPENDING ON N."));
  EXPECT_EQ(picture(run), "01 N @0+0 len 2 PIC 99 DISPLAY\n"
                          "01 A @32+0 len 32 flags D\n"
                          "05 B @32+0 len 1 PIC X DISPLAY\n"
                          "05 C @32+1 len 3 x10 dims 10x3 flags D\n"
                          "10 D @32+1 len 3 PIC X(3) DISPLAY dims 10x3\n"
                          "05 E @32+31 len 1 flags D\n"
                          "10 F @32+31 len 1 PIC X DISPLAY flags D\n"
                          "05 G @32+0 len 1 PIC X DISPLAY\n"
                          "01 H @80+0 len 1 flags D\n"
                          "05 I @80+0 len 1 x1 PIC X DISPLAY dims 1x1 flags D\n");
  EXPECT_EQ(diagnosticsOf(run), "OccursBad 14\n");
}

TEST(Occurs, CountsMayBeConstants) {
  EXPECT_EQ(layoutOf("78 MANY VALUE 3 * 4.\n01 WIDE CONSTANT AS 7.\n01 A.\n 05 B PIC X(WIDE) OCCURS MANY TIMES."),
            "78 MANY @-1 = 3 * 4\n"
            "01 WIDE @-2 = 7\n"
            "01 A @0+0 len 84\n"
            "05 B @0+0 len 7 x12 PIC X(WIDE) DISPLAY dims 12x7\n");
}

TEST(Constants, MayBeLengthsOfWhatStandsBefore) {
  EXPECT_EQ(layoutOf("01 WIDE CONSTANT AS 5.\n01 R SYNC.\n 05 A PIC X(WIDE).\n 05 B PIC S9(9) COMP.\n 05 T OCCURS 3.\n"
                     "  10 U PIC S9(5) COMP-3.\n  10 V PIC X.\n"
                     "78 WHOLE VALUE LENGTH OF R.\n78 TWICE VALUE LENGTH OF V OF T + LENGTH OF T * 2.\n"
                     "01 FOUR CONSTANT AS BYTE-LENGTH OF 'ABCD'.\n78 LATER VALUE LENGTH OF COPY-OF.\n"
                     "01 COPY-OF PIC X(WHOLE).\n01 S.\n 05 W PIC X(TWICE) OCCURS FOUR.\n"),
            "01 WIDE @-1 = 5\n"
            "01 R @0+0 len 24 flags Y\n"
            "05 A @0+0 len 5 PIC X(WIDE) DISPLAY flags Y\n"
            "05 B @0+8 len 4 PIC S9(9) COMP flags Y\n"
            "05 T @0+12 len 4 x3 dims 3x4\n"
            "10 U @0+12 len 3 PIC S9(5) COMP-3 dims 3x4 flags Y\n"
            "10 V @0+15 len 1 PIC X DISPLAY dims 3x4 flags Y\n"
            "78 WHOLE @-2 = LENGTH OF R\n"
            "78 TWICE @-3 = LENGTH OF V OF T + LENGTH OF T * 2\n"
            "01 FOUR @-4 = BYTE-LENGTH OF \"ABCD\"\n"
            "78 LATER @-5 = LENGTH OF COPY-OF\n"
            "01 COPY-OF @48+0 len 24 PIC X(WHOLE) DISPLAY\n"
            "01 S @96+0 len 40\n"
            "05 W @96+0 len 10 x4 PIC X(TWICE) DISPLAY dims 4x10\n");
}

TEST(Occurs, HugeTablesSaturate) {
  std::string lines = "01 A.\n";
  for (int level = 2; level < 9; ++level)
    lines += "  0" + std::to_string(level) + " T" + std::to_string(level) + " OCCURS 4000000000.\n";
  const auto run = readAndLayOut(workingStorage(lines + "  09 X PIC X.\n01 B PIC X."));
  EXPECT_EQ(run.analysis.constructs.front().size, std::int64_t{1} << 62);
  EXPECT_GE(run.analysis.constructs.back().offset, 0);
}

TEST(Overlay, FindsFieldsUnderLaterRows) {
  const auto run = readAndLayOut(workingStorage("01 NAMES.\n 05 JAN PIC X(9).\n 05 FEB PIC X(9).\n 05 MAR PIC X(9).\n"
                                                "01 MONTHS REDEFINES NAMES.\n 05 MON OCCURS 3.\n  10 SHORT PIC X(3).\n"
                                                "  10 FILLER PIC X(6).\n"
                                                "01 ROWS REDEFINES NAMES.\n 05 LINE-9 PIC X(9) OCCURS 3."));
  // JAN and LINE-9 meet SHORT already by their plain ranges.
  EXPECT_EQ(relationsOf(run), "MONTHS Redefinition NAMES <9:28>\nROWS Redefinition NAMES <13:26>\n"
                              "SHORT Overlay FEB <11:13>\nSHORT Overlay MAR <11:13>\n");
}

TEST(Overlay, ComparesTablesOfDifferentRows) {
  const auto run = readAndLayOut(workingStorage("01 A.\n 05 T OCCURS 3.\n  10 B PIC X(2).\n  10 C PIC X(2).\n"
                                                " 05 U REDEFINES T OCCURS 2.\n  10 D PIC X(5).\n  10 E PIC X."));
  EXPECT_EQ(relationsOf(run), "U Redefinition T <9:24>\nB Overlay E <7:13>\nC Overlay E <8:13>\n");
}

TEST(Overlay, SeesNothingWithinOneLayout) {
  const auto run = readAndLayOut(workingStorage("01 A.\n 05 T OCCURS 20000.\n  10 B PIC X(2).\n  10 C PIC X(2).\n"
                                                " 05 U REDEFINES T PIC X."));
  EXPECT_EQ(relationsOf(run), "U Redefinition T <9:24>\n");
}

TEST(Layout, SizesOfTypesThatSqlDeclares) {
  const std::pair<std::string_view, std::int64_t> cases[] = {
      {"BLOB(10K)", 10'244},
      {"CLOB(2 M)", 2'097'156},
      {"DBCLOB(5)", 14},
      {"BINARY(7)", 7},
      {"VARBINARY(20)", 22},
      {"ROWID", 42},
      {"CLOB-LOCATOR", 4},
      {"CLOB-FILE", 267},
      {"RESULT-SET-LOCATOR VARYING", 4},
      {"XML AS DBCLOB(1K)", 2052},
      {"XML AS BLOB-FILE", 267},
      {"TABLE LIKE T AS LOCATOR", 4},
  };
  for (const auto& [type, size] : cases) {
    const auto run = readAndLayOut(workingStorage("01 A USAGE IS SQL TYPE IS " + std::string(type) + "."));
    EXPECT_EQ(run.analysis.constructs.front().size, size) << type;
    EXPECT_EQ(diagnosticsOf(run), "") << type;
  }
}

TEST(Layout, ConditionsTakeTheirItemsRangeOnDemand) {
  EXPECT_EQ(layoutOf("01 A PIC X(4).\n01 B PIC X.\n 88 C VALUE \"Y\" 'it''s'.", {.conditionStorage = true}),
            "01 A @0+0 len 4 PIC X(4) DISPLAY\n01 B @32+0 len 1 PIC X DISPLAY\n88 C @32 = \"Y\" \"it's\"\n");
}

} // namespace
