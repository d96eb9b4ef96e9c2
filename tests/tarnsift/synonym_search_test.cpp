#include "platform/runtime/text.hpp"
#include "tarnsift/fake_host.hpp"
#include "tarnsift/search/synonym_search.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

constexpr const char* kOverride = "//GROUP[@NAME='SynonymSearch']/BOOL";
constexpr const char* kRedefines = "//BOOL[@NAME='Redefines']";
constexpr const char* kAll = "//BOOL[@NAME='ViewAllRedefines']";
constexpr const char* kNoRelations = "//BOOL[@NAME='HighAffinity']";

/// One search in one program that is on the screen.
struct Walk {
  const char* promise;
  const char* constructs; ///< parted by commas
  const char* relations;
  int from;
  int to;
  const char* placed;            ///< rows that are new or were changed: list, key and comment, parted by commas
  std::set<std::string> on = {}; ///< options
};

std::string placedBy(const Walk& walk) {
  FakeHost host;
  host.add({.id = "A",
            .constructs = platform::replaceAll(walk.constructs, ",", "\n"),
            .relations = platform::replaceAll(walk.relations, ",", "\n")});
  for (const char* option : {kOverride, kRedefines, kAll, kNoRelations})
    if (walk.on.contains(option)) host.setOption(option, option == kNoRelations ? "false" : "true");
  host.run();
  const std::string before = host.state();
  tarnsift::FindSynonyms(host.window(), walk.from, walk.to);
  EXPECT_THAT(host.messages(), ElementsAre());
  EXPECT_TRUE(host.window().Enabled());
  std::string placed;
  for (const std::string& row : platform::splitAt(host.state(), '\n')) {
    if (row.starts_with("A ") || row.empty() || before.find(row + "\n") != std::string::npos) continue;
    placed += (placed.empty() ? "" : ", ") + row.substr(2, 5) + row.substr(row.rfind(": ") + 2);
  }
  return placed;
}

void check(const std::vector<Walk>& walks) {
  for (const Walk& walk : walks)
    EXPECT_EQ(placedBy(walk), walk.placed) << walk.promise;
}

TEST(SynonymSearch, FollowsTheRelationsOneStepFarBothWays) {
  const char* kThree = "k1 SEED 0 4 W, k2 NEXT 4 4 -, k3 FAR 8 4 -";
  check({
      {"both directions", kThree, "k1 Move k2, k3 Move k1", 0, 0, "W k2 Move of SEED, W k3 Move of SEED"},
      {"chosen kinds only", kThree, "k1 Compare k2, k1 Move k3", 0, 1, "A k3 Move of SEED"},
      {"one step", kThree, "k1 Move k2, k2 Move k3", 0, 0, "W k2 Move of SEED"},
      {"what was placed ahead of the walk is no seed", "k1 SEED 0 4 W, k2 NEXT 4 4 -, k3 FAR 8 4 -, k4 LAST 12 4 W",
       "k1 Move k2, k2 Move k3, k4 Move k1", 0, 0, "W k2 Move of SEED"},
      {"a relation with itself", "k1 SEED 0 4 W", "k1 Move k1", 0, 1, "", {kOverride}},
      {"no FILLER, but from one",
       "k1 FILLER 0 4 W, k2 NAME 4 4 -, k3 Filler 8 4 -, k4 filler 12 4 -, k5 FILLER-1 16 4 -",
       "k1 Move k2, k2 Move k1, k1 Move k3, k1 Move k4, k1 Move k5", 0, 1, "A k2 Move of FILLER, A k5 Move of FILLER"},
      {"a seed without storage",
       "k1 SEED 0 0 W, k2 NAME 0 0 -, k3 FLAG 0 0 -",
       "k1 Move k2",
       0,
       2,
       "C k2 Move of SEED",
       {kRedefines}},
      {"a related key that is no construct", kThree, "k1 Move k9", 0, 1, ""},
      {"keys in another case", kThree, "K1 Move K2", 0, 1, "A k2 Move of SEED"},
      {"an empty list has no seeds", kThree, "k1 Move k2", 2, 1, ""},
      {"no relations and no redefinitions", "k1 SEED 0 4 W, k2 NAME 0 4 -", "k1 Move k2", 0, 1, "", {kNoRelations}},
  });
}

