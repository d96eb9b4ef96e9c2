#pragma once

#include <QWidget>
#include <string>

#include "platform/controls/screen.hpp"

namespace desktop {

/// A message box with the buttons and the icon of `style` (platform::MessageStyle), in the window's language and look.
/// Line ends of any kind break the line.
platform::Answer showMessage(QWidget* parent, const std::string& message, int style, const std::string& title);

} // namespace desktop
