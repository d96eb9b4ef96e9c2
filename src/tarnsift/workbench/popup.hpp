#pragma once

#include <string_view>

#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Pops a menu up at the left edge of a toolbar button, under the toolbar.
inline void popupUnderButton(frmMain& window, std::string_view button, std::string_view menu) {
  const double x = window.cbCoolBar.Left + window.tbToolbar.Left + window.tbToolbar.Button(button).Left;
  const double y = window.cbCoolBar.Top + window.tbToolbar.Top + window.tbToolbar.Height;
  platform::screen().popupMenu(window, window.menu(menu), x, y);
}

} // namespace tarnsift
