#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>

#include "platform/controls/screen.hpp"

class QMenu;

namespace desktop {

/// The models' way to Qt: boxes, dialogs, menus, the focus and waiting events. Every widget of a control is bound here.
class QtScreen final : public platform::Screen {
 public:
  /// The widget of a control; it unbinds itself when it goes.
  void bind(platform::Control& control, QWidget* widget) { m_widgets[&control] = widget; }
  QWidget* widgetOf(const platform::Control& control) const;

  /// The widget of `control` has got the focus, by the analyst or on request: the form notes it and the control's event
  /// is raised, once until another control has it.
  void focusTaken(platform::Control& control);

  /// What owns boxes and dialogs; the main window between its showing and its close.
  void setMainWidget(QWidget* widget) { m_main = widget; }
  QWidget* dialogParent() const;

  std::function<void()> onSync; ///< brings the widgets to the state of the models, before anything is shown
  std::function<void(platform::MenuItem&, double x, double y)> onPopup;
  std::function<void(const std::string& file, int command, int context)> onHelp;
  /// How many error boxes have been shown.
  int errorsTold() const { return m_errorsTold; }

  platform::Answer messageBox(const std::string& text, int style, const std::string& title) override;
  void runModal(platform::Form& form, platform::Form* owner) override;
  void popupMenu(platform::Form& form, platform::MenuItem& menu, double x, double y) override;
  bool setFocus(platform::Control& control) override;
  void pendingEvents() override;
  void showHelp(const std::string& file, int command, int context) override;
  platform::Metrics metrics() const override;

 private:
  std::map<const platform::Control*, QPointer<QWidget>> m_widgets;
  QPointer<QWidget> m_main;
  int m_errorsTold = 0;
};

} // namespace desktop
