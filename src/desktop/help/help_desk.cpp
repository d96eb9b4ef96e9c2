#include "desktop/help/help_desk.hpp"

#include <QApplication>
#include <QKeyEvent>

#include "desktop/help/help_window.hpp"
#include "desktop/help/topics.hpp"

namespace desktop {

HelpDesk::HelpDesk() {
  qApp->installEventFilter(this);
  connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { delete m_window.data(); });
}

HelpWindow* HelpDesk::window() const {
  return dynamic_cast<HelpWindow*>(m_window.data());
}

// A modal dialog takes all input but that of its own windows, so the guide becomes one of them.
void HelpDesk::show(const QString& page) {
  QWidget* dialog = QApplication::activeModalWidget();
  if (m_window && dialog && m_window->parentWidget() != dialog) delete m_window.data();
  if (!m_window) m_window = new HelpWindow(dialog);
  window()->open(page);
  m_window->show();
  m_window->raise();
  m_window->activateWindow();
}

void HelpDesk::show(int command, int context) {
  constexpr int kTopic = 1;
  show(command == kTopic ? topicOf(context) : QStringLiteral("index"));
}

bool HelpDesk::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !watched->isWidgetType()) return false;
  const auto* key = dynamic_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
  auto* widget = dynamic_cast<QWidget*>(watched);
  if (m_window && (widget == m_window || m_window->isAncestorOf(widget))) return false;
  show(topicOf(widget));
  return true;
}

HelpDesk& helpDesk() {
  static QPointer<HelpDesk> desk;
  if (!desk) {
    desk = new HelpDesk;
    desk->setParent(qApp);
  }
  return *desk;
}

} // namespace desktop
