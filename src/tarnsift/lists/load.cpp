#include "tarnsift/lists/load.hpp"

#include "platform/runtime/string_table.hpp"
#include "tarnsift/lists/selection.hpp"
#include "tarnsift/options/columns.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/command_states.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift {

namespace {

using platform::ListView;
using platform::LoadResString;

// A row that is selected already keeps the selection round it. A program outside the pane, which the window did not
// list, leaves the pane as it is.
void showProgramRow(frmMain& window) {
  platform::ListItem* row = window.lvPrograms.ListItems.find(window.LoadedProgram);
  if (!row) return;
  if (!row->Selected()) window.lvPrograms.selectAll(false);
  window.lvPrograms.setSelectedItem(row);
}

void openTables(frmMain& window) {
  window.ConstructsTable.reset();
  window.ProgramDatabase.reset();
  const Ref<AnalysisStore> store = window.KVWS->AnalysisStore();
  if (!store) throw platform::Error("the program has no analysis");
  window.ProgramDatabase = store->Database();
  UpgradeProgramDatabase(*window.ProgramDatabase, window.LoadedProgram);
  window.ConstructsTable = window.ProgramDatabase->OpenRecordset("Constructs");
  window.ConstructsTable->setIndex("ID");
}

void addEntry(frmMain& window, const platform::Recordset& row) {
  const std::int64_t status = row.Field(globals().StatusColumn).asInteger();
  if (status < kWorking || status > kRejected)
    throw platform::Error(row.Field("Name").asText() + " has the status " + std::to_string(status) +
                          ", which is no list");
  ListView& list = *window.lvList[static_cast<std::size_t>(status)];
  const std::size_t comment = list.ColumnHeaders.IndexOf("Comment") - 1;
  platform::ListItem& entry = list.ListItems.Add(row.Field("KVID").asText(), row.Field("Name").asText());
  entry.setSubItems(comment, NullToText(row.Field(globals().ClassificationColumn)));
  FillEntryColumns(window, static_cast<int>(status), entry, entry.Key());
}

void clearLists(frmMain& window) {
  for (ListView* list : window.lvList)
    list->ListItems.Clear();
}

void fillLists(frmMain& window) {
  ListView::Batch working(*window.lvList[0]), affected(*window.lvList[1]), clean(*window.lvList[2]);
  const auto rows = window.ProgramDatabase->OpenRecordset("select * from Constructs where " + globals().StatusColumn +
                                                          " is not Null");
  StartProgress(window, LoadResString(512), static_cast<int>(rows->RecordCount()));
  for (; !rows->Eof(); rows->MoveNext()) {
    StartStep(window, "");
    addEntry(window, *rows);
    FinishStep(window, 1);
  }
}

void focusFirstEntry(frmMain& window) {
  ListView& list = *window.lvList[static_cast<std::size_t>(window.ActiveList)];
  if (list.ListItems.Count() == 0) {
    UpdateCommandStates(window);
    window.Splitter->Panes("Synonyms").setCaption(LoadResString(506));
    return;
  }
  if (!list.SelectedItem()) list.setSelectedItem(&list.ListItems.Item(1));
  lvList_KeyUp(window, window.ActiveList, platform::kKeyReturn, platform::kNoShift);
  UpdateCommandStates(window);
}

void showEntry(frmMain& window) {
  platform::ListItem* entry = window.lvList[static_cast<std::size_t>(window.ActiveList)]->SelectedItem();
  if (!entry) return;
  platform::ignoring([&] {
    platform::screen().pendingEvents();
    // Events may have taken the entry away.
    if (platform::ListItem* still = window.lvList[static_cast<std::size_t>(window.ActiveList)]->SelectedItem())
      still->EnsureVisible();
  });
}

void tellLoadFailure(frmMain& window, const platform::Error& error) {
  if (progressRuns(window)) FinishProgress(window);
  window.MousePointer = platform::kPointerDefault;
  if (window.KVWS->CurrentProgram() != window.LoadedProgram) return;
  window.ActivityLog->Write(window.LoadedProgram + ": " + error.what());
  platform::screen().messageBox(theProductStrings().Format(LoadResString(513), {window.LoadedProgram}),
                                platform::kCritical, "");
}

void loadLists(frmMain& window) {
  try {
    clearLists(window); // first, so that no entry of the program before stays when this one cannot be opened
    openTables(window);
    ApplyColumnChoice(window, window.KVWS->AnalysisStore()->Model());
    fillLists(window);
  } catch (const platform::Error& error) {
    tellLoadFailure(window, error);
    return;
  }
  focusFirstEntry(window);
  FinishProgress(window);
  showEntry(window);
}

// The load is over however it ends.
class Loading {
 public:
  explicit Loading(frmMain& window) : m_window(window) { m_window.LoadingLists = true; }
  ~Loading() { m_window.LoadingLists = false; }
  Loading(const Loading&) = delete;
  Loading& operator=(const Loading&) = delete;

 private:
  frmMain& m_window;
};

} // namespace

void KVWS_ProgramChanged(frmMain& window) {
  if (window.LoadingLists) {
    window.ReloadPending = true;
    return;
  }
  do {
    if (window.KVWS->CurrentProgram() == window.LoadedProgram) return;
    window.LoadedProgram = window.KVWS->CurrentProgram();
    const Loading loading(window);
    window.ReloadPending = false;
    window.MousePointer = platform::kPointerHourglass;
    showProgramRow(window);
    loadLists(window);
  } while (window.ReloadPending);
}

void SyncWorkspaceProgram(frmMain& window) {
  window.KVWS->setCurrentProgram(window.LoadedProgram);
}

} // namespace tarnsift
