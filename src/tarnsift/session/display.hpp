#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Once per loading of the window: the host's controls, captions and the report writer.
void Form_Load(frmMain& window);
/// Turns the open project into a window full of programs. An error goes to the caller.
void Display(frmMain& window);

} // namespace tarnsift
