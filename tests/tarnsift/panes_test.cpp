#include <sstream>

#include "platform/runtime/text.hpp"
#include "tarnsift/fake_host.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift_test {
namespace {

class Panes : public ::testing::Test {
 protected:
  Panes() {
    host.add({.id = "A", .constructs = "k1 CUST 0 4 W\n k2 ZIP 4 4 A\n", .relations = "k1 Move k2\n"});
    host.run();
    host.workspace->Height = 600;
    host.splitter->Arrange();
  }
  ~Panes() override {
    window.Width = 15360, window.Height = 11520;
    window.ScaleWidth = 15240, window.ScaleHeight = 10800;
    window.Minimized = false;
  }
  template<typename C>
  static std::string at(const C& control) {
    std::ostringstream text;
    text << control.Left << " " << control.Top << " " << control.Width << " " << control.Height
         << (control.Visible() ? "" : " hidden");
    return text.str();
  }
  /// Names of the lists that show, the tabs, the Synonyms list and so on.
  std::string shown() {
    std::string text;
    for (std::size_t i = 0; i < 4; ++i)
      if (window.lvList[i]->Visible()) text += std::to_string(i);
    if (window.tsLists.Visible()) text += " tabs";
    if (window.lvPrograms.Visible()) text += " programs";
    if (host.source->Visible() && host.workspace->Visible()) text += " source";
    for (const char* pane : {"Programs", "Lists", "Source", "Synonyms"})
      if (window.menu(std::string("mnuView") + pane).Checked) text += std::string(" ") + pane[0] + pane[1];
    return text;
  }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

TEST_F(Panes, ByDefaultTheControlsFillThem) {
  EXPECT_EQ(at(window.lvPrograms), "0 420 7620 7200");
  EXPECT_EQ(at(window.tsLists), "7620 420 7620 4800");
  EXPECT_EQ(at(*window.lvList[0]), "7665 750 7530 4425");
  EXPECT_EQ(at(*window.lvList[1]), "7665 750 7530 4425 hidden");
  EXPECT_EQ(at(*window.lvList[2]), "7665 750 7530 4425 hidden");
  EXPECT_EQ(at(*window.lvList[3]), "7620 5220 7620 2400");
  EXPECT_EQ(at(*host.workspace), "0 7620 15240 600") << "the workspace's bar keeps its height";
  EXPECT_EQ(at(*host.source), "0 8220 15240 2580");
  EXPECT_EQ(shown(), "03 tabs programs source Pr Li So Sy");
}

TEST_F(Panes, ASmallWindowSnapsBack) {
  window.Width = 1000, window.ScaleWidth = 880;
  window.Height = 2000, window.ScaleHeight = 1280;
  window.Minimized = true;
  window.Resize.raise();
  EXPECT_EQ(window.Width, 1000) << "a minimized one stays";
  window.Minimized = false;
  window.Resize.raise();
  EXPECT_EQ(window.Width, 3000);
  EXPECT_EQ(window.Height, 3000);
  EXPECT_EQ(window.tsLists.Height, 1860) << "the inner height less the bar";
}

TEST_F(Panes, ATooLowTabStripAndSourcePaneLeaveHeightsOfNought) {
  host.splitter->Arrange(0, 420, 15240, 419);
  EXPECT_EQ(window.tsLists.Height, 419);
  EXPECT_EQ(window.lvList[0]->Height, 0);
  EXPECT_EQ(host.source->Height, 0);
  EXPECT_EQ(host.workspace->Height, 600);
  host.splitter->Arrange(0, 420, 15240, 420);
  EXPECT_EQ(window.lvList[0]->Height, 45);
}

TEST_F(Panes, TheProgressBandPushesThemDown) {
  tarnsift::StartProgress(window, "Loading", 1);
  EXPECT_EQ(window.lvPrograms.Top, 840);
  tarnsift::FinishProgress(window);
  EXPECT_EQ(window.lvPrograms.Top, 420);
}

struct Toggle {
  const char* menu;
  const char* hidden; ///< what then shows
};

TEST_F(Panes, TheViewCommandsHideAndShowThem) {
  window.tsLists.select(2);
  for (const auto& [menu, hidden] : {Toggle{"mnuViewPrograms", "13 tabs source Li So Sy"},
                                     {"mnuViewLists", "3 programs source Pr So Sy"},
                                     {"mnuViewSource", "13 tabs programs Pr Li Sy"},
                                     {"mnuViewSynonyms", "1 tabs programs source Pr Li So"}}) {
    host.choose(menu);
    EXPECT_EQ(shown(), hidden);
    host.choose(menu);
    EXPECT_EQ(shown(), "13 tabs programs source Pr Li So Sy");
  }
}

TEST_F(Panes, TheCheckMarkWaitsForTheSplitter) {
  host.splitter->setRedraw(false);
  host.choose("mnuViewSource");
  EXPECT_TRUE(window.menu("mnuViewSource").Checked);
  host.splitter->setRedraw(true);
  host.splitter->Arrange();
  EXPECT_FALSE(window.menu("mnuViewSource").Checked);
}

// One that cannot be placed does not keep the others from following.
TEST_F(Panes, EachFollowsWhateverAnotherDoes) {
  platform::classes::unregisterObject("MathTools");
  host.choose("mnuViewSynonyms");
  EXPECT_EQ(shown(), "0 tabs programs source Pr Li So");
}

struct Activated {
  platform::Control* inUse;
  const char* pane;
  platform::Control* then;
};

TEST_F(Panes, AnActivePaneGivesItsControlTheFocus) {
  const Activated kCases[] = {
      {window.lvList[0], "Programs", &window.lvPrograms}, {&window.lvPrograms, "Lists", &window.tsLists},
      {window.lvList[0], "Lists", window.lvList[0]},      {window.lvList[3], "Lists", window.lvList[3]},
      {&window.tsLists, "Synonyms", window.lvList[3]},    {&window.lvPrograms, "Source", &window.lvPrograms},
  };
  for (const auto& [inUse, pane, then] : kCases) {
    inUse->SetFocus();
    host.activePane.clear();
    host.takeLog();
    host.splitter->Panes(pane).Activate();
    EXPECT_EQ(window.ActiveControl, then) << pane;
    EXPECT_EQ(host.takeLog(), pane == std::string("Source") ? "source focused\n" : "");
    EXPECT_EQ(host.activePane, pane);
  }
}

TEST_F(Panes, AHiddenControlThatRefusesTheFocusIsNoFailure) {
  window.tsLists.SetFocus();
  host.choose("mnuViewSynonyms");
  host.splitter->Panes("Synonyms").Activate();
  EXPECT_EQ(window.ActiveControl, &window.tsLists);
  EXPECT_TRUE(host.messages().empty());
}

TEST_F(Panes, KeysGoToTheWorkspaceFromTheSourcePaneOnly) {
  int code = platform::kKeyF5;
  host.takeLog();
  window.lvPrograms.SetFocus();
  window.KeyDown.raise(code, platform::kNoShift);
  EXPECT_EQ(host.takeLog(), "");
  host.source->SetFocus();
  host.takeLog();
  window.KeyDown.raise(code, platform::kShift | platform::kCtrl);
  EXPECT_EQ(host.takeLog(), "notify KVWS HandleKey;3\n");
}

TEST_F(Panes, TheSourceCaptionNamesTheFile) {
  host.sourceFile = "Sources\\A.cbl";
  host.workspace->SourceChanged.raise();
  EXPECT_EQ(host.captions["Source"], "Source - Sources\\A.cbl");
  host.sourceFile.clear();
  host.workspace->SourceChanged.raise();
  EXPECT_EQ(host.captions["Source"], "Source - (not available)");
}

} // namespace
} // namespace tarnsift_test
