#pragma once

#include <chrono>
#include <string>

namespace app {

/// One line on stderr that tells how far a long command is; nothing when stderr is no terminal.
class ProgressLine {
 public:
  ProgressLine();
  ~ProgressLine() { clear(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;
  void show(const std::string& text, std::size_t done, std::size_t total);
  void clear();

 private:
  bool m_terminal;
  bool m_shown = false;
  std::chrono::steady_clock::time_point m_last{};
};

} // namespace app