TEST(SynonymSearch, FindsRedefinitionsByOffsetAndSize) {
  const char* kRecord = "k1 SEED 10 4 W, k2 SAME 10 4 -, k3 SHORT 10 3 -, k4 TOUCHES-BEFORE 6 4 -, k5 TOUCHES-BEHIND "
                        "14 4 -, k6 REACHES-IN 7 4 -,"
                        "k7 REACHES-OUT 13 9 -, k8 WHOLE 0 99 -, k9 EMPTY-INSIDE 12 0 -, ka EMPTY-AT-START 10 0 -, kb "
                        "FILLER 10 4 -, kc EMPTY-AT-END 14 0 -";
  check({
      {"exact", kRecord, "", 0, 1, "A k2 redef of SEED", {kRedefines}},
      {"overlapping",
       kRecord,
       "",
       0,
       1,
       "A k2 redef of SEED, A k3 redef of SEED, A k6 redef of SEED, A k7 redef of SEED, A k8 redef of SEED, A k9 redef "
       "of SEED",
       {kRedefines, kAll}},
      {"off", kRecord, "", 0, 1, "", {kAll}},
      {"the relation comes first",
       "k1 SEED 0 4 W, k2 BOTH 0 4 -",
       "k2 Move k1",
       0,
       1,
       "A k2 Move of SEED",
       {kRedefines}},
  });
}

TEST(SynonymSearch, TheOverrideMovesNamesOfOtherLists) {
  const char* kNames = "k1 ONE 0 4 W w, k2 TWO 4 4 W, k3 NONE 8 4 -, k4 AFF 12 4 A a, k5 CLEAN 16 4 C c";
  const char* kPairs = "k1 Move k2, k1 Move k3, k1 Move k4, k1 Move k5";
  check({
      {"off: only names in no list", kNames, kPairs, 0, 1, "A k3 Move of ONE"},
      {"on: all but those of the seeds' list",
       kNames,
       "k1 Move k2, k1 Move k3, k1 Move k4",
       0,
       2,
       "C k3 Move of ONE, C k4 Move of ONE",
       {kOverride}},
      {"on: into the seeds' list",
       kNames,
       kPairs,
       0,
       0,
       "W k3 Move of ONE, W k4 Move of ONE, W k5 Move of ONE",
       {kOverride}},
      {"off: the first note stays", "k1 ONE 0 4 W, k2 TWO 4 4 W, k3 BOTH 8 4 -", "k1 Move k3, k2 Move k3", 0, 1,
       "A k3 Move of ONE"},
  });
}

TEST(SynonymSearch, WithTheOverrideALaterSeedWritesTheNoteAgain) {
  FakeHost host;
  host.add({.id = "A",
            .constructs = "k1 ONE 0 4 W\n k2 TWO 4 4 W\n k3 BOTH 8 4 -\n",
            .relations = "k1 Move k3\n k2 Move k3\n"});
  host.setOption(kOverride, "true");
  host.run();
  tarnsift::FindSynonyms(host.window(), 0, 1);
  EXPECT_EQ(host.counts(), "A 2 1 0\n");
  EXPECT_EQ(host.rowsOf("A"), "  W k1 ONE\n  W k2 TWO\n  A k3 BOTH: Move of TWO\n");
  EXPECT_EQ(host.entries(), "  W k1 ONE\n  W k2 TWO\n  A k3 BOTH: Move of ONE\n")
      << "the list keeps the comment that it has";
}

