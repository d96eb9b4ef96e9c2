#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>

#include "platform/controls/form.hpp"
#include "platform/runtime/collection.hpp"
#include "tarnsift/session/host.hpp"

namespace tarnsift {

/// The main window: its controls and the state that its commands share. Commands are free functions on it.
class frmMain : public platform::Form {
 public:
  frmMain();

  // Controls.
  platform::CoolBar& cbCoolBar;
  platform::Toolbar& tbToolbar;
  platform::ProgressBar& pbProgress;
  platform::ListView& lvPrograms;
  platform::TabStrip& tsLists;
  std::array<platform::ListView*, 4> lvList; ///< index: status value; 3 is the Synonyms list
  platform::CommonDialog& dlgCommon;
  platform::MenuItem& menu(std::string_view name, int index = -1) const { return get<platform::MenuItem>(name, index); }

  // The host's controls in this window; made anew at each loading.
  Ref<tarnsift::KVWorkSpace> KVWS;
  Ref<tarnsift::KVSource> KVSource;
  Ref<tarnsift::Splitter> Splitter;
  Ref<BarelineBox> blbSource;
  Ref<tarnsift::ReportWriter> ReportWriter;

  // The loaded program and its lists.
  std::string LoadedProgram; ///< key in lvPrograms; "" before the first load
  int ActiveList = 0;        ///< the list last in front
  bool LoadingLists = false;
  bool ReloadPending = false; ///< the program changed during a load
  std::shared_ptr<platform::Database> ProgramDatabase;
  std::unique_ptr<platform::Recordset> ConstructsTable; ///< table Constructs with index ID
  std::string ProgramInWork; ///< key of the row that a command is changing; "" between programs

  // Options.
  Ref<tarnsift::ProjectOptions> ProjectOptions;
  bool ApplySelected = false; ///< commands over programs take the selected rows only
  std::string DefaultSearchName;
  std::string SynonymRelations; ///< quoted relation kinds joined by ", "
  bool ShowRedefines = false;
  bool ViewAllRedefines = false;
  platform::Collection<std::string> ColumnNames;
  platform::Collection<std::string> ColumnTypes;

  // The filter drop-down.
  bool SearchPopupOpen = false;
  int PendingSearchTarget = -1;

  // Progress.
  Ref<tarnsift::ActivityLog> ActivityLog;
  std::string SavedCaption;

  /// Public operations by name for callers at run time; filled by the wiring.
  std::unordered_map<std::string, std::function<Value(std::span<Value>)>, platform::IgnoringCaseHash,
                     platform::IgnoringCaseEqual>
      members;
  Value Invoke(std::string_view member, std::span<Value> arguments) override;

  /// Whether a command over programs takes this row.
  bool inScope(const platform::ListItem& program) const { return !ApplySelected || program.Selected(); }
};

/// The one window, made and wired at first use.
frmMain& theWindow();
/// Whether the window was made already.
bool windowExists();

/// While one lives: the hourglass.
class Hourglass {
 public:
  explicit Hourglass(platform::Form& form) : m_form(form) { show(platform::kPointerHourglass); }
  ~Hourglass() { show(platform::kPointerDefault); }
  Hourglass(const Hourglass&) = delete;
  Hourglass& operator=(const Hourglass&) = delete;

 private:
  void show(int pointer) {
    m_form.MousePointer = pointer;
    m_form.Changed.raise();
  }
  platform::Form& m_form;
};

} // namespace tarnsift
