#include "desktop/qt_screen.hpp"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include "desktop/form_dialog.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"
#include "platform/runtime/text.hpp"

namespace desktop {

namespace {

constexpr int kButtonMask = 15;
constexpr int kIconMask = 112;

QMessageBox::Icon iconOf(int style) {
  switch (style & kIconMask) {
  case platform::kCritical:
    return QMessageBox::Critical;
  case platform::kExclamation:
    return QMessageBox::Warning;
  case platform::kInformation:
    return QMessageBox::Information;
  default:
    return QMessageBox::Question;
  }
}

} // namespace

QWidget* QtScreen::widgetOf(const platform::Control& control) const {
  const auto found = m_widgets.find(&control);
  return found == m_widgets.end() ? nullptr : found->second.data();
}

void QtScreen::focusTaken(platform::Control& control) {
  platform::Form* form = control.Parent();
  if (!form || form->ActiveControl == &control) return;
  form->ActiveControl = &control;
  control.GotFocus.raise();
}

QWidget* QtScreen::dialogParent() const {
  if (QWidget* modal = QApplication::activeModalWidget()) return modal;
  return m_main && m_main->isVisible() ? m_main.data() : nullptr;
}

platform::Answer QtScreen::messageBox(const std::string& message, int style, const std::string& title) {
  if (onSync) onSync();
  if ((style & kIconMask) == platform::kCritical) ++m_errorsTold;
  QMessageBox box(dialogParent());
  box.setObjectName(QStringLiteral("messageBox"));
  box.setIcon(iconOf(style));
  box.setWindowTitle(text(title));
  box.setTextFormat(Qt::PlainText);
  box.setText(text(platform::replaceAll(platform::replaceAll(message, "\r\n", "\n"), "\r", "\n")).trimmed());
  QPushButton* ok = box.addButton(text(Text::Ok), QMessageBox::AcceptRole);
  box.setDefaultButton(ok);
  if ((style & kButtonMask) == platform::kOkCancel)
    box.setEscapeButton(box.addButton(text(Text::Cancel), QMessageBox::RejectRole));
  else
    box.setEscapeButton(ok);
  box.exec();
  return box.clickedButton() == ok ? platform::Answer::Ok : platform::Answer::Cancel;
}

void QtScreen::runModal(platform::Form& form, platform::Form*) {
  if (onSync) onSync();
  form.Show();
  FormDialog dialog(form, *this, dialogParent());
  dialog.exec();
  if (form.Visible()) form.Hide();
  for (const auto& control : form.controls())
    m_widgets.erase(control.get());
}

void QtScreen::popupMenu(platform::Form&, platform::MenuItem& menu, double x, double y) {
  if (onSync) onSync();
  if (onPopup) onPopup(menu, x, y);
}

bool QtScreen::setFocus(platform::Control& control) {
  QWidget* widget = widgetOf(control);
  if (!widget || !widget->isEnabled()) return false;
  widget->setFocus(Qt::OtherFocusReason);
  focusTaken(control);
  return true;
}

// Input that comes while the window is disabled is dropped by the window; all else is delivered.
void QtScreen::pendingEvents() {
  if (onSync) onSync();
  QCoreApplication::processEvents(QEventLoop::AllEvents);
}

void QtScreen::showHelp(const std::string& file, int command, int context) {
  if (onHelp) onHelp(file, command, context);
}

platform::Metrics QtScreen::metrics() const {
  const int line = QFontMetrics(QApplication::font()).height();
  platform::Metrics metrics;
  metrics.tabHeight = toTwips(line + 2 * kSpace);
  metrics.tabBorder = 0;
  metrics.bandHeight = toTwips(5 * kSpace);
  metrics.bandsShareRow = true;
  return metrics;
}

} // namespace desktop
