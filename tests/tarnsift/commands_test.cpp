#include "tarnsift/fake_host.hpp"
#include "tarnsift/workbench/commands.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Commands : public ::testing::Test {
 protected:
  Commands() {
    host.add({.id = "A", .constructs = "k1 CUST 0 4 W\n k2 ZIP 4 4 W\n k3 SUM 8 4 C\n", .relations = "k1 Move k3\n"});
    host.add({.id = "B", .constructs = "k1 CUST 0 4 -\n"});
    host.run();
    host.takeLog();
  }
  /// Move to 0, 1, 2, Comment, Select, Select All, Delete; the buttons must say the same.
  std::string states() {
    std::string text;
    const auto add = [&](bool on) { text += on ? '1' : '0'; };
    for (int i = 0; i < 3; ++i)
      add(window.menu("mnuMoveTo", i).Enabled);
    for (const char* name : {"mnuComment", "mnuSelect", "mnuSelectAll", "mnuDelete"})
      add(window.menu(name).Enabled);
    std::string buttons;
    for (const char* key : {"MoveWorking", "MoveAccepted", "MoveRejected", "Note", "Delete"})
      buttons += window.tbToolbar.Button(key).Enabled ? '1' : '0';
    EXPECT_EQ(buttons, text.substr(0, 4) + text.back()) << "the buttons differ from the menus";
    return text;
  }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

TEST_F(Commands, EveryEntryHasAHandler) {
  for (const auto& entry : tarnsift::menuEntries()) {
    const bool isMenu = !window.menu(entry.name, entry.index).Children.empty();
    EXPECT_EQ(entry.handler != nullptr, !isMenu && entry.caption != 0) << entry.name;
  }
}

struct State {
  const char* what;
  int list;                         ///< -1: the programs pane has the focus
  std::vector<std::string> entries; ///< that are selected; none: no entry has the focus
  bool empty;                       ///< the list is emptied before
  const char* states;
};

TEST_F(Commands, AreOnByThePaneTheListAndItsEntry) {
  const State kCases[] = {
      {"programs", -1, {}, false, "0000000"},         {"empty tab", 1, {}, true, "0000000"},
      {"tab without focus", 0, {}, false, "0000111"}, {"Working", 0, {"k1"}, false, "0111111"},
      {"Clean", 2, {"k3"}, false, "1101111"},         {"Synonyms without focus", 3, {}, false, "0000110"},
      {"Synonyms", 3, {"k3"}, false, "1111110"},      {"empty Synonyms", 3, {}, true, "0000000"},
  };
  for (const auto& [what, list, entries, empty, expected] : kCases) {
    host.mark(0, {"k1"});
    if (empty) window.lvList[static_cast<std::size_t>(list)]->ListItems.Clear();
    if (list < 0) {
      window.lvPrograms.SetFocus();
    } else {
      host.mark(list, entries);
    }
    EXPECT_EQ(states(), expected) << what;
  }
}

TEST_F(Commands, OfTheListAreOutOfReachWhileTheProgramsHaveTheFocus) {
  host.mark(0, {"k1"});
  const std::string before = host.state();
  window.lvPrograms.SetFocus();
  host.screen.answers = {platform::Answer::Ok};
  for (const char* key : {"F5", "F6", "F8", "Del"})
    host.press(key);
  host.toolbar("MoveAccepted");
  host.toolbar("Delete");
  EXPECT_EQ(host.state(), before);
  EXPECT_THAT(host.messages(), IsEmpty());
}

// Whatever takes the focus from the programs gives the commands back, without a list getting it.
TEST_F(Commands, ComeBackWhenAnotherPaneIsInUse) {
  for (const bool source : {true, false}) {
    host.mark(0, {"k1"});
    window.lvPrograms.SetFocus();
    ASSERT_EQ(states(), "0000000");
    source ? host.source->SetFocus() : window.tsLists.SetFocus();
    EXPECT_EQ(states(), "0111111") << source;
    EXPECT_EQ(window.ActiveList, 0);
  }
}

TEST_F(Commands, AProgramWithoutNamesLeavesThemOff) {
  host.mark(0, {"k1"});
  host.click("B");
  EXPECT_EQ(states(), "0000000");
}

TEST_F(Commands, EachButtonRunsItsCommand) {
  host.mark(0, {"k1"});
  host.newComment = "noted";
  host.toolbar("Note");
  host.toolbar("MoveRejected");
  EXPECT_EQ(host.entries(), "  W k2 ZIP\n  C k3 SUM\n  C k1 CUST: noted\n");
  host.toolbar("MoveAccepted");
  host.mark(1, {"k2"});
  host.toolbar("MoveWorking");
  EXPECT_EQ(host.counts(), "A 1 0 2\nB 0 0 0\n");
}

TEST_F(Commands, PopUpsOpenUnderTheirButtons) {
  host.toolbar("Search");
  host.toolbar("Report");
  EXPECT_THAT(host.screen.popups, ElementsAre("mnuFileSearch", "mnuFileReport"));
  for (std::size_t i = 0; i < 2; ++i) {
    EXPECT_EQ(host.screen.places[i].first, window.tbToolbar.Button(i ? "Report" : "Search").Left);
    EXPECT_EQ(host.screen.places[i].second, window.tbToolbar.Height);
  }
}

TEST_F(Commands, AfterAClickOnTheToolbarThePaneFollowsTheWorkspace) {
  window.lvPrograms.setSelectedItem(&window.lvPrograms.ListItems.Item("B")); // marked, not chosen
  host.toolbar("Options");
  EXPECT_EQ(window.lvPrograms.SelectedItem()->Key(), "A");
  EXPECT_TRUE(window.lvPrograms.ListItems.Item("B").Selected());
  window.LoadingLists = true; // the workspace moves to a program that the pane does not list
  host.workspace->setCurrentProgram("elsewhere");
  window.LoadingLists = window.ReloadPending = false;
  host.toolbar("Options");
  EXPECT_EQ(window.lvPrograms.SelectedItem()->Key(), "A");
  EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(Commands, ApplySelectedIsReadWhenTheOptionsAreSaved) {
  host.setOption("//BOOL[@NAME='ApplySelected']", "true");
  EXPECT_FALSE(window.ApplySelected);
  host.toolbar("Options");
  EXPECT_TRUE(window.ApplySelected);
}

TEST_F(Commands, BetweenTwoSessionsTheWindowDoesNothing) {
  host.close();
  window.tsLists.select(2);
  window.lvList[0]->GotFocus.raise();
  window.lvPrograms.GotFocus.raise();
  window.lvList[3]->MouseUp.raise(platform::kLeftButton, platform::kNoShift, 0, 0);
  for (const char* menu : {"mnuEditClearAll", "mnuViewSource", "mnuSelectAll", "mnuViewOptions"})
    host.choose(menu);
  host.toolbar("Delete");
  int code = platform::kKeyF5;
  window.KeyDown.raise(code, 0);
  EXPECT_THAT(host.messages(), IsEmpty());
}

} // namespace
} // namespace tarnsift_test
