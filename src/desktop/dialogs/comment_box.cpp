#include "desktop/dialogs/comment_box.hpp"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QShortcut>
#include <QVBoxLayout>

#include "desktop/dialogs/frame.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"

namespace desktop {

CommentBox::CommentBox(const QString& prompt, const QString& title, const QString& comment, const QStringList& recent,
                       QWidget* parent)
    : QDialog(parent), m_before(comment), m_edit(new QPlainTextEdit(this)) {
  setObjectName(QStringLiteral("commentBox"));
  setWindowTitle(title);
  QVBoxLayout* column = addColumn(*this);
  auto* label = new QLabel(prompt, this);
  label->setTextFormat(Qt::PlainText);
  label->setBuddy(m_edit);
  column->addWidget(label);
  m_edit->setObjectName(QStringLiteral("comment"));
  m_edit->setAccessibleName(prompt);
  m_edit->setTabChangesFocus(true);
  m_edit->setPlainText(comment);
  m_edit->document()->setModified(false);
  m_edit->selectAll();
  constexpr int kLines = 5, kColumns = 56;
  const QFontMetrics metrics = m_edit->fontMetrics();
  m_edit->setMinimumSize(kColumns * metrics.averageCharWidth(), kLines * metrics.lineSpacing() + 2 * kSpace);
  column->addWidget(m_edit, 1);
  addRecent(recent);
  column->addWidget(makeHint(text(Text::CommentKeys), this));
  addOkCancel(*this, *column);
  for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
    connect(new QShortcut(QKeySequence(Qt::CTRL | key), this), &QShortcut::activated, this, &QDialog::accept);
  connect(new QShortcut(QKeySequence(Qt::Key_F1), this), &QShortcut::activated, this, [this] {
    if (onHelp) onHelp();
  });
  m_edit->setFocus();
}

// Taking one over can be undone in the text.
void CommentBox::addRecent(const QStringList& recent) {
  if (recent.isEmpty()) return;
  auto* row = new QHBoxLayout;
  row->setSpacing(kSpace);
  auto* label = new QLabel(text(Text::CommentRecent), this);
  auto* box = new QComboBox(this);
  box->setObjectName(QStringLiteral("recent"));
  box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  box->setPlaceholderText(text(Text::CommentRecentHint));
  for (const QString& one : recent)
    box->addItem(one.simplified(), one);
  box->setCurrentIndex(-1);
  label->setBuddy(box);
  box->setAccessibleName(label->text().remove(QLatin1Char('&')));
  row->addWidget(label);
  row->addWidget(box, 1);
  dynamic_cast<QVBoxLayout*>(layout())->addLayout(row);
  connect(box, &QComboBox::activated, this, [this, box](int at) {
    QTextCursor cursor(m_edit->document());
    cursor.select(QTextCursor::Document);
    cursor.insertText(box->itemData(at).toString());
    m_edit->moveCursor(QTextCursor::End);
  });
}

QString CommentBox::comment() const {
  if (!m_edit->document()->isModified()) return m_before;
  // The plain text would lose blanks that do not break.
  QString text = m_edit->document()->toRawText();
  return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n')).replace(QChar::LineSeparator, QLatin1Char('\n'));
}

} // namespace desktop
