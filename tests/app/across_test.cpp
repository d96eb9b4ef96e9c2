#include <gtest/gtest.h>

#include <set>

#include <fmt/format.h>

#include "app/command.hpp"

namespace {

std::string programText(const std::string& name, const std::string& files, const std::string& storage,
                        const std::string& statements, const std::string& linkage = "",
                        const std::string& parameters = "") {
  std::string text = "IDENTIFICATION DIVISION.\nPROGRAM-ID. " + name + ".\n";
  std::string records;
  for (const auto& [file, dd, record] : {std::tuple<std::string, std::string, std::string>{"F", "MASTER", files}}) {
    if (record.empty()) continue;
    text +=
        "ENVIRONMENT DIVISION.\nINPUT-OUTPUT SECTION.\nFILE-CONTROL.\n    SELECT " + file + " ASSIGN TO " + dd + ".\n";
    records = "FILE SECTION.\nFD  " + file + ".\n" + record;
  }
  text += "DATA DIVISION.\n" + records + "WORKING-STORAGE SECTION.\n" + storage;
  if (!linkage.empty()) text += "LINKAGE SECTION.\n" + linkage;
  return fixedForm(text + "PROCEDURE DIVISION" + parameters + ".\n" + statements + "    GOBACK.\n");
}

} // namespace

// MAIN passes a number to CHECKER; CHECKER writes it into a file that READER has in other words; LONER calls who knows
// what.
class Across : public CommandTest {
 protected:
  void SetUp() override {
    write("src/MAIN.cbl",
          programText("MAIN", "",
                      "01 W-KEY PIC 9(8).\n01 PARMS.\n   05 P-FLAG PIC X.\n   05 P-KEY PIC 9(8).\n01 PROG PIC X(8).\n",
                      "    MOVE W-KEY TO P-KEY.\n    CALL 'CHECKER' USING PARMS.\n    CALL PROG USING W-KEY.\n"));
    write("src/CHECKER.cbl",
          programText("CHECKER",
                      "01 M-REC.\n   05 M-DATE PIC 9(6).\n   05 M-NUMBER PIC 9(8).\n   05 M-TEXT PIC X(10).\n",
                      "01 W PIC X.\n", "    MOVE L-NUMBER TO M-NUMBER.\n    MOVE L-FLAG TO M-TEXT.\n    WRITE M-REC.\n",
                      "01 L-PARMS.\n   05 L-FLAG PIC X.\n   05 L-NUMBER PIC 9(8).\n", " USING L-PARMS"));
    write("src/READER.cbl",
          programText(
              "READER", "01 R-LINE PIC X(24).\n",
              "01 R-AREA.\n   05 R-DAY PIC 9(6).\n   05 R-ID PIC 9(8).\n   05 R-REST PIC X(10).\n01 R-LAST PIC 9(8).\n",
              "    READ F INTO R-AREA.\n    MOVE R-ID TO R-LAST.\n"));
    write("src/LONER.cbl",
          programText("LONER", "", "01 X-KEY PIC 9(8).\n01 PROG PIC X(8).\n", "    CALL PROG USING X-KEY.\n"));
  }
  std::string affected() {
    std::string text;
    for (const auto& name : good("-C base datanames --status affected --json").objects())
      text += fmt::format("{} {}: {}\n", name["program"].get<std::string>(), name["name"].get<std::string>(),
                          name["comment"].get<std::string>());
    return text;
  }
};

TEST_F(Across, ImpactFollowsTheNumberOverACallAndAFileAndNothingBesideIt) {
  const std::string out = good("impact src -C base --like W-KEY").out;
  EXPECT_EQ(affected(), "CHECKER M-NUMBER: Move of L-NUMBER\n"
                        "CHECKER L-NUMBER: matches 'Across:call CHECKER(1) from MAIN at 2-9' search criteria\n"
                        "MAIN W-KEY: matches 'Names:W-KEY' search criteria\n"
                        "MAIN P-KEY: Move of W-KEY\n"
                        "MAIN ?(1): Argument of W-KEY\n"
                        "READER R-ID: matches 'Across:file MASTER with CHECKER at 7-14' search criteria\n"
                        "READER R-LAST: Move of R-ID\n");
  EXPECT_NE(out.find("Reached by\n"), std::string::npos) << out;
  EXPECT_NE(out.find("call CHECKER(1) from MAIN\n"), std::string::npos) << out;
  EXPECT_NE(out.find("file MASTER with CHECKER\n"), std::string::npos) << out;
  EXPECT_NE(out.find("names\n"), std::string::npos) << out;
  EXPECT_NE(out.find("3 of 4 programs"), std::string::npos) << out;
  // The walk goes against the stream as well, and a second run changes nothing.
  const std::string first = affected();
  const std::string again = good("impact src -C base --like W-KEY").out;
  EXPECT_EQ(affected(), first);
  EXPECT_EQ(again.substr(again.find("Program ")).substr(0, 400), out.substr(out.find("Program ")).substr(0, 400));
  good("impact src -C other --like R-LAST");
  EXPECT_EQ(good("-C other datanames --status affected --like W-KEY --json").objects().size(), 1U);
}

