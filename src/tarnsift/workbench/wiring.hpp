#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Ties the window's events and its public members to the commands.
void wire(frmMain& window);

} // namespace tarnsift
