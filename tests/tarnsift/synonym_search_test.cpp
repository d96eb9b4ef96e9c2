#include "tarnsift/fake_host.hpp"
#include "tarnsift/search/frmFindSynonyms.hpp"
#include "tarnsift/search/synonym_search.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

constexpr const char* kOverride = "//GROUP[@NAME='SynonymSearch']/BOOL";
constexpr const char* kRedefines = "//BOOL[@NAME='Redefines']";
constexpr const char* kAll = "//BOOL[@NAME='ViewAllRedefines']";
constexpr const char* kRelations = "//BOOL[@NAME='HighAffinity']";

/// One search in one program that is on the screen, and what it leaves there.
struct Walk {
  const char* promise;
  const char* constructs;
  const char* relations;
  int from;
  int to;
  const char* state; ///< behind the program's name
  std::vector<std::pair<const char*, const char*>> options = {};
};

void check(const std::vector<Walk>& searches) {
  for (const auto& search : searches) {
    FakeHost host;
    host.add({.id = "A", .constructs = search.constructs, .relations = search.relations});
    for (const auto& [path, value] : search.options) host.setOption(path, value);
    host.run();
    tarnsift::FindSynonyms(host.window(), search.from, search.to);
    EXPECT_EQ(host.state(), std::string("A ") + search.state) << search.promise;
    EXPECT_THAT(host.messages(), ElementsAre()) << search.promise;
    EXPECT_TRUE(host.window().Enabled()) << search.promise;
  }
}

TEST(SynonymSearch, FollowsTheRelationsOneStepFarBothWays) {
  check({
      {"both directions, chosen kinds only", "k1 SEED 0 4 W\n k2 TARGET 4 4 -\n k3 SOURCE 8 4 -\n k4 OTHER 12 4 -\n", "k1 Move k2\n k3 Move k1\n k1 Compare k4\n",
       0, 0, "3 0 0\n  W k1 SEED\n  W k2 TARGET: Move of SEED\n  W k3 SOURCE: Move of SEED\n"},
      {"one step", "k1 SEED 0 4 W\n k2 NEXT 4 4 -\n k3 FAR 8 4 -\n", "k1 Move k2\n k2 Move k3\n", 0, 0, "2 0 0\n  W k1 SEED\n  W k2 NEXT: Move of SEED\n"},
      {"one step also against the order of the table", "k2 NEXT 4 4 -\n k3 FAR 8 4 -\n k0 SEED 0 4 W\n", "k0 Move k2\n k2 Move k3\n", 0, 0,
       "2 0 0\n  W k0 SEED\n  W k2 NEXT: Move of SEED\n"},
      {"a name placed ahead of the walk is no seed", "k1 SEED 0 4 W\n k2 NEXT 4 4 -\n k3 FAR 8 4 -\n k4 SEED4 12 4 W\n", "k1 Move k2\n k2 Move k3\n k4 Move k1\n", 0, 0,
       "3 0 0\n  W k1 SEED\n  W k2 NEXT: Move of SEED\n  W k4 SEED4\n"},
      {"a relation with itself", "k1 SEED 0 4 W\n", "k1 Move k1\n", 0, 1, "1 0 0\n  W k1 SEED\n", {{kOverride, "true"}}},
      {"no FILLER, but from one", "k1 FILLER 0 4 W\n k2 NAME 4 4 -\n k3 Filler 8 4 -\n k4 filler 12 4 -\n k5 FILLER-1 16 4 -\n",
       "k1 Move k2\n k2 Move k1\n k1 Move k3\n k1 Move k4\n k1 Move k5\n", 0, 1,
       "1 2 0\n  W k1 FILLER\n  A k2 NAME: Move of FILLER\n  A k5 FILLER-1: Move of FILLER\n"},
      {"a seed without storage", "k1 SEED 0 0 W\n k2 NAME 0 0 -\n k3 FLAG 0 0 -\n", "k1 Move k2\n", 0, 2, "1 0 1\n  W k1 SEED\n  C k2 NAME: Move of SEED\n", {{kRedefines, "true"}}},
      {"a related key that is no construct", "k1 SEED 0 4 W\n", "k1 Move k9\n", 0, 1, "1 0 0\n  W k1 SEED\n"},
      {"keys in another case", "k1 SEED 0 4 W\n k2 NAME 4 4 -\n", "K1 Move K2\n", 0, 1, "1 1 0\n  W k1 SEED\n  A k2 NAME: Move of SEED\n"},
      {"an empty list has no seeds", "k1 SEED 0 4 A\n k2 NAME 4 4 -\n", "k1 Move k2\n", 0, 1, "0 1 0\n  A k1 SEED\n"},
      {"nothing to follow", "k1 SEED 0 4 W\n k2 NAME 0 4 -\n", "k1 Move k2\n", 0, 1, "1 0 0\n  W k1 SEED\n", {{kRelations, "false"}}},
  });
}

