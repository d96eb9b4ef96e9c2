#include "desktop/help/help_window.hpp"

#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QShortcut>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextTable>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/help/topics.hpp"
#include "desktop/icons.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"

namespace desktop {

namespace {

constexpr int kPage = Qt::UserRole;

void styleBlock(QTextBlock block) {
  QTextCursor cursor(block);
  QTextBlockFormat format = block.blockFormat();
  const int level = format.headingLevel();
  const bool inTable = cursor.currentTable() != nullptr;
  constexpr double kLine = 128;
  format.setLineHeight(level > 0 || inTable ? 100 : kLine, QTextBlockFormat::ProportionalHeight);
  format.setTopMargin(level > 1 ? 2.5 * kSpace : level == 1 ? kSpace : 0);
  format.setBottomMargin(inTable ? 0 : block.textList() ? kSpace / 2.0 : kSpace);
  cursor.setBlockFormat(format);
  if (level == 0) return;
  cursor.select(QTextCursor::BlockUnderCursor);
  QTextCharFormat letters;
  letters.setFontPointSize(QApplication::font().pointSizeF() * (level == 1 ? 1.7 : 1.2));
  letters.setFontWeight(QFont::DemiBold);
  cursor.mergeCharFormat(letters);
}

void styleTable(QTextTable& table) {
  QTextTableFormat format = table.format();
  format.setBorder(0);
  format.setCellPadding(kSpace / 2.0 + 1);
  format.setCellSpacing(0);
  format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
  format.setTopMargin(kSpace / 2.0);
  format.setBottomMargin(1.5 * kSpace);
  table.setFormat(format);
  for (int row = 0; row < table.rows(); ++row)
    for (int column = 0; column < table.columns(); ++column) {
      QTextTableCell cell = table.cellAt(row, column);
      QTextTableCellFormat look = cell.format().toTableCellFormat();
      look.setBottomBorder(1);
      look.setBottomBorderStyle(QTextFrameFormat::BorderStyle_Solid);
      look.setBottomBorderBrush(theme().border);
      if (row == 0) look.setBackground(theme().panel);
      cell.setFormat(look);
    }
}

// Markdown has no style sheet of its own.
void styleDocument(QTextDocument& document) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
    styleBlock(block);
  for (QTextFrame* frame : document.rootFrame()->childFrames())
    if (auto* table = qobject_cast<QTextTable*>(frame)) styleTable(*table);
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
    for (auto part = block.begin(); !part.atEnd(); ++part) {
      const QTextCharFormat letters = part.fragment().charFormat();
      if (!letters.fontFixedPitch() && !letters.isAnchor()) continue;
      QTextCursor cursor(&document);
      cursor.setPosition(part.fragment().position());
      cursor.setPosition(part.fragment().position() + part.fragment().length(), QTextCursor::KeepAnchor);
      QTextCharFormat look;
      if (letters.isAnchor()) {
        look.setForeground(theme().accent);
        look.setFontUnderline(false);
      } else {
        look.setBackground(theme().panel);
      }
      cursor.mergeCharFormat(look);
    }
}

QToolButton* button(const char* iconKey, Text tip, QWidget* parent) {
  auto* made = new QToolButton(parent);
  made->setIcon(icon(iconKey));
  made->setAutoRaise(true);
  made->setToolTip(text(tip));
  made->setAccessibleName(text(tip));
  return made;
}

bool holdsAll(const QString& content, const QStringList& words) {
  return std::all_of(words.begin(), words.end(),
                     [&](const QString& word) { return content.contains(word, Qt::CaseInsensitive); });
}

} // namespace

