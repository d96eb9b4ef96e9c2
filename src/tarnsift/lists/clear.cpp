#include <optional>

#include "platform/runtime/string_table.hpp"
#include "tarnsift/lists/entry.hpp"
#include "tarnsift/lists/remove.hpp"
#include "tarnsift/search/synonym_view.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/command_states.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift {

namespace {

// Of one list, or of all three when there is none.
std::string clearStatement(std::optional<int> list) {
  const Globals& session = globals();
  std::string statement = "update Constructs "
                          " set " +
                          session.ClassificationColumn + " = Null, " + session.StatusColumn + "  = Null ";
  if (list) statement += " where " + session.StatusColumn + "=" + std::to_string(*list);
  return statement;
}

bool cleared(std::optional<int> list, int candidate) {
  return !list || *list == candidate;
}

void clearLists(frmMain& window, std::optional<int> list) {
  StartProgress(window, platform::LoadResString(522), static_cast<int>(window.lvPrograms.ListItems.Count()) + 1);
  for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i) {
    platform::ListItem& row = window.lvPrograms.ListItems.Item(i);
    StartStep(window, row.Text);
    if (window.inScope(row)) {
      window.ProgramInWork = row.Key();
      openProgramDatabase(row.Tag)->Execute(clearStatement(list));
      for (int candidate = 0; candidate < kSynonymsList; ++candidate)
        if (cleared(list, candidate)) row.setSubItems(static_cast<std::size_t>(candidate) + 1, PadCount("0"));
      // The lists on the screen are those of the loaded program: they go with its rows, whatever becomes of a later
      // program.
      for (int candidate = 0; candidate < kSynonymsList && row.Key() == window.LoadedProgram; ++candidate)
        if (cleared(list, candidate)) listOf(window, candidate).ListItems.Clear();
      window.ProgramInWork.clear();
    }
    FinishStep(window, 1);
  }
  StartStep(window, "");
  FinishStep(window, 1);
  FinishProgress(window);
  RefreshSynonymsPane(window);
  UpdateCommandStates(window); // last: the Synonyms list may be the one in front
}

} // namespace

void mnuEditClearList_Click(frmMain& window, int Index) {
  clearLists(window, Index);
}
void mnuEditClearAll_Click(frmMain& window) {
  clearLists(window, std::nullopt);
}

} // namespace tarnsift
