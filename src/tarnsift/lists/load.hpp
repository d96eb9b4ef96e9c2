#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Loads the lists of the workspace's current program; a change of program meanwhile is served afterwards.
void KVWS_ProgramChanged(frmMain& window);
/// Puts the workspace back on the program whose lists are shown.
void SyncWorkspaceProgram(frmMain& window);

} // namespace tarnsift
