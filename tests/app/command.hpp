#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "platform/files/files.hpp"

/// Runs the real command in a folder of its own, with the user's registration kept there too.
class CommandTest : public ::testing::Test {
 protected:
  struct Result {
    int status = -1;
    std::string out;
    std::string error;
    std::vector<nlohmann::json> objects() const; ///< stdout as JSON lines
  };
  /// `line` is given to the shell behind the command's name; it runs in `folder`.
  Result run(const std::string& line) const;
  /// Runs and expects status 0.
  Result good(const std::string& line) const;
  /// Starts the command and kills it (-9) after that many milliseconds, unless it has ended by then.
  void runAndKill(const std::string& line, int milliseconds) const;
  void write(const std::string& name, const std::string& text) const;

  platform::TemporaryFolder m_place;
  std::string folder = m_place.path();
};

/// Fixed-format COBOL from free lines: seven blanks in front of each.
std::string fixedForm(const std::string& text);
