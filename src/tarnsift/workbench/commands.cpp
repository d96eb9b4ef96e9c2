#include "tarnsift/workbench/commands.hpp"

#include "platform/runtime/string_table.hpp"
#include "tarnsift/lists/comment.hpp"
#include "tarnsift/lists/move.hpp"
#include "tarnsift/lists/remove.hpp"
#include "tarnsift/lists/select.hpp"
#include "tarnsift/options/columns.hpp"
#include "tarnsift/reports/derive.hpp"
#include "tarnsift/reports/reports.hpp"
#include "tarnsift/search/filter.hpp"
#include "tarnsift/search/synonym_search.hpp"
#include "tarnsift/workbench/close.hpp"
#include "tarnsift/workbench/panes.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift {

namespace {

using platform::MenuItem;
using platform::ToolbarButton;

void report(frmMain& window, int index) {
  mnuFileReportType_Click(window, index);
}
void createFrom(frmMain& window, int index) {
  mnuFileCreateFrom_Click(window, index);
}
void searchTo(frmMain& window, int index) {
  mnuFileSearchTo_Click(window, index);
}
void synonyms(frmMain& window, int) {
  mnuFileSynonyms_Click(window);
}
void closeWindow(frmMain& window, int) {
  mnuFileClose_Click(window);
}
void viewLog(frmMain& window, int) {
  mnuViewLog_Click(window);
}
void helpTopics(frmMain& window, int) {
  mnuHelpTopics_Click(window);
}
void helpWindow(frmMain& window, int) {
  mnuHelpWindow_Click(window);
}
void helpAbout(frmMain& window, int) {
  mnuHelpAbout_Click(window);
}
void clearList(frmMain& window, int index) {
  mnuEditClearList_Click(window, index);
}
void clearAll(frmMain& window, int) {
  mnuEditClearAll_Click(window);
}
void removeUnused(frmMain& window, int index) {
  mnuFileRemoveUnused_Click(window, index);
}
void moveTo(frmMain& window, int index) {
  mnuMoveTo_Click(window, index);
}
void deleteEntries(frmMain& window, int) {
  mnuDelete_Click(window);
}
void selectByPattern(frmMain& window, int) {
  mnuSelect_Click(window);
}
void selectAll(frmMain& window, int) {
  mnuSelectAll_Click(window);
}
void comment(frmMain& window, int) {
  mnuComment_Click(window);
}
void viewPrograms(frmMain& window, int) {
  togglePane(window, "Programs");
}
void viewLists(frmMain& window, int) {
  togglePane(window, "Lists");
}
void viewSource(frmMain& window, int) {
  togglePane(window, "Source");
}
void viewSynonyms(frmMain& window, int) {
  togglePane(window, "Synonyms");
}
void viewColumns(frmMain& window, int) {
  mnuViewColumns_Click(window);
}
void viewOptions(frmMain& window, int) {
  mnuViewOptions_Click(window);
}
void filterButton(frmMain& window, int) {
  showFilters(window);
  UpdateSearchCommands(window);
}
void searchButton(frmMain& window, int) {
  popupSearch(window);
}
void reportButton(frmMain& window, int) {
  popupReport(window);
}

constexpr MenuEntry separator(std::string_view name, std::string_view parent) {
  return {name, -1, 0, parent, "", 0, nullptr};
}

constexpr MenuEntry kMenu[] = {
    {"mnuFile", -1, 130, "", "", 2400020, nullptr},
    {"mnuFileReport", -1, 131, "mnuFile", "", 2400020, nullptr},
    {"mnuFileReportType", 1, 132, "mnuFileReport", "", 0, report},
    {"mnuFileReportType", 2, 133, "mnuFileReport", "", 0, report},
    {"mnuFileReportType", 3, 134, "mnuFileReport", "", 0, report},
    {"mnuFileReportType", 4, 0, "mnuFileReport", "", 0, nullptr},
    {"mnuFileReportType", 5, 135, "mnuFileReport", "", 0, report},
    {"mnuFileReportType", 6, 136, "mnuFileReport", "", 0, report},
    separator("mnuFileSep1", "mnuFile"),
    {"mnuFileSearch", -1, 137, "mnuFile", "", 0, nullptr},
    {"mnuFileSearchTo", 0, 138, "mnuFileSearch", "", 0, searchTo},
    {"mnuFileSearchTo", 1, 139, "mnuFileSearch", "", 0, searchTo},
    {"mnuFileSearchTo", 2, 140, "mnuFileSearch", "", 0, searchTo},
    {"mnuFileSearchTo", 3, 141, "mnuFileSearch", "", 0, searchTo},
    {"mnuFileSynonyms", -1, 142, "mnuFile", "", 0, synonyms},
    separator("mnuFileSep5", "mnuFile"),
    {"mnuEditClear", -1, 143, "mnuFile", "", 0, nullptr},
    {"mnuEditClearList", 0, 144, "mnuEditClear", "", 0, clearList},
    {"mnuEditClearList", 1, 145, "mnuEditClear", "", 0, clearList},
    {"mnuEditClearList", 2, 146, "mnuEditClear", "", 0, clearList},
    separator("mnuEditClearSep1", "mnuEditClear"),
    {"mnuEditClearAll", -1, 147, "mnuEditClear", "", 0, clearAll},
    {"mnuFileUnused", -1, 148, "mnuFile", "", 0, nullptr},
    {"mnuFileRemoveUnused", 0, 149, "mnuFileUnused", "", 0, removeUnused},
    {"mnuFileRemoveUnused", 1, 150, "mnuFileUnused", "", 0, removeUnused},
    {"mnuFileRemoveUnused", 2, 151, "mnuFileUnused", "", 0, removeUnused},
    separator("mnuFileSep2", "mnuFile"),
    {"mnuFileCreate", -1, 152, "mnuFile", "", 0, nullptr},
    {"mnuFileCreateFrom", 0, 153, "mnuFileCreate", "", 0, createFrom},
    {"mnuFileCreateFrom", 1, 154, "mnuFileCreate", "", 0, createFrom},
    {"mnuFileCreateFrom", 2, 155, "mnuFileCreate", "", 0, createFrom},
    separator("mnuFileSep4", "mnuFile"),
    {"mnuFileClose", -1, 157, "mnuFile", "", 0, closeWindow},
    {"mnuEdit", -1, 158, "", "", 2400030, nullptr},
    {"mnuMoveTo", 0, 159, "mnuEdit", "F5", 0, moveTo},
    {"mnuMoveTo", 1, 160, "mnuEdit", "F6", 0, moveTo},
    {"mnuMoveTo", 2, 161, "mnuEdit", "F8", 0, moveTo},
    separator("mnuEditSep3", "mnuEdit"),
    {"mnuDelete", -1, 162, "mnuEdit", "Del", 0, deleteEntries},
    separator("mnuEditSep0", "mnuEdit"),
    {"mnuSelect", -1, 163, "mnuEdit", "", 0, selectByPattern},
    {"mnuSelectAll", -1, 164, "mnuEdit", "Ctrl+A", 0, selectAll},
    separator("mnuEditSep1", "mnuEdit"),
    {"mnuComment", -1, 165, "mnuEdit", "", 0, comment},
    {"mnuView", -1, 166, "", "", 2400040, nullptr},
    {"mnuViewPrograms", -1, 167, "mnuView", "", 0, viewPrograms},
    {"mnuViewLists", -1, 168, "mnuView", "", 0, viewLists},
    {"mnuViewSource", -1, 169, "mnuView", "", 0, viewSource},
    {"mnuViewSynonyms", -1, 170, "mnuView", "", 0, viewSynonyms},
    separator("mnuViewSep", "mnuView"),
    {"mnuViewLog", -1, 171, "mnuView", "", 0, viewLog},
    separator("mnuViewSep1", "mnuView"),
    {"mnuViewColumns", -1, 172, "mnuView", "", 0, viewColumns},
    separator("mnuViewSep2", "mnuView"),
    {"mnuViewOptions", -1, 173, "mnuView", "", 0, viewOptions},
    {"mnuHelp", -1, 176, "", "", 2400050, nullptr},
    {"mnuHelpTopics", -1, 177, "mnuHelp", "", 0, helpTopics},
    {"mnuHelpWindow", -1, 178, "mnuHelp", "", 0, helpWindow},
    separator("mnuHelpSep", "mnuHelp"),
    {"mnuHelpAbout", -1, 179, "mnuHelp", "", 0, helpAbout},
};

constexpr ButtonEntry kButtons[] = {
    {"Filter", 110, "Filter", {}, filterButton, -1},
    {"Search", 111, "Run", {112, 113, 114, 115}, searchButton, -1},
    {"Synonyms", 116, "Synonyms", {}, synonyms, -1},
    {"", 0, "", {}, nullptr, -1},
    {"Options", 117, "Options", {}, viewOptions, -1},
    {"", 0, "", {}, nullptr, -1},
    {"MoveWorking", 118, "MoveSuspicious", {}, moveTo, 0},
    {"MoveAccepted", 119, "MoveBad", {}, moveTo, 1},
    {"MoveRejected", 120, "MoveGood", {}, moveTo, 2},
    {"Delete", 121, "Delete", {}, deleteEntries, -1},
    {"Note", 122, "Note", {}, comment, -1},
    {"", 0, "", {}, nullptr, -1},
    {"Report", 123, "Report", {}, reportButton, -1},
    {"", 0, "", {}, nullptr, -1},
    {"Columns", 124, "Columns", {}, viewColumns, -1},
};

const ButtonEntry& entryOf(const ToolbarButton& button) {
  return *std::find_if(std::begin(kButtons), std::end(kButtons),
                       [&](const ButtonEntry& entry) { return entry.key == button.Key; });
}

// The pane follows the workspace even when a command has moved it.
void followWorkspace(frmMain& window) {
  const auto* row = window.lvPrograms.SelectedItem();
  if (!window.KVWS || !row || row->Key() == window.KVWS->CurrentProgram()) return;
  platform::ignoring(
      [&] { window.lvPrograms.setSelectedItem(&window.lvPrograms.ListItems.Item(window.KVWS->CurrentProgram())); });
}

// The entry's own text plays no part: its place does.
void dropDownChosen(frmMain& window, const platform::ButtonMenu& entry) {
  const int index = static_cast<int>(entry.Index);
  if (entry.ParentKey == "Report") mnuFileReportType_Click(window, index);
  if (entry.ParentKey == "Search") mnuFileSearchTo_Click(window, index - 1);
}

} // namespace

