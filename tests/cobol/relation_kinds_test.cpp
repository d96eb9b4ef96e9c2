// Every kind of relation: what gives it, in which direction, and what comes near it and must not.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <sstream>

#include "cobol/analyse.hpp"

namespace {

/// Lines of a program, sorted into its divisions by their first word: SELECT, FD and SD with the levels behind them,
/// LINKAGE with the levels behind it, USING for the procedure division; other levels are working storage, the rest is
/// procedure text.
std::string programOf(std::string_view text) {
  std::string select;
  std::string file;
  std::string storage;
  std::string linkage;
  std::string header = "PROCEDURE DIVISION";
  std::string procedure;
  std::string* levels = &storage;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    const auto begins = [&](std::string_view word) { return line.starts_with(word); };
    if (begins("SELECT")) {
      select += "    " + line + '\n';
    } else if (begins("FD") || begins("SD")) {
      levels = &file;
      file += line + '\n';
    } else if (begins("LINKAGE")) {
      levels = &linkage;
    } else if (begins("WORKING")) {
      levels = &storage;
    } else if (begins("USING")) {
      header += ' ' + line;
    } else if (std::isdigit(static_cast<unsigned char>(line[std::min(line.find_first_not_of(' '), line.size())])) !=
               0) {
      *levels += line + '\n';
    } else {
      procedure += "    " + line + '\n';
    }
  }
  return "IDENTIFICATION DIVISION.\nPROGRAM-ID. P.\nENVIRONMENT DIVISION.\n"
         "INPUT-OUTPUT SECTION.\nFILE-CONTROL.\n" +
         select + "DATA DIVISION.\nFILE SECTION.\n" + file + "WORKING-STORAGE SECTION.\n" + storage +
         "LINKAGE SECTION.\n" + linkage + header + ".\nHERE.\n" + procedure;
}

/// The pairs of one kind as `A -> B`, sorted, joined by ", ".
std::string pairsOf(const cobol::Analysis& analysis, std::string_view kind) {
  std::vector<std::string> pairs;
  for (const cobol::Relationship& r : analysis.relationships) {
    if (cobol::relationKinds()[static_cast<std::size_t>(r.kind)].name != kind) continue;
    pairs.push_back(analysis.constructs[r.from].name + " -> " + analysis.constructs[r.to].name);
  }
  std::sort(pairs.begin(), pairs.end());
  std::string all;
  for (const std::string& pair : pairs)
    all += (all.empty() ? "" : ", ") + pair;
  return all;
}

std::string pairsOf(std::string_view text, std::string_view kind) {
  return pairsOf(cobol::analyse(programOf(text), {.format = cobol::FormatChoice::free}, {}), kind);
}

/// In every snippet: items A to C of text, N to K of numbers, two groups, a table, a pointer and a record of the
/// caller.
constexpr std::string_view kItems = R"(01 A PIC X(5).
01 B PIC X(5).
01 C PIC X(5).
01 N PIC 9(4).
01 M PIC 9(4).
01 K PIC 9(4).
01 PTR POINTER.
01 SW PIC X.
  88 SW-ON VALUE 'Y'.
01 G.
  05 GX PIC X(2).
  05 GY PIC X(3).
  05 FILLER PIC X.
01 H.
  05 HX PIC X(2).
  05 HY PIC X(1).
  05 HZ PIC X(3).
01 TAB.
  05 ELEM PIC X(5) OCCURS 10 INDEXED BY IX.
LINKAGE
01 L.
  05 LX PIC X(2).
  05 LY PIC X(3).
WORKING
)";

constexpr std::string_view kFiles = R"(SELECT INFILE ASSIGN TO UT-S-INDD.
SELECT OUTFILE ASSIGN TO OUTDD.
SELECT WORKFILE ASSIGN TO SORTWK.
FD INFILE.
01 IN-REC.
  05 IN-KEY PIC X(4).
FD OUTFILE.
01 OUT-REC PIC X(4).
01 OUT-2 PIC X(4).
SD WORKFILE.
01 SORT-REC.
  05 SORT-KEY PIC X(4).
WORKING
)";

struct Row {
  std::string_view kind;
  std::string_view lines;    ///< behind kItems
  std::string_view expected; ///< all pairs of the kind
  std::string_view near;     ///< behind kItems too; gives no pair of the kind
};