class SynonymCommand : public ::testing::Test {
 protected:
  SynonymCommand() {
    for (const char* id : {"A", "B"})
      host.add({.id = id, .constructs = "k1 SEED 0 4 A\n k2 NAME 4 4 -\n", .relations = "k1 Move k2\n"});
    host.run();
  }
  /// What the analyst does in the dialog; a choice below 0 leaves it.
  void answer(int in, int to, const char* button) {
    host.screen.dialogs["frmFindSynonyms"] = [=, this](platform::Form& dialog) {
      chosen.clear();
      for (const char* group : {"optListsIn", "optListsTo"})
        for (int i = 0; i < 3; ++i)
          if (dialog.get<platform::OptionButton>(group, i).Value()) chosen += std::to_string(i);
      if (in >= 0) dialog.get<platform::OptionButton>("optListsIn", in).choose();
      if (to >= 0) dialog.get<platform::OptionButton>("optListsTo", to).choose();
      dialog.get<platform::CommandButton>(button).press();
    };
    host.choose("mnuFileSynonyms");
  }
  FakeHost host;
  std::string chosen; ///< in the dialog when it was shown
};

TEST_F(SynonymCommand, RunsThroughAllProgramsWithTheAnalystsChoice) {
  answer(1, 2, "cmdCancel");
  EXPECT_EQ(chosen, "00") << "Working to Working at the first use";
  EXPECT_EQ(host.counts(), "A 0 1 0\nB 0 1 0\n");
  answer(-1, -1, "cmdOK");
  EXPECT_EQ(chosen, "12") << "the last choice is shown";
  EXPECT_EQ(host.state(),
            "A 0 1 1\n  A k1 SEED\n  C k2 NAME: Move of SEED\nB 0 1 1\n  A k1 SEED\n  C k2 NAME: Move of SEED\n");
}

TEST_F(SynonymCommand, TakesTheSelectedProgramsOnlyWhenSaid) {
  host.window().ApplySelected = true;
  host.window().lvPrograms.selectAll(false);
  int steps = 0;
  host.window().Changed.connect([&] { steps += host.window().Caption != "Tarnsift - Orvane (P) "; });
  tarnsift::FindSynonyms(host.window(), 1, 0);
  host.window().Changed.clear();
  EXPECT_EQ(steps, 0);
  EXPECT_EQ(host.counts(), "A 0 1 0\nB 0 1 0\n");
  host.window().lvPrograms.ListItems.Item("B").setSelected(true);
  tarnsift::FindSynonyms(host.window(), 1, 0);
  EXPECT_EQ(host.state(), "A 0 1 0\n  A k1 SEED\nB 1 1 0\n  W k2 NAME: Move of SEED\n  A k1 SEED\n");
}

TEST(SynonymOptions, AreReadAtTheStartAndAfterTheDialog) {
  FakeHost host;
  host.run();
  const auto read = [&] {
    host.window().ProjectOptions->FLO_Saved.raise();
    const auto& window = host.window();
    return window.SynonymRelations + "|" + (window.ShowRedefines ? "redefines" : "") + "|" +
           (window.ViewAllRedefines ? "all" : "");
  };
  EXPECT_EQ(host.window().SynonymRelations, "'Move'");
  host.setOption("//CASE[@NAME='Compare']", "true", "CHECKED");
  EXPECT_EQ(read(), "'Move', 'Compare'||");
  host.setOption("//BOOL[@NAME='LowAffinity']", "true");
  host.setOption("//CASE[@NAME='Call']", "Move", "NAME");
  EXPECT_EQ(read(), "'Move', 'Compare', 'Move'||") << "high affinity first; a kind may stand twice";
  for (const char* kind : {"Move", "Compare"})
    host.setOption(std::string("//LIST[@NAME='HighAffinityRels']/CASE[@NAME='") + kind + "']", "True", "CHECKED");
  host.setOption(kAll, "true");
  EXPECT_EQ(read(), "'Move'||all") << "only 'true' ticks a kind; the second redefinition switch is kept";
  host.setOption("//BOOL[@NAME='LowAffinity']", "false");
  host.setOption(kRedefines, "true");
  EXPECT_EQ(read(), "|redefines|all");
  auto group = host.options.selectSingleNode("//GROUP[@NAME='Synonyms']");
  group.removeChild(host.options.selectSingleNode(kRedefines));
  EXPECT_EQ(read(), "||");
  host.setOption("//BOOL[@NAME='ApplySelected']", "true");
  read();
  EXPECT_TRUE(host.window().ApplySelected);
}

} // namespace
} // namespace tarnsift_test
