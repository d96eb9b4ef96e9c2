#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/control.hpp"

namespace platform {

/// An entry of a button's drop-down; positions count from 1.
struct ButtonMenu {
  std::size_t Index = 0;
  std::string Text;
  std::string ParentKey; ///< key of its button
};

struct ToolbarButton {
  enum class Style { plain, dropDown, separator };
  std::string Key;
  std::string ToolTipText;
  std::string Image;
  Style style = Style::plain;
  bool Enabled = true;
  double Left = 0; ///< twips within the toolbar; written by the screen, or by a headless one from fixed measures
  std::vector<ButtonMenu> ButtonMenus;

  void addButtonMenu(std::string text) { ButtonMenus.push_back({ButtonMenus.size() + 1, std::move(text), Key}); }
};

/// Buttons in order, positions from 1, separators included.
class Toolbar : public Control {
 public:
  using Control::Control;
  std::vector<std::unique_ptr<ToolbarButton>> Buttons;
  ToolbarButton& Button(std::string_view key); ///< throws KeyError
  ToolbarButton& Button(std::size_t position); ///< from 1; throws KeyError
  Event<ToolbarButton&> ButtonClick;
  Event<const ButtonMenu&> ButtonMenuClick;
  /// What a click by the analyst does: nothing on a disabled button.
  void click(std::string_view key);
  void clickMenu(std::string_view key, std::size_t index);
};

struct Tab {
  std::string Key;
  std::string Caption;
  int Image = 0;
};

/// Tabs, positions from 1. The client area is what the screen's tab strip leaves for the lists.
class TabStrip : public Control {
 public:
  using Control::Control;
  std::vector<Tab> Tabs;
  std::size_t SelectedItem() const { return m_selected; } ///< position from 1
  const Tab& selectedTab() const { return Tabs.at(m_selected - 1); }
  void select(std::size_t position); ///< a choice by the analyst or the program: raises Click
  void reset() { m_selected = 1; }   ///< the first tab, without an event
  double ClientLeft() const;
  double ClientTop() const;
  double ClientWidth() const;
  double ClientHeight() const;
  Event<> Click;

 private:
  std::size_t m_selected = 1;
};

struct Band {
  std::string Key;
  std::string Caption;
  Control* Child = nullptr;
  bool Visible = true;
};

/// The top bar with its bands, positions from 1.
class CoolBar : public Control {
 public:
  using Control::Control;
  std::vector<Band> Bands;
  const Band& band(std::string_view key) const; ///< throws KeyError
  /// Caption and visibility of a band; a change of the bar's height raises HeightChanged. On a screen whose bands share
  /// a row the height stays.
  void setBand(std::string_view key, std::string caption, bool visible);
  Event<> HeightChanged;
};

class ProgressBar : public Control {
 public:
  using Control::Control;
  int Min = 0;
  int Max = 1;
  int Value() const { return m_value; }
  void setValue(int value); ///< throws Error outside Min to Max

 private:
  int m_value = 0;
};

} // namespace platform
