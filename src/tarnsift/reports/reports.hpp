#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Entry of the report menu: 1 Affected, 2 Possible, 3 Clean datanames, 5 affected code, 6 metrics; others do nothing.
void mnuFileReportType_Click(frmMain& window, int Index);
/// The toolbar button: pops up the report menu.
void popupReport(frmMain& window);

/// The names of a list with their place and comment. `Status`: 1 Affected, 2 Clean, 0 all three lists.
void reportDatanames(frmMain& window, int Status, const std::string& title);
/// The source round every declaration and usage of an Affected name.
void reportAffectedCode(frmMain& window);
/// Each program's share of declarations and of usages that the Affected list touches.
void reportMetrics(frmMain& window);

} // namespace tarnsift
