#include "tarnsift/search/merge.hpp"

#include "platform/files/files.hpp"
#include "platform/runtime/application.hpp"
#include "platform/runtime/string_table.hpp"
#include "tarnsift/lists/counts.hpp"
#include "tarnsift/options/option_tree.hpp"
#include "tarnsift/search/program_work.hpp"
#include "tarnsift/search/set_status.hpp"
#include "tarnsift/search/synonym_view.hpp"
#include "tarnsift/session/captions.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/command_states.hpp"
#include "tarnsift/workbench/progress.hpp"
#include "tarnsift/workbench/split.hpp"

namespace tarnsift {

namespace {

using platform::App;
using platform::LoadResString;

constexpr std::size_t kLongestCriterion = 40;

struct Merge {
  int Target = 0;
  bool Override = false;
  bool Refresh = false;
  std::string note;
  bool changed = false;
};

std::string noteFor(std::string criterionName) {
  const std::string tab = Split(criterionName, ":");
  std::string text = GetCaption("tab", tab) + ":" + GetCaption("criterion", criterionName);
  if (platform::countCodePoints(text) > kLongestCriterion)
    text = std::string(platform::firstCodePoints(text, kLongestCriterion)) + "...";
  return theProductStrings().Format(LoadResString(531), {text});
}

platform::Node matchElement(frmMain& window, const platform::Document& results) {
  const Ref<AnalysisStore> store = window.KVWS->AnalysisStore();
  if (!store) return {};
  return results.selectSingleNode("//MODELS/MODEL[@Name='" + store->Model()->Name() + "']" + "/MATCHES[@ListName='" +
                                  App().Title + "']");
}

bool hasNewMatches(const platform::Node& matches, const std::string& key) {
  platform::Node object;
  platform::ignoring([&] { object = matches.selectSingleNode("./OBJECT[@ObjID='" + key + "']"); });
  if (!object) return false;
  const Value count = object.getAttribute("NewCount");
  return !count.isNull() && count.asText() != "0";
}

void emptyTarget(frmMain& window, ProgramWork& program, Merge& merge) {
  const Globals& session = globals();
  const std::string target = std::to_string(merge.Target);
  const auto held = program.database->OpenRecordset("select count(*) as cnt "
                                                    "from Constructs where " +
                                                    session.StatusColumn + "=" + target);
  if (!held->Eof()) {
    program.counters.at(static_cast<std::size_t>(merge.Target)) -= held->Field("cnt").asInteger();
    merge.changed = true;
  }
  // The comments go first: they are found by the status.
  program.database->Execute("update Constructs "
                            "set " +
                            session.ClassificationColumn + "=Null " + "where " + session.StatusColumn + "=" + target);
  program.database->Execute("update Constructs "
                            "set " +
                            session.StatusColumn + "=Null " + "where " + session.StatusColumn + "=" + target);
  if (program.onScreen) window.lvList.at(static_cast<std::size_t>(merge.Target))->ListItems.Clear();
}

bool mustWrite(const Merge& merge, const Value& status) {
  return (status.isNull() && merge.Target != kDeleteTarget) || merge.Override ||
         (!status.isNull() && merge.Target == kDeleteTarget);
}

void placeMatches(frmMain& window, ProgramWork& program, const Merge& merge) {
  const auto table = program.database->OpenRecordset("Constructs");
  table->setIndex("ID");
  const OpenStore store(program.row);
  const auto rows = store->MatchLists()->Open(App().Title, orvaneName(7), "")->OpenRecordset();
  for (; !rows->Eof(); rows->MoveNext()) {
    table->Seek("=", rows->Field("KVID"));
    if (table->NoMatch() || !mustWrite(merge, table->Field(globals().StatusColumn))) continue;
    SetConstructStatus(window, *table, merge.Target, program.counters, program.onScreen, merge.note);
  }
}

void mergeProgram(frmMain& window, platform::ListItem& row, Merge& merge) {
  ProgramWork program(window, row);
  if (merge.Refresh && merge.Target != kDeleteTarget) emptyTarget(window, program, merge);
  placeMatches(window, program, merge);
  for (const auto counter : program.counters)
    merge.changed = merge.changed || counter != 0;
  program.finish();
}

} // namespace

void ApplySearchResults(frmMain& window, int Target) {
  if (!window.KVWS) return;
  const Ref<SearchHost> host = window.KVWS->SearchHost();
  Merge merge{.Target = Target,
              .Override = optionIsOn(".//BOOL[@NAME='OverrideStatus']"),
              .Refresh = optionIsOn(".//BOOL[@NAME='RefreshLists']"),
              .note = noteFor(host->LastSearchCriteriaName())};
  const platform::Document results = host->Options();
  const platform::Node matches = matchElement(window, results);
  StartProgress(window, LoadResString(532), static_cast<int>(window.lvPrograms.ListItems.Count()));
  {
    const ListBatches batches(window);
    for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i) {
      platform::ListItem& row = window.lvPrograms.ListItems.Item(i);
      StartStep(window, row.Text);
      if (!window.inScope(row) || !matches || !hasNewMatches(matches, row.Key())) continue;
      mergeProgram(window, row, merge);
      FinishStep(window, 1);
    }
  }
  FinishProgress(window);
  RefreshSynonymsPane(window);
  UpdateCommandStates(window);
  if (!merge.changed) platform::screen().messageBox(LoadResString(533), platform::kInformation, App().Title);
}

} // namespace tarnsift
