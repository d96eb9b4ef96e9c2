#include "tarnsift/fake_host.hpp"

#include "platform/runtime/text.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

/// k1 is related to k0, which is in no list, and to one name of each list.
const Program kSeedProgram = {
    .id = "A",
    .constructs = "k0 LOOSE 0 4 -\n k1 SEED 4 4 W s\n k2 IN-W 8 4 W w\n k3 IN-A 12 4 A\n k4 IN-C 16 4 C c\n",
    .relations = "k1 Move k0\n k1 Move k2\n k1 Move k3\n k1 Move k4\n"};

class Moving : public ::testing::Test {
 protected:
  Moving() {
    host.add(kSeedProgram);
    host.add({.id = "B", .constructs = "k1 SEED 0 4 W\n"});
    host.run();
  }
  std::string column(const std::string& key, const char* name) {
    const auto row = host.database("A")->OpenRecordset("select * from Constructs where KVID = '" + key + "'");
    const Value value = row->Field(name);
    return value.isNull() ? "Null" : "'" + value.asText() + "'";
  }
  /// What comes after the head of program A and before that of program B.
  std::string stateOfA() {
    const std::string all = host.state();
    return all.substr(0, all.find("B 1 0 0"));
  }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

struct FromTab {
  int list;
  std::vector<std::string> keys;
  int target;
  const char* state;
};

TEST(MovingFromATab, TheEntriesLeaveItAndTheirCommentsTravel) {
  const FromTab kCases[] = {
      {0, {"k2"}, 1, "A 1 2 1\n  W k1 SEED: s\n  A k2 IN-W: w\n  A k3 IN-A\n  C k4 IN-C: c\n"},
      {0, {"k1", "k2"}, 2, "A 0 1 3\n  A k3 IN-A\n  C k1 SEED: s\n  C k2 IN-W: w\n  C k4 IN-C: c\n"},
      {2, {"k4"}, 0, "A 3 1 0\n  W k1 SEED: s\n  W k2 IN-W: w\n  W k4 IN-C: c\n  A k3 IN-A\n"},
  };
  for (const auto& [list, keys, target, state] : kCases) {
    FakeHost fresh;
    fresh.add(kSeedProgram);
    fresh.run();
    fresh.mark(list, keys);
    fresh.choose("mnuMoveTo", target);
    EXPECT_EQ(fresh.state(), state);
    EXPECT_THAT(fresh.messages(), ElementsAre());
  }
}

TEST_F(Moving, ANullCommentBecomesAnEmptyText) {
  host.mark(1, {"k3"});
  EXPECT_EQ(column("k3", "P_Classification"), "Null");
  host.press("F5");
  EXPECT_EQ(column("k3", "P_Classification") + column("k3", "P_Status"), "'''0'");
}

TEST_F(Moving, TheLastEntryLeavesAnEmptyTabAndItsCommandsOff) {
  host.mark(1, {"k3"});
  host.toolbar("MoveRejected");
  EXPECT_EQ(host.counts(), "A 2 0 2\nB 1 0 0\n");
  EXPECT_FALSE(window.menu("mnuMoveTo", 0).Enabled || window.menu("mnuComment").Enabled ||
               window.menu("mnuDelete").Enabled);
  EXPECT_EQ(host.synonyms(), "");
  EXPECT_EQ(host.captions["Synonyms"], "Synonyms");
}

TEST_F(Moving, TheNextEntryIsFocusedSelectedAndShown) {
  host.mark(0, {"k1"});
  host.press("F6");
  const auto* focused = window.lvList[0]->SelectedItem();
  ASSERT_NE(focused, nullptr);
  EXPECT_EQ(focused->Key(), "k2");
  EXPECT_TRUE(focused->Selected());
  EXPECT_EQ(host.captions["Synonyms"], "Synonyms for variable 'IN-W' - 1 item(s)");
  EXPECT_EQ(host.synonyms(), "[2] k1 SEED: s\n") << "rebuilt after the move, with the new list's icon";
}

TEST_F(Moving, TheIconInTheSynonymsListFollowsWithoutARebuild) {
  host.mark(0, {"k1"});
  host.choose("mnuViewSynonyms"); // hidden: from here on nothing is rebuilt
  host.mark(0, {"k2"});
  host.press("F6");
  EXPECT_EQ(host.synonyms(), "[0] k0 LOOSE: Move of SEED\n[2] k2 IN-W: w\n[2] k3 IN-A: Move of SEED\n[3] k4 IN-C: c\n");
}

struct FromSynonyms {
  std::vector<std::string> keys;
  int target;
  const char* counts;
  const char* rows; ///< of program A that changed
};

// Icon 0, another list, the list that it is in already; the shown text is stored.
TEST(MovingSynonyms, AreByTheirIcon) {
  const FromSynonyms kCases[] = {
      {{"k0"}, 1, "A 2 2 1\n", "  A k0 LOOSE: Move of SEED\n"},
      {{"k4"}, 1, "A 2 2 0\n", "  A k4 IN-C: c\n"},
      {{"k4"}, 2, "A 2 1 1\n", "  C k4 IN-C: c\n"},
      {{"k3"}, 1, "A 2 1 1\n", "  A k3 IN-A: Move of SEED\n"},
      {{"k0", "k2", "k3", "k4"},
       0,
       "A 5 0 0\n",
       "  W k0 LOOSE: Move of SEED\n  W k1 SEED: s\n  W k2 IN-W: w\n  W k3 IN-A: Move of SEED\n  W k4 IN-C: c\n"},
  };
  for (const auto& [keys, target, counts, rows] : kCases) {
    FakeHost host;
    host.add(kSeedProgram);
    host.run();
    host.mark(0, {"k1"});
    ASSERT_EQ(host.synonyms(),
              "[0] k0 LOOSE: Move of SEED\n[1] k2 IN-W: w\n[2] k3 IN-A: Move of SEED\n[3] k4 IN-C: c\n");
    host.mark(3, keys);
    host.choose("mnuMoveTo", target);
    EXPECT_EQ(host.counts(), counts);
    EXPECT_NE(host.state().find(rows), std::string::npos) << host.state();
    for (const auto& key : keys) {
      const auto& row = host.window().lvList[3]->ListItems.Item(key);
      EXPECT_EQ(row.SmallIcon, target + 1);
      EXPECT_TRUE(row.Selected()) << "the entry stays, still selected";
    }
  }
}

// The icons of a hidden pane do not follow the commands over programs.
TEST_F(Moving, FromAHiddenSynonymsListGoesByTheListsThemselves) {
  host.mark(0, {"k1"});
  host.mark(3, {"k4", "k0"});
  host.choose("mnuViewSynonyms");
  host.choose("mnuEditClearList", 2);
  host.press("F6");
  EXPECT_THAT(host.messages(), ElementsAre());
  EXPECT_EQ(stateOfA(),
            "A 2 3 0\n  W k1 SEED: s\n  W k2 IN-W: w\n  A k0 LOOSE: Move of SEED\n  A k3 IN-A\n  A k4 IN-C: c\n");
}

// The walk runs from the last entry up: k2 is moved, the row of k1 refuses.
TEST_F(Moving, AFailingRowKeepsScreenCountsAndDatabaseInStep) {
  host.database("A")->Execute("create trigger full before update on Constructs when old.KVID = 'k1' begin "
                              "select raise(abort, 'the disk is full'); end");
  host.mark(0, {"k1", "k2"});
  host.press("F6");
  const auto told = host.messages();
  ASSERT_EQ(told.size(), 1u);
  EXPECT_NE(told[0].find("the disk is full"), std::string::npos);
  EXPECT_EQ(stateOfA(), "A 1 2 1\n  W k1 SEED: s\n  A k2 IN-W: w\n  A k3 IN-A\n  C k4 IN-C: c\n");
  EXPECT_TRUE(window.Enabled());
}

TEST_F(Moving, ARowThatHasGoneIsToldAndNothingElseChanges) {
  host.mark(1, {"k3"});
  host.database("A")->Execute("delete from Constructs where KVID = 'k3'");
  host.press("F5");
  EXPECT_EQ(host.messages().size(), 1u);
  EXPECT_EQ(host.counts(), "A 2 1 1\nB 1 0 0\n");
  EXPECT_NE(window.lvList[1]->ListItems.find("k3"), nullptr);
}

TEST_F(Moving, PutsTheWorkspaceBackOnTheShownProgram) {
  host.mark(0, {"k2"});
  window.LoadingLists = true; // the workspace moves on while the window is not listening
  host.workspace->setCurrentProgram("B");
  window.LoadingLists = window.ReloadPending = false;
  host.press("F6");
  EXPECT_EQ(host.workspace->CurrentProgram(), "A");
  EXPECT_EQ(host.counts(), "A 1 2 1\nB 1 0 0\n");
}

} // namespace
} // namespace tarnsift_test
