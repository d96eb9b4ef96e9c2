#include "tarnsift/fake_host.hpp"
#include "tarnsift/workbench/progress.hpp"
#include "tarnsift/workbench/split.hpp"

namespace tarnsift_test {
namespace {

std::string picture(tarnsift::frmMain& window) {
  const auto& band = window.cbCoolBar.band("Progress");
  return window.Caption + "|" + (band.Visible ? "band '" + band.Caption + "'" : "no band" + band.Caption) + "|" +
         std::to_string(window.pbProgress.Value()) + "/" + std::to_string(window.pbProgress.Max) + "|" +
         (window.Enabled() ? "enabled" : "disabled") + "|" + std::to_string(window.MousePointer);
}

class Progress : public ::testing::Test {
 protected:
  Progress() {
    host.run();
    window.Caption = "W";
  }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

TEST_F(Progress, ARunShowsTheBarAndTheStepsAndHoldsTheWindow) {
  bool enabledDuringEvents = true;
  host.screen.onPendingEvents = [&] { enabledDuringEvents = window.Enabled(); };
  tarnsift::StartProgress(window, "Loading", 2);
  EXPECT_FALSE(enabledDuringEvents);
  EXPECT_EQ(picture(window), "W|band 'Loading...'|0/2|disabled|11");
  tarnsift::StartStep(window, "A");
  EXPECT_EQ(picture(window), "W - A|band 'Loading...'|0/2|disabled|11");
  tarnsift::StartStep(window, "B");
  tarnsift::StartStep(window, "");
  EXPECT_EQ(window.Caption, "W - B") << "an empty step keeps the caption";
  tarnsift::FinishStep(window, 1);
  EXPECT_EQ(picture(window), "W|band 'Loading...'|1/2|disabled|11");
  tarnsift::FinishStep(window, 1);
  tarnsift::StartStep(window, "C");
  tarnsift::FinishStep(window, 1);
  EXPECT_EQ(picture(window), "W|band 'Loading...'|2/2|disabled|11") << "more units than announced leave the bar full";
  tarnsift::FinishProgress(window);
  EXPECT_EQ(picture(window), "W|no band|2/2|enabled|0");
}

TEST_F(Progress, ARunOfADisabledWindowLeavesItDisabled) {
  window.setEnabled(false);
  tarnsift::StartProgress(window, "Loading", 0);
  EXPECT_EQ(window.pbProgress.Max, 1) << "nothing to do is a bar of one unit";
  tarnsift::FinishProgress(window);
  EXPECT_FALSE(window.Enabled());
}

TEST_F(Progress, TheOperationsCanBeCalledByName) {
  Value start[] = {"Working", 3};
  window.Invoke("startprogress", start);
  Value step[] = {"A"};
  window.Invoke("StartStep", step);
  EXPECT_EQ(picture(window), "W - A|band 'Working...'|0/3|disabled|11");
  Value units[] = {2};
  window.Invoke("FinishStep", units);
  window.Invoke("FinishProgress", {});
  EXPECT_EQ(picture(window), "W|no band|2/3|enabled|0");
  Value text[] = {"a;b;c"};
  EXPECT_EQ(window.Invoke("Split", text).asText(), "a");
  EXPECT_EQ(text[0].asText(), "b;c");
}

TEST(Split, CutsAtTheFirstSeparator) {
  const std::vector<std::array<std::string, 4>> kCases = {
      {"a;b;c", ";", "a", "b;c"}, {"a;", ";", "a", ""},       {"abc", ";", "abc", ""},     {"", ";", "", ""},
      {";a", ";", "", "a"},       {"aXbxc", "x", "aXb", "c"}, {"a\t\tb", "\t", "a", "\tb"}};
  for (const auto& [text, separator, head, rest] : kCases) {
    std::string s = text;
    EXPECT_EQ(tarnsift::Split(s, separator), head) << text;
    EXPECT_EQ(s, rest) << text;
  }
}

TEST_F(Progress, TheCheckMarkOfTheLogIsSetByTheLogAlone) {
  struct {
    bool visible, minimized, checked;
  } const kCases[] = {{true, false, true}, {true, true, false}, {false, false, false}, {false, true, false}};
  for (const auto& c : kCases) {
    host.logVisible = c.visible;
    host.logMinimized = c.minimized;
    tarnsift::DisplayLog(window);
    EXPECT_EQ(window.menu("mnuViewLog").Checked, c.checked);
    host.choose("mnuViewLog");
    EXPECT_EQ(host.logVisible, !c.checked);
    EXPECT_EQ(host.logMinimized, c.checked && c.minimized) << "shown again, the log is not minimized";
    EXPECT_EQ(window.menu("mnuViewLog").Checked, c.checked) << "the click leaves the mark alone";
  }
}

} // namespace
} // namespace tarnsift_test
