#pragma once

#include <QWidget>
#include <functional>

#include "desktop/connect_while.hpp"
#include "orvane/host.hpp"

namespace desktop {

/// What is drawn in the places of the host's controls: the source viewer `KVSource`, and above it the workspace's own
/// bar `KVWS`. The window becomes their parent.
struct HostViews {
  QWidget* source;
  QWidget* workspaceBar;
};

/// Keeps a widget where the component has put a control of the host. When the focus comes into the widget the control
/// raises GotFocus.
class HostView final : public QObject {
 public:
  HostView(tarnsift::HostControl& control, platform::Form& form, QWidget* widget);
  QWidget* widget() const { return m_widget; }
  std::function<void()> afterEvent;

 private:
  void place();
  tarnsift::HostControl& m_control;
  QWidget* m_widget;
  Lifetime m_lifetime = makeLifetime();
};

} // namespace desktop
