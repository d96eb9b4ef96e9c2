#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Puts the selected entries of the list in front into the list `Index`. From the Synonyms list the entry stays and its
/// icon follows; the shown comment travels.
void mnuMoveTo_Click(frmMain& window, int Index);

} // namespace tarnsift
