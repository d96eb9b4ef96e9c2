#include "tarnsift/lists/entry.hpp"

#include "tarnsift/lists/selection.hpp"

namespace tarnsift {

void seekConstruct(frmMain& window, const std::string& key) {
  if (!window.ConstructsTable) throw platform::Error("the program's database is not open; choose the program again");
  window.ConstructsTable->Seek("=", key);
  if (window.ConstructsTable->NoMatch())
    throw platform::Error("the dataname " + key + " is no longer in the program's database; choose the program again");
}

void followSelection(frmMain& window) {
  if (platform::ListItem* focused = listOf(window, window.ActiveList).SelectedItem()) focused->setSelected(true);
  lvList_MouseUp(window, window.ActiveList, platform::kLeftButton, platform::kNoShift);
}

} // namespace tarnsift
