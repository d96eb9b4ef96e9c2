#include "desktop/source/text_area.hpp"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QClipboard>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>
#include <QTextLayout>

#include "desktop/source/source_colours.hpp"

namespace desktop {

namespace {

constexpr int kLongestShown = 4000; ///< characters of a line
constexpr int kGap = 8;             ///< pixels round the gutter

// Columns count characters from 1; Qt counts UTF-16 units from 0.
int indexOfColumn(const QString& line, int column) {
  int index = 0;
  for (int characters = 1; characters < column && index < line.size(); ++characters)
    index += line.at(index).isHighSurrogate() && index + 1 < line.size() ? 2 : 1;
  return index;
}

bool isWordCharacter(QChar c) {
  return c.isLetterOrNumber() || c == QLatin1Char('-') || c == QLatin1Char('_');
}

QTextLayout::FormatRange range(int start, int length) {
  QTextLayout::FormatRange made;
  made.start = start;
  made.length = length;
  return made;
}

} // namespace

TextArea::TextArea(QWidget* parent) : QAbstractScrollArea(parent) {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setStyleHint(QFont::Monospace);
  setFont(font);
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::NoFrame);
  viewport()->setCursor(Qt::IBeamCursor);
  viewport()->setBackgroundRole(QPalette::Base);
  measure();
}

void TextArea::measure() {
  const QFontMetricsF metrics(font());
  m_lineHeight = static_cast<int>(std::ceil(metrics.height())) + 3;
  m_charWidth = metrics.horizontalAdvance(QLatin1Char('0'));
  updateRanges();
}

void TextArea::setText(cobol::ShadedText text) {
  m_text = std::move(text);
  m_hint.clear();
  m_marks.clear();
  m_matches.clear();
  m_currentMark = m_currentMatch = -1;
  m_currentLine = 0;
  m_anchor = m_caret = {};
  m_longest = 0;
  for (const std::string& line : m_text.lines)
    m_longest = std::max(m_longest, line.size());
  m_longest = std::min<std::size_t>(m_longest, kLongestShown);
  updateRanges();
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
  viewport()->update();
}

void TextArea::setHint(const QString& hint) {
  setText({});
  m_hint = hint;
}

QString TextArea::line(int number) const {
  if (number < 1 || number > lineCount()) return {};
  const std::string& line = m_text.lines[static_cast<std::size_t>(number - 1)];
  QString text =
      QString::fromUtf8(line.data(), static_cast<qsizetype>(std::min<std::size_t>(line.size(), kLongestShown * 4)));
  if (text.size() > kLongestShown) text = text.left(kLongestShown) + QChar(0x2026);
  return text;
}

void TextArea::setMarks(std::vector<orvane::SourceMark> marks) {
  m_marks = std::move(marks);
  m_currentMark = -1;
  viewport()->update();
}

void TextArea::setCurrentMark(int index) {
  m_currentMark = index;
  viewport()->update();
}

void TextArea::setMatches(std::vector<TextMatch> matches, int current) {
  m_matches = std::move(matches);
  m_currentMatch = current;
  viewport()->update();
}

void TextArea::goTo(int line, int column, int length) {
  if (line < 1 || line > lineCount()) return;
  m_currentLine = line;
  bringIntoSight(line, column, length);
  viewport()->update();
}

int TextArea::firstVisibleLine() const {
  return verticalScrollBar()->value() / m_lineHeight + 1;
}

int TextArea::gutterWidth() const {
  const int digits = std::max(4, static_cast<int>(std::to_string(m_text.lines.size()).size()));
  return static_cast<int>(std::ceil(digits * m_charWidth)) + 2 * kGap;
}

void TextArea::updateRanges() {
  const QSize size = viewport()->size();
  const int height = lineCount() * m_lineHeight + kGap;
  verticalScrollBar()->setRange(0, std::max(0, height - size.height()));
  verticalScrollBar()->setPageStep(std::max(m_lineHeight, size.height() - m_lineHeight));
  verticalScrollBar()->setSingleStep(m_lineHeight);
  const int width =
      gutterWidth() + static_cast<int>(std::ceil(static_cast<double>(m_longest) * m_charWidth)) + 3 * kGap;
  horizontalScrollBar()->setRange(0, std::max(0, width - size.width()));
  horizontalScrollBar()->setPageStep(size.width());
  horizontalScrollBar()->setSingleStep(static_cast<int>(m_charWidth * 4));
}

