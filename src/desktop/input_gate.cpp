#include "desktop/input_gate.hpp"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>
#include <QWindow>

#include "desktop/key_codes.hpp"

namespace desktop {

namespace {

bool isInput(QEvent::Type type) {
  switch (type) {
  case QEvent::KeyPress:
  case QEvent::KeyRelease:
  case QEvent::Shortcut:
  case QEvent::ShortcutOverride:
  case QEvent::MouseButtonPress:
  case QEvent::MouseButtonRelease:
  case QEvent::MouseButtonDblClick:
  case QEvent::MouseMove:
  case QEvent::Wheel:
  case QEvent::ContextMenu:
  case QEvent::InputMethod:
  case QEvent::TouchBegin:
  case QEvent::TouchUpdate:
  case QEvent::TouchEnd:
    return true;
  default:
    return false;
  }
}

} // namespace

InputGate::InputGate(platform::Form& form, QWidget& window) : m_form(form), m_window(window) {
  qApp->installEventFilter(this);
}

InputGate::~InputGate() {
  qApp->removeEventFilter(this);
}

bool InputGate::concerns(const QObject* watched) const {
  if (const auto* widget = qobject_cast<const QWidget*>(watched)) return widget->window() == &m_window;
  return watched == m_window.windowHandle();
}

bool InputGate::eventFilter(QObject* watched, QEvent* event) {
  if (!isInput(event->type()) || !concerns(watched)) return false;
  // Stopped at the toolkit's window already, a press moves no focus; a release must pass there, or the toolkit
  // believes the button to be down for ever.
  if (!m_open || !m_form.Enabled()) return !watched->isWindowType() || event->type() != QEvent::MouseButtonRelease;
  if (event->type() == QEvent::MouseButtonPress) m_byKey = false;
  if (event->type() != QEvent::KeyPress) return false;
  m_byKey = true;
  // An ignored key goes on to the widgets around; the form sees it once, on its way to the focus.
  if (!m_form.KeyPreview || watched != QApplication::focusWidget()) return false;
  const auto* key = dynamic_cast<QKeyEvent*>(event);
  int code = keyCodeOf(key->key());
  m_form.KeyDown.raise(code, shiftStateOf(key->modifiers()));
  return code == 0 && keyCodeOf(key->key()) != 0;
}

} // namespace desktop
