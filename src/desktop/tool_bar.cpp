#include "desktop/tool_bar.hpp"

#include <QToolButton>

#include "desktop/icons.hpp"
#include "desktop/texts.hpp"
#include "desktop/twips.hpp"

namespace desktop {

namespace {

constexpr int kIconSize = 22;

} // namespace

ToolBar::ToolBar(platform::Toolbar& model, platform::Form& form, QWidget* parent)
    : QToolBar(parent), m_model(model), m_form(form) {
  setObjectName(text(model.Name()));
  setAccessibleName(text(Text::Toolbar));
  setIconSize(QSize(kIconSize, kIconSize));
  setMovable(false);
  setContextMenuPolicy(Qt::PreventContextMenu);
  for (const auto& button : model.Buttons) {
    if (button->style == platform::ToolbarButton::Style::separator)
      addSeparator();
    else
      addButton(*button);
  }
  if (auto* more = findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))) {
    more->setIcon(icon("Next"));
    more->setToolTip(text(Text::MoreCommands));
    more->setAccessibleName(text(Text::MoreCommands));
  }
  sync();
}

void ToolBar::addButton(platform::ToolbarButton& button) {
  QAction* action = addAction(icon(button.Image), QString());
  action->setObjectName(text(button.Key));
  auto* widget = qobject_cast<QToolButton*>(widgetForAction(action));
  widget->setObjectName(text(button.Key));
  widget->setFocusPolicy(Qt::TabFocus);
  connect(action, &QAction::triggered, this, [this, &button] {
    if (m_form.Enabled()) m_model.click(button.Key);
    if (afterEvent) afterEvent();
  });
  if (button.style == platform::ToolbarButton::Style::dropDown) {
    auto* menu = new QMenu(this);
    menu->setObjectName(text(button.Key) + QStringLiteral("Menu"));
    action->setMenu(menu);
    widget->setPopupMode(QToolButton::MenuButtonPopup);
    fill(*menu, button);
    connect(menu, &QMenu::aboutToShow, this, [this, menu, &button] { fill(*menu, button); });
  }
  m_actions[&button] = action;
}

void ToolBar::fill(QMenu& menu, const platform::ToolbarButton& button) {
  menu.clear();
  for (const platform::ButtonMenu& entry : button.ButtonMenus) {
    if (entry.Text == "-") {
      menu.addSeparator();
      continue;
    }
    QAction* action = menu.addAction(text(entry.Text));
    connect(action, &QAction::triggered, this, [this, key = button.Key, index = entry.Index] {
      if (m_form.Enabled()) m_model.clickMenu(key, index);
      if (afterEvent) afterEvent();
    });
  }
}

// The shortcut is that of the menu entry with the same picture.
QString ToolBar::toolTipOf(const platform::ToolbarButton& button) const {
  QString tip = text(button.ToolTipText);
  for (const auto& control : m_form.controls()) {
    const auto* item = dynamic_cast<platform::MenuItem*>(control.get());
    if (item && !item->Shortcut.empty() && iconKeyOf(*item).toStdString() == button.Image)
      tip += QStringLiteral(" (") +
             QKeySequence(text(item->Shortcut), QKeySequence::PortableText).toString(QKeySequence::NativeText) +
             QStringLiteral(")");
  }
  return tip;
}

void ToolBar::sync() {
  for (const auto& [button, action] : m_actions) {
    action->setEnabled(button->Enabled);
    const QString tip = toolTipOf(*button);
    if (action->toolTip() != tip) {
      action->setText(text(button->ToolTipText).remove(QStringLiteral("...")));
      action->setToolTip(tip);
    }
    QWidget* widget = widgetForAction(action);
    widget->setAccessibleName(text(button->ToolTipText));
    button->Left = toTwips(widget->x());
  }
}

} // namespace desktop
