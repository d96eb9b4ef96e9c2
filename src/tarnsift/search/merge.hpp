#pragma once

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Merges the results of a search that has just finished into the list `Target` (3: takes them out of all lists).
void ApplySearchResults(frmMain& window, int Target);

} // namespace tarnsift
