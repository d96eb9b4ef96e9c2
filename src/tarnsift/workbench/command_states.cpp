#include "tarnsift/workbench/command_states.hpp"

#include "tarnsift/store/program_database.hpp"

namespace tarnsift {

namespace {

struct States {
  std::array<bool, 3> move{};
  bool comment = false;
  bool select = false;
  bool remove = false;
};

States statesOf(frmMain& window) {
  States states;
  if (window.Splitter->Panes("Programs").IsActive()) return states;
  const platform::ListView& list = *window.lvList.at(static_cast<std::size_t>(window.ActiveList));
  const bool focused = list.SelectedItem() != nullptr;
  const bool any = list.ListItems.Count() > 0;
  for (int i = 0; i < 3; ++i)
    states.move[static_cast<std::size_t>(i)] = focused && i != window.ActiveList;
  states.comment = focused;
  states.select = any;
  states.remove = any && window.ActiveList != kSynonymsList;
  return states;
}

} // namespace

void UpdateCommandStates(frmMain& window) {
  const States states = statesOf(window);
  for (int i = 0; i < 3; ++i)
    window.menu("mnuMoveTo", i).Enabled = states.move[static_cast<std::size_t>(i)];
  window.menu("mnuComment").Enabled = states.comment;
  window.menu("mnuSelect").Enabled = states.select;
  window.menu("mnuSelectAll").Enabled = states.select;
  window.menu("mnuDelete").Enabled = states.remove;
  window.tbToolbar.Button("Note").Enabled = states.comment;
  window.tbToolbar.Button("MoveWorking").Enabled = states.move[0];
  window.tbToolbar.Button("MoveAccepted").Enabled = states.move[1];
  window.tbToolbar.Button("MoveRejected").Enabled = states.move[2];
  window.tbToolbar.Button("Delete").Enabled = states.remove;
}

} // namespace tarnsift
