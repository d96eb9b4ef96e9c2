#include "tarnsift/lists/select.hpp"

#include "platform/runtime/wildcard.hpp"
#include "tarnsift/lists/entry.hpp"
#include "tarnsift/search/frmSelect.hpp"
#include "tarnsift/workbench/command_states.hpp"

namespace tarnsift {

void mnuSelect_Click(frmMain& window) {
  std::string NamePositive;
  std::string NameNegative;
  if (!theSelectDialog().Edit(window, NamePositive, NameNegative)) return;
  // In upper case a pattern can have become unusable: then nothing is marked or unmarked.
  platform::like("", NamePositive);
  platform::like("", NameNegative);
  platform::ListView& list = listOf(window, window.ActiveList);
  for (std::size_t i = 1; i <= list.ListItems.Count(); ++i) {
    platform::ListItem& entry = list.ListItems.Item(i);
    bool mark = NamePositive.empty() || platform::like(entry.Text, NamePositive);
    if (!NameNegative.empty() && mark) mark = !platform::like(entry.Text, NameNegative);
    entry.setSelected(mark);
  }
  list.Changed.raise();
  UpdateCommandStates(window);
}

void mnuSelectAll_Click(frmMain& window) {
  listOf(window, window.ActiveList).selectAll(true);
  UpdateCommandStates(window);
}

} // namespace tarnsift
