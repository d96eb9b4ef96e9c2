#pragma once

#include <string>

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Places the source viewer on the dataname and shows its relatives in the Synonyms list. A `Key` of "" means that
/// nothing is selected. From the Synonyms list itself only the viewer moves; a hidden pane costs no query.
void ShowSynonyms(frmMain& window, int ListIndex, const std::string& Key);
/// Shows the relatives of the entry in front again.
void RefreshSynonymsPane(frmMain& window);

} // namespace tarnsift