const Row kRows[] = {
    {"Move", "MOVE A TO B. SET IX TO N. COMPUTE K = M.", "A -> B, M -> K, N -> IX",
     "MOVE 'A' TO B. COMPUTE K = M + 1. MOVE LENGTH OF A TO N. MOVE A TO A. MOVE G TO H. IF A = B CONTINUE."},
    {"Move", "INITIALIZE G N REPLACING ALPHANUMERIC BY A NUMERIC BY M.", "A -> GX, A -> GY, M -> N",
     "INITIALIZE G A REPLACING NUMERIC BY M. INITIALIZE N REPLACING\nALPHANUMERIC DATA BY A."},
    {"PartMove", "MOVE G TO H.", "GX -> HX", "MOVE A TO B. MOVE GX TO HX. MOVE A TO H. MOVE SPACES TO G."},
    {"PartMove", "MOVE G (3:3) TO A (1:3).\nMOVE G (3:3) TO H (4:3).", "GY -> HZ",
     "MOVE G (2:) TO H. MOVE G (N:2) TO H. MOVE A TO H (2:3)."},
    {"PartMove", "MOVE G (1:2) TO H. MOVE A TO H (4:3).", "GX -> HX", "MOVE G (1:1) TO H. MOVE GX TO H (3:2)."},
    {"OverlapMove", "MOVE G TO H.", "GY -> HY, GY -> HZ", "MOVE G (1:2) TO H. MOVE G TO L. MOVE A TO B."},
    {"OverlapMove", "MOVE A TO G (3:2). MOVE G (5:1) TO G (1:2).", "A -> GY, GY -> GX",
     "MOVE A TO G (6:). MOVE G (N:) TO A. MOVE G (1:N) TO A (N:)."},
    {"GroupMove", "MOVE G TO H. MOVE A TO G. MOVE H (2:2) TO B.", "A -> G, G -> H, H -> B",
     "MOVE A TO B. MOVE GX TO HX. MOVE SPACES TO G. INITIALIZE G."},
    {"Addition", "ADD N TO M. SUBTRACT K FROM M. COMPUTE N = M + K * 2.", "K -> M, M -> N, N -> M",
     "ADD 1 TO N. COMPUTE N = M * K. MULTIPLY N BY M. MOVE N TO M."},
    {"Computation", "DIVIDE N BY M GIVING K. COMPUTE N = M ** 2 + K.", "M -> K, M -> N, N -> K",
     "COMPUTE N = M + K. ADD N TO M GIVING K. COMPUTE N = 2 * 3."},
    {"Comparison", "IF A = B OR C EVALUATE N WHEN M THRU K CONTINUE.", "A -> B, A -> C, N -> K, N -> M",
     "IF A = 'X' AND B = 'X' CONTINUE. IF SW-ON CONTINUE. IF N = LENGTH OF A\nCONTINUE. IF A NUMERIC AND B ALPHABETIC "
     "CONTINUE."},
    {"Comparison", "IF A = 'X' OR B = C PERFORM HERE UNTIL N > M.", "B -> C, N -> M",
     "EVALUATE TRUE WHEN SW-ON MOVE A TO B WHEN N > 1 CONTINUE."},
    {"Condition", "CONTINUE.", "SW-ON -> SW", ""}, // the near miss is below: kItems has one
    {"Redefinition", "01 R REDEFINES A PIC 9(5).\n01 S REDEFINES R PIC X.", "R -> A, S -> A",
     "01 R PIC 9(5).\n66 S RENAMES R."},
    {"Renaming", "01 R.\n  05 R1 PIC X.\n  05 R2 PIC X.\n66 S RENAMES R1 THRU R2.\n66 T RENAMES R2.",
     "S -> R1, S -> R2, T -> R2", "01 R REDEFINES A PIC X(5)."},
    {"Overlay",
     "01 R.\n  05 R1 PIC X(2).\n  05 R2 PIC X(2).\n01 S REDEFINES R.\n  05 ROW OCCURS 2.\n    10 E PIC X(2).",
     "E -> R2", "01 R.\n  05 ROW OCCURS 2.\n    10 E PIC X(2).\n    10 F PIC X(2).\n01 S.\n  05 S1 PIC X(8)."},
    {"Address", "SET ADDRESS OF L TO ADDRESS OF G.", "G -> L",
     "SET ADDRESS OF L TO PTR. SET PTR TO ADDRESS OF G. SET ADDRESS OF L\nTO NULL."},
    {"Pointer", "SET ADDRESS OF L TO PTR. SET PTR TO ADDRESS OF A.", "A -> PTR, PTR -> L",
     "SET ADDRESS OF L TO ADDRESS OF G. SET PTR TO NULL. IF PTR = NULL\nCONTINUE."},
    {"Index", "SEARCH ELEM VARYING N WHEN A = B CONTINUE.", "IX -> ELEM, N -> ELEM", ""}, // as for Condition
    {"Subscript", "MOVE ELEM (N + 1) TO A. DISPLAY ELEM (IX).", "IX -> ELEM, N -> ELEM",
     "MOVE ELEM (1) TO A. MOVE A (N:M) TO B. COMPUTE N = FUNCTION MAX (M K).\nMOVE FUNCTION TRIM (A) TO B."},
    {"Position", "MOVE A (N:M) TO B. STRING A DELIMITED SIZE INTO C POINTER K.", "K -> C, M -> A, N -> A",
     "MOVE A (1:2) TO B. MOVE ELEM (N) TO A. MOVE ELEM (IX) (2:3) TO A."},
    {"Dependence", "01 T.\n  05 E PIC X OCCURS 1 TO 9 DEPENDING ON N.", "E -> N",
     "01 T.\n  05 E PIC X OCCURS 9.\nGO TO HERE HERE DEPENDING ON N."},
    {"Dependence", "SELECT F ASSIGN TO FDD.\nFD F RECORD VARYING FROM 1 TO 9 DEPENDING ON N.\n01 REC PIC X(9).",
     "REC -> N", "SELECT F ASSIGN TO FDD.\nFD F RECORD CONTAINS 9.\n01 REC PIC X(9)."},
    {"Length", "MOVE LENGTH OF A TO N. COMPUTE M = LENGTH OF B + 1.", "A -> N, B -> M",
     "IF N = LENGTH OF A CONTINUE. MOVE A (1:LENGTH OF B) TO C. CALL 'S' USING\nLENGTH OF A."},
    {"Key",
     "SELECT F ASSIGN TO FDD ORGANIZATION INDEXED RECORD KEY FK.\nFD F.\n01 REC.\n  05 FK PIC X.\n01 REC2 PIC "
     "X.\nSTART F "
     "KEY > A WITH LENGTH N.",
     "A -> REC, A -> REC2, FK -> REC, FK -> REC2", "SELECT F ASSIGN TO FDD.\nFD F.\n01 REC.\n  05 FK PIC X.\nREAD F."},
    {"Key", "EXEC CICS READ FILE('F') INTO(G) RIDFLD(A) END-EXEC.\nSORT ELEM ON ASCENDING KEY B.", "A -> G, B -> ELEM",
     "EXEC CICS READ FILE('F') INTO(G) END-EXEC. SORT ELEM ON DESCENDING KEY\nELEM."},
    {"FileStatus", "SELECT F ASSIGN TO FDD FILE STATUS IS A.\nFD F.\n01 REC PIC X.\n01 REC2 PIC X.",
     "A -> REC, A -> REC2", "SELECT F ASSIGN TO FDD RELATIVE KEY N.\nFD F.\n01 REC PIC X."},
    {"Read", "READ INFILE INTO A. EXEC CICS RECEIVE MAP('M') INTO(G) END-EXEC.", "IN-REC -> A, M -> G",
     "READ INFILE. WRITE OUT-REC FROM A. EXEC CICS READ FILE('F') SET(PTR)\nEND-EXEC."},
    {"Write", "WRITE OUT-REC FROM A. EXEC CICS WRITE FILE('F') FROM(G) END-EXEC.", "A -> OUT-REC, G -> F",
     "WRITE OUT-REC AFTER ADVANCING N LINES. WRITE OUT-REC FROM 'X'. READ\nINFILE INTO A."},
    {"Sort", "SORT WORKFILE ON ASCENDING KEY SORT-KEY USING INFILE GIVING OUTFILE.",
     "IN-REC -> SORT-REC, SORT-REC -> OUT-2, SORT-REC -> OUT-REC",
     "SORT WORKFILE ON ASCENDING KEY SORT-KEY INPUT PROCEDURE HERE\nOUTPUT PROCEDURE HERE. SORT ELEM ON ASCENDING KEY "
     "ELEM."},
    {"String", "STRING A B DELIMITED BY C INTO G.", "A -> G, B -> G",
     "STRING 'X' DELIMITED BY C INTO G POINTER N. UNSTRING A INTO B."},
    {"Unstring", "UNSTRING A DELIMITED BY C INTO B G.", "A -> B, A -> G",
     "STRING A DELIMITED BY B INTO C. UNSTRING 'A,B' DELIMITED BY C INTO B."},
    {"Tally", "INSPECT A TALLYING N FOR ALL B. UNSTRING A INTO C COUNT M TALLYING K.", "A -> K, A -> M, A -> N",
     "INSPECT A REPLACING ALL B BY C. UNSTRING A INTO B POINTER N."},
    {"Inspection", "INSPECT A TALLYING N FOR ALL B. INSPECT G REPLACING ALL C BY B.", "B -> A, B -> G, C -> G",
     "INSPECT A TALLYING N FOR CHARACTERS. INSPECT A CONVERTING 'A' TO 'B'."},
    {"Argument", "CALL 'SUB' USING A BY CONTENT B RETURNING N.", "A -> SUB(1), B -> SUB(2), SUB(0) -> N",
     "CALL A. CALL 'SUB' USING 'X' LENGTH OF A INFILE. CANCEL B. PERFORM HERE N\nTIMES."},
    {"Argument", "EXEC CICS LINK PROGRAM('SUB') COMMAREA(G) END-EXEC. CALL B USING C.", "C -> ?(1), G -> SUB(CA)",
     "EXEC CICS RETURN TRANSID('T') COMMAREA(G) END-EXEC."},
    {"Parameter", "LINKAGE\n01 DFHCOMMAREA PIC X.\nUSING A L RETURNING N\nENTRY 'E2' USING L.",
     "A -> P(1), DFHCOMMAREA -> P(CA), L -> E2(1), L -> P(2), N -> P(0)", "01 DFHCOMMAREA PIC X.\nCALL 'P' USING A."},
    {"RecordSlot", "SELECT F ASSIGN TO AS-FDD.\nFD F.\n01 REC PIC X.\n01 REC2 PIC X.", "REC -> FDD, REC2 -> FDD",
     "SELECT F ASSIGN TO FDD.\nSD F.\n01 REC PIC X.\nWORKING\n01 Z PIC X."},
    {"ExecKey", "EXEC SQL SELECT X INTO :A, :B FROM T WHERE K = :C END-EXEC.", "C -> A, C -> B",
     "EXEC SQL UPDATE T SET X = :A WHERE Y = :B END-EXEC.\nEXEC SQL FETCH C1 INTO :A, :B END-EXEC.\nEXEC SQL INSERT "
     "INTO "
     "T VALUES (:A) END-EXEC.\nEXEC SQL CALL P (:A, :B) END-EXEC."},
};

