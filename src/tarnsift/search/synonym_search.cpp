#include "tarnsift/search/synonym_search.hpp"

#include "platform/runtime/string_table.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/options/option_tree.hpp"
#include "tarnsift/search/frmFindSynonyms.hpp"
#include "tarnsift/search/program_work.hpp"
#include "tarnsift/search/relatives.hpp"
#include "tarnsift/search/set_status.hpp"
#include "tarnsift/search/synonym_view.hpp"
#include "tarnsift/workbench/command_states.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift {

namespace {

struct Walk {
  int From = 0;
  int To = 0;
  bool Override = false;
};

// The walk through one program.
class ProgramWalk {
 public:
  ProgramWalk(frmMain& window, platform::ListItem& row, const Walk& walk)
      : m_window(window), m_program(window, row), m_walk(walk),
        m_table(m_program.database->OpenRecordset("Constructs")) {
    m_table->setIndex("ID");
    if (m_window.ShowRedefines && m_window.ViewAllRedefines) m_largestSize = largestSize(*m_program.database);
  }

  void run() {
    const auto seeds = m_program.database->OpenRecordset("select * from Constructs "
                                                         "where " +
                                                         globals().StatusColumn + "=" + std::to_string(m_walk.From));
    for (; !seeds->Eof(); seeds->MoveNext()) {
      const Seed seed = seedAt(*seeds);
      if (!m_window.SynonymRelations.empty())
        for (const int Side : {1, 2})
          followRelations(seed, Side);
      if (seed.size != 0 && m_window.ShowRedefines) followRedefinitions(seed);
    }
    m_program.finish();
  }

 private:
  void followRelations(const Seed& seed, int Side) {
    for (auto rows = openRelated(*m_program.database, seed, Side, m_window.SynonymRelations); !rows->Eof();
         rows->MoveNext()) {
      if (platform::equalsIgnoringCase(rows->Field("KVID").asText(), seed.key)) continue;
      place(*rows, rows->Field("RelID").asText() + " of " + seed.name);
    }
  }

  void followRedefinitions(const Seed& seed) {
    const auto rows = m_window.ViewAllRedefines ? openOverlapping(*m_program.database, seed, m_largestSize)
                                                : openSameRange(*m_program.database, seed);
    for (; !rows->Eof(); rows->MoveNext())
      place(*rows, "redef of " + seed.name);
  }

  // A name is placed when it is in no list or, with Override, in another one than the seeds'. The status is read from
  // the row itself: an earlier seed of this run may have placed it.
  void place(const platform::Recordset& candidate, const std::string& note) {
    if (platform::equalsIgnoringCase(candidate.Field("Name").asText(), "FILLER")) return;
    m_table->Seek("=", candidate.Field("KVID"));
    if (m_table->NoMatch()) return;
    const Value status = m_table->Field(globals().StatusColumn);
    if (!status.isNull() && (!m_walk.Override || status.asInteger() == m_walk.From)) return;
    SetConstructStatus(m_window, *m_table, m_walk.To, m_program.counters, m_program.onScreen, note);
  }

  frmMain& m_window;
  ProgramWork m_program;
  const Walk& m_walk;
  std::unique_ptr<platform::Recordset> m_table;
  std::int64_t m_largestSize = 0;
};

} // namespace

void mnuFileSynonyms_Click(frmMain& window) {
  int From = 0;
  int To = 0;
  if (theFindSynonymsDialog().SelectParams(window, From, To)) FindSynonyms(window, From, To);
}

void FindSynonyms(frmMain& window, int From, int To) {
  const Walk walk{From, To, optionIsOn(".//GROUP[@NAME='SynonymSearch']/BOOL[@NAME='OverrideStatus']")};
  StartProgress(window, platform::LoadResString(526), static_cast<int>(window.lvPrograms.ListItems.Count()));
  {
    const ListBatches batches(window);
    for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i) {
      platform::ListItem& row = window.lvPrograms.ListItems.Item(i);
      if (!window.inScope(row)) continue;
      StartStep(window, row.Text);
      ProgramWalk(window, row, walk).run();
      FinishStep(window, 1);
    }
  }
  FinishProgress(window);
  RefreshSynonymsPane(window);
  UpdateCommandStates(window);
}

} // namespace tarnsift
