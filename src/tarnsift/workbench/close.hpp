#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// The close path: a disabled window refuses without a message.
void Form_QueryUnload(frmMain& window, bool& cancel);
void Form_Unload(frmMain& window, bool& cancel);
void mnuFileClose_Click(frmMain& window);

/// The end of a session that failed: the window goes, whatever state it is in, and neither layout nor counts are saved.
void closeFailed(frmMain& window);

} // namespace tarnsift
