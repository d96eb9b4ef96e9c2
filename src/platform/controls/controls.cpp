#include <algorithm>

#include <fmt/format.h>

#include "platform/controls/form.hpp"
#include "platform/controls/screen.hpp"

namespace platform {

void Control::setVisible(bool visible) {
  if (m_visible == visible) return;
  m_visible = visible;
  Changed.raise();
}

void Control::Move(double left, double top, double width, double height) {
  if (width < 0 || height < 0) throw Error(fmt::format("{}: a size cannot be negative", m_name));
  Left = left;
  Top = top;
  Width = width;
  Height = height;
  Changed.raise();
}

void Control::SetFocus() {
  if (!m_visible || !Enabled || !screen().setFocus(*this)) throw Error(fmt::format("{} cannot take the focus", m_name));
}

void MenuItem::choose() {
  for (const MenuItem* item = this; item; item = item->ParentMenu)
    if (!item->Enabled || !item->Visible()) return;
  if (!isSeparator()) Click.raise();
}

ToolbarButton& Toolbar::Button(std::string_view key) {
  for (const auto& button : Buttons)
    if (equalsIgnoringCase(button->Key, key) && !key.empty()) return *button;
  throw KeyError(fmt::format("the toolbar has no button '{}'", key));
}

ToolbarButton& Toolbar::Button(std::size_t position) {
  if (position == 0 || position > Buttons.size()) throw KeyError(fmt::format("the toolbar has no button {}", position));
  return *Buttons[position - 1];
}

void Toolbar::click(std::string_view key) {
  ToolbarButton& button = Button(key);
  if (button.Enabled) ButtonClick.raise(button);
}

void Toolbar::clickMenu(std::string_view key, std::size_t index) {
  ToolbarButton& button = Button(key);
  if (index == 0 || index > button.ButtonMenus.size())
    throw KeyError(fmt::format("the button '{}' has no entry {}", key, index));
  if (button.Enabled) ButtonMenuClick.raise(button.ButtonMenus[index - 1]);
}

void TabStrip::select(std::size_t position) {
  if (position == 0 || position > Tabs.size()) throw KeyError(fmt::format("there is no tab {}", position));
  m_selected = position;
  Changed.raise();
  Click.raise();
}

double TabStrip::ClientLeft() const {
  return Left + screen().metrics().tabBorder;
}
double TabStrip::ClientTop() const {
  return Top + screen().metrics().tabHeight;
}
double TabStrip::ClientWidth() const {
  return std::max(0.0, Width - 2 * screen().metrics().tabBorder);
}
double TabStrip::ClientHeight() const {
  return std::max(0.0, Height - screen().metrics().tabHeight - screen().metrics().tabBorder);
}

const Band& CoolBar::band(std::string_view key) const {
  for (const auto& band : Bands)
    if (equalsIgnoringCase(band.Key, key)) return band;
  throw KeyError(fmt::format("the bar has no band '{}'", key));
}

void CoolBar::setBand(std::string_view key, std::string caption, bool visible) {
  auto& changed = const_cast<Band&>(band(key));
  changed.Caption = std::move(caption);
  changed.Visible = visible;
  const auto shown = std::count_if(Bands.begin(), Bands.end(), [](const Band& b) { return b.Visible; });
  const Metrics metrics = screen().metrics();
  const double height = static_cast<double>(metrics.bandsShareRow ? 1 : shown) * metrics.bandHeight;
  const bool resized = height != Height;
  Height = height;
  Changed.raise();
  if (resized) HeightChanged.raise();
}

void ProgressBar::setValue(int value) {
  if (value < Min || value > Max) throw Error(fmt::format("{} is outside the bar's {} to {}", value, Min, Max));
  m_value = value;
  Changed.raise();
}

void OptionButton::choose() {
  if (Parent())
    for (const auto& control : Parent()->controls())
      if (auto* other = dynamic_cast<OptionButton*>(control.get()); other && other->Name() == Name())
        other->m_value = false;
  m_value = true;
  Changed.raise();
}

void ComboBox::setText(std::string text) {
  m_text = std::move(text);
  Change.raise();
}

void ComboBox::pick(std::size_t position) {
  m_text = Items.at(position - 1);
  Click.raise();
}

void CommonDialog::ShowHelp() {
  screen().showHelp(HelpFile, HelpCommand, HelpContext);
}

namespace {
std::vector<Form*>& loaded() {
  static std::vector<Form*> forms;
  return forms;
}
} // namespace

std::vector<Form*> loadedForms() {
  return loaded();
}

void Form::setEnabled(bool enabled) {
  m_enabled = enabled;
  Changed.raise();
}

void Form::Show() {
  load();
  m_visible = true;
  Changed.raise();
}

void Form::Hide() {
  m_visible = false;
  Changed.raise();
}

void Form::load() {
  if (m_loaded) return;
  m_loaded = true;
  loaded().push_back(this);
  Load.raise();
}

bool Form::unload() {
  if (!m_loaded) return true;
  bool cancel = false;
  QueryUnload.raise(cancel);
  if (cancel) return false;
  Unload.raise(cancel);
  if (cancel) return false;
  m_loaded = false;
  m_visible = false;
  std::erase(loaded(), this);
  Changed.raise();
  return true;
}

Control* Form::find(std::string_view name, int index) const {
  const auto found = m_byName.find(std::pair(lower(name), index));
  return found == m_byName.end() ? nullptr : found->second;
}

void Form::own(std::unique_ptr<Control> control) {
  const auto key = std::pair(lower(control->Name()), control->Index());
  if (!m_byName.emplace(key, control.get()).second)
    throw KeyError(fmt::format("{} has a control '{}' already", m_name, control->Name()));
  control->m_parent = this;
  m_controls.push_back(std::move(control));
}

} // namespace platform
