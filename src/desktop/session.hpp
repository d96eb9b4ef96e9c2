#pragma once

#include <memory>
#include <optional>
#include <string>

#include "desktop/host_view.hpp"
#include "desktop/qt_screen.hpp"

namespace desktop {

class MainWindow;
class SourceView;

/// One project open in a window: the host, the screen and the widgets. Dialogs and other services of the host that are
/// widgets are put in place by its constructor.
class Session {
 public:
  /// Throws platform::Error when the base folder or the project cannot be opened.
  Session(orvane::BaseFolder base, const std::string& project, tarnsift::Ref<tarnsift::SettingsStore> settings);
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Opens the window and fills it; returns when it is ready. Throws platform::Error when it could not be opened;
  /// `told` says whether the analyst has seen why.
  void start();
  bool told() const { return m_screen.errorsTold() > 0; }

  orvane::Host& host() { return *m_host; }
  QtScreen& screen() { return m_screen; }
  MainWindow* window() { return m_window.get(); }
  /// The window has closed; the session can go at the next turn of the loop.
  std::function<void()> onClosed;

 private:
  HostViews sourceViews();
  void addDialogs();
  bool editOptions(platform::Document& document, const std::string& path);
  std::optional<std::string> chooseCriterion(const std::string& start);
  QtScreen m_screen;
  std::unique_ptr<orvane::Host> m_host;
  std::unique_ptr<MainWindow> m_window;
  SourceView* m_source = nullptr; ///< in the window
};

} // namespace desktop
