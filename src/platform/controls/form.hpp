#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/bars.hpp"
#include "platform/controls/control.hpp"
#include "platform/controls/inputs.hpp"
#include "platform/controls/list_view.hpp"
#include "platform/controls/menu.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/object.hpp"

namespace platform {

/// A window: data and events, no toolkit. Handed to the host as an Object, so that it can show it and drive it.
class Form : public Object {
 public:
  explicit Form(std::string name) : m_name(std::move(name)) {}

  const std::string& Name() const { return m_name; }
  std::string Caption;
  std::string Tag;
  std::string Icon; ///< key of the picture
  int MousePointer = kPointerDefault;
  int HelpContextID = 0;
  bool KeyPreview = false;
  bool Minimized = false;
  double Width = 15360, Height = 11520;           ///< outer size, twips
  double ScaleWidth = 15240, ScaleHeight = 10800; ///< inner size, twips

  bool Enabled() const { return m_enabled; }
  void setEnabled(bool enabled);
  bool Visible() const { return m_visible; }
  void Show();
  void Hide();
  bool Loaded() const { return m_loaded; }
  /// Raises Load when the form is not loaded.
  void load();
  /// The close path: QueryUnload, then Unload; each may cancel. False when it was cancelled.
  bool unload();

  Event<> Load;
  Event<bool&> QueryUnload; ///< cancel flag
  Event<bool&> Unload;      ///< cancel flag
  Event<> Resize;
  Event<int&, int> KeyDown; ///< key code, shift state; raised before the control's own event when KeyPreview is on
  Event<> Changed;          ///< caption, state, visibility

  Control* ActiveControl = nullptr;

  template<typename C>
  C& add(std::string name, int index = -1) {
    auto made = std::make_unique<C>(name, index);
    C& control = *made;
    own(std::move(made));
    return control;
  }
  Control* find(std::string_view name, int index = -1) const; ///< nullptr when there is none
  /// The control of that type. Throws KeyError when there is none.
  template<typename C>
  C& get(std::string_view name, int index = -1) const {
    auto* control = dynamic_cast<C*>(find(name, index));
    if (!control) throw KeyError("the window " + m_name + " has no control '" + std::string(name) + "' of that kind");
    return *control;
  }
  const std::vector<std::unique_ptr<Control>>& controls() const { return m_controls; }

 private:
  void own(std::unique_ptr<Control> control);
  std::string m_name;
  std::vector<std::unique_ptr<Control>> m_controls;
  std::map<std::pair<std::string, int>, Control*, std::less<>> m_byName;
  bool m_enabled = true;
  bool m_visible = false;
  bool m_loaded = false;
};

/// All forms that are loaded, in order of loading.
std::vector<Form*> loadedForms();

} // namespace platform
