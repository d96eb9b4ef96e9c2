#pragma once

#include <QDialog>
#include <map>

#include "desktop/connect_while.hpp"
#include "platform/controls/form.hpp"

class QBoxLayout;
class QPushButton;
class QRadioButton;
class QComboBox;

namespace desktop {

class QtScreen;

/// A dialog of the component: its controls become widgets in a layout of their kind. Labels stand over the fields
/// that follow them, the n-th group of option buttons in the n-th frame, command buttons at the foot. It ends when
/// the form is hidden; Enter presses the button in focus, else the default button, Esc the cancel button; a dialog
/// without such buttons does nothing there. Closing it by its frame takes the form's close path.
class FormDialog final : public QDialog {
 public:
  FormDialog(platform::Form& form, QtScreen& screen, QWidget* parent);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void build();
  void addOptions(QBoxLayout* layout);
  void addFields(QBoxLayout* layout);
  void addLoose(QBoxLayout* layout);
  void addButtons(QBoxLayout* layout);
  void follow();
  bool focusedButton() const;
  template<typename Action>
  void act(Action action);

  platform::Form& m_form;
  QtScreen& m_screen;
  Lifetime m_lifetime = makeLifetime();
  std::map<platform::CommandButton*, QPushButton*> m_buttons;
  std::map<platform::OptionButton*, QRadioButton*> m_options;
  std::map<platform::ComboBox*, QComboBox*> m_boxes;
};

} // namespace desktop
