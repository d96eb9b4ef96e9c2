#include "tarnsift/fake_host.hpp"
#include "tarnsift/search/synonym_view.hpp"

namespace tarnsift_test {
namespace {

constexpr const char* kRedefines = "//BOOL[@NAME='Redefines']";
constexpr const char* kAllRedefines = "//BOOL[@NAME='ViewAllRedefines']";

/// k1 is the name asked about: relations both ways, one with itself, one of a kind that is off, a FILLER; ranges equal,
/// over and beside it.
const Program kProgram = {
    .id = "A",
    .constructs = "k1 SEED 10 4 W\n k2 BOTH 10 4 -\n k3 NOTED 0 2 A own words\n k4 filler 10 4 -\n k5 OVER 12 8 C\n"
                  " k6 BESIDE 14 4 -\n k7 EMPTY 10 0 W\n k8 INSIDE 11 0 -\n k9 OFF 0 2 -\n",
    .relations =
        "k3 Move k1\n k2 Compare k1\n k1 Move k2\n k1 Move k1\n k1 Move k4\n k1 Other k9\n k7 Move k9\n k2 Move k1\n",
    .places = {{"k1", {"f:1:1"}}, {"k3", {"f:2:1"}}}};

class SynonymView : public ::testing::Test {
 protected:
  void open(const char* redefines = "false", const char* all = "false") {
    host.add(kProgram);
    host.setOption("//CASE[@NAME='Compare']", "true", "CHECKED");
    host.setOption(kRedefines, redefines);
    host.setOption(kAllRedefines, all);
    host.run();
  }
  std::string caption() { return host.captions["Synonyms"]; }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

// Side 1 first, then side 2, then redefinitions; a stored comment stands alone.
TEST_F(SynonymView, ShowsTheRelativesInTheOrderOfTheWays) {
  open("true");
  EXPECT_EQ(host.synonyms(), "[0] k2 BOTH: Move of SEED; Compare of SEED; redef of SEED\n[2] k3 NOTED: own words\n");
  EXPECT_EQ(caption(), "Synonyms for variable 'SEED' - 2 item(s)");
}

TEST_F(SynonymView, ShowsOverlapsButNotWhatMerelyTouches) {
  open("true", "true");
  EXPECT_EQ(host.synonyms(), "[0] k2 BOTH: Move of SEED; Compare of SEED; redef of SEED\n[2] k3 NOTED: own words\n"
                             "[3] k5 OVER: redef of SEED\n[0] k8 INSIDE: redef of SEED\n");
  host.mark(0, {"k7"});
  EXPECT_EQ(host.synonyms(), "[0] k9 OFF: Move of EMPTY\n") << "a seed of size 0 has no redefinitions";
}

TEST_F(SynonymView, WithoutRedefinitionsAllOfThemAreOff) {
  open("false", "true");
  EXPECT_EQ(host.synonyms(), "[0] k2 BOTH: Move of SEED; Compare of SEED\n[2] k3 NOTED: own words\n");
}

TEST_F(SynonymView, AClickInItMovesTheViewerAndNothingElse) {
  open();
  const std::string before = host.synonyms() + caption();
  host.mark(3, {"k3"});
  EXPECT_EQ(host.currentObject, "k3");
  EXPECT_EQ(host.synonyms() + caption(), before);
  host.mark(3, {});
  EXPECT_EQ(host.synonyms() + caption(), before) << "nothing selected in it changes nothing";
  window.tsLists.select(2);
  host.mark(1, {});
  EXPECT_EQ(host.synonyms() + caption(), "Synonyms") << "nothing selected in a tab empties it";
}

TEST_F(SynonymView, AHiddenPaneKeepsItsRowsAndIsFilledWhenItComesBack) {
  open();
  const std::string before = host.synonyms() + caption();
  host.choose("mnuViewSynonyms");
  host.mark(1, {"k3"});
  EXPECT_EQ(host.currentObject, "k3");
  EXPECT_EQ(host.synonyms() + caption(), before);
  host.choose("mnuViewSynonyms");
  EXPECT_EQ(host.synonyms(), "[1] k1 SEED: Move of NOTED\n");
  EXPECT_EQ(caption(), "Synonyms for variable 'NOTED' - 1 item(s)");
}

// Refreshed from the list of the tab while the Synonyms list is in front.
TEST_F(SynonymView, ARefreshGoesByTheTab) {
  open();
  host.mark(3, {"k2"});
  host.database("A")->Execute("update Constructs set P_Classification = 'later' where KVID = 'k2'");
  tarnsift::RefreshSynonymsPane(window);
  EXPECT_EQ(host.synonyms(), "[0] k2 BOTH: later\n[2] k3 NOTED: own words\n");
}

TEST_F(SynonymView, FollowsTheOptionsWhenTheyAreSaved) {
  open();
  host.setOption(kRedefines, "true");
  host.setOption("//CASE[@NAME='Compare']", "false", "CHECKED");
  host.choose("mnuViewOptions");
  EXPECT_EQ(host.synonyms(), "[0] k2 BOTH: Move of SEED; redef of SEED\n[2] k3 NOTED: own words\n");
}

// The rows that a command over programs took away belonged to the list in front.
TEST_F(SynonymView, InFrontAndEmptiedItsCommandsGoOff) {
  open();
  host.mark(3, {"k2"});
  ASSERT_TRUE(window.menu("mnuSelect").Enabled);
  host.choose("mnuEditClearAll");
  EXPECT_EQ(host.synonyms(), "");
  EXPECT_FALSE(window.menu("mnuSelect").Enabled || window.menu("mnuMoveTo", 1).Enabled ||
               window.menu("mnuComment").Enabled);
}

} // namespace
} // namespace tarnsift_test