// A place that is in sight with some lines round it stays where it is.
void TextArea::bringIntoSight(int line, int column, int length) {
  const int top = (line - 1) * m_lineHeight;
  const int height = viewport()->height();
  QScrollBar* down = verticalScrollBar();
  if (top < down->value() + 2 * m_lineHeight || top + 3 * m_lineHeight > down->value() + height)
    down->setValue(top - height / 3);
  QScrollBar* right = horizontalScrollBar();
  const int from = static_cast<int>((column - 1) * m_charWidth);
  const int to = static_cast<int>((column + length + 1) * m_charWidth);
  const int width = viewport()->width() - gutterWidth() - 2 * kGap;
  if (to > right->value() + width) right->setValue(to - width);
  if (from < right->value()) right->setValue(std::max(0, from - 2 * kGap));
}

std::unique_ptr<QTextLayout> TextArea::layoutOf(int number, const SourceColours& colours) const {
  const QString text = line(number);
  auto layout = std::make_unique<QTextLayout>(text, font());
  QTextOption option;
  option.setWrapMode(QTextOption::NoWrap);
  option.setTabStopDistance(m_charWidth * 8);
  layout->setTextOption(option);
  QList<QTextLayout::FormatRange> formats;
  for (const cobol::ShadedSpan& span : m_text.spans(static_cast<std::size_t>(number))) {
    const int from = indexOfColumn(text, static_cast<int>(span.column));
    const int to = indexOfColumn(text, static_cast<int>(span.column + span.length));
    if (to <= from) continue;
    QTextLayout::FormatRange made = range(from, to - from);
    made.format.setForeground(colours.of(span.shade));
    if (span.shade == cobol::Shade::header) made.format.setFontWeight(QFont::DemiBold);
    if (span.shade == cobol::Shade::comment) made.format.setFontItalic(true);
    formats.push_back(made);
  }
  layout->setFormats(formats);
  layout->beginLayout();
  layout->createLine().setPosition({0, 0});
  layout->endLayout();
  return layout;
}

void TextArea::paintMarks(QPainter& painter, const QTextLine& line, int number, QPointF at,
                          const SourceColours& colours) const {
  const QString text = this->line(number);
  const auto box = [&](int from, int to) {
    const double left = line.cursorToX(from), right = line.cursorToX(to);
    return QRectF(at.x() + left - 1.5, at.y() + 0.5, right - left + 3, m_lineHeight - 1);
  };
  const auto first = std::lower_bound(m_marks.begin(), m_marks.end(), number,
                                      [](const auto& mark, int n) { return static_cast<int>(mark.place.line) < n; });
  for (auto mark = first; mark != m_marks.end() && static_cast<int>(mark->place.line) == number; ++mark) {
    const int from = indexOfColumn(text, static_cast<int>(mark->place.column));
    const int to = indexOfColumn(text, static_cast<int>(mark->place.column + mark->place.length));
    QColor colour = colours.of(mark->kind);
    const bool current = mark - m_marks.begin() == m_currentMark;
    painter.setPen(current ? QPen(colour, 2) : QPen(colour, 1));
    colour.setAlpha(SourceColours::kMarkAlpha);
    painter.setBrush(colour);
    painter.drawRoundedRect(box(from, to), 3, 3);
  }
  painter.setPen(Qt::NoPen);
  const auto match = std::lower_bound(m_matches.begin(), m_matches.end(), number,
                                      [](const TextMatch& m, int n) { return m.at.line < n; });
  for (auto found = match; found != m_matches.end() && found->at.line == number; ++found) {
    if (found - m_matches.begin() == m_currentMatch) painter.setPen(QPen(colours.text, 1));
    painter.setBrush(colours.find);
    painter.drawRect(box(found->at.index, found->at.index + found->length));
    painter.setPen(Qt::NoPen);
  }
  const auto [from, to] = std::minmax(m_anchor, m_caret);
  if (from != to && number >= from.line && number <= to.line) {
    painter.setBrush(colours.selection);
    const int left = number == from.line ? from.index : 0;
    const int right = number == to.line ? to.index : static_cast<int>(text.size());
    painter.drawRect(box(left, right));
  }
}

void TextArea::paintLine(QPainter& painter, int number, int top, const SourceColours& colours) const {
  const int gutter = gutterWidth();
  if (number == m_currentLine) painter.fillRect(gutter, top, viewport()->width(), m_lineHeight, colours.currentLine);
  const auto layout = layoutOf(number, colours);
  const QTextLine line = layout->lineAt(0);
  const QPointF at(gutter + kGap - horizontalScrollBar()->value(), top);
  painter.save();
  painter.setClipRect(gutter, top, viewport()->width() - gutter, m_lineHeight);
  paintMarks(painter, line, number, at, colours);
  painter.setPen(colours.text);
  layout->draw(&painter, QPointF(at.x(), top + 1));
  painter.restore();
  painter.setPen(number == m_currentLine ? colours.text : colours.gutterText);
  painter.drawText(QRect(0, top, gutter - kGap, m_lineHeight), Qt::AlignRight | Qt::AlignVCenter,
                   QString::number(number));
}

