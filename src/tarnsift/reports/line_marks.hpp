#pragma once

#include <cstdint>
#include <vector>

namespace tarnsift {

/// What is shown of each line of a file.
enum class LineMark : std::uint8_t { hidden, context, bold };

/// The marks of one file while its usages are gathered. Lines count from 1.
class LineMarks {
 public:
  /// `neighbourhood`: lines of context on each side of a marked one.
  LineMarks(std::size_t lineCount, int neighbourhood);
  /// A declaration or usage stands on this line. Line 0, of a construct without a place, marks the lines behind it as
  /// context; a line beyond the file's end, whose source has changed, marks at most context in front of it.
  void mark(std::int64_t line);
  LineMark of(std::size_t line) const { return m_marks[line]; }

 private:
  std::vector<LineMark> m_marks;
  std::int64_t m_lineCount;
  std::int64_t m_neighbourhood;
};

} // namespace tarnsift
