#include "desktop/source/find_bar.hpp"

#include <algorithm>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include "desktop/texts.hpp"

namespace desktop {

namespace {

constexpr std::size_t kMostMatches = 100'000;

QToolButton* button(QWidget* parent, Qt::ArrowType arrow, const QString& tip) {
  auto* made = new QToolButton(parent);
  made->setArrowType(arrow);
  made->setAutoRaise(true);
  made->setToolTip(tip);
  made->setAccessibleName(tip);
  return made;
}

} // namespace

FindBar::FindBar(TextArea& area, QWidget* parent)
    : QWidget(parent), m_area(area), m_text(new QLineEdit(this)), m_count(new QLabel(this)) {
  m_text->setPlaceholderText(text(Text::SourceFindHint));
  m_text->setAccessibleName(text(Text::SourceFindHint));
  m_text->setClearButtonEnabled(true);
  m_text->setMaximumWidth(320);
  QToolButton* previous = button(this, Qt::UpArrow, text(Text::SourceFindPrevious));
  QToolButton* next = button(this, Qt::DownArrow, text(Text::SourceFindNext));
  auto* close = new QToolButton(this);
  close->setText(QStringLiteral("\u00d7"));
  close->setAutoRaise(true);
  close->setToolTip(text(Text::Close));
  close->setAccessibleName(text(Text::Close));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(8, 4, 8, 4);
  row->addWidget(m_text, 1);
  row->addWidget(previous);
  row->addWidget(next);
  row->addWidget(m_count);
  row->addStretch(1);
  row->addWidget(close);
  connect(m_text, &QLineEdit::textChanged, this, [this] { search(); });
  connect(previous, &QToolButton::clicked, this, [this] { step(-1); });
  connect(next, &QToolButton::clicked, this, [this] { step(1); });
  connect(close, &QToolButton::clicked, this, [this] { shut(); });
  hide();
}

void FindBar::open() {
  const QString chosen = m_area.selectedText();
  QWidget::show();
  if (!chosen.isEmpty() && !chosen.contains(QLatin1Char('\n'))) m_text->setText(chosen);
  m_text->selectAll();
  m_text->setFocus();
  search();
}

void FindBar::shut() {
  hide();
  m_matches.clear();
  m_area.setMatches({}, -1);
  m_area.setFocus();
}

void FindBar::refresh() {
  if (isVisible()) search();
}

void FindBar::search() {
  m_matches.clear();
  const QString wanted = m_text->text();
  for (int number = 1; !wanted.isEmpty() && number <= m_area.lineCount() && m_matches.size() < kMostMatches; ++number) {
    const QString line = m_area.line(number);
    for (qsizetype at = 0; (at = line.indexOf(wanted, at, Qt::CaseInsensitive)) >= 0; at += wanted.size())
      m_matches.push_back({{number, static_cast<int>(at)}, static_cast<int>(wanted.size())});
  }
  const int from = std::max(1, m_area.currentLine());
  const auto first =
      std::find_if(m_matches.begin(), m_matches.end(), [&](const TextMatch& m) { return m.at.line >= from; });
  m_current = m_matches.empty() ? -1 : first == m_matches.end() ? 0 : static_cast<int>(first - m_matches.begin());
  showCurrent();
}

void FindBar::step(int direction) {
  if (!isVisible()) return open();
  if (m_matches.empty()) return;
  const int count = static_cast<int>(m_matches.size());
  m_current = (m_current + direction + count) % count;
  showCurrent();
}

void FindBar::showCurrent() {
  m_area.setMatches(m_matches, m_current);
  if (m_current < 0) {
    m_count->setText(m_text->text().isEmpty() ? QString() : text(Text::SourceFindNone));
    return;
  }
  m_count->setText(text(Text::SourceFindCount).arg(m_current + 1).arg(m_matches.size()));
  const TextMatch& match = m_matches[static_cast<std::size_t>(m_current)];
  m_area.goTo(match.at.line, match.at.index + 1, match.length);
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) return shut();
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
    return step(event->modifiers() & Qt::ShiftModifier ? -1 : 1);
  QWidget::keyPressEvent(event);
}

} // namespace desktop