std::span<const MenuEntry> menuEntries() {
  return kMenu;
}
std::span<const ButtonEntry> buttonEntries() {
  return kButtons;
}

void buildCommands(frmMain& window, void (*guard)(frmMain&, const std::function<void()>&)) {
  for (const MenuEntry& entry : kMenu) {
    auto& item = window.add<MenuItem>(std::string(entry.name), entry.index);
    if (entry.caption == 0) item.Caption = "-";
    item.Shortcut = entry.shortcut;
    item.HelpContextID = entry.helpContext;
    if (!entry.parent.empty()) {
      item.ParentMenu = &window.menu(entry.parent);
      item.ParentMenu->Children.push_back(&item);
    }
    if (entry.handler)
      item.Click.connect([&window, &entry, guard] { guard(window, [&] { entry.handler(window, entry.index); }); });
  }
  double left = 0;
  for (const ButtonEntry& entry : kButtons) {
    auto button = std::make_unique<ToolbarButton>();
    button->Key = entry.key;
    button->Image = entry.image;
    button->style = entry.key.empty()                            ? ToolbarButton::Style::separator
                    : entry.dropDown[0] || entry.key == "Report" ? ToolbarButton::Style::dropDown
                                                                 : ToolbarButton::Style::plain;
    button->Left = left;
    left += entry.key.empty() ? platform::screen().metrics().separatorWidth : platform::screen().metrics().buttonWidth;
    window.tbToolbar.Buttons.push_back(std::move(button));
  }
  window.tbToolbar.ButtonClick.connect([&window, guard](ToolbarButton& button) {
    guard(window, [&] {
      const ButtonEntry& entry = entryOf(button);
      if (entry.handler) entry.handler(window, entry.handlerIndex);
      followWorkspace(window);
    });
  });
  window.tbToolbar.ButtonMenuClick.connect(
      [&window, guard](const platform::ButtonMenu& entry) { guard(window, [&] { dropDownChosen(window, entry); }); });
}

} // namespace tarnsift
