#pragma once

#include <string>

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Makes the columns of the four lists match the option document for that language model (nothing: no language). True
/// when the headers were rebuilt.
bool ApplyColumnChoice(frmMain& window, const Ref<StoreModel>& model);
/// Fills the language columns of an entry of the loaded program.
void FillEntryColumns(frmMain& window, int ListIndex, platform::ListItem& entry, const std::string& key);
/// Refills comments and language columns of all entries of the three lists from the loaded program's database.
void refillEntries(frmMain& window);

/// Show the options dialog: all of this tool, or the columns of the loaded program's language; the filters.
void mnuViewOptions_Click(frmMain& window);
void mnuViewColumns_Click(frmMain& window);
void showFilters(frmMain& window);

} // namespace tarnsift
