#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Makes a project of every program with names in a list (0 Working, 1 Affected, 2 Clean), selected or not, and gives
/// each such program a change size by how many they are. The project stays when the dialog of the sizes is cancelled.
void mnuFileCreateFrom_Click(frmMain& window, int Index);

} // namespace tarnsift
