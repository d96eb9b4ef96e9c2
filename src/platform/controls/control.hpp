#pragma once

#include <string>

#include "platform/controls/event.hpp"

namespace platform {

/// Mouse buttons, shift states and key codes as events carry them.
enum MouseButton : int { kLeftButton = 1, kRightButton = 2 };
enum ShiftState : int { kNoShift = 0, kShift = 1, kCtrl = 2, kAlt = 4 };
enum KeyCode : int {
  kKeyReturn = 13,
  kKeyEscape = 27,
  kKeyDelete = 46,
  kKeyA = 65,
  kKeyF5 = 116,
  kKeyF6 = 117,
  kKeyF8 = 119,
  kKeyF10 = 121
};
enum MousePointer : int { kPointerDefault = 0, kPointerHourglass = 11 };

class Form;

/// What all controls have in common. Geometry is in twips, relative to the form's inner area.
class Control {
 public:
  Control(std::string name, int index) : m_name(std::move(name)), m_index(index) {}
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  virtual ~Control() = default;

  const std::string& Name() const { return m_name; }
  int Index() const { return m_index; } ///< within a control array; -1 outside one
  Form* Parent() const { return m_parent; }

  double Left = 0, Top = 0, Width = 0, Height = 0;
  bool Enabled = true;
  std::string Tag;

  bool Visible() const { return m_visible; }
  void setVisible(bool visible);
  void Move(double left, double top, double width, double height);
  /// Asks the screen for the focus. Throws Error when the control cannot take it (hidden, disabled, no screen).
  void SetFocus();

  Event<> GotFocus;
  Event<> Changed; ///< something that shows has changed

 private:
  friend class Form;
  std::string m_name;
  int m_index;
  Form* m_parent = nullptr;
  bool m_visible = true;
};

} // namespace platform