TEST(SynonymSearch, FindsRedefinitionsByOffsetAndSize) {
  const char* kRecord = "k1 SEED 10 4 W\n k2 SAME 10 4 -\n k3 SHORT 10 3 -\n k4 TOUCHES-BEFORE 6 4 -\n k5 TOUCHES-BEHIND 14 4 -\n k6 REACHES-IN 7 4 -\n"
                        " k7 REACHES-OUT 13 9 -\n k8 WHOLE 0 99 -\n k9 EMPTY-INSIDE 12 0 -\n ka EMPTY-AT-START 10 0 -\n kb FILLER 10 4 -\n kc EMPTY-AT-END 14 0 -\n";
  check({
      {"exact", kRecord, "", 0, 1, "1 1 0\n  W k1 SEED\n  A k2 SAME: redef of SEED\n", {{kRedefines, "true"}}},
      {"overlapping", kRecord, "", 0, 1,
       "1 6 0\n  W k1 SEED\n  A k2 SAME: redef of SEED\n  A k3 SHORT: redef of SEED\n  A k6 REACHES-IN: redef of SEED\n  A k7 REACHES-OUT: redef of SEED\n"
       "  A k8 WHOLE: redef of SEED\n  A k9 EMPTY-INSIDE: redef of SEED\n",
       {{kRedefines, "true"}, {kAll, "true"}}},
      {"off", kRecord, "", 0, 1, "1 0 0\n  W k1 SEED\n", {{kAll, "true"}}},
      {"the relation's note comes first", "k1 SEED 0 4 W\n k2 BOTH 0 4 -\n", "k2 Move k1\n", 0, 1, "1 1 0\n  W k1 SEED\n  A k2 BOTH: Move of SEED\n", {{kRedefines, "true"}}},
  });
}

TEST(SynonymSearch, TheOverrideMovesNamesOfOtherLists) {
  const char* kNames = "k1 ONE 0 4 W w\n k2 TWO 4 4 W\n k3 NONE 8 4 -\n k4 AFF 12 4 A a\n k5 CLEAN 16 4 C c\n";
  const char* kPairs = "k1 Move k2\n k1 Move k3\n k1 Move k4\n k1 Move k5\n";
  check({
      {"off: only names in no list", kNames, kPairs, 0, 1, "2 2 1\n  W k1 ONE: w\n  W k2 TWO\n  A k3 NONE: Move of ONE\n  A k4 AFF: a\n  C k5 CLEAN: c\n"},
      {"off: a name of the target", kNames, kPairs, 0, 2, "2 1 2\n  W k1 ONE: w\n  W k2 TWO\n  A k4 AFF: a\n  C k3 NONE: Move of ONE\n  C k5 CLEAN: c\n"},
      {"on: names of the seeds' list stay", kNames, "k1 Move k2\n k1 Move k3\n k1 Move k4\n", 0, 2,
       "2 0 3\n  W k1 ONE: w\n  W k2 TWO\n  C k3 NONE: Move of ONE\n  C k4 AFF: Move of ONE\n  C k5 CLEAN: c\n", {{kOverride, "true"}}},
      {"on: into the seeds' list", kNames, kPairs, 0, 0,
       "5 0 0\n  W k1 ONE: w\n  W k2 TWO\n  W k3 NONE: Move of ONE\n  W k4 AFF: Move of ONE\n  W k5 CLEAN: Move of ONE\n", {{kOverride, "true"}}},
  });
}

