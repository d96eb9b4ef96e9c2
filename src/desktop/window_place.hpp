#pragma once

#include <QMainWindow>

#include "tarnsift/session/host.hpp"

namespace desktop {

/// Puts a window where it was at its last close, within the screens of today; the first time in a good size in the
/// middle.
void restorePlace(QMainWindow& window, tarnsift::SettingsStore& settings);
void savePlace(const QMainWindow& window, tarnsift::SettingsStore& settings);

/// The base folder and project that were open last; empty before the first.
struct LastOpened {
  std::string base;
  std::string project;
};
LastOpened lastOpened(tarnsift::SettingsStore& settings);
void saveLastOpened(const LastOpened& last, tarnsift::SettingsStore& settings);

} // namespace desktop
