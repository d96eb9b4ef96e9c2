#pragma once

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "app/command_line.hpp"
#include "app/progress_line.hpp"
#include "orvane/host.hpp"
#include "platform/controls/screen.hpp"
#include "tarnsift/reports/change_size.hpp"

namespace app {

/// Counts of a program's lists as the programs pane shows them.
struct ListCounts {
  std::string key;
  std::string program;
  std::array<std::int64_t, 3> counts{}; ///< Working, Affected, Clean
};

/// A real session of the component without a screen: its commands run through the models of its window.
class HeadlessSession {
 public:
  /// `programGlob` is the selection of the programs pane; "" takes all. Throws platform::Error when it matches nothing
  /// or the project is in use.
  HeadlessSession(const Context& context, const std::string& programGlob);
  HeadlessSession(orvane::BaseFolder base, const std::string& project, const std::string& programGlob);
  ~HeadlessSession();
  HeadlessSession(const HeadlessSession&) = delete;
  HeadlessSession& operator=(const HeadlessSession&) = delete;

  orvane::Host& host() { return *m_host; }
  platform::Form& window() { return m_host->window(); }

  /// Apply Filter with that criterion to a list (3: out of all lists). Gives what the component said at the end, if
  /// anything.
  std::string filter(const std::string& criterion, int target);
  /// Find Synonyms from a list to a list.
  void findSynonyms(int from, int to);
  /// An entry of the report menu.
  void report(int index);
  /// Makes a project of a list (0 to 2), with the limits given or those that the component proposes. Gives the limits.
  tarnsift::SizeLimits derive(int list, const std::string& name, const std::optional<tarnsift::SizeLimits>& limits);
  /// Chooses an entry of the menus. An error that the component tells becomes a platform::Error.
  void choose(const std::string& menu, int index = -1);
  /// Does something to the models; an error that the component tells becomes a platform::Error.
  void act(const std::function<void()>& action);
  /// The answer to the next question.
  void answer(platform::Answer answer) { m_screen.answers.push_back(answer); }
  /// What the comment dialog gives.
  std::string commentText;
  /// Selects exactly the rows with these keys; only for a session with a program selection.
  void select(const std::vector<std::string>& keys);

  std::vector<ListCounts> counts();
  /// Closes the window and saves what outlasts the session. Throws when the component refuses or fails.
  void close();

 private:
  void start(const std::string& programGlob);
  void openWindow();
  platform::HeadlessScreen m_screen;
  ProgressLine m_progress;
  std::unique_ptr<orvane::Host> m_host;
};

/// Tells what a command changed, in numbers.
void printChange(const std::vector<ListCounts>& before, const std::vector<ListCounts>& after);

/// "working", "affected", "clean" to 0, 1, 2; with `orDelete` also "delete" to 3. Throws UsageError.
int listNamed(const std::string& word, bool orDelete = false);

} // namespace app
