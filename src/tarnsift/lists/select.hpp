#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Marks the entries of the list in front by the patterns that the dialog asks for; an unmarked one loses its mark.
void mnuSelect_Click(frmMain& window);
void mnuSelectAll_Click(frmMain& window);

} // namespace tarnsift
