#include "desktop/window_place.hpp"

#include <QGuiApplication>
#include <QScreen>
#include <charconv>

namespace desktop {

namespace {

constexpr const char* kApplication = "Tarnsift";
constexpr const char* kWindow = "Window";
constexpr const char* kLast = "Last";

std::optional<int> number(tarnsift::SettingsStore& settings, const char* key) {
  const std::string text = settings.GetSetting(kApplication, kWindow, key, "");
  int value = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || read.ec != std::errc() || read.ptr != text.data() + text.size()) return {};
  return value;
}

QRect firstPlace(const QRect& screen) {
  const QSize size(std::min(1360, screen.width() * 9 / 10), std::min(880, screen.height() * 9 / 10));
  return {screen.center() - QPoint(size.width() / 2, size.height() / 2), size};
}

} // namespace

void restorePlace(QMainWindow& window, tarnsift::SettingsStore& settings) {
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  const auto left = number(settings, "Left"), top = number(settings, "Top");
  const auto width = number(settings, "Width"), height = number(settings, "Height");
  QRect place = firstPlace(screen);
  if (left && top && width && height) {
    const QRect kept(*left, *top, std::max(*width, window.minimumWidth()), std::max(*height, window.minimumHeight()));
    const QScreen* under = QGuiApplication::screenAt(kept.center());
    if (under) place = kept.intersected(under->availableGeometry());
  }
  window.setGeometry(place);
  if (number(settings, "Maximized").value_or(0)) window.setWindowState(Qt::WindowMaximized);
}

void savePlace(const QMainWindow& window, tarnsift::SettingsStore& settings) {
  const QRect place = window.isMaximized() || window.isMinimized() ? window.normalGeometry() : window.geometry();
  const std::pair<const char*, int> values[] = {{"Left", place.left()},
                                                {"Top", place.top()},
                                                {"Width", place.width()},
                                                {"Height", place.height()},
                                                {"Maximized", window.isMaximized() ? 1 : 0}};
  for (const auto& [key, value] : values)
    settings.SaveSetting(kApplication, kWindow, key, std::to_string(value));
}

LastOpened lastOpened(tarnsift::SettingsStore& settings) {
  return {settings.GetSetting(kApplication, kLast, "Base", ""),
          settings.GetSetting(kApplication, kLast, "Project", "")};
}

void saveLastOpened(const LastOpened& last, tarnsift::SettingsStore& settings) {
  settings.SaveSetting(kApplication, kLast, "Base", last.base);
  settings.SaveSetting(kApplication, kLast, "Project", last.project);
}

} // namespace desktop
