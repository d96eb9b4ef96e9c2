#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Enables and disables the commands on entries by the pane, list and entry in front. Sets all states, whatever they
/// were.
void UpdateCommandStates(frmMain& window);

} // namespace tarnsift
