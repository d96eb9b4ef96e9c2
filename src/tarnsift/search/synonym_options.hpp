#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Reads which relations count as synonyms into SynonymRelations, ShowRedefines and ViewAllRedefines.
void ReadSynonymOptions(frmMain& window);

} // namespace tarnsift
