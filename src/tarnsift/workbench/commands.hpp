#pragma once

#include <span>
#include <string_view>

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// What an entry of the menus does; takes the index within its control array, or -1.
using CommandHandler = void (*)(frmMain&, int);

/// One entry of the menu tree. Parents stand before their children; rows of one parent are in the order of the screen.
struct MenuEntry {
  std::string_view name;
  int index = -1;          ///< within a control array
  int caption = 0;         ///< string id; 0: a separator
  std::string_view parent; ///< "" for the four menus
  std::string_view shortcut;
  int helpContext = 0;
  CommandHandler handler = nullptr; ///< null for menus and separators
};
std::span<const MenuEntry> menuEntries();

/// One button of the toolbar, left to right; an empty key is a separator.
struct ButtonEntry {
  std::string_view key;
  int toolTip = 0; ///< string id
  std::string_view image;
  std::array<int, 4> dropDown{}; ///< string ids of its drop-down entries; 0: none
  CommandHandler handler = nullptr;
  int handlerIndex = -1;
};
std::span<const ButtonEntry> buttonEntries();

/// Makes the menus and the buttons of a new window and ties their handlers. `guard` runs a handler and deals with its
/// error.
void buildCommands(frmMain& window, void (*guard)(frmMain&, const std::function<void()>&));

} // namespace tarnsift
