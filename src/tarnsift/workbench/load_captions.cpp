#include "tarnsift/workbench/load_captions.hpp"

#include "platform/runtime/string_table.hpp"
#include "tarnsift/workbench/commands.hpp"

namespace tarnsift {

namespace {

using platform::LoadResString;

struct ListCaptions {
  std::size_t list;
  int name;
  int comment;
};
constexpr ListCaptions kListCaptions[] = {{0, 100, 101}, {2, 102, 103}, {1, 104, 105}, {3, 128, 129}};
constexpr int kFirstProgramColumn = 106;
constexpr int kFirstTab = 125;

// The two with the product's name are built when the session's product is known.
constexpr int kFirstNamedHelpEntry = 178;

} // namespace

void LoadCaptions(frmMain& window) {
  for (const auto& captions : kListCaptions) {
    auto& headers = window.lvList[captions.list]->ColumnHeaders;
    headers.Item(1).Text = LoadResString(captions.name);
    headers.Item(headers.IndexOf("Comment")).Text = LoadResString(captions.comment);
  }
  for (int i = 0; i < 4; ++i)
    window.lvPrograms.ColumnHeaders.Item(static_cast<std::size_t>(i) + 1).Text = LoadResString(kFirstProgramColumn + i);
  for (int i = 0; i < 3; ++i)
    window.tsLists.Tabs[static_cast<std::size_t>(i)].Caption = LoadResString(kFirstTab + i);

  std::size_t position = 0;
  for (const ButtonEntry& entry : buttonEntries()) {
    platform::ToolbarButton& button = window.tbToolbar.Button(++position);
    if (entry.toolTip) button.ToolTipText = LoadResString(entry.toolTip);
    button.ButtonMenus.clear();
    for (const int id : entry.dropDown)
      if (id) button.addButtonMenu(LoadResString(id));
  }
  for (const MenuEntry& entry : menuEntries())
    if (entry.caption && entry.caption < kFirstNamedHelpEntry)
      window.menu(entry.name, entry.index).Caption = LoadResString(entry.caption);
}

} // namespace tarnsift
