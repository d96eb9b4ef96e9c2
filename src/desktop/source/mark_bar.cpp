#include "desktop/source/mark_bar.hpp"

#include <cmath>

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include "desktop/source/source_colours.hpp"

namespace desktop {

MarkBar::MarkBar(QWidget* parent) : QWidget(parent) {
  setFixedWidth(12);
  setCursor(Qt::PointingHandCursor);
}

void MarkBar::show(std::vector<orvane::SourceMark> marks, int lines) {
  m_marks = std::move(marks);
  m_lines = lines;
  update();
}

double MarkBar::placeOf(const orvane::SourceMark& mark) const {
  return m_lines < 2 ? 2 : 2 + (mark.place.line - 1) * (height() - 6.0) / (m_lines - 1);
}

void MarkBar::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const SourceColours colours(palette());
  painter.fillRect(rect(), colours.gutter);
  for (const orvane::SourceMark& mark : m_marks)
    painter.fillRect(QRectF(2, placeOf(mark), width() - 4, 3), colours.of(mark.kind));
}

int MarkBar::nearest(double y) const {
  int best = -1;
  for (int i = 0; i < static_cast<int>(m_marks.size()); ++i) {
    const auto away = [&](int at) { return std::abs(placeOf(m_marks[static_cast<std::size_t>(at)]) - y); };
    if (best < 0 || away(i) < away(best)) best = i;
  }
  return best;
}

void MarkBar::mousePressEvent(QMouseEvent* event) {
  if (const int mark = nearest(event->position().y()); mark >= 0 && onChosen) onChosen(mark);
}

bool MarkBar::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    auto* help = static_cast<QHelpEvent*>(event);
    if (const int mark = nearest(help->pos().y()); mark >= 0)
      QToolTip::showText(help->globalPos(), QString::number(m_marks[static_cast<std::size_t>(mark)].place.line), this);
    return true;
  }
  return QWidget::event(event);
}

} // namespace desktop
