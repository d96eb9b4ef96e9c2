#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Find Synonyms: asks for the two lists and adds the direct relatives of all names of the one to the other.
void mnuFileSynonyms_Click(frmMain& window);
/// One step from every name of list `From`; what it finds goes to list `To`.
void FindSynonyms(frmMain& window, int From, int To);

} // namespace tarnsift