/// Kinds that the declarations in kItems give themselves.
bool standsAlone(std::string_view kind) {
  return kind == "Condition" || kind == "Index";
}

std::string textOf(std::string_view lines) {
  std::string text(kItems);
  if (lines.find("SELECT") == std::string_view::npos) text += kFiles; // unless the row brings files of its own
  return text.append(lines);
}

} // namespace

TEST(RelationKinds, JoinWhatTheyShouldAndNothingBesides) {
  for (const Row& row : kRows) {
    SCOPED_TRACE(std::string(row.kind) + ": " + std::string(row.lines));
    // What the files of every snippet give of their own is no business of the row.
    const bool ownFiles = row.kind == "RecordSlot";
    std::string text = ownFiles ? std::string(kItems).append(row.lines) : textOf(row.lines);
    EXPECT_EQ(pairsOf(text, row.kind), row.expected);
    if (!standsAlone(row.kind)) {
      EXPECT_EQ(pairsOf(textOf(row.near), row.kind), "") << row.near;
    }
  }
  EXPECT_EQ(pairsOf("01 A PIC X VALUE 'Y'.\n78 ON-SW VALUE 'Y'.\n66 R RENAMES A.\nIF A = 'Y' CONTINUE.", "Condition"),
            "");
  EXPECT_EQ(pairsOf("01 T.\n  05 E PIC X OCCURS 5.\n01 IX INDEX.\nSET IX TO 1. DISPLAY E (IX).", "Index"), "");
}

