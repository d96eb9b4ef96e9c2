#include "tarnsift/search/synonym_view.hpp"

#include "platform/runtime/string_table.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/lists/entry.hpp"
#include "tarnsift/lists/load.hpp"
#include "tarnsift/options/columns.hpp"
#include "tarnsift/search/relatives.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"

namespace tarnsift {

namespace {

using platform::ListItem;
using platform::ListView;

// One row a construct, however many ways lead to it; a stored comment stands alone, notes are joined.
void AddSynonymRow(frmMain& window, const std::string& Key, const std::string& Name, const Value& Comment,
                   const Value& Status, const std::string& Note) {
  ListView& list = listOf(window, kSynonymsList);
  const std::size_t column = commentColumn(list);
  ListItem* row = list.ListItems.find(Key);
  if (!row) {
    row = &list.ListItems.Add(Key, Name);
    row->setSubItems(column, Comment.isNull() ? Note : Comment.asText());
    if (!Status.isNull()) row->SmallIcon = static_cast<int>(Status.asInteger()) + 1;
  } else if (!Comment.isNull()) {
    row->setSubItems(column, Comment.asText());
  } else if (const std::string& shown = row->SubItems(column); shown.find(Note) == std::string::npos) {
    row->setSubItems(column, shown + "; " + Note);
  }
  FillEntryColumns(window, kSynonymsList, *row, Key);
}

void addRow(frmMain& window, const platform::Recordset& row, const std::string& note) {
  if (platform::equalsIgnoringCase(row.Field("Name").asText(), "FILLER")) return;
  AddSynonymRow(window, row.Field("KVID").asText(), row.Field("Name").asText(),
                row.Field(globals().ClassificationColumn), row.Field(globals().StatusColumn), note);
}

void addRelatives(frmMain& window, const Seed& seed) {
  platform::Database& database = *window.ProgramDatabase;
  if (!window.SynonymRelations.empty())
    for (const int Side : {1, 2})
      for (auto rows = openRelated(database, seed, Side, window.SynonymRelations); !rows->Eof(); rows->MoveNext())
        if (!platform::equalsIgnoringCase(rows->Field("KVID").asText(), seed.key))
          addRow(window, *rows, rows->Field("RelID").asText() + " of " + seed.name);
  if (seed.size == 0 || !window.ShowRedefines) return;
  const auto rows =
      window.ViewAllRedefines ? openOverlapping(database, seed, largestSize(database)) : openSameRange(database, seed);
  for (; !rows->Eof(); rows->MoveNext())
    addRow(window, *rows, "redef of " + seed.name);
}

} // namespace

void ShowSynonyms(frmMain& window, int ListIndex, const std::string& Key) {
  ListView& list = listOf(window, kSynonymsList);
  if (Key.empty()) {
    if (ListIndex == kSynonymsList) return;
    list.ListItems.Clear();
    window.Splitter->Panes("Synonyms").setCaption(platform::LoadResString(506));
    return;
  }
  SyncWorkspaceProgram(window);
  // A name that the analysis does not know leaves the viewer where it is; its relatives are in the database.
  platform::ignoring([&] {
    if (const Ref<AnalysisStore> store = window.KVWS->AnalysisStore())
      window.KVWS->setCurrentObject(store->ObjectById(Key));
  });
  if (ListIndex == kSynonymsList || !window.Splitter->Panes("Synonyms").Visible()) return;
  seekConstruct(window, Key);
  const Seed seed = seedAt(*window.ConstructsTable);
  {
    const Hourglass hourglass(window);
    ListView::Batch batch(list);
    list.ListItems.Clear();
    addRelatives(window, seed);
  }
  const std::string count = std::to_string(list.ListItems.Count());
  window.Splitter->Panes("Synonyms")
      .setCaption(theProductStrings().Format(platform::LoadResString(514), {seed.name, count}));
}

void RefreshSynonymsPane(frmMain& window) {
  int L = window.ActiveList;
  if (L == kSynonymsList) L = static_cast<int>(window.tsLists.SelectedItem()) - 1;
  const ListItem* focused = listOf(window, L).SelectedItem();
  ShowSynonyms(window, L, focused ? focused->Key() : "");
}

} // namespace tarnsift
