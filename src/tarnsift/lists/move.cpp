#include "tarnsift/lists/move.hpp"

#include "tarnsift/lists/counts.hpp"
#include "tarnsift/lists/entry.hpp"
#include "tarnsift/lists/load.hpp"
#include "tarnsift/options/columns.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/command_states.hpp"

namespace tarnsift {

namespace {

using platform::ListItem;
using platform::ListView;

// The counters are written whatever happens to a later row: what was moved so far stays moved.
class Move {
 public:
  Move(frmMain& window, int target)
      : m_window(window), m_source(listOf(window, window.ActiveList)), m_target(listOf(window, target)),
        m_index(target) {}
  ~Move() {
    platform::ignoring([this] { addCounters(currentProgramRow(m_window), m_counts); });
  }
  Move(const Move&) = delete;
  Move& operator=(const Move&) = delete;

  void run() {
    const std::size_t comment = commentColumn(m_source);
    for (std::size_t position = m_source.ListItems.Count(); position >= 1; --position) {
      ListItem& entry = m_source.ListItems.Item(position);
      if (!entry.Selected()) continue;
      const std::string key = entry.Key();
      const std::string text = entry.SubItems(comment);
      // The row goes first: when it has gone or cannot be written, screen and counts still say what is stored.
      seekConstruct(m_window, key);
      write(text);
      ListItem& placed = m_window.ActiveList == kSynonymsList ? fromSynonyms(entry) : fromTab(entry, position);
      placed.setSubItems(commentColumn(m_target), text);
    }
  }

 private:
  ListItem& fromSynonyms(ListItem& entry) {
    entry.SmallIcon = m_index + 1;
    if (ListItem* placed = m_target.ListItems.find(entry.Key())) return *placed;
    // Not by the icon: in a hidden pane it may be older than the lists.
    for (int list = 0; list < kSynonymsList; ++list) {
      if (!listOf(m_window, list).ListItems.find(entry.Key())) continue;
      listOf(m_window, list).ListItems.Remove(entry.Key());
      --m_counts.at(static_cast<std::size_t>(list));
    }
    return addTo(entry);
  }

  ListItem& fromTab(ListItem& entry, std::size_t position) {
    ListItem& placed = addTo(entry);
    const std::string key = entry.Key();
    m_source.ListItems.Remove(position);
    if (ListItem* synonym = listOf(m_window, kSynonymsList).ListItems.find(key)) synonym->SmallIcon = m_index + 1;
    --m_counts.at(static_cast<std::size_t>(m_window.ActiveList));
    return placed;
  }

  ListItem& addTo(const ListItem& entry) {
    ListItem& placed = m_target.ListItems.Add(entry.Key(), entry.Text);
    FillEntryColumns(m_window, m_index, placed, entry.Key());
    ++m_counts.at(static_cast<std::size_t>(m_index));
    return placed;
  }

  void write(const std::string& comment) {
    platform::Recordset& row = *m_window.ConstructsTable;
    row.Edit();
    row.setField(globals().StatusColumn, m_index);
    row.setField(globals().ClassificationColumn, comment);
    row.Update();
  }

  frmMain& m_window;
  ListView& m_source;
  ListView& m_target;
  int m_index;
  Counters m_counts{};
};

} // namespace

void mnuMoveTo_Click(frmMain& window, int Index) {
  SyncWorkspaceProgram(window);
  {
    ListView::Batch working(listOf(window, 0)), affected(listOf(window, 1)), clean(listOf(window, 2));
    Move(window, Index).run();
  }
  followSelection(window);
  UpdateCommandStates(window);
}

} // namespace tarnsift
