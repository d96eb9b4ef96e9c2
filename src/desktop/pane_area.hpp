#pragma once

#include <QWidget>
#include <map>
#include <string>

#include "desktop/connect_while.hpp"
#include "orvane/splitter.hpp"

class QToolButton;

namespace desktop {

/// The inner area of the window: draws the panes' caption bars and the sashes between them. The controls lie on it
/// where the component has put them.
class PaneArea final : public QWidget {
 public:
  PaneArea(tarnsift::Ref<orvane::PaneTree> panes, QWidget* parent);

  /// The caption bars and buttons follow the tree.
  void sync();
  std::function<void(const std::string& key)> onHide;     ///< the close button of a pane
  std::function<void(const std::string& key)> onActivate; ///< a click on its caption bar
  std::function<void()> onResized;
  /// Moves the sash at an edge of the active pane by key: -1 or 1 to the left or right, or up or down.
  void nudge(bool sideBySide, int by);

  static orvane::PaneMeasures measures();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  int sashAt(const QPoint& at) const;
  void hover(int sash);
  QToolButton* buttonOf(const std::string& key);
  tarnsift::Ref<orvane::PaneTree> m_panes;
  Lifetime m_lifetime = makeLifetime();
  std::map<std::string, QToolButton*> m_buttons;
  int m_hovered = -1;
  int m_dragged = -1;
  int m_grip = 0; ///< of the pointer within the dragged sash, pixels
};

} // namespace desktop
