#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Apply Filter: runs a criterion of the search host and merges what it found. `Index` is the list, or 3 to take names
/// out.
void mnuFileSearchTo_Click(frmMain& window, int Index);
/// The toolbar's drop-down: the search runs after the pop-up has closed.
void popupSearch(frmMain& window);
void UpdateSearchCommands(frmMain& window);
/// The options dialog has written its values.
void FLO_Saved(frmMain& window);

} // namespace tarnsift
