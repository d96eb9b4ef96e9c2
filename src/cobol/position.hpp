#pragma once

#include <compare>
#include <cstdint>

namespace cobol {

/// A physical place in an original file. `line` and `column` count from 1; a column is a decoded character and a tab
/// counts as one. `file` indexes Analysis::files (0 is the program's own source).
struct Position {
  std::uint32_t file = 0;
  std::uint32_t line = 0;
  std::uint32_t column = 0;
  std::uint32_t length = 0; ///< characters of the name on that line

  auto operator<=>(const Position&) const = default;
};

} // namespace cobol