// The same triple from a declaration and from statements is one relationship.
TEST(RelationKinds, GiveTheSitesOfDeclarationsBeforeThoseOfStatements) {
  const std::string source = programOf(textOf("SEARCH ELEM VARYING IX WHEN A = B CONTINUE.\nDISPLAY ELEM (IX).\n"
                                              "SEARCH ELEM VARYING IX WHEN A = C CONTINUE."));
  const cobol::Analysis analysis = cobol::analyse(source, {.format = cobol::FormatChoice::free}, {});
  EXPECT_EQ(pairsOf(analysis, "Index"), "IX -> ELEM");
  for (const cobol::Relationship& r : analysis.relationships) {
    if (r.kind != cobol::RelationKind::Index) continue;
    const auto sites = analysis.sitesOf(r);
    ASSERT_EQ(sites.size(), 3U);
    EXPECT_EQ(sites[0], analysis.constructs[r.from].declared);
    EXPECT_LT(sites[0], sites[1]);
    EXPECT_EQ(sites[1].line + 2, sites[2].line);
  }
}

TEST(RelationKinds, EachHasARow) {
  std::set<std::string_view> rows;
  for (const Row& row : kRows)
    rows.insert(row.kind);
  for (const auto& info : cobol::relationKinds())
    EXPECT_TRUE(rows.contains(info.name)) << info.name;
}
