#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Asks for a comment on the focused entry of the list in front and stores it.
void mnuComment_Click(frmMain& window);

} // namespace tarnsift
