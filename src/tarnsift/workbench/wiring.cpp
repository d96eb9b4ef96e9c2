#include "tarnsift/workbench/wiring.hpp"

#include "platform/runtime/application.hpp"
#include "tarnsift/lists/counts.hpp"
#include "tarnsift/lists/load.hpp"
#include "tarnsift/lists/selection.hpp"
#include "tarnsift/session/display.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/close.hpp"
#include "tarnsift/workbench/command_states.hpp"
#include "tarnsift/workbench/commands.hpp"
#include "tarnsift/workbench/panes.hpp"
#include "tarnsift/workbench/progress.hpp"
#include "tarnsift/workbench/split.hpp"

namespace tarnsift {

namespace {

// A command that failed half way leaves its program's counts to be made anew and its lists to be loaded again.
void repairProgramInWork(frmMain& window) {
  const std::string key = std::exchange(window.ProgramInWork, {});
  platform::ListItem* row = key.empty() ? nullptr : window.lvPrograms.ListItems.find(key);
  if (!row) return;
  platform::ignoring([&] { countRows(*row, *openProgramDatabase(row->Tag)); });
  if (key != window.LoadedProgram) return;
  window.LoadedProgram.clear();
  KVWS_ProgramChanged(window);
}

// Runs a handler. Between two sessions there is nothing that it could work on. An error ends the command: the window
// answers again, the counts are true, and the analyst is told once.
void guard(frmMain& window, const std::function<void()>& handler) {
  if (!window.KVWS) return;
  try {
    handler();
  } catch (const platform::Error& error) {
    if (progressRuns(window)) FinishProgress(window);
    window.MousePointer = platform::kPointerDefault;
    const std::string text = error.what();
    repairProgramInWork(window);
    if (window.Splitter) platform::ignoring([&] { UpdateCommandStates(window); });
    platform::screen().messageBox(text, platform::kCritical, platform::App().Title);
  }
}

// What the analyst saw of the session before is gone.
void emptyControls(frmMain& window) {
  for (platform::ListView* list :
       {&window.lvPrograms, window.lvList[0], window.lvList[1], window.lvList[2], window.lvList[3]}) {
    list->ListItems.Clear();
    list->sortBy(std::nullopt);
  }
  window.tsLists.reset();
  window.ActiveControl = nullptr;
}

// The host's controls live from one loading of the window to its close.
void createHostControls(frmMain& window) {
  HostFactory& factory = theHostFactory();
  window.KVWS = factory.createWorkspace();
  window.KVSource = factory.createSource();
  window.Splitter = factory.createSplitter();
  window.blbSource = factory.createBarelineBox();
  window.ActiveList = 0;
  window.SearchPopupOpen = false;
  window.PendingSearchTarget = -1;
  window.KVWS->ProgramChanged.connect([&window] { KVWS_ProgramChanged(window); });
  window.KVWS->SourceChanged.connect([&window] { KVWS_SourceChanged(window); });
  window.KVSource->GotFocus.connect([&window] { guard(window, [&] { KVSource_GotFocus(window); }); });
  window.Splitter->PanesArranged.connect([&window] { Splitter_PanesArranged(window); });
  window.Splitter->PaneActivated.connect([&window](SplitterPane& pane) { Splitter_PaneActivated(window, pane); });
}

void wireForm(frmMain& window) {
  window.Load.connect([&window] {
    emptyControls(window);
    createHostControls(window);
    Form_Load(window);
  });
  window.Resize.connect([&window] { Form_Resize(window); });
  window.cbCoolBar.HeightChanged.connect([&window] { Form_Resize(window); });
  window.KeyDown.connect(
      [&window](int& code, int shift) { guard(window, [&] { Form_KeyDown(window, code, shift); }); });
  window.QueryUnload.connect([&window](bool& cancel) { Form_QueryUnload(window, cancel); });
  window.Unload.connect([&window](bool& cancel) { Form_Unload(window, cancel); });
}

void wireLists(frmMain& window) {
  platform::ListView& programs = window.lvPrograms;
  programs.KeyUp.connect([&window](int, int) { guard(window, [&] { lvPrograms_KeyUp(window); }); });
  programs.MouseUp.connect([&window](int button, int shift, double, double) {
    guard(window, [&] { lvPrograms_MouseUp(window, button, shift); });
  });
  programs.GotFocus.connect([&window] { guard(window, [&] { lvPrograms_GotFocus(window); }); });
  programs.ColumnClick.connect(
      [&window](std::size_t column) { guard(window, [&] { lvPrograms_ColumnClick(window, column); }); });
  for (int i = 0; i < 4; ++i) {
    platform::ListView& list = *window.lvList[static_cast<std::size_t>(i)];
    list.GotFocus.connect([&window, i] { guard(window, [&] { lvList_GotFocus(window, i); }); });
    list.KeyUp.connect(
        [&window, i](int code, int shift) { guard(window, [&] { lvList_KeyUp(window, i, code, shift); }); });
    list.MouseUp.connect([&window, i](int button, int shift, double, double) {
      guard(window, [&] { lvList_MouseUp(window, i, button, shift); });
    });
    list.ColumnClick.connect(
        [&window](std::size_t column) { guard(window, [&] { lvList_ColumnClick(window, column); }); });
  }
  window.tsLists.Click.connect([&window] { guard(window, [&] { tsLists_Click(window); }); });
  window.tsLists.GotFocus.connect([&window] { guard(window, [&] { tsLists_GotFocus(window); }); });
}

// The operations that others call by name.
void nameMembers(frmMain& window) {
  auto& members = window.members;
  members["Display"] = [&window](std::span<Value>) { return Display(window), Value(); };
  members["DisplayLog"] = [&window](std::span<Value>) { return DisplayLog(window), Value(); };
  members["StartProgress"] = [&window](std::span<Value> a) {
    return StartProgress(window, a[0].asText(), static_cast<int>(a[1].asInteger())), Value();
  };
  members["StartStep"] = [&window](std::span<Value> a) { return StartStep(window, a[0].asText()), Value(); };
  members["FinishStep"] = [&window](std::span<Value> a) {
    return FinishStep(window, static_cast<int>(a[0].asInteger())), Value();
  };
  members["FinishProgress"] = [&window](std::span<Value>) { return FinishProgress(window), Value(); };
  members["Split"] = [](std::span<Value> a) {
    std::string rest = a[0].asText();
    const std::string head = Split(rest, a.size() > 1 ? a[1].asText() : ";");
    a[0] = rest;
    return Value(head);
  };
}

} // namespace

void wire(frmMain& window) {
  buildCommands(window, guard);
  wireForm(window);
  wireLists(window);
  nameMembers(window);
}

} // namespace tarnsift
