#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/controls/control.hpp"

namespace platform {

/// A menu, a submenu, an entry or a separator.
class MenuItem : public Control {
 public:
  using Control::Control;
  std::string Caption;  ///< '&' marks the access key; "-" is a separator
  std::string Shortcut; ///< e.g. "F5", "Ctrl+A", "Del"
  int HelpContextID = 0;
  bool Checked = false;
  std::vector<MenuItem*> Children; ///< owned by the form

  bool isSeparator() const { return Caption == "-"; }
  Event<> Click;
  /// What a choice by the analyst does: nothing when the entry or a menu above it is disabled or hidden.
  void choose();
  MenuItem* ParentMenu = nullptr;
};

} // namespace platform
