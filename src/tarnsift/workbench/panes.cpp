#include "tarnsift/workbench/panes.hpp"

#include "platform/runtime/string_table.hpp"
#include "tarnsift/lists/entry.hpp"
#include "tarnsift/search/synonym_view.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/command_states.hpp"

namespace tarnsift {

namespace {

constexpr double kSmallestWindow = 3000;  // twips
constexpr double kSmallestTabStrip = 420; // below it a tab strip has no client area

// The lists of the Lists pane with the keys of their tabs, in the order of placing.
constexpr std::pair<int, std::string_view> kTabLists[] = {{1, "Accepted"}, {2, "Rejected"}, {0, "Working"}};

void fill(platform::Control& control, SplitterPane& pane) {
  platform::ignoring([&] { control.Move(pane.Left(), pane.Top(), pane.Width(), pane.Height()); });
  control.setVisible(pane.Visible());
}

void placeLists(frmMain& window, SplitterPane& pane) {
  fill(window.tsLists, pane);
  const double height = window.tsLists.Height < kSmallestTabStrip ? 0 : window.tsLists.ClientHeight();
  for (const auto& [index, key] : kTabLists) {
    platform::ListView& list = listOf(window, index);
    platform::ignoring([&] {
      list.Move(window.tsLists.ClientLeft(), window.tsLists.ClientTop(), window.tsLists.ClientWidth(), height);
    });
    list.setVisible(pane.Visible() && window.tsLists.selectedTab().Key == key);
  }
}

// The workspace's bar keeps its own height; the viewer takes the rest.
void placeSource(frmMain& window, SplitterPane& pane) {
  const double barHeight = window.KVWS->Height;
  window.KVWS->Move(pane.Left(), pane.Top(), pane.Width(), barHeight);
  window.KVSource->Move(pane.Left(), pane.Top() + barHeight, pane.Width(),
                        theMathTools().Max(pane.Height() - barHeight, 0));
  window.KVWS->setVisible(pane.Visible());
  window.KVSource->setVisible(pane.Visible());
}

void focusOn(platform::Control& control) {
  platform::ignoring([&] { control.SetFocus(); });
}

} // namespace

void Form_Resize(frmMain& window) {
  if (window.Minimized) return;
  platform::ignoring([&] {
    // Inner and outer size differ by the frame; both follow.
    if (window.Height < kSmallestWindow)
      window.ScaleHeight += kSmallestWindow - std::exchange(window.Height, kSmallestWindow);
    if (window.Width < kSmallestWindow)
      window.ScaleWidth += kSmallestWindow - std::exchange(window.Width, kSmallestWindow);
    const double bar = window.cbCoolBar.Height;
    if (window.Splitter) window.Splitter->Arrange(0, bar, window.ScaleWidth, window.ScaleHeight - bar);
  });
}

void Splitter_PanesArranged(frmMain& window) {
  Splitter& splitter = *window.Splitter;
  platform::ignoring([&] {
    SplitterPane& pane = splitter.Panes("Programs");
    fill(window.lvPrograms, pane);
    window.menu("mnuViewPrograms").Checked = pane.Visible();
  });
  platform::ignoring([&] {
    SplitterPane& pane = splitter.Panes("Lists");
    placeLists(window, pane);
    window.menu("mnuViewLists").Checked = pane.Visible();
  });
  platform::ignoring([&] {
    SplitterPane& pane = splitter.Panes("Source");
    placeSource(window, pane);
    window.menu("mnuViewSource").Checked = pane.Visible();
  });
  platform::ignoring([&] {
    SplitterPane& pane = splitter.Panes("Synonyms");
    fill(listOf(window, kSynonymsList), pane);
    window.menu("mnuViewSynonyms").Checked = pane.Visible();
  });
}

// The list in use keeps the focus when the pane of the lists becomes active.
void Splitter_PaneActivated(frmMain& window, SplitterPane& pane) {
  const std::string key = pane.Key();
  if (key == "Programs") focusOn(window.lvPrograms);
  if (key == "Synonyms") focusOn(listOf(window, kSynonymsList));
  if (key == "Source") platform::ignoring([&] { window.KVSource->SetFocus(); });
  if (key != "Lists") return;
  for (const platform::ListView* list : window.lvList)
    if (window.ActiveControl == list) return;
  focusOn(window.tsLists);
}

void togglePane(frmMain& window, std::string_view key) {
  SplitterPane& pane = window.Splitter->Panes(std::string(key));
  pane.setVisible(!pane.Visible());
  if (key != "Synonyms" || !pane.Visible()) return;
  if (const platform::ListItem* entry = listOf(window, window.ActiveList).SelectedItem())
    ShowSynonyms(window, window.ActiveList, std::string(entry->Key()));
}

void KVSource_GotFocus(frmMain& window) {
  window.Splitter->Panes("Source").Activate();
  UpdateCommandStates(window);
}

void KVWS_SourceChanged(frmMain& window) {
  const Ref<SourceFile> file = window.KVWS->SourceFile();
  window.Splitter->Panes("Source").setCaption(
      file ? theProductStrings().Format(platform::LoadResString(511), {file->Path()}) : platform::LoadResString(510));
}

void Form_KeyDown(frmMain& window, int& keyCode, int shift) {
  if (window.Splitter->Panes("Source").IsActive())
    window.KVWS->Notify("KVWS", "HandleKey;" + std::to_string(shift), keyCode);
}

} // namespace tarnsift
