#pragma once

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/controls/form.hpp"

namespace platform {

/// Styles and answers of a message box, added together as the caller passes them.
enum MessageStyle : int { kOkOnly = 0, kOkCancel = 1, kCritical = 16, kExclamation = 48, kInformation = 64 };
enum class Answer : int { Ok = 1, Cancel = 2 };

/// Measures that only a toolkit knows, in twips.
struct Metrics {
  double tabHeight = 330;   ///< of a tab strip's tabs
  double tabBorder = 45;    ///< round a tab strip's client area
  double bandHeight = 420;  ///< of one band of a cool bar
  double buttonWidth = 345; ///< of a toolbar button
  double separatorWidth = 120;
  bool bandsShareRow = false; ///< the bands of a cool bar stand side by side
};

/// The one way from the models to the outside.
class Screen {
 public:
  virtual ~Screen() = default;
  virtual Answer messageBox(const std::string& text, int style, const std::string& title) = 0;
  /// Shows the form and returns when it is hidden.
  virtual void runModal(Form& form, Form* owner) = 0;
  /// Opens the menu at the place in the form, twips; negative: at the pointer. Returns when it is closed.
  virtual void popupMenu(Form& form, MenuItem& menu, double x, double y) = 0;
  /// False when the control cannot take the focus.
  virtual bool setFocus(Control& control) = 0;
  /// Lets events that wait be delivered.
  virtual void pendingEvents() = 0;
  virtual void showHelp(const std::string& file, int command, int context) = 0;
  virtual Metrics metrics() const { return {}; }
};

/// The screen of this process. Throws Error when none was set.
Screen& screen();
void setScreen(Screen* screen);

/// A screen without a display, for tests and the command line. Whoever runs it says beforehand what is answered; a
/// question without an answer is an error.
class HeadlessScreen : public Screen {
 public:
  struct Message {
    std::string text;
    int style = 0;
    std::string title;
  };
  std::vector<Message> messages; ///< everything that was said, oldest first
  std::deque<Answer> answers;    ///< of questions (boxes with a Cancel button), in order
  std::map<std::string, std::function<void(Form&)>>
      dialogs;                                ///< by form name: what the analyst does there; must hide it
  std::function<void(MenuItem&)> onPopup;     ///< what the analyst does with a pop-up; none: closes it
  std::vector<std::string> popups;            ///< names of the menus that were popped up
  std::vector<std::pair<int, int>> helpShown; ///< command, context
  std::function<void()> onPendingEvents;

  Answer messageBox(const std::string& text, int style, const std::string& title) override;
  void runModal(Form& form, Form* owner) override;
  void popupMenu(Form& form, MenuItem& menu, double x, double y) override;
  bool setFocus(Control& control) override;
  void pendingEvents() override;
  void showHelp(const std::string& file, int command, int context) override;
};

} // namespace platform
