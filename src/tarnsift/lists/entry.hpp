#pragma once

#include <string>

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// The list view with that index: a status value, or 3 for the Synonyms list.
inline platform::ListView& listOf(frmMain& window, int Index) {
  return *window.lvList.at(static_cast<std::size_t>(Index));
}

/// SubItems index of the comment, wherever the column choice has put it.
inline std::size_t commentColumn(const platform::ListView& list) {
  return list.ColumnHeaders.IndexOf("Comment") - 1;
}

/// Row of the programs pane of the loaded program. Throws KeyError when it is not there.
inline platform::ListItem& currentProgramRow(frmMain& window) {
  return window.lvPrograms.ListItems.Item(window.KVWS->CurrentProgram());
}

/// Finds the construct's row in the table of the loaded program. Throws platform::Error when it has gone.
void seekConstruct(frmMain& window, const std::string& key);

/// After a command on the selected entries: the focused entry is selected and its view and states follow.
void followSelection(frmMain& window);

} // namespace tarnsift
