#include "desktop/pane_area.hpp"

#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>

#include "desktop/icons.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"

namespace desktop {

namespace {

QRect pixels(const orvane::TwipsRect& rect) {
  return toPixels(rect.left, rect.top, rect.width, rect.height);
}

} // namespace

orvane::PaneMeasures PaneArea::measures() {
  const int line = QFontMetrics(QApplication::font()).height();
  constexpr int kSash = 6;
  constexpr int kSmallest = 48;
  return {.sash = toTwips(kSash), .caption = toTwips(line + kSpace), .smallest = toTwips(kSmallest)};
}

PaneArea::PaneArea(tarnsift::Ref<orvane::PaneTree> panes, QWidget* parent)
    : QWidget(parent), m_panes(std::move(panes)) {
  setObjectName(QStringLiteral("paneArea"));
  setMouseTracking(true);
  m_panes->setMeasures(measures());
  connectWhile(m_panes->PanesArranged, m_lifetime, [this] { sync(); });
  connectWhile(m_panes->Changed, m_lifetime, [this] { update(); });
}

QToolButton* PaneArea::buttonOf(const std::string& key) {
  QToolButton*& button = m_buttons[key];
  if (button) return button;
  button = new QToolButton(this);
  button->setObjectName(QStringLiteral("hide") + text(key));
  button->setIcon(icon("Close"));
  button->setAutoRaise(true);
  button->setFocusPolicy(Qt::NoFocus);
  button->setToolTip(text(Text::ClosePane));
  button->setAccessibleName(text(Text::ClosePane) + QStringLiteral(": ") + text(key));
  connect(button, &QToolButton::clicked, this, [this, key] {
    if (onHide) onHide(key);
  });
  return button;
}

void PaneArea::sync() {
  std::map<std::string, bool> shown;
  for (const orvane::PaneFrame& frame : m_panes->frames()) {
    const QRect bar = pixels(frame.captionBar);
    QToolButton* button = buttonOf(frame.key);
    const int side = bar.height() - 4;
    button->setGeometry(bar.right() - side - 2, bar.top() + 2, side, side);
    button->setIconSize(QSize(side - 6, side - 6));
    button->setVisible(bar.width() > 2 * side);
    shown[frame.key] = true;
  }
  for (const auto& [key, button] : m_buttons)
    if (!shown.contains(key)) button->hide();
  update();
}

void PaneArea::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Theme& colours = theme();
  painter.fillRect(rect(), colours.window);
  for (const orvane::PaneFrame& frame : m_panes->frames()) {
    const QRect bar = pixels(frame.captionBar);
    painter.fillRect(pixels(frame.whole), colours.base);
    painter.fillRect(bar, colours.panel);
    painter.fillRect(bar.left(), bar.bottom(), bar.width(), 1, colours.border);
    if (frame.active) painter.fillRect(bar.left(), bar.top(), bar.width(), 2, colours.accent);
    QFont font = painter.font();
    font.setWeight(frame.active ? QFont::DemiBold : QFont::Normal);
    painter.setFont(font);
    painter.setPen(frame.active ? colours.text : colours.muted);
    const QRect room = bar.adjusted(kSpace, 1, -bar.height() - kSpace / 2, 0);
    painter.drawText(room, Qt::AlignVCenter | Qt::AlignLeft,
                     QFontMetrics(font).elidedText(text(frame.caption), Qt::ElideMiddle, room.width()));
  }
  const auto sashes = m_panes->sashes();
  const int lit = m_dragged >= 0 ? m_dragged : m_hovered;
  if (lit >= 0 && lit < static_cast<int>(sashes.size())) {
    const auto& sash = sashes[static_cast<std::size_t>(lit)];
    const QRect at = pixels(sash.at);
    painter.fillRect(sash.sideBySide ? at.adjusted(2, 0, -2, 0) : at.adjusted(0, 2, 0, -2), colours.accent);
  }
}

int PaneArea::sashAt(const QPoint& at) const {
  const auto sashes = m_panes->sashes();
  for (std::size_t i = 0; i < sashes.size(); ++i)
    if (pixels(sashes[i].at).contains(at)) return static_cast<int>(i);
  return -1;
}

void PaneArea::hover(int sash) {
  if (sash == m_hovered) return;
  m_hovered = sash;
  if (sash < 0)
    unsetCursor();
  else
    setCursor(m_panes->sashes()[static_cast<std::size_t>(sash)].sideBySide ? Qt::SplitHCursor : Qt::SplitVCursor);
  update();
}

void PaneArea::mousePressEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (event->button() != Qt::LeftButton) return;
  m_dragged = sashAt(at);
  if (m_dragged >= 0) {
    const auto sash = m_panes->sashes()[static_cast<std::size_t>(m_dragged)];
    m_grip = sash.sideBySide ? at.x() - pixels(sash.at).left() : at.y() - pixels(sash.at).top();
    return;
  }
  for (const orvane::PaneFrame& frame : m_panes->frames())
    if (pixels(frame.captionBar).contains(at) && onActivate) return onActivate(frame.key);
}

void PaneArea::mouseMoveEvent(QMouseEvent* event) {
  const QPoint at = event->position().toPoint();
  if (m_dragged < 0) return hover(sashAt(at));
  const auto sashes = m_panes->sashes();
  if (m_dragged >= static_cast<int>(sashes.size())) return;
  const bool across = sashes[static_cast<std::size_t>(m_dragged)].sideBySide;
  m_panes->moveSash(static_cast<std::size_t>(m_dragged), toTwips((across ? at.x() : at.y()) - m_grip));
}

void PaneArea::mouseReleaseEvent(QMouseEvent* event) {
  m_dragged = -1;
  hover(sashAt(event->position().toPoint()));
  update();
}

void PaneArea::nudge(bool sideBySide, int by) {
  const auto frames = m_panes->frames();
  const auto active = std::find_if(frames.begin(), frames.end(), [](const auto& frame) { return frame.active; });
  if (active == frames.end()) return;
  const auto sashes = m_panes->sashes();
  const QRect pane = pixels(active->whole);
  for (std::size_t i = 0; i < sashes.size(); ++i) {
    const QRect at = pixels(sashes[i].at);
    if (sashes[i].sideBySide != sideBySide || !at.adjusted(-1, -1, 1, 1).intersects(pane)) continue;
    const double edge = sideBySide ? sashes[i].at.left : sashes[i].at.top;
    return m_panes->moveSash(i, edge + toTwips(2 * kSpace * by));
  }
}

void PaneArea::leaveEvent(QEvent*) {
  if (m_dragged < 0) hover(-1);
}

void PaneArea::resizeEvent(QResizeEvent*) {
  if (onResized) onResized();
}

} // namespace desktop
