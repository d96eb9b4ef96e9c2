#include "tarnsift/lists/selection.hpp"

#include "tarnsift/store/program_database.hpp"

namespace tarnsift {

namespace {

using platform::ListView;

void chooseFocusedProgram(frmMain& window) {
  if (const platform::ListItem* row = window.lvPrograms.SelectedItem()) window.KVWS->setCurrentProgram(std::string(row->Key()));
}

void popupEdit(frmMain& window) { platform::screen().popupMenu(window, window.menu("mnuEdit"), -1, -1); }

ListView& listOf(frmMain& window, int Index) { return *window.lvList.at(static_cast<std::size_t>(Index)); }

} // namespace

void lvPrograms_KeyUp(frmMain& window) { chooseFocusedProgram(window); }

// A left click with Shift or Ctrl only marks rows.
void lvPrograms_MouseUp(frmMain& window, int button, int shift) {
  const bool plainLeft = button == platform::kLeftButton && shift == platform::kNoShift;
  if (button == platform::kRightButton || plainLeft) chooseFocusedProgram(window);
}

void lvPrograms_GotFocus(frmMain& window) { window.Splitter->Panes("Programs").Activate(); }

void lvPrograms_ColumnClick(frmMain& window, std::size_t column) { theListViewSorter().SortBy(window.lvPrograms, column); }

void lvList_GotFocus(frmMain& window, int Index) {
  window.Splitter->Panes(Index == kSynonymsList ? "Synonyms" : "Lists").Activate();
  window.ActiveList = Index;
}

void lvList_KeyUp(frmMain& window, int, int keyCode, int shift) {
  if (keyCode == platform::kKeyF10 && shift == platform::kShift) popupEdit(window);
}

void lvList_MouseUp(frmMain& window, int, int button, int) {
  if (button == platform::kRightButton) popupEdit(window);
}

void lvList_ColumnClick(frmMain& window, std::size_t column) {
  for (ListView* list : window.lvList) theListViewSorter().SortBy(*list, column);
}

void tsLists_Click(frmMain& window) {
  const int Index = static_cast<int>(window.tsLists.SelectedItem()) - 1;
  for (int i = 0; i < kSynonymsList; ++i) listOf(window, i).setVisible(i == Index);
  if (!window.Splitter) return; // between two sessions there are no panes
  lvList_GotFocus(window, Index);
  ListView& list = listOf(window, Index);
  if (list.ListItems.Count() > 0 && !list.SelectedItem()) list.setSelectedItem(&list.ListItems.Item(1));
  if (list.SelectedItem()) list.SelectedItem()->setSelected(true);
  platform::ignoring([&] { list.SetFocus(); });
  lvList_KeyUp(window, Index, 0, platform::kNoShift);
}

void tsLists_GotFocus(frmMain& window) { window.Splitter->Panes("Lists").Activate(); }

} // namespace tarnsift
