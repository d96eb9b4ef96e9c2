#include "tarnsift/lists/selection.hpp"

#include "tarnsift/lists/entry.hpp"
#include "tarnsift/search/synonym_view.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/command_states.hpp"
#include "tarnsift/workbench/panes.hpp"

namespace tarnsift {

namespace {

using platform::ListView;

void chooseFocusedProgram(frmMain& window) {
  if (const platform::ListItem* row = window.lvPrograms.SelectedItem())
    window.KVWS->setCurrentProgram(std::string(row->Key()));
}

void popupEdit(frmMain& window) {
  platform::screen().popupMenu(window, window.menu("mnuEdit"), -1, -1);
}

// The source and the relatives follow the focused entry.
void showFocused(frmMain& window, int Index) {
  const platform::ListItem* entry = listOf(window, Index).SelectedItem();
  ShowSynonyms(window, Index, entry ? std::string(entry->Key()) : "");
}

} // namespace

void lvPrograms_KeyUp(frmMain& window) {
  chooseFocusedProgram(window);
}

// A left click with Shift or Ctrl only marks rows.
void lvPrograms_MouseUp(frmMain& window, int button, int shift) {
  const bool plainLeft = button == platform::kLeftButton && shift == platform::kNoShift;
  if (button == platform::kRightButton || plainLeft) chooseFocusedProgram(window);
}

void lvPrograms_GotFocus(frmMain& window) {
  window.Splitter->Panes("Programs").Activate();
  UpdateCommandStates(window);
}

void lvPrograms_ColumnClick(frmMain& window, std::size_t column) {
  theListViewSorter().SortBy(window.lvPrograms, column);
}

void lvList_GotFocus(frmMain& window, int Index) {
  window.Splitter->Panes(Index == kSynonymsList ? "Synonyms" : "Lists").Activate();
  window.ActiveList = Index;
  UpdateCommandStates(window);
}

void lvList_KeyUp(frmMain& window, int Index, int keyCode, int shift) {
  showFocused(window, Index);
  if (keyCode == platform::kKeyF10 && shift == platform::kShift) popupEdit(window);
  UpdateCommandStates(window);
}

// A left click with Shift or Ctrl changes the marks but leaves source and relatives where they are.
void lvList_MouseUp(frmMain& window, int Index, int button, int shift) {
  if (button == platform::kRightButton) popupEdit(window);
  if (button == platform::kLeftButton && shift == platform::kNoShift) showFocused(window, Index);
  UpdateCommandStates(window);
}

void lvList_ColumnClick(frmMain& window, std::size_t column) {
  for (ListView* list : window.lvList)
    theListViewSorter().SortBy(*list, column);
}

void tsLists_Click(frmMain& window) {
  const int Index = static_cast<int>(window.tsLists.SelectedItem()) - 1;
  Splitter_PanesArranged(window); // shows the list of the tab and hides the others
  lvList_GotFocus(window, Index);
  ListView& list = listOf(window, Index);
  if (list.ListItems.Count() > 0 && !list.SelectedItem()) list.setSelectedItem(&list.ListItems.Item(1));
  if (list.SelectedItem()) list.SelectedItem()->setSelected(true);
  platform::ignoring([&] { list.SetFocus(); });
  lvList_KeyUp(window, Index, 0, platform::kNoShift);
}

void tsLists_GotFocus(frmMain& window) {
  window.Splitter->Panes("Lists").Activate();
  UpdateCommandStates(window);
}

} // namespace tarnsift
