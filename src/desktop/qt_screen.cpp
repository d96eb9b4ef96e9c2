#include "desktop/qt_screen.hpp"

#include <QApplication>

#include "desktop/form_dialog.hpp"
#include "desktop/message_box.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"

namespace desktop {

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
  constexpr int kIcons = 112;
  if ((style & kIcons) == platform::kCritical) ++m_errorsTold;
  return showMessage(dialogParent(), message, style, title);
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
