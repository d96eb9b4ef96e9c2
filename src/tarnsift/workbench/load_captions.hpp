#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Sets the captions of the window's controls from the string table.
void LoadCaptions(frmMain& window);

} // namespace tarnsift
