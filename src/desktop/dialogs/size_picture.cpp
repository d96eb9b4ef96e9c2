#include "desktop/dialogs/size_picture.hpp"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "desktop/texts.hpp"
#include "desktop/theme.hpp"

namespace desktop {

namespace {

constexpr int kMargin = kSpace;
constexpr int kHandle = 5;   ///< half the width of the mark on top of a line
constexpr double kReach = 7; ///< pixels around a line that are meant for it
constexpr int kBarsHeight = 110;
constexpr double kLeastStep = 8; ///< pixels of one count, below it counts share a bar

std::size_t sizeOf(std::int64_t count, const tarnsift::SizeLimits& limits) {
  const std::string_view name = tarnsift::changeSize(count, limits);
  return static_cast<std::size_t>(std::find(kSizeNames.begin(), kSizeNames.end(), name) - kSizeNames.begin());
}

QColor mixed(const QColor& a, const QColor& b, double share) {
  const auto mix = [share](int x, int y) { return static_cast<int>(std::lround(x * share + y * (1 - share))); };
  return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

int axisHeight(const QFontMetrics& metrics) {
  return metrics.lineSpacing() + kSpace;
}

} // namespace

SizeShares sharesOf(const std::vector<std::int64_t>& counts, const tarnsift::SizeLimits& limits) {
  SizeShares shares{};
  for (const std::int64_t count : counts)
    ++shares[sizeOf(count, limits)];
  return shares;
}

QString programsText(int count) {
  return count == 1 ? text(Text::SizeProgram) : text(Text::SizePrograms).arg(count);
}

SizePicture::SizePicture(std::vector<std::int64_t> counts, const tarnsift::SizeLimits& limits, QWidget* parent)
    : QWidget(parent), m_counts(std::move(counts)), m_limits(limits), m_axis(m_counts, limits.l) {
  setObjectName(QStringLiteral("sizePicture"));
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  constexpr int kLeastWidth = 460;
  setMinimumSize(kLeastWidth, kBarsHeight + 4 * kSpace + axisHeight(fontMetrics()));
  setAccessibleName(text(Text::SizePicture));
  setToolTip(text(Text::SizePictureTip));
  describe();
}

QColor SizePicture::colourOf(std::size_t size) {
  constexpr std::array<double, 4> kShares = {0.34, 0.55, 0.78, 1.0};
  return mixed(theme().accent, theme().base, kShares.at(size));
}

void SizePicture::setLimits(const tarnsift::SizeLimits& limits) {
  m_limits = limits;
  describe();
  update();
}

void SizePicture::describe() {
  const SizeShares shares = sharesOf(m_counts, m_limits);
  QStringList parts;
  for (std::size_t i = 0; i < shares.size(); ++i)
    parts << QString::fromLatin1(kSizeNames[i]) + QStringLiteral(": ") + programsText(shares[i]);
  setAccessibleDescription(parts.join(QStringLiteral(", ")));
}

// A count equal to the limit is above it.
double SizePicture::lineOf(std::int32_t limit) const {
  return m_axis.pixelOf(limit - 0.5);
}

QPoint SizePicture::lineAt(std::size_t limit) const {
  return {static_cast<int>(std::lround(lineOf(limits().at(limit)))), kMargin + kHandle};
}

void SizePicture::resizeEvent(QResizeEvent*) {
  m_axis.setPixels(2 * kMargin, width() - 2 * kMargin);
}

// Of lines that lie on each other the one that can be drawn away to that side.
int SizePicture::nearestLine(double x) const {
  int nearest = -1;
  double least = kReach;
  for (int i = 0; i < 3; ++i) {
    const double line = lineOf(limits()[static_cast<std::size_t>(i)]);
    const double distance = std::abs(x - line);
    if (distance < least || (nearest >= 0 && distance == least && x >= line)) {
      nearest = i;
      least = distance;
    }
  }
  return nearest;
}

void SizePicture::moveLine(std::size_t line, std::int64_t to) {
  const auto now = limits();
  const std::int64_t low = line == 0 ? 1 : now[line - 1];
  const std::int64_t high =
      line == 2 ? std::max<std::int64_t>(std::llround(m_axis.countAt(width())), now[2]) : now[line + 1];
  if (low > high) return;
  const auto limit = static_cast<std::int32_t>(std::clamp(to, low, high));
  if (limit == now[line]) return;
  (line == 0 ? m_limits.s : line == 1 ? m_limits.m : m_limits.l) = limit;
  setLimits(m_limits);
  if (onMoved) onMoved(m_limits);
}

void SizePicture::mousePressEvent(QMouseEvent* event) {
  const int line = event->button() == Qt::LeftButton ? nearestLine(event->position().x()) : -1;
  if (line < 0) return;
  m_active = static_cast<std::size_t>(line);
  m_dragging = true;
  update();
}

void SizePicture::mouseMoveEvent(QMouseEvent* event) {
  const double x = event->position().x();
  if (m_dragging) return moveLine(m_active, std::llround(m_axis.countAt(x) + 0.5));
  if (nearestLine(x) >= 0)
    setCursor(Qt::SizeHorCursor);
  else
    unsetCursor();
}

void SizePicture::mouseReleaseEvent(QMouseEvent*) {
  m_dragging = false;
}

void SizePicture::keyPressEvent(QKeyEvent* event) {
  constexpr int kFar = 10;
  const int step = event->modifiers().testFlag(Qt::ShiftModifier) ? kFar : 1;
  switch (event->key()) {
  case Qt::Key_Left:
    return moveLine(m_active, std::int64_t{limits()[m_active]} - step);
  case Qt::Key_Right:
    return moveLine(m_active, std::int64_t{limits()[m_active]} + step);
  case Qt::Key_Up:
    m_active = (m_active + 1) % 3;
    return update();
  case Qt::Key_Down:
    m_active = (m_active + 2) % 3;
    return update();
  default:
    QWidget::keyPressEvent(event);
  }
}

// A bar for each count where there is room, else for the counts of a strip.
std::map<std::int64_t, SizePicture::Bar> SizePicture::bars() const {
  const double step = m_axis.pixelOf(1) - m_axis.pixelOf(0);
  const bool each = !m_axis.logarithmic() && step >= kLeastStep;
  constexpr double kWidest = 26, kFilled = 0.7;
  std::map<std::int64_t, Bar> bars;
  for (const std::int64_t count : m_counts) {
    const double x = m_axis.pixelOf(static_cast<double>(count));
    const std::int64_t key = each ? count : static_cast<std::int64_t>(x / kLeastStep);
    Bar& bar = bars[key];
    bar.width = each ? std::min(kWidest, step * kFilled) : kLeastStep - 2;
    bar.x = (each ? x : (static_cast<double>(key) + 0.5) * kLeastStep) - bar.width / 2;
    ++bar.programs[sizeOf(count, m_limits)];
  }
  return bars;
}

void SizePicture::paintGround(QPainter& painter) const {
  painter.setPen(QPen(hasFocus() ? theme().accent : theme().border, hasFocus() ? 2 : 1));
  painter.setBrush(theme().base);
  constexpr double kRound = 5;
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRound, kRound);
}

void SizePicture::paintBars(QPainter& painter) const {
  const double ground = height() - kMargin - axisHeight(fontMetrics());
  painter.setPen(QPen(theme().accent, 1)); // pale bars need an edge
  const auto all = bars();
  int most = 1;
  for (const auto& [key, bar] : all)
    most = std::max(most, std::accumulate(bar.programs.begin(), bar.programs.end(), 0));
  const double room = ground - 4 * kMargin;
  constexpr double kLeast = 3; // pixels of a single program
  const double unit = room / most;
  for (const auto& [key, bar] : all) {
    double y = ground;
    for (std::size_t i = 0; i < bar.programs.size(); ++i) {
      if (bar.programs[i] == 0) continue;
      painter.setBrush(colourOf(i));
      const double tall = std::max(kLeast, unit * bar.programs[i]);
      painter.drawRect(QRectF(bar.x, y - tall, bar.width, tall));
      y -= tall;
    }
  }
}

void SizePicture::paintAxis(QPainter& painter) const {
  const double ground = height() - kMargin - axisHeight(fontMetrics());
  painter.setPen(theme().border);
  painter.drawLine(QPointF(kMargin, ground), QPointF(width() - kMargin, ground));
  const double apart = fontMetrics().horizontalAdvance(QStringLiteral("000000"));
  for (const std::int64_t tick : m_axis.ticks(apart)) {
    const double x = m_axis.pixelOf(static_cast<double>(tick));
    painter.setPen(theme().border);
    painter.drawLine(QPointF(x, ground), QPointF(x, ground + 3));
    painter.setPen(theme().muted);
    painter.drawText(QRectF(x - apart, ground + 4, 2 * apart, fontMetrics().lineSpacing()), Qt::AlignCenter,
                     QString::number(tick));
  }
}

// Between two lines stands the name of the class, where it has room.
void SizePicture::paintLines(QPainter& painter) const {
  const double ground = height() - kMargin - axisHeight(fontMetrics());
  double left = kMargin;
  for (std::size_t i = 0; i <= limits().size(); ++i) {
    const double right = i < limits().size() ? lineOf(limits()[i]) : width() - kMargin;
    const QString name = QString::fromLatin1(kSizeNames[i]);
    if (right - left >= fontMetrics().horizontalAdvance(name) + 2 * kHandle + 4) {
      painter.setPen(theme().muted);
      painter.drawText(QRectF(left, kMargin - 2, right - left, fontMetrics().lineSpacing()), Qt::AlignCenter, name);
    }
    left = right;
    if (i == limits().size()) break;
    const bool active = hasFocus() && i == m_active;
    const QColor colour = active ? theme().accent : theme().text;
    painter.setPen(QPen(colour, active ? 2 : 1));
    painter.drawLine(QPointF(right, kMargin), QPointF(right, ground));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    const double top = kMargin - 2;
    painter.drawPolygon(QPolygonF({QPointF(right - kHandle, top), QPointF(right + kHandle, top),
                                   QPointF(right + kHandle, top + kHandle), QPointF(right, top + 2 * kHandle),
                                   QPointF(right - kHandle, top + kHandle)}));
  }
}

void SizePicture::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  paintGround(painter);
  paintBars(painter);
  paintAxis(painter);
  paintLines(painter);
}

} // namespace desktop
