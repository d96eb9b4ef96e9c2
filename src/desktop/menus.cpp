#include "desktop/menus.hpp"

#include <utility>

#include "desktop/icons.hpp"
#include "desktop/twips.hpp"

namespace desktop {

namespace {

struct MenuIcon {
  const char* name;
  int index;
  const char* icon;
};

// Entries that are on the toolbar as well wear its icons; the lists wear theirs.
constexpr MenuIcon kIcons[] = {
    {"mnuFileReport", -1, "Report"},    {"mnuFileSearch", -1, "Run"},       {"mnuFileSynonyms", -1, "Synonyms"},
    {"mnuMoveTo", 0, "MoveSuspicious"}, {"mnuMoveTo", 1, "MoveBad"},        {"mnuMoveTo", 2, "MoveGood"},
    {"mnuDelete", -1, "Delete"},        {"mnuComment", -1, "Note"},         {"mnuViewColumns", -1, "Columns"},
    {"mnuViewOptions", -1, "Options"},  {"mnuHelpTopics", -1, "Help"},      {"mnuSelect", -1, "Find"},
    {"mnuFileSearchTo", 0, "Working"},  {"mnuFileSearchTo", 1, "Affected"}, {"mnuFileSearchTo", 2, "Clean"},
};

QKeySequence shortcutOf(const platform::MenuItem& item) {
  return QKeySequence(text(item.Shortcut), QKeySequence::PortableText);
}

} // namespace

QString iconKeyOf(const platform::MenuItem& item) {
  for (const MenuIcon& row : kIcons)
    if (item.Name() == row.name && item.Index() == row.index) return QString::fromLatin1(row.icon);
  return {};
}

Menus::Menus(platform::Form& form, QMenuBar& bar) : m_form(form), m_bar(bar) {
  for (const auto& control : form.controls())
    if (auto* item = dynamic_cast<platform::MenuItem*>(control.get()); item && !item->ParentMenu) build(*item, nullptr);
  sync();
}

void Menus::build(platform::MenuItem& item, QMenu* parent) {
  if (item.isSeparator()) {
    m_actions[&item] = parent->addSeparator();
    return;
  }
  if (!item.Children.empty()) {
    QMenu* menu = parent ? parent->addMenu(QString()) : m_bar.addMenu(QString());
    menu->setObjectName(text(item.Name()));
    menu->setToolTipsVisible(false);
    m_menus[&item] = menu;
    m_actions[&item] = menu->menuAction();
    for (platform::MenuItem* child : item.Children)
      build(*child, menu);
  } else {
    QAction* action = parent->addAction(QString());
    action->setObjectName(text(item.Name()) + (item.Index() < 0 ? QString() : QString::number(item.Index())));
    action->setShortcut(shortcutOf(item));
    // An auto-repeated key would run a command again on what the first run left.
    action->setAutoRepeat(false);
    QObject::connect(action, &QAction::triggered, &m_bar, [this, &item, action] {
      action->setChecked(item.Checked); // the mark is the model's
      const platform::MenuItem* outer = std::exchange(m_inWork, &item);
      if (m_form.Enabled()) item.choose();
      m_inWork = outer;
      if (afterEvent) afterEvent();
    });
    m_actions[&item] = action;
  }
  if (const QString key = iconKeyOf(item); !key.isEmpty()) m_actions[&item]->setIcon(icon(key.toStdString()));
}

void Menus::sync() {
  for (const auto& [item, action] : m_actions) {
    if (item->isSeparator()) {
      action->setVisible(item->Visible());
      continue;
    }
    action->setText(text(item->Caption));
    action->setEnabled(item->Enabled);
    action->setVisible(item->Visible());
    if (action->isCheckable() != item->Checked) action->setCheckable(item->Checked);
    action->setChecked(item->Checked);
  }
}

QMenu* Menus::menuOf(const platform::MenuItem& item) const {
  const auto found = m_menus.find(&item);
  return found == m_menus.end() ? nullptr : found->second;
}

QAction* Menus::actionOf(const platform::MenuItem& item) const {
  const auto found = m_actions.find(&item);
  return found == m_actions.end() ? nullptr : found->second;
}

} // namespace desktop
