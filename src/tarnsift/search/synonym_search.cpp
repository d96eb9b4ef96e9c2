#include "tarnsift/search/synonym_search.hpp"

#include "platform/runtime/string_table.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/options/option_tree.hpp"
#include "tarnsift/search/frmFindSynonyms.hpp"
#include "tarnsift/search/program_work.hpp"
#include "tarnsift/search/set_status.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift {

namespace {

struct Walk {
  int From = 0;
  int To = 0;
  bool Override = false;
};

struct Seed {
  std::string key;
  std::string name;
  std::int64_t offset = 0;
  std::int64_t size = 0;
};

// The walk through one program.
class ProgramWalk {
 public:
  ProgramWalk(frmMain& window, platform::ListItem& row, const Walk& walk)
      : m_window(window), m_program(window, row), m_walk(walk), m_table(m_program.database->OpenRecordset("Constructs")) {
    m_table->setIndex("ID");
    if (m_window.ShowRedefines && m_window.ViewAllRedefines) m_largestSize = largestSize();
  }

  void run() {
    const auto seeds = m_program.database->OpenRecordset("select * from Constructs " "where " + globals().StatusColumn + "=" +
                                                         std::to_string(m_walk.From));
    for (; !seeds->Eof(); seeds->MoveNext()) {
      const Seed seed{seeds->Field("KVID").asText(), seeds->Field("Name").asText(), seeds->Field("Offset").asInteger(),
                      seeds->Field("Size").asInteger()};
      if (!m_window.SynonymRelations.empty())
        for (const int Side : {1, 2}) followRelations(seed, Side);
      if (seed.size != 0 && m_window.ShowRedefines) followRedefinitions(seed);
    }
    m_program.finish();
  }

 private:
  std::int64_t largestSize() {
    const auto largest = m_program.database->OpenRecordset("select max(Size) as largest from Constructs");
    return largest->Eof() ? 0 : largest->Field("largest").asInteger();
  }

  void followRelations(const Seed& seed, int Side) {
    const std::string side = std::to_string(Side);
    const std::string other = std::to_string(3 - Side);
    const auto rows = m_program.database->OpenRecordset("select distinct C.*, R.RelID " "from Relationships R, Constructs C "
                                                        "where C.KVID = R.KVID" + other + " " + " and R.KVID" + side + " = '" + seed.key + "' " +
                                                        " and R.RelID in (" + m_window.SynonymRelations + ")");
    for (; !rows->Eof(); rows->MoveNext()) {
      if (platform::equalsIgnoringCase(rows->Field("KVID").asText(), seed.key)) continue;
      place(*rows, rows->Field("RelID").asText() + " of " + seed.name);
    }
  }

  void followRedefinitions(const Seed& seed) {
    std::string statement = "select C.* " "from Constructs C " "where C.KVID <> '" + seed.key + "' ";
    if (m_window.ViewAllRedefines) {
      // No construct that reaches into the range begins further ahead of it than the largest one is long.
      statement += "and C.offset < " + std::to_string(seed.offset + seed.size) + " " + "and (C.offset + C.Size) > " + std::to_string(seed.offset) +
                   " " + "and C.offset > " + std::to_string(seed.offset - m_largestSize) + " ";
    } else {
      // The plus keeps the choice of index on the offset: sizes repeat, offsets hardly do.
      statement += "and C.offset = " + std::to_string(seed.offset) + " " + "and +C.Size = " + std::to_string(seed.size) + " ";
    }
    const auto rows = m_program.database->OpenRecordset(statement);
    for (; !rows->Eof(); rows->MoveNext()) place(*rows, "redef of " + seed.name);
  }

  // A name is placed when it is in no list or, with Override, in another one than the seeds'. The status is read from the
  // row itself: an earlier seed of this run may have placed it.
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
  const ListBatches batches(window);
  StartProgress(window, platform::LoadResString(526), static_cast<int>(window.lvPrograms.ListItems.Count()));
  for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i) {
    platform::ListItem& row = window.lvPrograms.ListItems.Item(i);
    if (!window.inScope(row)) continue;
    StartStep(window, row.Text);
    ProgramWalk(window, row, walk).run();
    FinishStep(window, 1);
  }
  FinishProgress(window);
}

} // namespace tarnsift
