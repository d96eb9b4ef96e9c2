#include "cobol/kvid.hpp"

#include <set>

#include "cobol/data_picture.hpp"

namespace {

using cobol_test::fixedForm;
using cobol_test::readAndLayOut;
using cobol_test::workingStorage;

std::string keysOf(const cobol::Analysis& analysis) {
  std::string text;
  for (const auto& item : analysis.constructs)
    text += item.kvid + '\n';
  return text;
}

TEST(Keys, AreFullQualifications) {
  const auto run =
      readAndLayOut(workingStorage("01 A.\n 05 FILLER PIC X.\n 05 B.\n  10 C PIC X.\n  10 PIC X.\n  10 PIC X.\n"
                                   " 05 FILLER.\n  10 C PIC X OCCURS 2 INDEXED BY IX.\n   88 YES VALUE 'Y'.\n"
                                   " 05 B PIC X.\n66 R RENAMES B.\n78 LIM VALUE 1.\n01 FILLER PIC X.\n01 A PIC X."));
  EXPECT_EQ(keysOf(run.analysis), "P:A\nP:A.~^+1\nP:A.B\nP:A.B.C\nP:A.B.~C+1\nP:A.B.~C+2\nP:A.~B+1\nP:A.C\nP:@IX\n"
                                  "P:A.C.YES\nP:A.B#2\nP:A.R\nP:LIM\nP:~A+1\nP:A#2\n");
}

TEST(Keys, BeginWithProgramAndFile) {
  const auto run =
      readAndLayOut(fixedForm("PROGRAM-ID. OUTER.\nDATA DIVISION.\nFILE SECTION.\nFD F.\n01 R.\n 05 K PIC X.\n"
                              "PROCEDURE DIVISION.\n    STOP RUN.\nPROGRAM-ID. 'in side'.\nDATA DIVISION.\n"
                              "WORKING-STORAGE SECTION.\n01 K PIC X.\nEND PROGRAM 'in side'.\nEND PROGRAM OUTER.\n"));
  EXPECT_EQ(keysOf(run.analysis), "OUTER:F.R\nOUTER:F.R.K\nOUTER/IN=20SIDE:K\n");
}

TEST(Keys, OfMadeConstructs) {
  cobol::Analysis analysis;
  analysis.programs.push_back({});
  analysis.programs[0].path = "P";
  const auto add = [&](cobol::Kind kind, cobol::Text name) {
    cobol::Construct item;
    item.kind = kind;
    item.name = name;
    analysis.constructs.push_back(std::move(item));
  };
  add(cobol::Kind::callSlot, "SUB(1)");
  add(cobol::Kind::callSlot, "lower'quote%(CA)");
  add(cobol::Kind::fileSlot, "DDNAME");
  add(cobol::Kind::specialRegister, "RETURN-CODE");
  add(cobol::Kind::undeclared, "B OF A");
  add(cobol::Kind::undeclared, "B IN A");
  cobol::nameConstructs(analysis);
  EXPECT_EQ(keysOf(analysis),
            "P:!CALL.SUB.1\nP:!CALL.LOWER=27QUOTE=25.CA\nP:!FILE.DDNAME\nP:!REG.RETURN-CODE\nP:?A.B\nP:?A.B#2\n");
}

// Some compilers allow the sign in names.
TEST(Keys, OfNamesThatHoldTheSignOfRepetition) {
  const auto run = readAndLayOut(
      workingStorage("01 A#2 PIC X.\n01 A PIC X.\n01 A PIC X.\n01 B PIC X.\n01 B PIC X.\n01 B#2 PIC X.\n01 B PIC X."));
  EXPECT_EQ(keysOf(run.analysis), "P:A#2\nP:A\nP:A#3\nP:B\nP:B#2\nP:B#2#2\nP:B#3\n");
}

TEST(Keys, AreUniqueShortAndKeepTheirAlphabet) {
  std::string lines = "01 R.\n";
  std::string name = "A-NAME-OF-THIRTY-CHARACTERS-00";
  for (int level = 2; level < 12; ++level)
    lines += "  " + std::to_string(level) + ' ' + name.substr(0, 28) + std::to_string(level + 10) + ".\n";
  for (int i = 0; i < 3; ++i)
    lines += "  15 SAME PIC X.\n  15 FILLER PIC X.\n   88 \xC3\x84RGER VALUE 1.\n";
  const auto run = readAndLayOut(workingStorage(lines));
  std::set<std::string> seen;
  for (const auto& item : run.analysis.constructs) {
    EXPECT_TRUE(seen.insert(item.kvid).second) << item.kvid;
    EXPECT_LE(item.kvid.size(), 210U);
    EXPECT_EQ(item.kvid.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_.:/#~^+@!?()="), std::string::npos)
        << item.kvid;
  }
}

TEST(Keys, StayWhenOtherThingsChange) {
  const auto before = readAndLayOut(workingStorage("01 A.\n 05 B PIC X.\n 05 FILLER PIC X.\n 05 C PIC X."));
  const auto after =
      readAndLayOut(workingStorage("01 Z PIC X.\n01 A.\n 07 N PIC X.\n 07 FILLER PIC X.\n 07 C PIC 9(4) COMP.\n"
                                   " 07 B PIC X(3).\n 07 FILLER PIC XX."));
  std::set<std::string> keys;
  for (const auto& item : after.analysis.constructs)
    keys.insert(item.kvid);
  for (const auto& item : before.analysis.constructs)
    EXPECT_TRUE(keys.contains(item.kvid)) << item.kvid;
}

} // namespace
