#include "tarnsift/options/columns.hpp"

#include "tarnsift/lists/entry.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"

namespace tarnsift {

namespace {

using platform::Node;

// Sizes that the host's dialog takes, in twips.
constexpr int kDialogWidth = 6120;
constexpr int kDialogHeight = 5355;

bool isTicked(const Node& column) {
  return column && column.getAttribute("CHECKED") == Value("true");
}

Node columnsNode(const std::string& language) {
  return globals().OptionsRoot.selectSingleNode("./LIST[@NAME='Languages']/CASE[@NAME='" + language +
                                                "']/LIST[@NAME='Columns']");
}

void enableColumns(frmMain& window, bool enabled) {
  window.menu("mnuViewColumns").Enabled = enabled;
  window.tbToolbar.Button("Columns").Enabled = enabled;
}

// Position 1 (the name) and the last one (the comment) stay.
void removeLanguageColumns(frmMain& window) {
  for (platform::ListView* list : window.lvList)
    for (std::size_t position = list->ColumnHeaders.Count() - 1; position >= 2; --position)
      list->ColumnHeaders.Remove(position);
}

bool choiceChanged(const frmMain& window, const Node& columns) {
  if (window.ColumnNames.Count() == 0) return true;
  for (std::size_t i = window.ColumnNames.Count(); i >= 1; --i)
    if (!isTicked(columns.selectSingleNode("CASE[@NAME='" + window.ColumnNames.Item(i) + "']"))) return true;
  for (Node column = columns.firstChild(); column; column = column.nextSibling())
    if (isTicked(column) && !KeyExists(window.ColumnNames, column.getAttribute("NAME").asText())) return true;
  return false;
}

void readChoice(frmMain& window, const Node& columns, const Ref<StoreModel>& model) {
  window.ColumnNames = {};
  window.ColumnTypes = {};
  for (Node column = columns.firstChild(); column; column = column.nextSibling()) {
    if (!isTicked(column)) continue;
    const std::string name = column.getAttribute("NAME").asText();
    window.ColumnNames.Add(name, name);
    window.ColumnTypes.Add(model ? model->ColumnType(name) : "String", name);
  }
}

void showOptions(frmMain& window, const std::string& path) {
  bool result = false;
  window.ProjectOptions->ShowDialog(path, window, "", kDialogWidth, kDialogHeight, result);
}

} // namespace

bool ApplyColumnChoice(frmMain& window, const Ref<StoreModel>& model) {
  const Node columns = columnsNode(model ? model->Name() : "");
  if (!columns) {
    enableColumns(window, false);
    window.ColumnNames = {};
    window.ColumnTypes = {};
    removeLanguageColumns(window);
    return false;
  }
  enableColumns(window, true);
  const bool Changed = choiceChanged(window, columns);
  readChoice(window, columns, model);
  if (!Changed) return false;
  removeLanguageColumns(window);
  for (platform::ListView* list : window.lvList)
    for (std::size_t j = 1; j <= window.ColumnNames.Count(); ++j)
      list->ColumnHeaders.Insert(j + 1, {window.ColumnNames.Item(j), window.ColumnNames.Item(j), std::nullopt});
  return true;
}

void FillEntryColumns(frmMain& window, int ListIndex, platform::ListItem& entry, const std::string& key) {
  if (window.ColumnNames.Count() == 0) return;
  Ref<StoreConstruct> construct; // one that the analysis does not know has empty columns
  platform::ignoring([&] { construct = window.KVWS->AnalysisStore()->ObjectById(key); });
  const auto& headers = listOf(window, ListIndex).ColumnHeaders;
  for (std::size_t i = 1; i <= window.ColumnNames.Count(); ++i) {
    const std::string& name = window.ColumnNames.Item(i);
    std::string text = construct ? construct->ColumnText(name) : "";
    if (construct && window.ColumnTypes.Item(i) == "Integer") text = PadCount(text);
    entry.setSubItems(headers.IndexOf(name) - 1, std::move(text));
  }
}

void refillEntries(frmMain& window) {
  const Globals& session = globals();
  platform::ListView::Batch working(listOf(window, 0)), affected(listOf(window, 1)), clean(listOf(window, 2));
  const auto rows =
      window.ProgramDatabase->OpenRecordset("select * from Constructs where " + session.StatusColumn + " is not Null");
  for (; !rows->Eof(); rows->MoveNext()) {
    const int L = static_cast<int>(rows->Field(session.StatusColumn).asInteger());
    const std::string key = rows->Field("KVID").asText();
    platform::ListView& list = listOf(window, L);
    platform::ListItem* entry = list.ListItems.find(key);
    if (!entry) continue;
    entry->setSubItems(commentColumn(list), NullToText(rows->Field(session.ClassificationColumn)));
    FillEntryColumns(window, L, *entry, key);
  }
}

void mnuViewOptions_Click(frmMain& window) {
  showOptions(window, ".//CASE[@ID='Tarnsift']");
}

void mnuViewColumns_Click(frmMain& window) {
  if (!window.KVWS) return;
  std::string path = "//CASE[@ID='Tarnsift']/LIST[@NAME='Languages']";
  if (const Ref<AnalysisStore> store = window.KVWS->AnalysisStore())
    path += "/CASE[@NAME='" + store->Model()->Name() + "']";
  showOptions(window, path);
}

void showFilters(frmMain& window) {
  showOptions(window, "//CASE[@ID='Tarnsift']/LIST/CASE[@NAME='Filters']");
}

} // namespace tarnsift
