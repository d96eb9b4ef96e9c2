#pragma once

#include <Qt>

#include "platform/controls/control.hpp"

namespace desktop {

/// Key codes and states as the models' events carry them.
inline int keyCodeOf(int key) {
  if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return platform::kKeyF5 + (key - Qt::Key_F5);
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9)) return key;
  switch (key) {
  case Qt::Key_Return:
  case Qt::Key_Enter:
    return platform::kKeyReturn;
  case Qt::Key_Escape:
    return platform::kKeyEscape;
  case Qt::Key_Delete:
    return platform::kKeyDelete;
  case Qt::Key_Backspace:
    return 8;
  case Qt::Key_Tab:
  case Qt::Key_Backtab:
    return 9;
  case Qt::Key_Space:
    return 32;
  case Qt::Key_PageUp:
    return 33;
  case Qt::Key_PageDown:
    return 34;
  case Qt::Key_End:
    return 35;
  case Qt::Key_Home:
    return 36;
  case Qt::Key_Left:
    return 37;
  case Qt::Key_Up:
    return 38;
  case Qt::Key_Right:
    return 39;
  case Qt::Key_Down:
    return 40;
  case Qt::Key_Insert:
    return 45;
  default:
    return 0;
  }
}

inline int shiftStateOf(Qt::KeyboardModifiers modifiers) {
  return (modifiers & Qt::ShiftModifier ? platform::kShift : 0) |
         (modifiers & Qt::ControlModifier ? platform::kCtrl : 0) | (modifiers & Qt::AltModifier ? platform::kAlt : 0);
}

inline int buttonOf(Qt::MouseButton button) {
  return button == Qt::LeftButton ? platform::kLeftButton : button == Qt::RightButton ? platform::kRightButton : 4;
}

} // namespace desktop
