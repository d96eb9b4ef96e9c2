#include "tarnsift/fake_host.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;

class Selection : public ::testing::Test {
 protected:
  Selection() {
    host.add({.id = "A", .constructs = "k1 CUST-NO 0 4 W\n k2 AMOUNT 4 6 W\n k3 CUST-NAME 4 6 C\n k4 ZIP 4 6 C\n"});
    host.run();
    host.takeLog();
  }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

TEST_F(Selection, ATabBringsItsListToTheFront) {
  window.tsLists.select(3);
  EXPECT_EQ(window.ActiveList, 2);
  EXPECT_EQ(host.activePane, "Lists");
  EXPECT_TRUE(window.lvList[2]->Visible() && !window.lvList[0]->Visible() && !window.lvList[1]->Visible());
  EXPECT_EQ(window.lvList[2]->SelectedItem()->Key(), "k3");
  EXPECT_TRUE(window.lvList[2]->SelectedItem()->Selected());
  EXPECT_EQ(window.ActiveControl, window.lvList[2]);
}

TEST_F(Selection, ATabWithAnEmptyListIsNoFailure) {
  window.tsLists.select(2);
  EXPECT_EQ(window.ActiveList, 1);
  EXPECT_EQ(window.lvList[1]->SelectedItem(), nullptr);
  EXPECT_THAT(host.messages(), ElementsAre());
}

TEST_F(Selection, TheFocusActivatesThePane) {
  const std::vector<std::pair<platform::Control*, std::string>> kCases = {{&window.lvPrograms, "Programs 0"},
                                                                          {window.lvList[1], "Lists 1"},
                                                                          {window.lvList[3], "Synonyms 3"},
                                                                          {&window.tsLists, "Lists 3"},
                                                                          {window.lvList[0], "Lists 0"}};
  window.ActiveControl = nullptr;
  for (const auto& [control, expected] : kCases) {
    host.activePane.clear();
    control->setVisible(true);
    control->SetFocus();
    EXPECT_EQ(host.activePane + " " + std::to_string(window.ActiveList), expected);
  }
}

TEST_F(Selection, TheEditMenuPopsUp) {
  auto& list = *window.lvList[0];
  list.KeyUp.raise(platform::kKeyF10, platform::kNoShift);
  list.KeyUp.raise(platform::kKeyF10, platform::kCtrl);
  list.MouseUp.raise(platform::kLeftButton, platform::kNoShift, 0, 0);
  EXPECT_THAT(host.screen.popups, ElementsAre());
  list.KeyUp.raise(platform::kKeyF10, platform::kShift);
  list.MouseUp.raise(platform::kRightButton, platform::kNoShift, 0, 0);
  EXPECT_THAT(host.screen.popups, ElementsAre("mnuEdit", "mnuEdit"));
}

TEST_F(Selection, AColumnClickSortsTheFourListsTogether) {
  window.lvList[2]->ColumnClick.raise(1);
  EXPECT_EQ(host.takeLog(), "sort lvList 0 by 1\nsort lvList 1 by 1\nsort lvList 2 by 1\nsort lvList 3 by 1\n");
  EXPECT_EQ(host.entries(), "  W k2 AMOUNT\n  W k1 CUST-NO\n  C k3 CUST-NAME\n  C k4 ZIP\n");
  window.lvPrograms.ColumnClick.raise(2);
  EXPECT_EQ(host.takeLog(), "sort lvPrograms -1 by 2\n");
}

} // namespace
} // namespace tarnsift_test
