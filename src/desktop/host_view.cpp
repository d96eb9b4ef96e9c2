#include "desktop/host_view.hpp"

#include <QApplication>

#include "desktop/twips.hpp"

namespace desktop {

HostView::HostView(tarnsift::HostControl& control, platform::Form& form, QWidget* widget)
    : QObject(widget), m_control(control), m_widget(widget) {
  connectWhile(control.Placed, m_lifetime, [this] { place(); });
  place();
  connect(qApp, &QApplication::focusChanged, this, [this, &form](QWidget* before, QWidget* now) {
    const auto inside = [this](QWidget* w) { return w && (w == m_widget || m_widget->isAncestorOf(w)); };
    if (!inside(now) || inside(before)) return;
    if (!form.ActiveControl && !before) return; // the window is in front again, nothing else has changed
    form.ActiveControl = nullptr;
    m_control.GotFocus.raise();
    if (afterEvent) afterEvent();
  });
}

void HostView::place() {
  m_widget->setGeometry(toPixels(m_control.Left, m_control.Top, m_control.Width, m_control.Height));
  m_widget->setVisible(m_control.Visible() && m_control.Height > 0);
}

} // namespace desktop
