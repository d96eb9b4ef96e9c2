#include "tarnsift/search/filter.hpp"

#include "platform/runtime/application.hpp"
#include "tarnsift/options/columns.hpp"
#include "tarnsift/options/option_tree.hpp"
#include "tarnsift/search/merge.hpp"
#include "tarnsift/search/synonym_options.hpp"
#include "tarnsift/search/synonym_view.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/command_states.hpp"
#include "tarnsift/workbench/popup.hpp"

namespace tarnsift {

namespace {

// The search values hold only round the search, also when it fails.
class SearchScope {
 public:
  SearchScope(SearchHost& host, const std::string& keys) : m_host(host) { m_host.setScopeList(keys); }
  ~SearchScope() {
    m_host.setScopeList("");
    m_host.setGlobalSearch(false);
  }
  SearchScope(const SearchScope&) = delete;
  SearchScope& operator=(const SearchScope&) = delete;

 private:
  SearchHost& m_host;
};

std::string selectedPrograms(const platform::ListView& lvPrograms) {
  std::string keys;
  for (std::size_t i = 1; i <= lvPrograms.ListItems.Count(); ++i) {
    const platform::ListItem& row = lvPrograms.ListItems.Item(i);
    if (row.Selected()) keys += (keys.empty() ? "" : "|") + row.Key();
  }
  return keys;
}

void RememberSearchCriteria(frmMain& window, const std::string& name) {
  globals().OptionsRoot.selectSingleNode("//TEXT[@NAME='DefaultSearchName']").setAttribute("VALUE", name);
  window.DefaultSearchName = name;
  window.ProjectOptions->Save();
}

} // namespace

void mnuFileSearchTo_Click(frmMain& window, int Index) {
  if (!window.KVWS) return;
  if (window.SearchPopupOpen) {
    window.PendingSearchTarget = Index;
    return;
  }
  const Ref<SearchHost> host = window.KVWS->SearchHost();
  {
    const SearchScope scope(*host, window.ApplySelected ? selectedPrograms(window.lvPrograms) : "");
    host->setDefaultSearchCriteriaName(window.DefaultSearchName);
    host->setGlobalSearch(true);
    const Ref<AnalysisStore> store = window.KVWS->AnalysisStore();
    const Value found =
        host->FindConstructs(store ? store->Model() : nullptr, platform::App().Title, *window.KVWS, false, "");
    if (found.asBool()) ApplySearchResults(window, Index);
  }
  const std::string used = host->LastSearchCriteriaName();
  if (used != window.DefaultSearchName) RememberSearchCriteria(window, used);
}

void popupSearch(frmMain& window) {
  window.PendingSearchTarget = -1;
  window.SearchPopupOpen = true;
  try {
    popupUnderButton(window, "Search", "mnuFileSearch");
  } catch (...) {
    window.SearchPopupOpen = false;
    throw;
  }
  window.SearchPopupOpen = false;
  if (window.PendingSearchTarget >= 0) mnuFileSearchTo_Click(window, window.PendingSearchTarget);
}

void UpdateSearchCommands(frmMain& window) {
  const bool any = window.lvPrograms.ListItems.Count() > 0;
  window.tbToolbar.Button("Search").Enabled = any;
  window.menu("mnuFileSearch").Enabled = any;
  window.menu("mnuFileSynonyms").Enabled = any;
  window.tbToolbar.Button("Synonyms").Enabled = window.menu("mnuFileSynonyms").Enabled;
}

void FLO_Saved(frmMain& window) {
  const std::string relations = window.SynonymRelations;
  const bool redefines = window.ShowRedefines;
  const bool all = window.ViewAllRedefines;
  ReadSynonymOptions(window);
  if (relations != window.SynonymRelations || redefines != window.ShowRedefines || all != window.ViewAllRedefines) {
    RefreshSynonymsPane(window);
    UpdateCommandStates(window);
  }
  window.ApplySelected = optionIsOn("./BOOL[@NAME='ApplySelected']");
  const Ref<AnalysisStore> store = window.KVWS->AnalysisStore();
  if (!store) {
    ApplyColumnChoice(window, {});
    return;
  }
  if (!ApplyColumnChoice(window, store->Model()) || !window.ProgramDatabase) return;
  refillEntries(window);
  // Rows of the Synonyms list still stand in the old columns; a hidden pane stays empty until it is shown again.
  window.lvList[kSynonymsList]->ListItems.Clear();
  RefreshSynonymsPane(window);
  UpdateCommandStates(window);
}

} // namespace tarnsift
