#pragma once

#include <memory>

#include "platform/files/files.hpp"
#include "tarnsift/lists/counts.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// One program while a command over programs changes it: a connection of its own and the changes of its counts. When
/// the work ends early the row is left named in `ProgramInWork`, so that its counts can be made anew.
class ProgramWork {
 public:
  ProgramWork(frmMain& window, platform::ListItem& program)
      : row(program), onScreen(program.Key() == window.LoadedProgram), m_window(window) {
    m_window.ProgramInWork = row.Key();
    database = openProgramDatabase(row.Tag);
  }
  /// The counts go to the row.
  void finish() {
    addCounters(row, counters);
    m_window.ProgramInWork.clear();
  }

  platform::ListItem& row;
  const bool onScreen; ///< its lists are those on the screen
  std::shared_ptr<platform::Database> database;
  Counters counters{};

 private:
  frmMain& m_window;
};

/// A program's analysis store, closed at the end.
class OpenStore {
 public:
  explicit OpenStore(const platform::ListItem& program)
      : m_store(theProgramStore().Open(platform::nativePath(belowBase(program.Tag)),
                                       theRepositoryAccess().StoreClassOf(program.Key()))) {}
  ~OpenStore() { m_store->Close(); }
  OpenStore(const OpenStore&) = delete;
  OpenStore& operator=(const OpenStore&) = delete;
  AnalysisStore* operator->() const { return m_store.get(); }

 private:
  Ref<AnalysisStore> m_store;
};

/// Gathers the changes of all lists of the window.
class ListBatches {
 public:
  explicit ListBatches(frmMain& window)
      : m_programs(window.lvPrograms), m_working(*window.lvList[0]), m_affected(*window.lvList[1]),
        m_clean(*window.lvList[2]) {}

 private:
  platform::ListView::Batch m_programs, m_working, m_affected, m_clean;
};

} // namespace tarnsift
