#include "desktop/message_box.hpp"

#include <QMessageBox>
#include <QPushButton>

#include "desktop/icons.hpp"
#include "desktop/texts.hpp"
#include "desktop/twips.hpp"
#include "platform/runtime/text.hpp"

namespace desktop {

namespace {

constexpr int kButtonMask = 15;
constexpr int kIconMask = 112;

const char* iconOf(int style) {
  switch (style & kIconMask) {
  case platform::kCritical:
    return "Error";
  case platform::kExclamation:
    return "Warning";
  case platform::kInformation:
    return "Information";
  default:
    return "Help";
  }
}

} // namespace

platform::Answer showMessage(QWidget* parent, const std::string& message, int style, const std::string& title) {
  QMessageBox box(parent);
  box.setObjectName(QStringLiteral("messageBox"));
  constexpr int kIcon = 36;
  box.setIconPixmap(icon(iconOf(style)).pixmap(QSize(kIcon, kIcon), box.devicePixelRatio()));
  box.setWindowTitle(text(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(text(platform::replaceAll(platform::replaceAll(message, "\r\n", "\n"), "\r", "\n")).trimmed());
  QPushButton* ok = box.addButton(text(Text::Ok), QMessageBox::AcceptRole);
  ok->setObjectName(QStringLiteral("ok"));
  box.setDefaultButton(ok);
  if ((style & kButtonMask) == platform::kOkCancel) {
    QPushButton* cancel = box.addButton(text(Text::Cancel), QMessageBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cancel"));
    box.setEscapeButton(cancel);
  } else {
    box.setEscapeButton(ok);
  }
  box.exec();
  return box.clickedButton() == ok ? platform::Answer::Ok : platform::Answer::Cancel;
}

} // namespace desktop