void TextArea::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  const SourceColours colours(palette());
  painter.fillRect(event->rect(), colours.paper);
  if (m_text.lines.empty()) {
    painter.setPen(colours.gutterText);
    painter.setFont(QApplication::font());
    painter.drawText(viewport()->rect().adjusted(24, 24, -24, -24), Qt::AlignCenter | Qt::TextWordWrap, m_hint);
    return;
  }
  painter.setFont(font());
  painter.fillRect(0, event->rect().top(), gutterWidth(), event->rect().height(), colours.gutter);
  const int offset = verticalScrollBar()->value();
  const int first = (offset + event->rect().top()) / m_lineHeight + 1;
  const int last = std::min(lineCount(), (offset + event->rect().bottom()) / m_lineHeight + 1);
  for (int number = first; number <= last; ++number)
    paintLine(painter, number, (number - 1) * m_lineHeight - offset, colours);
  if (hasFocus()) {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(QRectF(viewport()->rect()).adjusted(0.5, 0.5, -0.5, -0.5));
  }
}

void TextArea::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  updateRanges();
}

void TextArea::scrollContentsBy(int, int) {
  viewport()->update();
}

void TextArea::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  if (event->type() == QEvent::FontChange) measure();
}

void TextArea::keyPressEvent(QKeyEvent* event) {
  QScrollBar* down = verticalScrollBar();
  QScrollBar* right = horizontalScrollBar();
  if (event->matches(QKeySequence::Copy)) return copy();
  switch (event->key()) {
  case Qt::Key_Up:
    return down->triggerAction(QScrollBar::SliderSingleStepSub);
  case Qt::Key_Down:
    return down->triggerAction(QScrollBar::SliderSingleStepAdd);
  case Qt::Key_PageUp:
    return down->triggerAction(QScrollBar::SliderPageStepSub);
  case Qt::Key_PageDown:
    return down->triggerAction(QScrollBar::SliderPageStepAdd);
  case Qt::Key_Home:
    return event->modifiers() & Qt::ControlModifier ? down->setValue(0) : right->setValue(0);
  case Qt::Key_End:
    return event->modifiers() & Qt::ControlModifier ? down->setValue(down->maximum())
                                                    : right->setValue(right->maximum());
  case Qt::Key_Left:
    return right->triggerAction(QScrollBar::SliderSingleStepSub);
  case Qt::Key_Right:
    return right->triggerAction(QScrollBar::SliderSingleStepAdd);
  default:
    QAbstractScrollArea::keyPressEvent(event);
  }
}

TextPlace TextArea::placeAt(QPoint point) const {
  if (m_text.lines.empty()) return {};
  const int number = std::clamp((point.y() + verticalScrollBar()->value()) / m_lineHeight + 1, 1, lineCount());
  const auto layout = layoutOf(number, SourceColours(palette()));
  const double x = point.x() - gutterWidth() - kGap + horizontalScrollBar()->value();
  return {number, layout->lineAt(0).xToCursor(x)};
}

void TextArea::select(TextPlace anchor, TextPlace caret) {
  m_anchor = anchor;
  m_caret = caret;
  viewport()->update();
}

void TextArea::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  const TextPlace at = placeAt(event->pos());
  m_currentLine = m_text.lines.empty() ? 0 : at.line;
  select(event->modifiers() & Qt::ShiftModifier ? m_anchor : at, at);
}

void TextArea::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() & Qt::LeftButton) select(m_anchor, placeAt(event->pos()));
}

void TextArea::mouseDoubleClickEvent(QMouseEvent* event) {
  const TextPlace at = placeAt(event->pos());
  const QString text = line(at.line);
  int from = at.index, to = at.index;
  while (from > 0 && isWordCharacter(text.at(from - 1)))
    --from;
  while (to < text.size() && isWordCharacter(text.at(to)))
    ++to;
  select({at.line, from}, {at.line, to});
}

QString TextArea::selectedText() const {
  const auto [from, to] = std::minmax(m_anchor, m_caret);
  if (from == to) return {};
  if (from.line == to.line) return line(from.line).mid(from.index, to.index - from.index);
  QString text = line(from.line).mid(from.index);
  for (int number = from.line + 1; number < to.line; ++number)
    text += QLatin1Char('\n') + line(number);
  return text + QLatin1Char('\n') + line(to.line).left(to.index);
}

void TextArea::copy() const {
  if (const QString text = selectedText(); !text.isEmpty()) QApplication::clipboard()->setText(text);
}

// Everything that the outer view offers by key, as actions of the parents.
void TextArea::contextMenuEvent(QContextMenuEvent* event) {
  QMenu menu;
  for (QAction* action : actions())
    menu.addAction(action);
  if (!menu.isEmpty()) menu.exec(event->globalPos());
}

} // namespace desktop
