#pragma once

#include <string>
#include <vector>

#include "platform/controls/control.hpp"

namespace platform {

class Label : public Control {
 public:
  using Control::Control;
  std::string Caption;
};

class Frame : public Label {
 public:
  using Label::Label;
};

class CommandButton : public Control {
 public:
  using Control::Control;
  std::string Caption;
  bool Default = false; ///< Enter presses it
  bool Cancel = false;  ///< Esc presses it
  Event<> Click;
  void press() { ///< by the analyst: nothing when it is disabled
    if (Enabled) Click.raise();
  }
};

/// One of a group: choosing it clears the others of its control array.
class OptionButton : public Control {
 public:
  using Control::Control;
  std::string Caption;
  bool Value() const { return m_value; }
  void choose();

 private:
  bool m_value = false;
};

/// A typing box with a drop-down list.
class ComboBox : public Control {
 public:
  using Control::Control;
  std::vector<std::string> Items;
  const std::string& Text() const { return m_text; }
  void setText(std::string text);  ///< by typing or by the program: raises Change
  void pick(std::size_t position); ///< from 1, by the analyst: takes the text and raises Click
  Event<> Change;
  Event<> Click;

 private:
  std::string m_text;
};

/// Shows help through the screen.
class CommonDialog : public Control {
 public:
  using Control::Control;
  std::string HelpFile;
  int HelpCommand = 0; ///< 1: the topic of HelpContext, 11: the contents
  int HelpContext = 0;
  void ShowHelp();
};

} // namespace platform
