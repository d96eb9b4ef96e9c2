#include "tarnsift/fake_host.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

class ListLoad : public ::testing::Test {
 protected:
  ListLoad() {
    host.add(
        {.id = "A", .constructs = "k1 CUST-NO 0 4 W first\n k2 CUST-KEY 4 6 A\n k3 CUST-NAME 4 6 -\n k4 ZIP 4 6 W\n"});
    host.add({.id = "B", .constructs = "k1 TOTAL 0 4 C done\n"});
    host.add({.id = "C", .constructs = "k1 OTHER 0 4 -\n"});
  }
  std::string selected() {
    std::string text;
    for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i)
      if (const auto& row = window.lvPrograms.ListItems.Item(i); row.Selected()) text += row.Key();
    return text;
  }
  /// Counts the loads.
  int loadsDuring(const std::function<void()>& action) {
    int loads = 0;
    std::string last;
    auto& bar = window.pbProgress;
    bool shown = bar.Visible();
    bar.Changed.connect([&] {
      if (bar.Visible() && !shown) ++loads;
      shown = bar.Visible();
    });
    action();
    bar.Changed.clear();
    return loads;
  }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

TEST_F(ListLoad, EachNameStandsOnceInTheListOfItsStatus) {
  host.run();
  EXPECT_EQ(host.entries(), "  W k1 CUST-NO: first\n  W k4 ZIP\n  A k2 CUST-KEY\n");
  EXPECT_EQ(window.lvList[0]->SelectedItem()->Key(), "k1") << "the first entry of the list in front is focused";
  EXPECT_EQ(window.lvList[0]->visibleRow(), window.lvList[0]->SelectedItem());
  EXPECT_EQ(window.lvList[1]->SelectedItem(), nullptr);
}

TEST_F(ListLoad, AClickOnAnotherProgramLoadsItAndTheTabStays) {
  host.run();
  window.tsLists.select(3);
  host.click("B");
  EXPECT_EQ(host.entries(), "  C k1 TOTAL: done\n");
  EXPECT_EQ(window.LoadedProgram, "B");
  EXPECT_EQ(selected(), "B");
  EXPECT_EQ(window.ActiveList, 2);
  EXPECT_EQ(window.lvList[2]->SelectedItem()->Key(), "k1");
  EXPECT_TRUE(window.Enabled());
}

TEST_F(ListLoad, AProgramWithoutClassifiedNamesShowsEmptyLists) {
  host.run();
  host.captions["Synonyms"] = "Synonyms for variable 'X' - 3 item(s)";
  host.click("C");
  EXPECT_EQ(host.entries(), "");
  EXPECT_EQ(host.captions["Synonyms"], "Synonyms");
}

TEST_F(ListLoad, AClickOnTheCurrentProgramLoadsNothing) {
  host.run();
  EXPECT_EQ(loadsDuring([&] { host.click("A"); }), 0);
  EXPECT_EQ(loadsDuring([&] { host.click("B"); }), 1);
}

TEST_F(ListLoad, MarkingFurtherProgramsLoadsNothing) {
  host.run();
  auto& programs = window.lvPrograms;
  programs.setSelectedItem(&programs.ListItems.Item("B"));
  for (const int shift : {platform::kShift, platform::kCtrl})
    programs.MouseUp.raise(platform::kLeftButton, shift, 0, 0);
  EXPECT_EQ(window.LoadedProgram, "A");
  EXPECT_EQ(selected(), "AB");
  programs.MouseUp.raise(platform::kRightButton, platform::kCtrl, 0, 0);
  EXPECT_EQ(window.LoadedProgram, "B") << "a right click chooses whatever is held";
  EXPECT_EQ(selected(), "AB") << "a row that was selected keeps the selection round it";
  programs.setSelectedItem(&programs.ListItems.Item("A"));
  programs.KeyUp.raise(platform::kKeyReturn, platform::kNoShift);
  EXPECT_EQ(window.LoadedProgram, "A");
}

TEST_F(ListLoad, AProgramChosenElsewhereClearsTheSelection) {
  host.run();
  window.lvPrograms.ListItems.Item("B").setSelected(true);
  host.workspace->setCurrentProgram("C");
  EXPECT_EQ(selected(), "C");
  EXPECT_EQ(window.lvPrograms.SelectedItem()->Key(), "C");
}

struct Change {
  std::vector<std::string> programs; ///< chosen one after the other while B is loaded
  std::string loaded;
  int loads;
};

TEST_F(ListLoad, AChangeOfProgramDuringALoadIsServedAfterIt) {
  for (const auto& [programs, loaded, loads] :
       {Change{{"C"}, "C", 2}, Change{{"C", "A"}, "A", 2}, Change{{"C", "B"}, "B", 1}}) {
    host.run();
    window.tsLists.select(3);
    // The window is enabled again when the load lets events through for the second time.
    int pending = 0;
    host.screen.onPendingEvents = [&] {
      if (++pending != 2) return;
      for (const auto& program : programs)
        host.workspace->setCurrentProgram(program);
      EXPECT_EQ(window.LoadedProgram, "B");
    };
    EXPECT_EQ(loadsDuring([&] { host.click("B"); }), loads);
    host.screen.onPendingEvents = nullptr;
    EXPECT_EQ(window.LoadedProgram, loaded);
    host.state();
    EXPECT_FALSE(window.LoadingLists);
  }
}

TEST_F(ListLoad, ARowThatCannotBeReadEndsTheLoadWithWhatWasRead) {
  host.run();
  host.database("A")->Execute("update Constructs set P_Status = 7 where KVID = 'k3'");
  host.click("B");
  host.click("A");
  EXPECT_THAT(host.messages(), ElementsAre("16||Fail to load lists for program A"));
  EXPECT_EQ(host.entries(), "  W k1 CUST-NO: first\n  A k2 CUST-KEY\n");
  EXPECT_TRUE(window.Enabled() && !window.LoadingLists && !window.pbProgress.Visible());
  EXPECT_EQ(window.MousePointer, platform::kPointerDefault);
}

TEST_F(ListLoad, AProgramThatCannotBeOpenedShowsNoEntriesOfTheOneBefore) {
  host.run();
  host.brokenStores = {"B"};
  host.click("B");
  EXPECT_THAT(host.messages(), ElementsAre("16||Fail to load lists for program B"));
  EXPECT_EQ(host.entries(), "");
  EXPECT_EQ(host.activity, "B: B is broken\n");
  EXPECT_TRUE(window.Enabled() && !window.LoadingLists);
  host.click("A");
  EXPECT_EQ(host.entries(), "  W k1 CUST-NO: first\n  W k4 ZIP\n  A k2 CUST-KEY\n");
}

TEST_F(ListLoad, AFailureIsNotToldWhenTheAnalystHasMovedOn) {
  host.run();
  host.database("B")->Execute("update Constructs set P_Status = 7");
  int pending = 0;
  host.screen.onPendingEvents = [&] {
    if (++pending == 1) host.workspace->setCurrentProgram("C");
  };
  host.click("B");
  EXPECT_THAT(host.messages(), ElementsAre());
  EXPECT_EQ(window.LoadedProgram, "C");
}

} // namespace
} // namespace tarnsift_test
