#pragma once

#include <QObject>
#include <memory>
#include <string>

#include "desktop/start/recent_projects.hpp"

namespace desktop {

class Session;
class StartWindow;

/// What is on the screen: the start page, or a project in its window. A window that was opened from the page leads back
/// to it when it is closed; any other close ends the program.
class Desk final : public QObject {
 public:
  explicit Desk(tarnsift::Ref<tarnsift::SettingsStore> settings);
  ~Desk() override;

  /// Shows the start page, with a sentence about what went wrong before.
  StartWindow& showStart(const std::string& notice = {});
  /// Opens a project without the page; an empty name is the only project of the base folder. False when the window
  /// closed while it opened. Throws platform::Error when it cannot be opened; `told` says whether the analyst knows
  /// why.
  bool open(const RecentProject& project);
  bool told() const { return m_told; }

  tarnsift::SettingsStore& settings() { return *m_settings; }
  StartWindow* start() { return m_start.get(); }
  Session* session() { return m_session.get(); }

 private:
  void openFromStart(const RecentProject& project);
  void sessionClosed();
  tarnsift::Ref<tarnsift::SettingsStore> m_settings;
  std::unique_ptr<StartWindow> m_start;
  std::unique_ptr<Session> m_session;
  bool m_told = false;
};

} // namespace desktop
