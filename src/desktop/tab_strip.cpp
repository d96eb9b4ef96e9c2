#include "desktop/tab_strip.hpp"

#include <QFocusEvent>

#include "desktop/icons.hpp"
#include "desktop/qt_screen.hpp"
#include "desktop/twips.hpp"

namespace desktop {

TabStripWidget::TabStripWidget(platform::TabStrip& model, QtScreen& screen, QWidget* parent)
    : QTabBar(parent), m_model(model), m_screen(screen) {
  setObjectName(text(model.Name()));
  setDrawBase(false);
  setExpanding(false);
  setUsesScrollButtons(true);
  setElideMode(Qt::ElideNone);
  setIconSize(QSize(16, 16));
  setFocusPolicy(Qt::StrongFocus);
  m_screen.bind(model, this);
  sync();
  connect(this, &QTabBar::currentChanged, this, [this](int position) {
    if (m_syncing || position < 0) return;
    m_model.select(static_cast<std::size_t>(position) + 1);
    if (afterEvent) afterEvent();
  });
  connectWhile(m_model.Changed, m_lifetime, [this] { place(); });
  place();
}

void TabStripWidget::place() {
  const double tabs = m_screen.metrics().tabHeight;
  setGeometry(toPixels(m_model.Left, m_model.Top, m_model.Width, std::min(tabs, m_model.Height)));
  if (isVisibleTo(parentWidget()) != m_model.Visible()) setVisible(m_model.Visible());
}

void TabStripWidget::sync() {
  m_syncing = true;
  for (std::size_t i = 0; i < m_model.Tabs.size(); ++i) {
    const platform::Tab& tab = m_model.Tabs[i];
    const int at = static_cast<int>(i);
    if (at >= count())
      insertTab(at, statusIcon(tab.Image), text(tab.Caption));
    else if (tabText(at) != text(tab.Caption))
      setTabText(at, text(tab.Caption));
  }
  while (count() > static_cast<int>(m_model.Tabs.size()))
    removeTab(count() - 1);
  setCurrentIndex(static_cast<int>(m_model.SelectedItem()) - 1);
  m_syncing = false;
}

void TabStripWidget::focusInEvent(QFocusEvent* event) {
  QTabBar::focusInEvent(event);
  if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason) return;
  m_screen.focusTaken(m_model);
  if (afterEvent) afterEvent();
}

} // namespace desktop
