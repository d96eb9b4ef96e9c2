#pragma once

#include <QListWidget>
#include <QWidget>

#include "orvane/activity_log.hpp"

namespace desktop {

/// The host's activity log under the panes. Shown and hidden by the log itself; its own buttons tell the log.
class LogPanel final : public QWidget {
 public:
  LogPanel(tarnsift::Ref<orvane::Log> log, QWidget* parent);
  ~LogPanel() override;

  /// Whether it shows has changed.
  std::function<void()> onShown;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void follow();
  void add(const std::string& line);
  tarnsift::Ref<orvane::Log> m_log;
  QListWidget* m_lines;
};

} // namespace desktop