TEST_F(Across, BordersCanBeClosedAndTheDepthCountsRounds) {
  good("impact src -C base --like W-KEY --within-programs");
  EXPECT_EQ(affected().find("Across"), std::string::npos);
  good("impact src -C one --like W-KEY --depth 1");
  EXPECT_EQ(good("-C one datanames --status affected --program CHECKER --json").objects().size(), 1U);
  EXPECT_TRUE(good("-C one datanames --status affected --program READER --json").objects().empty());
}

TEST_F(Across, ANameThatTheAnalystSortedElsewhereEndsTheChain) {
  good("init base");
  good("-C base --project src add src");
  good("-C base verify");
  good("-C base filter --like R-ID --to clean");
  good("impact src -C base --like W-KEY");
  EXPECT_EQ(affected().find("READER"), std::string::npos);
}

TEST_F(Across, WholeParametersAndWholeRecordsMeetAsAWhole) {
  good("impact src -C base --like 'P*RMS'");
  EXPECT_EQ(affected(), "CHECKER L-PARMS: Parameter of CHECKER(1)\n"
                        "CHECKER CHECKER(1): matches 'Across:call CHECKER(1) from MAIN' search criteria\n"
                        "MAIN PARMS: matches 'Names:P*RMS' search criteria\n"
                        "MAIN CHECKER(1): Argument of PARMS\n");
  good("impact src -C other --like M-REC");
  const auto names = good("-C other datanames --status affected --program READER --json").objects();
  ASSERT_EQ(names.size(), 3U);
  EXPECT_EQ(names[0]["name"], "R-LINE");
  EXPECT_EQ(names[1]["name"], "R-AREA");
  EXPECT_EQ(names[2]["name"], "MASTER");
}

TEST_F(Across, TheSearchThatTheAnalystMadeStaysTheDefault) {
  good("impact src -C base --like W-KEY");
  const std::string options = platform::readText(m_place.file("base/Projects/src/Options.Project.xml"));
  EXPECT_NE(options.find("VALUE=\"Names:W-KEY\""), std::string::npos);
  EXPECT_EQ(options.find("Across:"), std::string::npos);
}

// What samples/README.md names as holders of the account number, reached from one field of one program that reads
// movements.
TEST_F(Across, OneFieldOfTheBankLeadsToTheAccountNumberEverywhereAndToNoCustomer) {
  const std::string samples = TARNSIFT_SOURCE_DIR "/samples/bank";
  good("impact " + samples + "/cobol --copybooks " + samples + "/copy -C base --project bank --like WS-F-ACCT");
  std::set<std::string> names;
  std::set<std::string> programs;
  for (const auto& name : good("-C base datanames --status affected --json").objects()) {
    names.insert(name["program"].get<std::string>() + " " + name["name"].get<std::string>());
    programs.insert(name["program"]);
  }
  for (const char* name :
       {"BKB010 TR-ACCOUNT-NUMBER", "BKB020 PP-ACCOUNT", "BKB030 WS-HIGHEST-ACCT", "BKB040 DL-ACCOUNT",
        "BKB050 LK-ACCT", "BKB060 ML-ACCT", "BKB080 HV-ACCOUNT-NO", "BKF900 LAST-ACCOUNT", "BKO100 ACCNOI",
        "BKO110 WA-ACCT-NO", "BKO120 WJ-ACC-NO", "BKO150 OL-ACC-KEY", "BKS100 WS-ACC-KEY", "BKS110 WS-LAST-REFUSED"})
    EXPECT_TRUE(names.contains(name)) << name;
  EXPECT_EQ(programs.size(), 14U);
  for (const std::string& name : names) {
    EXPECT_EQ(name.find("CUST-NO"), std::string::npos) << name;
    EXPECT_EQ(name.find("CUST-KEY"), std::string::npos) << name;
    EXPECT_EQ(name.find("DATE"), std::string::npos) << name;
  }
}
