#pragma once

#include <string>

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// The display of a long run: a bar in the cool bar, the step in the caption, the window disabled with the hourglass.
/// One StartProgress, for each unit a StartStep and a FinishStep, one FinishProgress; runs do not nest.
void StartProgress(frmMain& window, const std::string& Action, int TotalLength);
void StartStep(frmMain& window, const std::string& Act);
void FinishStep(frmMain& window, int units);
void FinishProgress(frmMain& window);
/// Whether a run is on: between StartProgress and FinishProgress.
bool progressRuns(const frmMain& window);

/// Sets the check mark of mnuViewLog as the host's log shows.
void DisplayLog(frmMain& window);
void mnuViewLog_Click(frmMain& window);
void mnuHelpTopics_Click(frmMain& window);
void mnuHelpWindow_Click(frmMain& window);
void mnuHelpAbout_Click(frmMain& window);

} // namespace tarnsift
