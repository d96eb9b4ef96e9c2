#pragma once

#include <QToolBar>
#include <map>

#include "desktop/menus.hpp"
#include "platform/controls/bars.hpp"

namespace desktop {

/// The toolbar's buttons. A drop-down's arrow opens its entries, its button the command.
class ToolBar final : public QToolBar {
 public:
  ToolBar(platform::Toolbar& model, platform::Form& form, QWidget* parent);

  /// Captions and states; the model gets the buttons' places.
  void sync();
  std::function<void()> afterEvent;

 private:
  void addButton(platform::ToolbarButton& button);
  QString toolTipOf(const platform::ToolbarButton& button) const;
  void fill(QMenu& menu, const platform::ToolbarButton& button);
  platform::Toolbar& m_model;
  platform::Form& m_form;
  std::map<platform::ToolbarButton*, QAction*> m_actions;
};

} // namespace desktop
