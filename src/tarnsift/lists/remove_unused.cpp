#include "platform/runtime/string_table.hpp"
#include "tarnsift/lists/entry.hpp"
#include "tarnsift/lists/remove.hpp"
#include "tarnsift/search/program_work.hpp"
#include "tarnsift/search/synonym_view.hpp"
#include "tarnsift/workbench/command_states.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift {

namespace {

// A name that the analysis does not know is no proof of being unused: it stays.
bool isUnused(const OpenStore& store, const std::string& kvid) {
  Ref<StoreConstruct> construct;
  platform::ignoring([&] { construct = store->ObjectById(kvid); });
  return construct && construct->Related("Instances")->AtEnd();
}

void removeFrom(frmMain& window, platform::ListItem& row, int Index) {
  ProgramWork program(window, row);
  const auto table = program.database->OpenRecordset("Constructs");
  const OpenStore store(row);
  for (; !table->Eof(); table->MoveNext()) {
    const Value status = table->Field(globals().StatusColumn);
    if (status.isNull() || status.asInteger() != Index) continue;
    const std::string kvid = table->Field("KVID").asText();
    if (!isUnused(store, kvid)) continue;
    --program.counters.at(static_cast<std::size_t>(Index));
    if (row.Key() == window.LoadedProgram) platform::ignoring([&] { listOf(window, Index).ListItems.Remove(kvid); });
    table->Edit();
    table->setField(globals().StatusColumn, Value());
    table->setField(globals().ClassificationColumn, Value());
    table->Update();
  }
  program.finish();
}

} // namespace

void mnuFileRemoveUnused_Click(frmMain& window, int Index) {
  StartProgress(window, platform::LoadResString(526), static_cast<int>(window.lvPrograms.ListItems.Count()));
  {
    const ListBatches batches(window);
    for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i) {
      platform::ListItem& row = window.lvPrograms.ListItems.Item(i);
      StartStep(window, row.Text);
      if (window.inScope(row)) removeFrom(window, row, Index);
      FinishStep(window, 1);
    }
  }
  FinishProgress(window);
  RefreshSynonymsPane(window);
  UpdateCommandStates(window);
}

} // namespace tarnsift
