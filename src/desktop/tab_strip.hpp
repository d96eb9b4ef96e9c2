#pragma once

#include <QTabBar>

#include "desktop/connect_while.hpp"
#include "platform/controls/bars.hpp"

namespace desktop {

class QtScreen;

/// The tabs of a tab strip; what they show lies below them in the same pane.
class TabStripWidget final : public QTabBar {
 public:
  TabStripWidget(platform::TabStrip& model, QtScreen& screen, QWidget* parent);
  void sync();
  std::function<void()> afterEvent;

 protected:
  void focusInEvent(QFocusEvent* event) override;

 private:
  void place();
  platform::TabStrip& m_model;
  QtScreen& m_screen;
  Lifetime m_lifetime = makeLifetime();
  bool m_syncing = false;
};

} // namespace desktop
