#pragma once

#include <QApplication>
#include <QColor>
#include <string>

namespace desktop {

/// The colours of the window. Text on its ground has a contrast of at least 4.5 to 1.
struct Theme {
  bool dark = false;
  QColor window; ///< the ground between the panes
  QColor panel;  ///< caption bars, header bars, buttons
  QColor base;   ///< lists and text
  QColor border;
  QColor text;
  QColor muted;  ///< hints and what is not in front
  QColor accent; ///< the active pane, the focus, links
  QColor onAccent;
  QColor selected; ///< ground of marked rows while their list has the focus
  QColor selectedIdle;
  QColor hover;
  // The three lists, in texts and marks.
  QColor working;
  QColor affected;
  QColor clean;
  // Grounds of marked source lines, text on them is `text`.
  QColor mark;
  QColor markCurrent;
};

/// The theme in use; the light one before applyTheme().
const Theme& theme();

/// "light", "dark", or "" for what TARNSIFT_THEME says, else the system.
void applyTheme(QApplication& application, const std::string& choice);

/// Space between things, logical pixels; other distances are halves and multiples of it.
inline constexpr int kSpace = 8;

} // namespace desktop
