#include "tarnsift/fake_host.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

Program programNamed(const char* id) {
  return {.id = id,
          .constructs =
              "k0 LOOSE 0 4 -  kept\n k1 SEED 4 4 W s\n k2 USED 8 4 W u\n k3 TWICE 12 4 A a\n k4 BARE 16 4 W\n"
              " k5 UNKNOWN 20 4 W x\n k6 BARE-C 24 4 C\n",
          .relations = "k1 Move k2\n k1 Move k4\n",
          .places = {{"k1", {"f:1:1", "f:2:1"}},
                     {"k2", {"f:1:1", "f:3:1"}},
                     {"k3", {"f:1:1"}},
                     {"k4", {"f:1:1"}},
                     {"k6", {"f:1:1"}}}};
}
constexpr const char* kBefore =
    "  W k1 SEED: s\n  W k2 USED: u\n  W k4 BARE\n  W k5 UNKNOWN: x\n  A k3 TWICE: a\n  C k6 BARE-C\n";

class Removing : public ::testing::Test {
 protected:
  Removing() {
    for (const char* id : {"A", "B"})
      host.add(programNamed(id));
    host.run();
    host.takeLog();
  }
  std::string comment(const std::string& program, const std::string& key) {
    const auto row = host.database(program)->OpenRecordset("select * from Constructs where KVID = '" + key + "'");
    return row->Field("P_Classification").isNull() ? "Null" : row->Field("P_Classification").asText();
  }
  void applySelected(const std::vector<std::string>& programs) {
    host.setOption("//BOOL[@NAME='ApplySelected']", "true");
    host.choose("mnuViewOptions");
    window.lvPrograms.selectAll(false);
    for (const auto& program : programs)
      window.lvPrograms.ListItems.Item(program).setSelected(true);
  }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

TEST_F(Removing, DeleteAsksWithTheNumberAndTakesNamesAndComments) {
  host.mark(0, {"k1"});
  ASSERT_EQ(host.synonyms(), "[1] k2 USED: u\n[1] k4 BARE: Move of SEED\n");
  for (const char* key : {"k1", "k2", "k4"})
    window.lvList[0]->ListItems.Item(key).setSelected(true);
  // The icon goes at once: the focus stays on an entry whose pane is not rebuilt here.
  host.choose("mnuViewSynonyms");
  host.screen.answers = {platform::Answer::Ok};
  host.press("Del");
  EXPECT_THAT(host.messages(), ElementsAre("1||You are about to delete 3 dataname(s). Continue?"));
  EXPECT_EQ(host.state(),
            std::string("A 1 1 1\n  W k5 UNKNOWN: x\n  A k3 TWICE: a\n  C k6 BARE-C\nB 4 1 1\n") + kBefore);
  EXPECT_EQ(host.synonyms(), "[0] k2 USED: u\n[0] k4 BARE: Move of SEED\n");
  EXPECT_EQ(comment("A", "k1"), "Null") << "the row stays, without its comment";
  EXPECT_EQ(window.lvList[0]->SelectedItem()->Key(), "k5");
  EXPECT_TRUE(window.lvList[0]->SelectedItem()->Selected());
}

TEST_F(Removing, DeleteChangesNothingWhenCancelledUnmarkedOrInTheSynonymsList) {
  const std::string before = host.state();
  host.mark(0, {"k1", "k2"});
  host.screen.answers = {platform::Answer::Cancel};
  host.toolbar("Delete");
  EXPECT_THAT(host.messages(), ElementsAre("1||You are about to delete 2 dataname(s). Continue?"));
  window.lvList[0]->selectAll(false);
  host.press("Del");
  host.mark(3, {"k2"});
  host.press("Del");
  host.toolbar("Delete");
  EXPECT_THAT(host.messages(), ElementsAre()) << "no question is asked";
  EXPECT_EQ(host.state(), before);
}

TEST_F(Removing, ADeleteThatFailsCountsWhatWent) {
  host.database("A")->Execute("create trigger full before update on Constructs when old.KVID = 'k2' begin "
                              "select raise(abort, 'the disk is full'); end");
  host.mark(0, {"k1", "k2", "k4"});
  host.screen.answers = {platform::Answer::Ok};
  host.press("Del");
  EXPECT_EQ(host.messages().size(), 2u);
  EXPECT_EQ(host.counts(), "A 3 1 1\nB 4 1 1\n");
  host.state();
}

TEST(Clearing, ReachesTheProgramsInScope) {
  const std::string all = kBefore;
  const std::string noWorking = "0 1 1\n  A k3 TWICE: a\n  C k6 BARE-C\n";
  const std::string noClean = "4 1 0\n" + all.substr(0, all.find("  C"));
  const struct {
    int list;
    std::vector<std::string> selected;
    std::string state;
  } kCases[] = {
      {0, {}, "A " + noWorking + "B " + noWorking},
      {2, {"B"}, "A 4 1 1\n" + all + "B " + noClean}, // the lists on the screen are not B's
      {0, {"A"}, "A " + noWorking + "B 4 1 1\n" + all},
      {-1, {"B"}, "A 4 1 1\n" + all + "B 0 0 0\n"},
      {-1, {}, "A 0 0 0\nB 0 0 0\n"},
  };
  for (const auto& [list, selected, state] : kCases) {
    FakeHost fresh;
    for (const char* id : {"A", "B"})
      fresh.add(programNamed(id));
    if (!selected.empty()) fresh.setOption("//BOOL[@NAME='ApplySelected']", "true");
    fresh.run();
    fresh.window().lvPrograms.selectAll(false);
    for (const auto& program : selected)
      fresh.window().lvPrograms.ListItems.Item(program).setSelected(true);
    list < 0 ? fresh.choose("mnuEditClearAll") : fresh.choose("mnuEditClearList", list);
    EXPECT_EQ(fresh.state(), state);
    EXPECT_THAT(fresh.messages(), ElementsAre());
    EXPECT_FALSE(fresh.window().pbProgress.Visible());
  }
}

TEST_F(Removing, ClearAllTakesTheCommentsOfNamesInNoListToo) {
  host.choose("mnuEditClearList", 0);
  EXPECT_EQ(comment("A", "k0") + comment("A", "k3") + comment("A", "k2"), "kepta"
                                                                          "Null");
  host.choose("mnuEditClearAll");
  EXPECT_EQ(comment("A", "k0") + comment("B", "k0"), "NullNull");
}

// The loaded program is cleared before the other one turns out to be damaged.
TEST_F(Removing, AClearThatFailsOnALaterProgramHasClearedTheScreenOfTheFirst) {
  host.database("B")->Execute(
      "create trigger full before update on Constructs begin select raise(abort, 'the disk is full'); end");
  host.choose("mnuEditClearList", 0);
  EXPECT_EQ(host.messages().size(), 1u);
  EXPECT_EQ(host.state(), std::string("A 0 1 1\n  A k3 TWICE: a\n  C k6 BARE-C\nB 4 1 1\n") + kBefore);
  EXPECT_TRUE(window.Enabled() && !window.pbProgress.Visible());
}

TEST_F(Removing, UnusedNamesGoAndWhatTheAnalysisDoesNotKnowStays) {
  const std::string after =
      "3 1 1\n  W k1 SEED: s\n  W k2 USED: u\n  W k5 UNKNOWN: x\n  A k3 TWICE: a\n  C k6 BARE-C\n";
  for (int time = 0; time < 2; ++time) {
    host.choose("mnuFileRemoveUnused", 0);
    EXPECT_EQ(host.state(), "A " + after + "B " + after) << "the second time changes nothing";
  }
  EXPECT_NE(host.takeLog().find("store B as COBOL-store"), std::string::npos);
}

TEST_F(Removing, UnusedInAnotherProgramLeavesTheScreenAlone) {
  applySelected({"B"});
  host.choose("mnuFileRemoveUnused", 2);
  EXPECT_EQ(host.counts(), "A 4 1 1\nB 4 1 0\n");
  EXPECT_EQ(host.entries().find("  C k6"), host.entries().rfind("  C"));
  host.state();
}

TEST_F(Removing, AStoreThatCannotBeOpenedEndsTheCommandWithTrueCounts) {
  host.brokenStores = {"B"};
  host.choose("mnuFileRemoveUnused", 0);
  EXPECT_THAT(host.messages(), ElementsAre("16|Tarnsift|B is broken"));
  EXPECT_EQ(host.counts(), "A 3 1 1\nB 4 1 1\n");
  host.state();
  EXPECT_TRUE(window.Enabled());
}

} // namespace
} // namespace tarnsift_test
