#include "tarnsift/fake_host.hpp"

#include "platform/runtime/text.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

constexpr const char* kOverride = "//GROUP[@NAME='Search']/BOOL[@NAME='OverrideStatus']";
constexpr const char* kRefresh = "//BOOL[@NAME='RefreshLists']";
constexpr const char* kApplySelected = "//BOOL[@NAME='ApplySelected']";
const std::string kUnchanged = "64|Tarnsift|None of the lists was changed. ";

class Filter : public ::testing::Test {
 protected:
  /// One name in no list and one in each, in two programs; the first is on the screen.
  Filter() {
    for (const char* id : {"A", "B"})
      host.add({.id = id,
                .constructs =
                    "k0 CUST-0 0 4 -\n k1 CUST-1 0 4 W w\n k2 CUST-2 0 4 A a\n k3 CUST-3 0 4 C c\n k4 ZIP 0 4 W z\n"});
  }
  /// The state after Apply Filter to the target, with the messages in front.
  std::string filter(int target) {
    host.choose("mnuFileSearchTo", target);
    return platform::joined(host.messages(), "\n") + host.state();
  }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

struct Rule {
  int target;
  const char* overriding;
  const char* state; ///< of a program whose names k0 to k3 match; with the override those of the target itself do not
};

// What happens to a name that matches, by the list it is in, the target and the option.
TEST_F(Filter, AMatchIsPlacedByTheRule) {
  const std::string note = ": matches 'Names:CUST*' search criteria\n";
  const Rule kRules[] = {
      {0, "false", "3 1 1\n  W k0 CUST-0#  W k1 CUST-1: w\n  W k4 ZIP: z\n  A k2 CUST-2: a\n  C k3 CUST-3: c\n"},
      {1, "false", "2 2 1\n  W k1 CUST-1: w\n  W k4 ZIP: z\n  A k0 CUST-0#  A k2 CUST-2: a\n  C k3 CUST-3: c\n"},
      {2, "false", "2 1 2\n  W k1 CUST-1: w\n  W k4 ZIP: z\n  A k2 CUST-2: a\n  C k0 CUST-0#  C k3 CUST-3: c\n"},
      {3, "false", "1 0 0\n  W k4 ZIP: z\n"},
      {0, "true", "5 0 0\n  W k0 CUST-0#  W k1 CUST-1: w\n  W k2 CUST-2#  W k3 CUST-3#  W k4 ZIP: z\n"},
      {1, "true", "1 4 0\n  W k4 ZIP: z\n  A k0 CUST-0#  A k1 CUST-1#  A k2 CUST-2: a\n  A k3 CUST-3#"},
      {2, "true", "1 0 4\n  W k4 ZIP: z\n  C k0 CUST-0#  C k1 CUST-1#  C k2 CUST-2#  C k3 CUST-3: c\n"},
      {3, "true", "1 0 0\n  W k4 ZIP: z\n"},
  };
  for (const auto& [target, overriding, state] : kRules) {
    FakeHost fresh;
    for (const Program& program : host.programs)
      fresh.add(program);
    fresh.setOption(kOverride, overriding);
    std::vector<std::string> matches = {"k0", "k1", "k2", "k3"};
    if (overriding == std::string("true")) std::erase(matches, "k" + std::to_string(target + 1));
    fresh.search.matches = {{"A", matches}, {"B", matches}};
    fresh.run();
    fresh.choose("mnuFileSearchTo", target);
    const std::string expected = platform::replaceAll(state, "#", note);
    EXPECT_EQ(fresh.state(), "A " + expected + "B " + expected) << target << " " << overriding;
    EXPECT_THAT(fresh.messages(), ElementsAre());
  }
}

// The list refuses a second entry of the same key, so the screen keeps the comment that it has.
TEST_F(Filter, AMatchThatStandsInTheTargetGetsTheNoteInTheDatabaseOnly) {
  host.setOption(kOverride, "true");
  host.search.matches = {{"A", {"k1"}}};
  host.run();
  host.choose("mnuFileSearchTo", 0);
  EXPECT_EQ(host.messages(), std::vector<std::string>{kUnchanged}) << "the counters rise and fall by one";
  EXPECT_EQ(host.counts(), "A 2 1 1\nB 2 1 1\n");
  EXPECT_NE(host.rowsOf("A").find("k1 CUST-1: matches 'Names:CUST*' search criteria\n"), std::string::npos);
  EXPECT_NE(host.entries().find("k1 CUST-1: w\n"), std::string::npos);
}

TEST_F(Filter, RefreshEmptiesTheTargetOfProgramsWithNewMatches) {
  host.setOption(kRefresh, "true");
  host.search.matches = {{"A", {"k1", "k0"}}, {"B", {"k0"}}};
  host.search.newCounts = {{"B", "0"}};
  host.run();
  EXPECT_EQ(filter(0), "A 2 1 1\n  W k0 CUST-0: matches 'Names:CUST*' search criteria\n  W k1 CUST-1: matches "
                       "'Names:CUST*' search criteria\n"
                       "  A k2 CUST-2: a\n  C k3 CUST-3: c\n"
                       "B 2 1 1\n  W k1 CUST-1: w\n  W k4 ZIP: z\n  A k2 CUST-2: a\n  C k3 CUST-3: c\n");
  const auto gone = host.database("A")->OpenRecordset("select P_Classification from Constructs where KVID = 'k4'");
  EXPECT_TRUE(gone->Field("P_Classification").isNull()) << "the comments of the emptied list go too";
}

TEST_F(Filter, RefreshHasNoPartInDeleting) {
  host.setOption(kRefresh, "true");
  host.search.matches = {{"A", {"k1"}}};
  host.run();
  EXPECT_EQ(filter(3), "A 1 1 1\n  W k4 ZIP: z\n  A k2 CUST-2: a\n  C k3 CUST-3: c\n"
                       "B 2 1 1\n  W k1 CUST-1: w\n  W k4 ZIP: z\n  A k2 CUST-2: a\n  C k3 CUST-3: c\n");
}

TEST_F(Filter, AnEmptiedListCountsAsChangedEvenWhenItHeldNothing) {
  host.setOption(kRefresh, "true");
  host.add({.id = "E", .constructs = "k0 CUST-0 0 4 W\n"});
  host.search.matches = {{"E", {"unknown"}}};
  host.run();
  host.choose("mnuFileSearchTo", 2);
  EXPECT_THAT(host.messages(), ElementsAre());
}

TEST_F(Filter, NothingFoundIsTold) {
  struct {
    const char* what;
    std::map<std::string, std::vector<std::string>> matches;
    std::map<std::string, std::string> newCounts;
    std::string modelName;
    const char* log; ///< stores that are opened
  } const kCases[] = {
      {"no object", {}, {}, "COBOL", ""},
      {"no new match", {{"A", {"k0"}}}, {{"A", "0"}}, "COBOL", ""},
      {"no count", {{"A", {"k0"}}}, {{"A", "-"}}, "COBOL", ""},
      {"another model", {{"A", {"k0"}}}, {}, "PL/I", ""},
      {"a key outside the table",
       {{"A", {"k99"}}},
       {},
       "COBOL",
       "store A as COBOL-store\nmatch list Tarnsift of P '' in A\n"},
      {"a program outside the project", {{"Z", {"k0"}}}, {}, "COBOL", ""},
  };
  for (const auto& c : kCases) {
    host.search = {.matches = c.matches, .newCounts = c.newCounts, .modelName = c.modelName};
    host.run();
    const std::string before = host.state();
    host.takeLog();
    EXPECT_EQ(filter(1), kUnchanged + before) << c.what;
    std::string stores;
    for (const auto& line : platform::splitAt(host.takeLog(), '\n'))
      if (line.starts_with("store") || line.starts_with("match")) stores += line + "\n";
    EXPECT_EQ(stores, c.log) << c.what;
  }
}

TEST_F(Filter, TheSearchHostIsArmedAndDisarmed) {
  host.run();
  for (const Value& result : {Value(false), Value()}) {
    host.takeLog();
    host.search.result = result;
    host.choose("mnuFileSearchTo", 1);
    EXPECT_EQ(host.takeLog(),
              "scope ''\ndefault Names:CUST*\nglobal\nfind COBOL Tarnsift false ''\nscope ''\nnot global\n");
    EXPECT_THAT(host.messages(), ElementsAre()) << "nothing to merge is not told";
  }
}

TEST_F(Filter, ACriterionOfAnotherNameIsRememberedAtOnce) {
  host.run();
  host.takeLog();
  host.search = {.used = "Use:Unused", .result = false};
  host.choose("mnuFileSearchTo", 1);
  EXPECT_TRUE(host.log.ends_with("not global\noptions saved\n")) << host.log;
  EXPECT_EQ(host.options.selectSingleNode("//TEXT[@NAME='DefaultSearchName']").getAttribute("VALUE").asText(),
            "Use:Unused");
  host.takeLog();
  host.choose("mnuFileSearchTo", 1);
  EXPECT_EQ(host.takeLog(),
            "scope ''\ndefault Use:Unused\nglobal\nfind COBOL Tarnsift false ''\nscope ''\nnot global\n")
      << "saved once";
  // The dialog's value takes effect at the next start.
  host.setOption("//TEXT[@NAME='DefaultSearchName']", "Use:Read");
  window.ProjectOptions->FLO_Saved.raise();
  EXPECT_EQ(window.DefaultSearchName, "Use:Unused");
}

TEST_F(Filter, OnlySelectedProgramsTakePartWhenSaid) {
  host.setOption(kApplySelected, "true");
  host.search.matches = {{"A", {"k0"}}, {"B", {"k0"}}};
  host.run();
  const std::string before = host.state();
  window.lvPrograms.selectAll(false);
  host.takeLog();
  EXPECT_EQ(filter(1), kUnchanged + before);
  EXPECT_TRUE(host.log.starts_with("scope ''\n")) << host.log;
  window.lvPrograms.ListItems.Item("B").setSelected(true);
  host.takeLog();
  EXPECT_EQ(filter(3).substr(0, 8), "64|Tarns");
  EXPECT_TRUE(host.log.starts_with("scope 'B'\n")) << host.log;
  filter(1);
  EXPECT_EQ(host.counts(), "A 2 1 1\nB 2 2 1\n");
  window.lvPrograms.selectAll(true);
  host.takeLog();
  filter(1);
  EXPECT_TRUE(host.log.starts_with("scope 'A|B'\n")) << host.log;
  EXPECT_EQ(host.counts(), "A 2 2 1\nB 2 2 1\n");
}

// The focus may stand on a program that is only marked.
TEST_F(Filter, TheListsOnTheScreenAreThoseOfTheLoadedProgram) {
  host.search.matches = {{"B", {"k0"}}};
  host.run();
  window.lvPrograms.setSelectedItem(&window.lvPrograms.ListItems.Item("B"));
  window.lvPrograms.MouseUp.raise(platform::kLeftButton, platform::kCtrl, 0, 0);
  host.choose("mnuFileSearchTo", 1);
  host.state();
  EXPECT_EQ(window.LoadedProgram, "A");
}

TEST_F(Filter, TheNoteNamesTheCriterionInAtMostFortyCharacters) {
  const std::string name34(34, 'n');
  const std::vector<std::pair<std::string, std::string>> kCases = {
      {"Names:" + name34, "Names:" + name34},
      {"Names:" + name34 + "n", "Names:" + name34 + "..."},
      {"Names:" + std::string(33, 'n') + "\xC3\xA4", "Names:" + std::string(33, 'n') + "\xC3\xA4"},
      {"ByName:Level", "By name:level number"},
      {"ByName", "By name:"},
      {"Tab:a:b", "Tab:a:b"},
  };
  for (const auto& [used, shown] : kCases) {
    FakeHost fresh;
    fresh.writeFile("Product/KVSearch.xrc", kCaptionFile);
    fresh.add(host.programs[0]);
    fresh.search = {.used = used, .matches = {{"A", {"k0"}}}};
    fresh.run();
    fresh.choose("mnuFileSearchTo", 1);
    EXPECT_NE(fresh.state().find("A k0 CUST-0: matches '" + shown + "' search criteria\n"), std::string::npos)
        << used << "\n"
        << fresh.state();
  }
}

TEST_F(Filter, AFailureInOneProgramLeavesTrueCountsAndAnAnsweringWindow) {
  host.search.matches = {{"A", {"k0"}}, {"B", {"k0"}}};
  host.setOption(kRefresh, "true");
  host.run();
  host.brokenStores = {"A"};
  host.takeLog();
  host.choose("mnuFileSearchTo", 0);
  EXPECT_THAT(host.messages(), ElementsAre("16|Tarnsift|A is broken"));
  EXPECT_TRUE(host.log.find("scope ''\nnot global\n") != std::string::npos) << host.log;
  EXPECT_TRUE(window.Enabled() && !window.pbProgress.Visible());
  host.brokenStores = {};
  EXPECT_EQ(host.state(), "A 0 1 1\n  A k2 CUST-2: a\n  C k3 CUST-3: c\nB 2 1 1\n  W k1 CUST-1: w\n  W k4 ZIP: z\n  A "
                          "k2 CUST-2: a\n  C k3 CUST-3: c\n");
}

TEST_F(Filter, TheDropDownRunsTheSearchAfterItHasClosed) {
  host.search.matches = {{"A", {"k0"}}};
  host.run();
  host.takeLog();
  host.screen.onPopup = [this](platform::MenuItem& menu) {
    for (auto* entry : menu.Children)
      if (entry->Index() == 2) entry->choose();
    EXPECT_EQ(host.log, "") << "no search inside the pop-up";
  };
  window.tbToolbar.click("Search");
  EXPECT_THAT(host.screen.popups, ElementsAre("mnuFileSearch"));
  EXPECT_EQ(host.counts(), "A 2 1 2\nB 2 1 1\n");
  host.takeLog();
  host.screen.onPopup = nullptr;
  window.tbToolbar.click("Search");
  EXPECT_EQ(host.takeLog(), "") << "nothing was chosen";
  window.tbToolbar.clickMenu("Search", 4);
  EXPECT_EQ(host.counts(), "A 2 1 1\nB 2 1 1\n");
}

} // namespace
} // namespace tarnsift_test
