#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

void lvPrograms_KeyUp(frmMain& window);
void lvPrograms_MouseUp(frmMain& window, int button, int shift);
void lvPrograms_GotFocus(frmMain& window);
void lvPrograms_ColumnClick(frmMain& window, std::size_t column);
void lvList_GotFocus(frmMain& window, int Index);
void lvList_KeyUp(frmMain& window, int Index, int keyCode, int shift);
void lvList_MouseUp(frmMain& window, int Index, int button, int shift);
/// Sorts all four lists by the column at that position.
void lvList_ColumnClick(frmMain& window, std::size_t column);
void tsLists_Click(frmMain& window);
void tsLists_GotFocus(frmMain& window);

} // namespace tarnsift
