#include "platform/runtime/string_table.hpp"
#include "tarnsift/lists/counts.hpp"
#include "tarnsift/lists/entry.hpp"
#include "tarnsift/lists/load.hpp"
#include "tarnsift/lists/remove.hpp"
#include "tarnsift/search/synonym_view.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/command_states.hpp"

namespace tarnsift {

namespace {

using platform::ListItem;
using platform::ListView;

std::size_t countSelected(const ListView& list) {
  std::size_t count = 0;
  for (std::size_t i = 1; i <= list.ListItems.Count(); ++i)
    count += list.ListItems.Item(i).Selected() ? 1 : 0;
  return count;
}

bool confirmed(std::size_t count) {
  const std::string question = theProductStrings().Format(platform::LoadResString(516), {std::to_string(count)});
  return platform::screen().messageBox(question, platform::kOkCancel, "") == platform::Answer::Ok;
}

// Gives the deleted entries to the counter also when a later row fails.
class Deletion {
 public:
  explicit Deletion(frmMain& window) : m_window(window), m_list(listOf(window, window.ActiveList)) {}
  ~Deletion() {
    platform::ignoring([this] {
      Counters counters{};
      counters.at(static_cast<std::size_t>(m_window.ActiveList)) = -m_deleted;
      addCounters(currentProgramRow(m_window), counters);
    });
  }
  Deletion(const Deletion&) = delete;
  Deletion& operator=(const Deletion&) = delete;

  void run() {
    ListView& synonyms = listOf(m_window, kSynonymsList);
    for (std::size_t position = m_list.ListItems.Count(); position >= 1; --position) {
      const ListItem& entry = m_list.ListItems.Item(position);
      if (!entry.Selected()) continue;
      seekConstruct(m_window, entry.Key());
      platform::Recordset& row = *m_window.ConstructsTable;
      row.Edit();
      row.setField(globals().StatusColumn, Value());
      row.setField(globals().ClassificationColumn, Value());
      row.Update();
      if (ListItem* synonym = synonyms.ListItems.find(entry.Key())) synonym->SmallIcon = 0;
      ++m_deleted;
      m_list.ListItems.Remove(position);
    }
    synonyms.Changed.raise();
  }

 private:
  frmMain& m_window;
  ListView& m_list;
  std::int64_t m_deleted = 0;
};

} // namespace

void mnuDelete_Click(frmMain& window) {
  if (window.ActiveList == kSynonymsList) return;
  SyncWorkspaceProgram(window);
  const std::size_t count = countSelected(listOf(window, window.ActiveList));
  if (count == 0 || !confirmed(count)) return;
  {
    ListView::Batch batch(listOf(window, window.ActiveList));
    Deletion(window).run();
  }
  followSelection(window);
  UpdateCommandStates(window);
  RefreshSynonymsPane(window);
}

} // namespace tarnsift
