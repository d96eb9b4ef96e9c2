#include "tarnsift/fake_host.hpp"

#include "platform/runtime/text.hpp"
#include "tarnsift/reports/program_metrics.hpp"

namespace tarnsift_test {
namespace {

const std::string kBegin =
    "BeginReport <LCRecordFormat><Program CAPTION=\"Program\"/><Declarations CAPTION=\"Declarations(%)\"/>"
    "<Usages CAPTION=\"Usages(%)\"/></LCRecordFormat>|Metrics Report|\n";
const std::string kEnd = "EndReport ''\nShow for frmMain\n";

std::string record(const std::string& program, const std::string& declarations, const std::string& usages) {
  return "{ Program=" + program + "; Declarations=" + declarations + "; Usages=" + usages + "; }\n";
}

// A declaration and so many usages behind it.
std::vector<std::string> places(std::size_t usages) {
  return std::vector<std::string>(usages + 1, "Sources\\A.cbl:1:8");
}

TEST(MetricsReport, EveryProgramIsOpenedInItsStepAndHasItsTwoShares) {
  FakeHost host;
  // 2 of 8 rows are affected, a Null status counts as a row; 2 + 1 of 4 usages are theirs.
  host.add({.id = "A",
            .constructs =
                "k1 A 0 4 A\n k2 B 4 4 A\n k3 C 8 4 W\n k4 D 12 4 C\n k5 E 16 4 -\n k6 F 20 4 -\n k7 G 24 4 -\n"
                " k8 H 28 4 -\n",
            .places = {{"k1", places(2)}, {"k2", places(1)}, {"k3", places(1)}},
            .variableUsages = 4});
  host.add({.id = "B", .constructs = "k1 A 0 4 W\n", .places = {{"k1", places(3)}}, .variableUsages = 3});
  host.run();
  for (const char* id : {"A", "B"}) // the counts on the screen play no part
    host.window().lvPrograms.ListItems.Item(id).setSubItems(2, "         0");
  host.takeLog();
  std::string steps;
  auto& bar = host.window().pbProgress;
  host.window().Changed.connect([&] {
    const auto& caption = host.window().Caption;
    if (const auto at = caption.find(")  - "); at != std::string::npos) steps += caption.substr(at + 5) + " ";
  });
  bar.Changed.connect([&] {
    if (bar.Value() > 0) steps += "finished, " + std::to_string(host.storesOpen) + " open; ";
  });
  std::string band;
  host.screen.onPendingEvents = [&] {
    band = host.window().cbCoolBar.band("Progress").Caption + " " + std::to_string(bar.Max);
  };
  const int openBefore = host.storesOpen;
  host.choose("mnuFileReportType", 6);
  host.window().Changed.clear();
  bar.Changed.clear();
  EXPECT_EQ(host.report,
            kBegin + record("A", "     25.0%", "     75.0%") + record("B", "      0.0%", "      0.0%") + kEnd);
  EXPECT_EQ(host.takeLog(), "store A as COBOL-store\nselect '' VAR in A\nstore B as COBOL-store\nselect '' VAR in B\n");
  EXPECT_EQ(band, "Reporting Metrics... 2");
  const std::string finished = "finished, " + std::to_string(openBefore + 1) + " open; ";
  EXPECT_THAT(steps, ::testing::HasSubstr("A " + finished + "B " + finished)) << "a store is closed behind its step";
  EXPECT_EQ(host.storesOpen, openBefore);
}

TEST(MetricsReport, SharesOfOddPrograms) {
  struct Case {
    const char* what;
    Program program;
    const char* declarations;
    const char* usages;
  };
  const Case kCases[] = {
      {"no rows", {.id = "A", .constructs = "", .variableUsages = 5}, "      0.0%", "      0.0%"},
      {"no usages in the store",
       {.id = "A", .constructs = "k1 A 0 4 A\n", .places = {{"k1", places(3)}}, .variableUsages = 0},
       "    100.0%",
       "      0.0%"},
      {"more usages of affected names than the store counts",
       {.id = "A", .constructs = "k1 A 0 4 A\n k2 B 0 4 -\n", .places = {{"k1", places(3)}}, .variableUsages = 2},
       "     50.0%",
       "    150.0%"},
      {"a name that the analysis does not know",
       {.id = "A",
        .constructs = "k1 A 0 4 A\n k2 B 0 4 A\n k3 C 0 4 -\n",
        .places = {{"k2", places(1)}},
        .variableUsages = 8},
       "     66.7%",
       "     12.5%"},
      {"nothing affected",
       {.id = "A", .constructs = "k1 A 0 4 C\n k2 B 0 4 -\n", .places = {{"k1", places(1)}}, .variableUsages = 1},
       "      0.0%",
       "      0.0%"},
      {"halves go away from zero",
       {.id = "A", .constructs = "k1 A 0 4 A\n", .places = {{"k1", places(1)}}, .variableUsages = 16},
       "    100.0%",
       "      6.3%"},
  };
  for (const Case& odd : kCases) {
    FakeHost host;
    host.add(odd.program);
    host.run();
    host.choose("mnuFileReportType", 6);
    EXPECT_EQ(host.report, kBegin + record("A", odd.declarations, odd.usages) + kEnd) << odd.what;
    host.close();
  }
}

TEST(MetricsReport, AProgramThatCannotBeOpenedHasNoRowAndTheOthersGoOn) {
  FakeHost host;
  host.add({.id = "A", .constructs = "k1 A 0 4 A\n"});
  host.add({.id = "B", .constructs = "k1 A 0 4 A\n"});
  host.run();
  host.brokenStores = {"A"};
  host.choose("mnuFileReportType", 6);
  EXPECT_EQ(host.report, kBegin + record("B", "    100.0%", "      0.0%") + kEnd);
  EXPECT_EQ(host.activity, "A: not whole in the report: A is broken\n");
}

TEST(ProgramMetrics, ADatabaseWithoutTheProjectsColumnHasNothingAffected) {
  FakeHost host;
  host.add({.id = "A", .constructs = "k1 A 0 4 A\n k2 B 0 4 -\n", .places = {{"k1", places(1)}}, .variableUsages = 6});
  host.run();
  const auto store = tarnsift::theProgramStore().Open(host.path("Analysis/A.kva"), "");
  const auto metrics = tarnsift::programMetrics(*store, "[Elsewhere_Status]");
  store->Close();
  EXPECT_EQ(metrics.declarations, 2);
  EXPECT_EQ(metrics.affected, 0);
  EXPECT_EQ(metrics.usages, 6);
}

} // namespace
} // namespace tarnsift_test
