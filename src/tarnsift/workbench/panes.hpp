#pragma once

#include <string_view>

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// The window has another size: the splitter gets what the bar leaves. Errors are ignored.
void Form_Resize(frmMain& window);
/// The panes have new sizes or visibility: the controls follow, and the check marks of the View menu.
void Splitter_PanesArranged(frmMain& window);
/// A pane has become active: its control gets the focus.
void Splitter_PaneActivated(frmMain& window, SplitterPane& pane);
/// Shows or hides a pane; the Synonyms pane is filled when it comes back.
void togglePane(frmMain& window, std::string_view key);
/// The viewer is in use: the commands on entries are those of the list last in front.
void KVSource_GotFocus(frmMain& window);
/// The viewer shows another file.
void KVWS_SourceChanged(frmMain& window);
/// A key press before its control gets it: in the Source pane the workspace does.
void Form_KeyDown(frmMain& window, int& keyCode, int shift);

} // namespace tarnsift
