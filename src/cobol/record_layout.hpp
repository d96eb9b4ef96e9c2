#pragma once

#include <vector>

#include "cobol/analysis.hpp"

namespace cobol {

constexpr std::int64_t kOffsetLimit = std::int64_t{1} << 62;
/// Sum and product of values that are not negative, cut at 2^62.
inline std::int64_t saturatingAdd(std::int64_t a, std::int64_t b) {
  return a > kOffsetLimit - b ? kOffsetLimit : a + b;
}
std::int64_t saturatingMultiply(std::int64_t a, std::int64_t b);

/// By construct: the item at the start of its chain of redefinitions; itself when it redefines nothing.
std::vector<int> redefinitionRoots(const Analysis& analysis);

/// Boundary that SYNCHRONIZED asks for: 1 for items without it.
int boundaryOf(const Construct& item, const Options& options);

/// Lays out one record at a time: positions, lengths and sizes of all items below a level 01 or 77.
class RecordLayout {
 public:
  RecordLayout(Analysis& analysis, const Options& options, Diagnostics& diagnostics);

  void layOut(int record);
  /// The item at the start of a chain of redefinitions; the item itself when it redefines nothing.
  int rootOf(int item) const { return m_roots[static_cast<std::size_t>(item)]; }

 private:
  struct Frame {
    int group = -1;
    int child = -1; ///< being laid out or next
    std::int64_t begin = 0;
    std::int64_t current = 0;
    int previous = -1; ///< last child that redefines nothing
    int boundary = 1;  ///< largest inside
  };

  void open(int group, std::int64_t position);
  std::int64_t startOf(int item);
  void close(int item, int boundaryInside);
  void advance(int item, int boundaryInside);
  void grow(int item, std::int64_t slack);
  int firstBoundary(int item) const;
  Construct& at(int index) { return m_analysis.constructs[static_cast<std::size_t>(index)]; }
  const Construct& at(int index) const { return m_analysis.constructs[static_cast<std::size_t>(index)]; }

  Analysis& m_analysis;
  const Options& m_options;
  Diagnostics& m_diagnostics;
  std::vector<int> m_roots;
  std::vector<Frame> m_frames;
};

} // namespace cobol
