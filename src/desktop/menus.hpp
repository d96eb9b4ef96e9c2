#pragma once

#include <QMenu>
#include <QMenuBar>
#include <map>

#include "platform/controls/form.hpp"

namespace desktop {

/// The menu tree of a form as a menu bar. Captions, marks and states follow the models; a choice goes through the
/// model, which does nothing when it is disabled.
class Menus {
 public:
  Menus(platform::Form& form, QMenuBar& bar);

  void sync();
  /// The menu of an entry that has entries below it; nothing for others.
  QMenu* menuOf(const platform::MenuItem& item) const;
  QAction* actionOf(const platform::MenuItem& item) const;
  /// The entry whose command runs; null when none does.
  const platform::MenuItem* inWork() const { return m_inWork; }
  /// Runs after each choice.
  std::function<void()> afterEvent;

 private:
  void build(platform::MenuItem& item, QMenu* parent);
  platform::Form& m_form;
  QMenuBar& m_bar;
  std::map<const platform::MenuItem*, QAction*> m_actions;
  std::map<const platform::MenuItem*, QMenu*> m_menus;
  const platform::MenuItem* m_inWork = nullptr;
};

/// The shortcut of a command behind a tool tip, as "Move To Working (F5)"; by the icon key of the button.
QString iconKeyOf(const platform::MenuItem& item);

} // namespace desktop
