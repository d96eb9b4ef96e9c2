#include "tarnsift/fake_host.hpp"

#include "platform/runtime/text.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

const std::string kHead = "<LCRecordFormat><Program CAPTION=\"Program\"/><Dataname CAPTION=\"Dataname\"/>";
const std::string kTail = "<Comment CAPTION=\"Comment\"/><File CAPTION=\"File [Ln,Col]\"/></LCRecordFormat>|";
const std::string kEnd = "EndReport ''\nShow for frmMain\n";

class DatanameReport : public ::testing::Test {
 protected:
  DatanameReport() {
    host.add({.id = "A",
              .constructs = "k1 CUST-NO 0 4 W first\n k2 CUST-KEY 4 6 A\n k3 CUST-NAME 4 6 -\n k4 ZIP 4 6 C <done>\n",
              .places = {{"k1", {"Sources\\A.cbl:42:8"}},
                         {"k2", {"Sources\\A.cbl:1234567:12"}},
                         {"k4", {"Sources\\ZIP.cpy:1:1000000"}}}});
    host.add({.id = "B", .constructs = "k1 TOTAL 0 4 A sum\n", .places = {{"k1", {"Sources\\B.cbl:7:9"}}}});
    host.add({.id = "C", .constructs = "k1 OTHER 0 4 W\n", .places = {{"k1", {"Sources\\C.cbl:7:9"}}}});
    host.run();
    host.takeLog();
  }
  std::string report(int index) {
    host.choose("mnuFileReportType", index);
    return std::exchange(host.report, {});
  }
  std::string storesOpened() {
    std::string text;
    for (const auto& line : platform::splitAt(host.takeLog(), '\n'))
      if (line.starts_with("store ")) text += line + "\n";
    return text;
  }
  FakeHost host;
};

TEST_F(DatanameReport, AffectedNames) {
  EXPECT_EQ(report(1), "BeginReport " + kHead + kTail +
                           "Affected Datanames|\n"
                           "{ Program=A; Dataname=CUST-KEY; Comment=; File=Sources\\A.cbl [1234567,000012]; }\n"
                           "{ Program=B; Dataname=TOTAL; Comment=sum; File=Sources\\B.cbl [000007,000009]; }\n" +
                           kEnd);
  EXPECT_EQ(storesOpened(), "store A as COBOL-store\nstore B as COBOL-store\n");
}

TEST_F(DatanameReport, PossibleNamesAreThoseOfAllListsWithTheirStatus) {
  EXPECT_EQ(report(2),
            "BeginReport " + kHead + "<Status CAPTION=\"Status\"/>" + kTail +
                "Possible Datanames|\n"
                "{ Program=A; Dataname=CUST-NO; Comment=first; File=Sources\\A.cbl [000042,000008]; Status=Working; }\n"
                "{ Program=A; Dataname=CUST-KEY; Comment=; File=Sources\\A.cbl [1234567,000012]; Status=Affected; }\n"
                "{ Program=A; Dataname=ZIP; Comment=<done>; File=Sources\\ZIP.cpy [000001,1000000]; Status=Clean; }\n"
                "{ Program=B; Dataname=TOTAL; Comment=sum; File=Sources\\B.cbl [000007,000009]; Status=Affected; }\n"
                "{ Program=C; Dataname=OTHER; Comment=; File=Sources\\C.cbl [000007,000009]; Status=Working; }\n" +
                kEnd);
  EXPECT_EQ(storesOpened(), "store A as COBOL-store\nstore B as COBOL-store\nstore C as COBOL-store\n");
}

TEST_F(DatanameReport, CleanNamesOfAllProgramsSelectedOrNot) {
  host.window().ApplySelected = true;
  host.window().lvPrograms.selectAll(false);
  EXPECT_EQ(report(3), "BeginReport " + kHead + kTail +
                           "Clean Datanames|\n"
                           "{ Program=A; Dataname=ZIP; Comment=<done>; File=Sources\\ZIP.cpy [000001,1000000]; }\n" +
                           kEnd);
  EXPECT_EQ(storesOpened(), "store A as COBOL-store\n");
}

// The counts on the screen rule, not the database.
TEST_F(DatanameReport, AProgramWithoutACountIsNotOpened) {
  for (const char* id : {"A", "B"})
    host.window().lvPrograms.ListItems.Item(id).setSubItems(2, "         0");
  std::string steps;
  host.window().Changed.connect([&] {
    const auto& caption = host.window().Caption;
    if (const auto at = caption.find(")  - "); at != std::string::npos) steps += caption.substr(at + 5) + " ";
  });
  std::string band;
  host.screen.onPendingEvents = [&] {
    band = host.window().cbCoolBar.band("Progress").Caption + " " + std::to_string(host.window().pbProgress.Max);
  };
  EXPECT_EQ(report(1), "BeginReport " + kHead + kTail + "Affected Datanames|\n" + kEnd);
  host.window().Changed.clear();
  EXPECT_EQ(storesOpened(), "");
  EXPECT_EQ(steps, "A B C ") << "every program has its step";
  EXPECT_EQ(band, "Reporting Affected Datanames... 3");
}

TEST_F(DatanameReport, NamesOutsideTheAnalysisAreLeftOutAndLogged) {
  host.programs[0].places.erase("k1");
  const std::string text = report(2);
  EXPECT_EQ(text.find("CUST-NO"), std::string::npos);
  EXPECT_NE(text.find("CUST-KEY"), std::string::npos);
  EXPECT_EQ(host.activity, "A: 1 name(s) are not in its analysis; verify it again\n");
}

TEST_F(DatanameReport, AProgramThatCannotBeOpenedLeavesTheReportInOrder) {
  host.brokenStores = {"A"};
  EXPECT_EQ(report(1), "BeginReport " + kHead + kTail +
                           "Affected Datanames|\n"
                           "{ Program=B; Dataname=TOTAL; Comment=sum; File=Sources\\B.cbl [000007,000009]; }\n" +
                           kEnd);
  EXPECT_EQ(host.activity, "A: not whole in the report: A is broken\n");
  EXPECT_TRUE(host.window().Enabled());
}

TEST_F(DatanameReport, TheToolbarsEntriesCountByTheirPlace) {
  host.window().tbToolbar.clickMenu("Report", 4);
  EXPECT_EQ(host.report, "") << "the separator";
  host.window().tbToolbar.clickMenu("Report", 3);
  EXPECT_NE(host.report.find("|Clean Datanames|"), std::string::npos);
  host.window().tbToolbar.click("Report");
  EXPECT_THAT(host.screen.popups, ElementsAre("mnuFileReport"));
}

} // namespace
} // namespace tarnsift_test
