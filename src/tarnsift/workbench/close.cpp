#include "tarnsift/workbench/close.hpp"

#include "tarnsift/session/globals.hpp"
#include "tarnsift/session/layout.hpp"
#include "tarnsift/store/found_items.hpp"

namespace tarnsift {

namespace {

// Set while the window of a failed session goes: saves nothing.
bool failedSession = false;

void unloadOtherForms(frmMain& window) {
  const auto forms = platform::loadedForms();
  for (auto form = forms.rbegin(); form != forms.rend(); ++form)
    if (*form != &window) (*form)->unload();
}

void letGo(frmMain& window) {
  window.ActivityLog = {};
  globals().Frontend = {};
  globals().ProjectObject = {};
  globals().OptionsRoot = {};
  if (window.KVSource) window.KVSource->Detach();
  if (window.KVWS) window.KVWS->Close();
  if (window.Splitter) window.Splitter->Release();
  window.ConstructsTable.reset();
  window.ProgramDatabase.reset();
  globals().FolderNames = {};
  window.ReportWriter = {};
  if (window.ProjectOptions) window.ProjectOptions->FLO_Saved.clear();
  window.ProjectOptions = {};
  window.LoadedProgram.clear();
  window.KVSource = {};
  window.KVWS = {};
  window.Splitter = {};
  window.blbSource = {};
}

} // namespace

void Form_QueryUnload(frmMain& window, bool& cancel) {
  if (!window.Enabled())
    cancel = true;
  else
    globals().Closing = true;
}

void Form_Unload(frmMain& window, bool& cancel) {
  if (!window.Enabled()) {
    cancel = true;
    return;
  }
  globals().Closing = true;
  unloadOtherForms(window);
  if (failedSession) {
    platform::ignoring([] { callFrontend("Terminate"); });
  } else {
    saveLayout(window);
    writeFoundItems(window.lvPrograms);
    callFrontend("Terminate");
  }
  letGo(window);
}

void mnuFileClose_Click(frmMain& window) {
  window.unload();
}

void closeFailed(frmMain& window) {
  failedSession = true;
  window.setEnabled(true);
  platform::ignoring([&] { window.unload(); });
  failedSession = false;
}

} // namespace tarnsift
