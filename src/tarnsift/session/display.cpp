#include "tarnsift/session/display.hpp"

#include "platform/runtime/application.hpp"
#include "platform/runtime/string_table.hpp"
#include "tarnsift/lists/counts.hpp"
#include "tarnsift/options/columns.hpp"
#include "tarnsift/options/option_tree.hpp"
#include "tarnsift/search/filter.hpp"
#include "tarnsift/search/synonym_options.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/session/layout.hpp"
#include "tarnsift/store/found_items.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/workbench/command_states.hpp"
#include "tarnsift/workbench/load_captions.hpp"
#include "tarnsift/workbench/panes.hpp"
#include "tarnsift/workbench/progress.hpp"
#include "tarnsift/workbench/split.hpp"

namespace tarnsift {

namespace {

using platform::App;
using platform::LoadResString;

void showIdentity(frmMain& window) {
  ProductStrings& strings = theProductStrings();
  const std::string toolName = strings.Text("Tarnsift.Name");
  App().Title = toolName;
  window.menu("mnuHelpWindow").Caption = theCaptionText().Format(LoadResString(178), {toolName});
  window.menu("mnuHelpAbout").Caption = theCaptionText().Format(LoadResString(179), {strings.Text("Product.Name")});
  window.Icon = strings.Picture("Product.Icon");
  globals().ProjectName = orvaneName(7);
  window.Caption = toolName + " - " + orvaneName(6) + " (" + globals().ProjectName + ") ";
  strings.ApplyToForm(window);
}

void attachToHost(frmMain& window) {
  window.Splitter->setRedraw(false);
  callFrontend("Initiate", Ref<Object>(&window));
  window.ActivityLog = callFrontend("Log").as<tarnsift::ActivityLog>();
  window.ActivityLog->Attach({});
  window.KVWS->RegisterObject("", "FE", globals().Frontend);
  window.KVWS->RegisterControl(*window.KVWS, "KVWS");
  const auto options = callFrontend("GlobalOptions").as<tarnsift::ProjectOptions>();
  const platform::Node component =
      options->Document().selectSingleNode("//CASE[@ID='Kelvane']/LIST[@NAME='Components']/CASE[@NAME='KVSource']");
  window.KVSource->Attach(*window.KVWS, "KVSource", component ? component.getAttribute("CAPTION").asText() : "Source");
  window.KVWS->setOwnerForm(&window);
  Form_Resize(window);
}

void openSessionState(frmMain& window) {
  DisplayLog(window);
  window.LoadingLists = false;
  window.LoadedProgram.clear();
  window.ReloadPending = false;
  globals().Closing = false;
  window.ProjectOptions = callFrontend("ProjectOptions").as<tarnsift::ProjectOptions>();
  globals().OptionsRoot = window.ProjectOptions->Document().selectSingleNode("//CASE[@ID='Tarnsift']");
  if (!globals().OptionsRoot)
    throw platform::Error("the project's option document has no branch CASE 'Tarnsift'; run upgrade-options");
  window.ColumnNames = {};
  window.ColumnTypes = {};
  ApplyColumnChoice(window, {});
  UpdateCommandStates(window);
  // The document's own object: connected anew for every session, so a second Run does not answer twice.
  window.ProjectOptions->FLO_Saved.clear();
  window.ProjectOptions->FLO_Saved.connect([&window] { FLO_Saved(window); });
}

void collectProjects() {
  Globals& session = globals();
  session.FolderNames = {};
  for (auto folders = theRepositoryAccess().Repository()->SelectObjects("FOLDER", "", ""); !folders->AtEnd();
       folders->MoveNext()) {
    const std::string name = EscapeColumnName(folders->Current()->Attribute("Name").asText());
    session.FolderNames.Add(name, name);
  }
}

bool isVerified(RepositoryObject& program) {
  const std::string file = program.Attribute("Kelvane").asText();
  return !file.empty() && theFileProbe().FileExists(belowBase(file), false) &&
         program.Attribute("DataRelations").asBool();
}

// Modified is in microseconds since 1970 UTC; Null counts as not later.
bool modifiedAfter(RepositoryObject& program, std::chrono::system_clock::time_point date) {
  const Value modified = program.Attribute("Modified");
  if (modified.isNull()) return false;
  return modified.asInteger() > std::chrono::duration_cast<std::chrono::microseconds>(date.time_since_epoch()).count();
}

void takeCounts(platform::ListItem& row, std::string line) {
  row.setSubItems(1, PadCount(Split(line, "\t")));
  row.setSubItems(2, PadCount(Split(line, "\t")));
  row.setSubItems(3, PadCount(line));
}

// A program whose database cannot be read is not shown; the log says why.
void addProgram(frmMain& window, RepositoryObject& program, const FoundItems& found) {
  const std::string id = program.Id();
  platform::ListItem& row = window.lvPrograms.ListItems.Add(id, program.Attribute("Name").asText());
  row.Tag = program.Attribute("Kelvane").asText();
  row.setSelected(false);
  if (KeyExists(found.lines, id) && !modifiedAfter(program, found.date)) {
    takeCounts(row, found.lines.Item(id));
    return;
  }
  try {
    window.ProgramDatabase = openProgramDatabase(row.Tag);
    UpgradeProgramDatabase(*window.ProgramDatabase, id);
    countRows(row, *window.ProgramDatabase);
  } catch (const platform::DatabaseError& error) {
    window.ActivityLog->Write(row.Text + ": left out, verify it again: " + error.what());
    window.lvPrograms.ListItems.Remove(id);
  }
}

void linkPrograms(frmMain& window, const FoundItems& found) {
  const Ref<Repository> repository = theRepositoryAccess().Repository();
  const Ref<RepositorySchema> schema = repository->Schema();
  platform::ListView::Batch rows(window.lvPrograms);
  for (const Ref<RepositoryType>& type : schema->ObjectTypes()) {
    if ((type->Flags() & schema->TypeFlags("PROGRAMCODE")) == 0) continue;
    const auto programs = repository->SelectObjects(type->Name(), globals().ProjectObject->Id(), "");
    StartProgress(window, theProductStrings().Format(LoadResString(507), {type->DisplayName()}),
                  static_cast<int>(programs->Count()));
    for (; !programs->AtEnd(); programs->MoveNext()) {
      const auto program = programs->Current();
      StartStep(window, program->Attribute("Name").asText());
      if (isVerified(*program)) addProgram(window, *program, found);
      FinishStep(window, 1);
    }
    FinishProgress(window);
  }
}

void fillReportDropDown(frmMain& window) {
  platform::ToolbarButton& report = window.tbToolbar.Button("Report");
  report.ButtonMenus.clear();
  for (const platform::MenuItem* entry : window.menu("mnuFileReport").Children)
    if (entry->Visible()) report.addButtonMenu(entry->Caption);
}

void resetSorting(frmMain& window) {
  for (platform::ListView* list : window.lvList)
    theListViewSorter().SortBy(*list, std::nullopt);
  theListViewSorter().SortBy(window.lvPrograms, std::nullopt);
}

void chooseFirstProgram(frmMain& window) {
  if (window.lvPrograms.ListItems.Count() == 0) return;
  platform::ListItem& first = window.lvPrograms.ListItems.Item(1);
  window.lvPrograms.setSelectedItem(&first);
  window.KVWS->setCurrentProgram(first.Key());
}

} // namespace

void Form_Load(frmMain& window) {
  LoadCaptions(window);
  window.ReportWriter = theHostFactory().createReportWriter();
  window.ReportWriter->setOutputFolder(orvaneName(4) + "\\Output");
}

void Display(frmMain& window) {
  window.load();
  showIdentity(window);
  attachToHost(window);
  buildPanes(window);
  window.MousePointer = platform::kPointerHourglass;
  window.setEnabled(false);
  openSessionState(window);
  collectProjects();
  const FoundItems found = readFoundItems();
  globals().StatusColumn = statusColumnOf(globals().ProjectObject->Attribute("Name").asText());
  globals().ClassificationColumn = classificationColumnOf(globals().ProjectObject->Attribute("Name").asText());
  window.lvPrograms.ListItems.Clear();
  linkPrograms(window, found);
  const std::string count = std::to_string(window.lvPrograms.ListItems.Count());
  window.Splitter->Panes("Programs").setCaption(theProductStrings().Format(LoadResString(508), {count}));
  window.Splitter->Panes("Lists").setCaption(LoadResString(505));
  if (window.lvPrograms.ListItems.Count() == 0)
    platform::screen().messageBox(LoadResString(509), platform::kExclamation, App().Title);
  fillReportDropDown(window);
  resetSorting(window);
  window.ApplySelected = optionIsOn("./BOOL[@NAME='ApplySelected']");
  ReadSynonymOptions(window);
  window.DefaultSearchName = optionValue("./TEXT[@NAME='DefaultSearchName']");
  chooseFirstProgram(window);
  platform::ignoring([&] { window.lvPrograms.SetFocus(); });
  UpdateSearchCommands(window);
  window.setEnabled(true);
  window.MousePointer = platform::kPointerDefault;
}

} // namespace tarnsift
