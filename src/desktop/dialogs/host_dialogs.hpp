#pragma once

#include <functional>

#include "desktop/qt_screen.hpp"
#include "orvane/host.hpp"

namespace desktop {

/// Puts the dialogs of the host in place: comment, About, the name of a derived project and its change sizes.
/// `commandInWork` is the menu entry whose command runs; it says whose counts the sizes are about. `host` and `screen`
/// must live until removeHostDialogs().
void addHostDialogs(orvane::Host& host, QtScreen& screen, std::function<const platform::MenuItem*()> commandInWork);
void removeHostDialogs(orvane::Host& host);

} // namespace desktop
