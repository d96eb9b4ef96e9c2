#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Takes the selected entries of the list in front out of the lists, after asking.
void mnuDelete_Click(frmMain& window);
/// Empties one list, or all three, in the programs in scope. Asks nothing.
void mnuEditClearList_Click(frmMain& window, int Index);
void mnuEditClearAll_Click(frmMain& window);
/// Takes the entries of a list that have no usage out of it, in the programs in scope.
void mnuFileRemoveUnused_Click(frmMain& window, int Index);

} // namespace tarnsift
