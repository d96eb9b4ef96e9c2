#include "tarnsift/workbench/progress.hpp"

#include "platform/runtime/application.hpp"

namespace tarnsift {

namespace {

constexpr const char* kBand = "Progress";
constexpr int kHelpContents = 11;
constexpr int kHelpTopic = 1;

} // namespace

void StartProgress(frmMain& window, const std::string& Action, int TotalLength) {
  window.SavedCaption = window.Caption;
  window.pbProgress.setVisible(true);
  window.cbCoolBar.setBand(kBand, Action + "...", true);
  window.pbProgress.Min = 0;
  window.pbProgress.Max = TotalLength == 0 ? 1 : TotalLength;
  window.pbProgress.setValue(0);
  window.Tag = window.Enabled() ? "True" : "False";
  window.setEnabled(false);
  platform::screen().pendingEvents();
  window.MousePointer = platform::kPointerHourglass;
}

void StartStep(frmMain& window, const std::string& Act) {
  if (Act.empty()) return;
  window.Caption = window.SavedCaption + " - " + Act;
  window.Changed.raise();
}

void FinishStep(frmMain& window, int units) {
  platform::ignoring([&] {
    window.Caption = window.SavedCaption;
    window.pbProgress.setValue(window.pbProgress.Value() + units);
  });
}

void FinishProgress(frmMain& window) {
  window.pbProgress.setVisible(false);
  window.setEnabled(window.Tag == "True");
  window.cbCoolBar.setBand(kBand, "", false);
  window.Caption = window.SavedCaption;
  window.MousePointer = platform::kPointerDefault;
  window.Changed.raise();
}

bool progressRuns(const frmMain& window) {
  return window.cbCoolBar.band(kBand).Visible;
}

void DisplayLog(frmMain& window) {
  window.menu("mnuViewLog").Checked = window.ActivityLog->Visible() && !window.ActivityLog->Minimized();
}

void mnuViewLog_Click(frmMain& window) {
  const bool show = !window.menu("mnuViewLog").Checked;
  if (show) window.ActivityLog->setMinimized(false);
  window.ActivityLog->setVisible(show);
}

void mnuHelpTopics_Click(frmMain& window) {
  window.dlgCommon.HelpFile = platform::App().HelpFile;
  window.dlgCommon.HelpCommand = kHelpContents;
  window.dlgCommon.ShowHelp();
}

void mnuHelpWindow_Click(frmMain& window) {
  window.dlgCommon.HelpFile = platform::App().HelpFile;
  window.dlgCommon.HelpCommand = kHelpTopic;
  window.dlgCommon.HelpContext = window.HelpContextID;
  window.dlgCommon.ShowHelp();
}

void mnuHelpAbout_Click(frmMain&) {
  theProductStrings().ShowAbout(platform::App().Title);
}

} // namespace tarnsift