HelpWindow::HelpWindow(QWidget* parent)
    : QWidget(parent, Qt::Window), m_search(new QLineEdit(this)), m_pages(new QListWidget(this)),
      m_text(new QTextBrowser(this)), m_back(button("Previous", Text::HelpBack, this)),
      m_forward(button("Next", Text::HelpForward, this)) {
  setObjectName(QStringLiteral("helpWindow"));
  setAttribute(Qt::WA_DeleteOnClose);
  m_search->setObjectName(QStringLiteral("helpSearch"));
  m_search->setPlaceholderText(text(Text::HelpSearch));
  m_search->setAccessibleName(text(Text::HelpSearch));
  m_search->setClearButtonEnabled(true);
  m_pages->setObjectName(QStringLiteral("helpPages"));
  m_pages->setAccessibleName(text(Text::HelpContents));
  m_pages->setFrameShape(QFrame::NoFrame);
  m_text->setObjectName(QStringLiteral("helpText"));
  m_text->setFrameShape(QFrame::NoFrame);
  m_text->setSearchPaths({QStringLiteral(":/guide")});
  m_text->setOpenExternalLinks(true);
  m_text->document()->setDocumentMargin(3 * kSpace);
  auto* top = new QHBoxLayout;
  top->setContentsMargins(kSpace, kSpace, kSpace, kSpace);
  top->setSpacing(2);
  top->addWidget(m_back);
  top->addWidget(m_forward);
  top->addSpacing(kSpace / 2);
  top->addWidget(m_search, 1);
  auto* side = new QWidget;
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addLayout(top);
  column->addWidget(m_pages, 1);
  auto* split = new QSplitter(this);
  split->setChildrenCollapsible(false);
  split->addWidget(side);
  split->addWidget(m_text);
  split->setStretchFactor(1, 1);
  split->setSizes({260, 640});
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(split);
  resize(920, 680);
  connect(m_back, &QToolButton::clicked, m_text, &QTextBrowser::backward);
  connect(m_forward, &QToolButton::clicked, m_text, &QTextBrowser::forward);
  connect(m_text, &QTextBrowser::backwardAvailable, m_back, &QWidget::setEnabled);
  connect(m_text, &QTextBrowser::forwardAvailable, m_forward, &QWidget::setEnabled);
  connect(m_text, &QTextBrowser::sourceChanged, this, [this](const QUrl& source) { pageChanged(source); });
  connect(m_search, &QLineEdit::textChanged, this, [this] { narrow(); });
  connect(m_search, &QLineEdit::returnPressed, this, [this] { m_pages->setFocus(); });
  connect(m_pages, &QListWidget::currentItemChanged, this, [this](QListWidgetItem* item) {
    if (item && !item->data(kPage).toString().isEmpty() && item->data(kPage).toString() != page())
      open(item->data(kPage).toString());
  });
  connect(new QShortcut(QKeySequence::Back, this), &QShortcut::activated, m_text, &QTextBrowser::backward);
  connect(new QShortcut(QKeySequence::Forward, this), &QShortcut::activated, m_text, &QTextBrowser::forward);
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, m_search, [this] {
    m_search->setFocus();
    m_search->selectAll();
  });
  connect(new QShortcut(QKeySequence(Qt::Key_Escape), this), &QShortcut::activated, this, [this] {
    if (m_search->text().isEmpty())
      close();
    else
      m_search->clear();
  });
  m_back->setEnabled(false);
  m_forward->setEnabled(false);
  narrow();
}

void HelpWindow::open(const QString& page) {
  m_text->setSource(QUrl((isTopic(page) ? page : QStringLiteral("index")) + QStringLiteral(".md")));
}

QStringList HelpWindow::words() const {
  return m_search->text().simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

// Pages whose title has the words come first.
void HelpWindow::narrow() {
  const QSignalBlocker quiet(m_pages);
  m_pages->clear();
  const QStringList wanted = words();
  for (const bool inTitle : {true, false})
    for (const Topic& topic : topics()) {
      if (holdsAll(topic.title, wanted) != inTitle || !holdsAll(topic.text, wanted)) continue;
      auto* item = new QListWidgetItem(topic.title, m_pages);
      item->setData(kPage, topic.page);
      if (topic.page == page()) m_pages->setCurrentItem(item);
    }
  if (m_pages->count() == 0) {
    auto* none = new QListWidgetItem(text(Text::HelpNone), m_pages);
    none->setFlags(Qt::NoItemFlags);
  }
  markWords();
}

// The browser itself knows its new source only afterwards.
void HelpWindow::pageChanged(const QUrl& source) {
  m_page = source.fileName().section(QLatin1Char('.'), 0, 0);
  styleDocument(*m_text->document());
  markWords();
  for (const Topic& topic : topics())
    if (topic.page == m_page) setWindowTitle(topic.title + QStringLiteral(" - ") + text(Text::HelpTitle));
  const QSignalBlocker quiet(m_pages);
  m_pages->setCurrentRow(-1);
  for (int row = 0; row < m_pages->count(); ++row)
    if (m_pages->item(row)->data(kPage).toString() == m_page) m_pages->setCurrentRow(row);
}

void HelpWindow::markWords() {
  QList<QTextEdit::ExtraSelection> marks;
  for (const QString& word : words()) {
    if (word.size() < 2) continue;
    for (QTextCursor at = m_text->document()->find(word); !at.isNull(); at = m_text->document()->find(word, at)) {
      QTextEdit::ExtraSelection mark;
      mark.cursor = at;
      mark.format.setBackground(theme().mark);
      marks.append(mark);
    }
  }
  m_text->setExtraSelections(marks);
}

} // namespace desktop
