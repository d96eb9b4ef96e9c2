#pragma once

#include <QIcon>
#include <string>

namespace desktop {

/// An icon of the window's own set by its key, drawn sharp at any size in the theme's colours; paler when disabled.
/// Keys: those of the toolbar's images, "Working", "Affected", "Clean", "App", "Find", "Next", "Previous", "Export",
/// "Close", "Minimize", "Folder", "Open", "Log", "Help", "Up", "Down", "Information", "Warning", "Error". An unknown
/// key gives an empty icon.
QIcon icon(const std::string& key);

/// The icon of a list: 1 Working, 2 Affected, 3 Clean; empty for others.
QIcon statusIcon(int smallIcon);

} // namespace desktop
