#include "desktop/dialogs/frame.hpp"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/texts.hpp"
#include "desktop/theme.hpp"

namespace desktop {

namespace {

QLabel* coloured(const QString& text, const QColor& colour, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  QPalette palette = label->palette();
  palette.setColor(QPalette::WindowText, colour);
  label->setPalette(palette);
  label->setTextFormat(Qt::PlainText);
  return label;
}

} // namespace

QVBoxLayout* addColumn(QDialog& dialog) {
  auto* column = new QVBoxLayout(&dialog);
  column->setContentsMargins(2 * kSpace, 2 * kSpace, 2 * kSpace, 2 * kSpace);
  column->setSpacing(kSpace);
  return column;
}

QDialogButtonBox* addOkCancel(QDialog& dialog, QVBoxLayout& column) {
  auto* box = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
  const auto prepare = [box](QDialogButtonBox::StandardButton which, const char* name, Text caption) {
    QPushButton* button = box->button(which);
    button->setObjectName(QString::fromLatin1(name));
    button->setText(text(caption));
    button->setIcon({});
    button->setAutoDefault(false);
    constexpr int kLeastButton = 88;
    button->setMinimumWidth(kLeastButton);
  };
  prepare(QDialogButtonBox::Ok, "ok", Text::Ok);
  prepare(QDialogButtonBox::Cancel, "cancel", Text::Cancel);
  box->button(QDialogButtonBox::Ok)->setDefault(true);
  QObject::connect(box, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(box, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
  column.addSpacing(kSpace);
  column.addWidget(box);
  return box;
}

QLabel* makeReason(QWidget* parent) {
  QLabel* reason = coloured({}, theme().affected, parent);
  reason->setObjectName(QStringLiteral("reason"));
  reason->setWordWrap(true);
  reason->setMinimumHeight(2 * reason->fontMetrics().lineSpacing());
  reason->setAlignment(Qt::AlignTop | Qt::AlignLeading);
  return reason;
}

QLabel* makeHint(const QString& text, QWidget* parent) {
  return coloured(text, theme().muted, parent);
}

} // namespace desktop