TEST(SynonymSearch, TheFirstNoteStaysUnlessTheOverrideWritesAgain) {
  const char* kNames = "k1 ONE 0 4 W\n k2 TWO 4 4 W\n k3 BOTH 8 4 -\n";
  const char* kPairs = "k1 Move k3\n k2 Move k3\n";
  check({{"off", kNames, kPairs, 0, 1, "2 1 0\n  W k1 ONE\n  W k2 TWO\n  A k3 BOTH: Move of ONE\n"},
         {"two kinds, one name", "k1 ONE 0 4 W\n k3 BOTH 8 4 -\n", "k1 Move k3\n k3 Move k1\n", 0, 1, "1 1 0\n  W k1 ONE\n  A k3 BOTH: Move of ONE\n"}});
  FakeHost host;
  host.add({.id = "A", .constructs = kNames, .relations = kPairs});
  host.setOption(kOverride, "true");
  host.run();
  tarnsift::FindSynonyms(host.window(), 0, 1);
  EXPECT_EQ(host.counts(), "A 2 1 0\n");
  EXPECT_EQ(host.rowsOf("A"), "  W k1 ONE\n  W k2 TWO\n  A k3 BOTH: Move of TWO\n");
  EXPECT_EQ(host.entries(), "  W k1 ONE\n  W k2 TWO\n  A k3 BOTH: Move of ONE\n") << "the list keeps the comment that it has";
}

class SynonymCommand : public ::testing::Test {
 protected:
  SynonymCommand() {
    for (const char* id : {"A", "B"}) host.add({.id = id, .constructs = "k1 SEED 0 4 A\n k2 NAME 4 4 -\n", .relations = "k1 Move k2\n"});
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
  EXPECT_EQ(host.state(), "A 0 1 1\n  A k1 SEED\n  C k2 NAME: Move of SEED\nB 0 1 1\n  A k1 SEED\n  C k2 NAME: Move of SEED\n");
}

TEST_F(SynonymCommand, TheDialogReadsAsTheAnalystExpects) {
  answer(-1, -1, "cmdCancel");
  const auto& dialog = tarnsift::theFindSynonymsDialog();
  std::string text = dialog.Caption + "|" + dialog.get<platform::Frame>("frmFindFor").Caption + "|" + dialog.get<platform::Frame>("frFindTo").Caption;
  for (const char* group : {"optListsIn", "optListsTo"})
    for (int i = 0; i < 3; ++i) text += "|" + dialog.get<platform::OptionButton>(group, i).Caption;
  EXPECT_EQ(text, "Find Synonyms|Find &In|Add Synonyms &To|&Working Lists|&Affected Lists|&Clean Lists|&Working Lists|&Affected Lists|&Clean Lists");
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
    return window.SynonymRelations + "|" + (window.ShowRedefines ? "redefines" : "") + "|" + (window.ViewAllRedefines ? "all" : "");
  };
  EXPECT_EQ(host.window().SynonymRelations, "'Move'");
  host.setOption("//CASE[@NAME='Compare']", "true", "CHECKED");
  EXPECT_EQ(read(), "'Move', 'Compare'||");
  host.setOption("//BOOL[@NAME='LowAffinity']", "true");
  host.setOption("//CASE[@NAME='Call']", "Move", "NAME");
  EXPECT_EQ(read(), "'Move', 'Compare', 'Move'||") << "high affinity first; a kind may stand twice";
  for (const char* kind : {"Move", "Compare"}) host.setOption(std::string("//LIST[@NAME='HighAffinityRels']/CASE[@NAME='") + kind + "']", "True", "CHECKED");
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
