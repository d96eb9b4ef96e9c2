#include "cobol/data_picture.hpp"

namespace {

using cobol_test::diagnosticsOf;
using cobol_test::fixedForm;
using cobol_test::picture;
using cobol_test::readAndLayOut;
using cobol_test::workingStorage;

std::string programsOf(const cobol::Analysis& analysis) {
  std::string text;
  for (const auto& program : analysis.programs)
    text += program.path + (program.common ? " common" : "") + (program.procedureToken != 0 ? " procedure" : "") +
            (program.debugging ? " debugging" : "") + '\n';
  return text;
}

std::string filesOf(const cobol::Analysis& analysis) {
  std::string text;
  for (const auto& file : analysis.dataFiles) {
    text += file.name + " '" + file.assignName + "' " + file.organisation + " min " + std::to_string(file.minimumSize);
    for (const int record : file.records)
      text += ' ' + analysis.constructs[static_cast<std::size_t>(record)].name;
    text += '\n';
  }
  return text;
}

/// `recordKey 8:28+4`: role, line, column and length of each name that a clause uses.
std::string referencesOf(const cobol::Analysis& analysis) {
  static constexpr const char* kRoles[] = {
      "assign",          "recordKey",     "alternateKey",    "relativeKey",   "fileStatus",   "password",
      "recordVarying",   "linage",        "fileValue",       "dependingOn",   "tableKey",     "reportSource",
      "reportSum",       "reportControl", "reportCondition", "screenFrom",    "screenTo",     "screenUsing",
      "screenAttribute", "crtStatus",     "cursor",          "constantValue", "pictureCount", "occursCount",
      "valueConstant",   "redefines",     "renamesFirst",    "renamesLast"};
  std::string text;
  for (const auto& reference : analysis.references)
    text += std::string(kRoles[static_cast<int>(reference.role)]) + ' ' + std::to_string(reference.at.line) + ':' +
            std::to_string(reference.at.column) + '+' + std::to_string(reference.at.length) + '\n';
  return text;
}

TEST(Programs, NestAndFollowEachOther) {
  const auto run =
      readAndLayOut(fixedForm("IDENTIFICATION DIVISION.\nPROGRAM-ID. OUTER.\nENVIRONMENT DIVISION.\n"
                              "CONFIGURATION SECTION.\nSOURCE-COMPUTER. X WITH DEBUGGING MODE.\n"
                              "DATA DIVISION.\nWORKING-STORAGE SECTION.\n01 A GLOBAL.\n 05 B PIC X.\n"
                              "PROCEDURE DIVISION.\n    STOP RUN.\n"
                              "ID DIVISION.\nPROGRAM-ID. 'inner' IS COMMON.\nLINKAGE SECTION.\n01 A PIC XX.\n"
                              "PROCEDURE DIVISION.\n    EXIT PROGRAM.\nEND PROGRAM 'inner'.\n"
                              "END PROGRAM OUTER.\n"
                              "PROGRAM-ID. NEXT-ONE.\nPROCEDURE DIVISION.\n    STOP RUN.\n"
                              "PROGRAM-ID. LAST-ONE.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n01 A PIC X.\n"));
  EXPECT_EQ(programsOf(run.analysis),
            "OUTER procedure debugging\nOUTER/INNER common procedure\nNEXT-ONE procedure\nLAST-ONE\n");
  EXPECT_EQ(picture(run), "01 A @0+0 len 1 flags G\n05 B @0+0 len 1 PIC X DISPLAY flags G\n"
                          "01 A @32+0 len 2 PIC XX DISPLAY\n01 A @64+0 len 1 PIC X DISPLAY\n");
  const auto& outer = run.analysis.programs[0];
  const auto& inner = run.analysis.programs[1];
  ASSERT_EQ(outer.procedureRanges.size(), 1U);
  EXPECT_LE(outer.procedureRanges[0].second, inner.beginToken);
  EXPECT_LT(inner.endToken, outer.endToken);
  EXPECT_EQ(inner.parent, 0);
}

TEST(Programs, TakeTheFilesNameWhenTheyHaveNone) {
  const auto run = readAndLayOut(fixedForm("DATA DIVISION.\nWORKING-STORAGE SECTION.\n01 A PIC X.\n"));
  EXPECT_EQ(run.analysis.programs.size(), 1U);
  EXPECT_EQ(picture(run), "01 A @0+0 len 1 PIC X DISPLAY\n");
  EXPECT_TRUE(run.analysis.isCobol);
}

TEST(Programs, TextWithoutAnyHeaderIsNoCobol) {
  for (const std::string text : {"", "Dear reader,\nthe data division of labour.\n", "\1\2\3\377"})
    EXPECT_FALSE(readAndLayOut(text).analysis.isCobol);
}

TEST(Files, TakeClausesInAnyOrder) {
  const auto run = readAndLayOut(fixedForm(
      "IDENTIFICATION DIVISION.\nPROGRAM-ID. P.\nENVIRONMENT DIVISION.\nINPUT-OUTPUT SECTION.\nFILE-CONTROL.\n"
      "    SELECT OPTIONAL CUST ASSIGN TO UT-S-CUSTIN\n"
      "      FILE STATUS IS ST-1, ST-2 ORGANIZATION IS INDEXED\n"
      "      RECORD KEY IS C-ID OF C-REC\n"
      "      ALTERNATE RECORD KEY IS C-ALT SOURCE IS C-A C-B\n"
      "        WITH DUPLICATES PASSWORD IS SECRET\n"
      "      ACCESS MODE IS DYNAMIC.\n"
      "    SELECT LST ASSIGN PRINTER LINE SEQUENTIAL.\n"
      "    SELECT REL ASSIGN TO \"data/rel.dat\" RELATIVE\n"
      "      RELATIVE KEY REL-NO.\n"
      "I-O-CONTROL.\n    SAME RECORD AREA FOR LST REL.\n"
      "DATA DIVISION.\nFILE SECTION.\n"
      "FD CUST BLOCK CONTAINS 0 RECORDS RECORD CONTAINS 10 TO 200\n   LABEL RECORDS STANDARD.\n"
      "01 C-REC.\n 05 C-ID PIC 9(4).\n01 C-REC-2 PIC X(8).\n"
      "FD LST RECORD IS VARYING IN SIZE FROM 1 TO 80\n   DEPENDING ON LEN LINAGE IS PAGE-SIZE LINES.\n01 L-REC PIC "
      "X(80).\n"
      "FD REL.\n01 R-REC PIC X(10).\nSD SRT.\n01 S-REC PIC X.\n"
      "PROCEDURE DIVISION.\n    STOP RUN.\n"));
  EXPECT_EQ(filesOf(run.analysis), "CUST 'CUSTIN' INDEXED min 200 C-REC C-REC-2\n"
                                   "LST 'PRINTER' LINE SEQUENTIAL min 80 L-REC\n"
                                   "REL 'DATA/REL.DAT' RELATIVE min 0 R-REC\n"
                                   "SRT ''  min 0 S-REC\n");
  EXPECT_EQ(picture(run), "01 C-REC @0+0 len 4\n"
                          "05 C-ID @0+0 len 4 PIC 9(4) DISPLAY\n"
                          "01 C-REC-2 @0+0 len 8 PIC X(8) DISPLAY\n"
                          "01 L-REC @224+0 len 80 PIC X(80) DISPLAY\n"
                          "01 R-REC @224+0 len 10 PIC X(10) DISPLAY\n"
                          "01 S-REC @320+0 len 1 PIC X DISPLAY\n");
  EXPECT_EQ(referencesOf(run.analysis), "assign 6:43+11\nfileStatus 7:29+4\nfileStatus 7:35+4\nrecordKey 8:28+4\n"
                                        "alternateKey 9:54+3\nalternateKey 9:58+3\npassword 10:44+6\nassign 12:30+7\n"
                                        "relativeKey 14:27+6\nrecordVarying 25:24+3\nlinage 25:38+9\n");
  EXPECT_EQ(diagnosticsOf(run), "");
}

TEST(SpecialNames, GiveSwitchesAndPictureRules) {
  const auto run =
      readAndLayOut(fixedForm("PROGRAM-ID. P.\nENVIRONMENT DIVISION.\nCONFIGURATION SECTION.\nSPECIAL-NAMES.\n"
                              "    C01 IS TOP-OF-PAGE\n    UPSI-0 IS SW ON STATUS IS SW-ON OFF SW-OFF\n"
                              "    CURRENCY SIGN IS 'EUR' WITH PICTURE SYMBOL 'F'\n"
                              "    CLASS HEXA IS '0' THRU '9'\n    CRT STATUS IS KEY-DATA\n"
                              "    DECIMAL-POINT IS COMMA.\n"
                              "DATA DIVISION.\nWORKING-STORAGE SECTION.\n01 A PIC FF.FF9,99.\n"));
  EXPECT_EQ(picture(run), "00 SW-ON @-1 = ON\n00 SW-OFF @-2 = OFF\n01 A @0+0 len 11 PIC FF.FF9,99 DISPLAY\n");
  EXPECT_EQ(run.analysis.constructs.back().scale, 2);
  EXPECT_EQ(run.analysis.programs[0].otherNames.size(), 3U);
  EXPECT_EQ(referencesOf(run.analysis), "crtStatus 9:26+8\n");
}

TEST(Entries, GoOnWithoutPeriods) {
  const auto run = readAndLayOut(
      workingStorage("01 A.\n 05 B PIC X\n 05 C PIC 9(3)\n       VALUE 12\n 05 D OCCURS\n   5 TIMES PIC X.\n"
                     " nonsense here.\n 05 E PIC X."));
  EXPECT_EQ(picture(run), "01 A @0+0 len 10\n"
                          "05 B @0+0 len 1 PIC X DISPLAY\n"
                          "05 C @0+1 len 3 PIC 9(3) DISPLAY = 12\n"
                          "05 D @0+4 len 1 x5 PIC X DISPLAY dims 5x1\n"
                          "05 E @0+9 len 1 PIC X DISPLAY\n");
  EXPECT_EQ(diagnosticsOf(run), "PeriodMissing 7\nPeriodMissing 9\nLevelBad 11\n");
}

TEST(Entries, NameOtherItems) {
  const auto run = readAndLayOut(
      workingStorage("78 LIM VALUE 5.\n01 A.\n 05 T OCCURS 1 TO LIM DEPENDING ON N OF G\n"
                     "    ASCENDING KEY IS K1 K2 INDEXED BY IX.\n  10 K1 PIC X(LIM).\n"
                     "  10 K2 PIC X.\n 88 C VALUE LIM THRU 9.\n 05 V PIC X(9) VALUE 'x' & LIM & 'y' & LIM."));
  EXPECT_EQ(referencesOf(run.analysis),
            "occursCount 7:26+3\ndependingOn 7:43+1\ntableKey 8:29+2\ntableKey 8:32+2\n"
            "pictureCount 9:22+3\nvalueConstant 11:20+3\nvalueConstant 12:35+3\nvalueConstant 12:47+3\n");
  const auto names = readAndLayOut(workingStorage("01 T.\n 05 E OCCURS 3 ASCENDING KEY STEP INDEXED BY CURSOR IX.\n"
                                                  "  10 STEP PIC X."));
  EXPECT_EQ(referencesOf(names.analysis), "tableKey 6:37+4\n");
  EXPECT_THAT(picture(names), testing::HasSubstr("00 CURSOR @-1 INDEX\n00 IX @-2 INDEX\n"));
}

TEST(Entries, CopyTypes) {
  const auto run =
      readAndLayOut(workingStorage("01 MONEY TYPEDEF.\n 05 AMOUNT PIC S9(7)V99 COMP-3.\n 05 CURR PIC X(3).\n"
                                   "  88 EURO VALUE 'EUR'.\n01 A.\n 05 X PIC X.\n 05 TOTAL TYPE MONEY.\n"
                                   " 05 PART SAME AS TOTAL OCCURS 2."));
  EXPECT_EQ(picture(run), "01 MONEY @0+0 len 8\n"
                          "05 AMOUNT @0+0 len 5 PIC S9(7)V99 COMP-3\n"
                          "05 CURR @0+5 len 3 PIC X(3) DISPLAY\n"
                          "88 EURO @-1 = \"EUR\"\n"
                          "01 A @32+0 len 25\n"
                          "05 X @32+0 len 1 PIC X DISPLAY\n"
                          "05 TOTAL @32+1 len 8\n"
                          "05 AMOUNT @32+1 len 5 PIC S9(7)V99 COMP-3\n"
                          "05 CURR @32+6 len 3 PIC X(3) DISPLAY\n"
                          "88 EURO @-2 = \"EUR\"\n"
                          "05 PART @32+9 len 8 x2 dims 2x8\n"
                          "05 AMOUNT @32+9 len 5 PIC S9(7)V99 COMP-3 dims 2x8\n"
                          "05 CURR @32+14 len 3 PIC X(3) DISPLAY dims 2x8\n"
                          "88 EURO @-3 = \"EUR\"\n");
}

TEST(Areas, AreSharedByExternalRecordsOfOneName) {
  const auto run =
      readAndLayOut(fixedForm("PROGRAM-ID. A.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n01 E EXTERNAL PIC X(4).\n"
                              "01 F PIC X.\nEND PROGRAM A.\nPROGRAM-ID. B.\nDATA DIVISION.\n"
                              "WORKING-STORAGE SECTION.\n01 F PIC X.\n01 E IS EXTERNAL.\n 05 G PIC X(9).\n"
                              "END PROGRAM B.\n"));
  EXPECT_EQ(picture(run),
            "01 E @0+0 len 4 PIC X(4) DISPLAY flags E\n01 F @32+0 len 1 PIC X DISPLAY\n"
            "01 F @64+0 len 1 PIC X DISPLAY\n01 E @0+0 len 9 flags E\n05 G @0+0 len 9 PIC X(9) DISPLAY\n");
}

TEST(Reports, CountColumns) {
  const auto run = readAndLayOut(
      fixedForm("PROGRAM-ID. P.\nDATA DIVISION.\nREPORT SECTION.\nRD R CONTROLS ARE FINAL DEPT.\n"
                "01 HEAD TYPE IS PAGE HEADING.\n 02 LINE 1.\n  03 COLUMN 10 PIC X(5) VALUE 'TITLE'.\n"
                "  03 COLUMN 40 VALUE 'PAGE'.\n 02 LINE PLUS 2.\n  03 COL 1 PIC X(3) SOURCE NAME OF REC.\n"
                "  03 TOT COLUMN PLUS 2 PIC 9(4) SUM AMT RESET ON DEPT.\n"));
  EXPECT_EQ(picture(run), "01 HEAD @0+0 len 43\n"
                          "02 FILLER @0+0 len 43\n"
                          "03 FILLER @0+9 len 5 PIC X(5) DISPLAY = \"TITLE\"\n"
                          "03 FILLER @0+39 len 4 = \"PAGE\"\n"
                          "02 FILLER @0+0 len 8\n"
                          "03 FILLER @0+0 len 3 PIC X(3) DISPLAY\n"
                          "03 TOT @0+4 len 4 PIC 9(4) DISPLAY\n");
  EXPECT_EQ(referencesOf(run.analysis),
            "reportControl 4:32+4\nreportSource 10:35+4\nreportSum 11:44+3\nreportControl 11:57+4\n");
}

TEST(Screens, NameWhatTheyShow) {
  const auto run = readAndLayOut(fixedForm("PROGRAM-ID. P.\nDATA DIVISION.\nSCREEN SECTION.\n01 S BLANK SCREEN.\n"
                                           " 05 LINE 1 COLUMN POS-1 VALUE 'NAME'.\n 05 F PIC X(8) USING CUST-NAME.\n"
                                           " 05 PIC 99 FROM A TO B FOREGROUND-COLOR IS 7.\n"));
  EXPECT_EQ(picture(run), "01 S @0+0 len 14\n05 FILLER @0+0 len 4 = \"NAME\"\n05 F @0+4 len 8 PIC X(8) DISPLAY\n"
                          "05 FILLER @0+12 len 2 PIC 99 DISPLAY\n");
  EXPECT_EQ(referencesOf(run.analysis),
            "screenAttribute 5:26+5\nscreenUsing 6:29+9\nscreenFrom 7:24+1\nscreenTo 7:29+1\n");
}

TEST(Communication, LaysNamedFieldsIntoTheImpliedRecord) {
  const auto run =
      readAndLayOut(fixedForm("PROGRAM-ID. P.\nDATA DIVISION.\nCOMMUNICATION SECTION.\n"
                              "CD IN-CD FOR INPUT SYMBOLIC QUEUE IS Q TEXT LENGTH IS TL\n   STATUS KEY IS SK.\n"
                              "01 IN-REC PIC X(87).\n"));
  const auto text = picture(run);
  EXPECT_THAT(text, testing::HasSubstr("02 Q @0+0 len 12 "));
  EXPECT_THAT(text, testing::HasSubstr("02 TL @0+74 len 4 "));
  EXPECT_THAT(text, testing::HasSubstr("02 SK @0+79 len 2 "));
  EXPECT_THAT(text, testing::HasSubstr("01 IN-REC @0+0 len 87 "));
}

TEST(BuiltIns, StandInForWhatTheSystemSupplies) {
  const auto run =
      readAndLayOut(fixedForm("PROGRAM-ID. P.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n"
                              "    EXEC SQL INCLUDE SQLCA END-EXEC.\n    COPY DFHAID.\n    COPY UNKNOWN.\n01 A PIC X.\n"
                              "PROCEDURE DIVISION.\n    EXEC CICS RETURN END-EXEC.\n    EXEC DLI TERM END-EXEC.\n"));
  const auto text = picture(run);
  EXPECT_THAT(text, testing::HasSubstr("01 SQLCA @0+0 len 136 flags M\n"));
  EXPECT_THAT(text, testing::HasSubstr("05 SQLCODE @0+12 len 4 PIC S9(9) COMP-5 flags M\n"));
  EXPECT_THAT(text, testing::HasSubstr("10 SQLSTATE @0+131 len 5 PIC X(5) DISPLAY flags M\n"));
  EXPECT_THAT(text, testing::HasSubstr("02 DFHPF24 "));
  EXPECT_THAT(text, testing::HasSubstr("01 DFHEIBLK "));
  EXPECT_THAT(text, testing::HasSubstr("02 DIBSTAT "));
  EXPECT_THAT(text, testing::HasSubstr("+76 len 4 PIC S9(8) COMP flags M\n")); // EIBRESP
  for (const auto& item : run.analysis.constructs)
    EXPECT_EQ(item.declared.line, item.name == "A" ? 7U : 1U);
  const auto own =
      readAndLayOut(fixedForm("PROGRAM-ID. P.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n    COPY SQLCA.\n"), {},
                    {{"SQLCA", "       01 SQLCA PIC X(136).\n"}});
  EXPECT_EQ(picture(own), "01 SQLCA @0+0 len 136 PIC X(136) DISPLAY\n");
}

} // namespace
