#include "platform/controls/screen.hpp"

#include <fmt/format.h>

namespace platform {

namespace {
Screen*& current() {
  static Screen* screen = nullptr;
  return screen;
}
} // namespace

Screen& screen() {
  if (!current()) throw Error("no screen was set");
  return *current();
}

void setScreen(Screen* screen) {
  current() = screen;
}

Answer HeadlessScreen::messageBox(const std::string& text, int style, const std::string& title) {
  messages.push_back({text, style, title});
  if ((style & 15) == kOkOnly) return Answer::Ok;
  if (answers.empty()) throw Error(fmt::format("nobody is there to answer: {}", text));
  const Answer answer = answers.front();
  answers.pop_front();
  return answer;
}

void HeadlessScreen::runModal(Form& form, Form*) {
  form.Show();
  const auto found = dialogs.find(form.Name());
  if (found == dialogs.end()) {
    form.Hide();
    throw Error(
        fmt::format("nobody is there to answer the dialog '{}'", form.Caption.empty() ? form.Name() : form.Caption));
  }
  found->second(form);
  if (form.Visible()) {
    form.Hide();
    throw Error(fmt::format("the dialog '{}' was not closed", form.Caption));
  }
}

void HeadlessScreen::popupMenu(Form&, MenuItem& menu, double, double) {
  popups.push_back(menu.Name());
  if (onPopup) onPopup(menu);
}

bool HeadlessScreen::setFocus(Control& control) {
  Form* form = control.Parent();
  if (!form) return false;
  if (form->ActiveControl == &control) return true;
  form->ActiveControl = &control;
  control.GotFocus.raise();
  return true;
}

void HeadlessScreen::pendingEvents() {
  if (onPendingEvents) onPendingEvents();
}

void HeadlessScreen::showHelp(const std::string&, int command, int context) {
  helpShown.emplace_back(command, context);
}

} // namespace platform
