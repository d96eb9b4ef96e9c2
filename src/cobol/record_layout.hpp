#pragma once

#include <vector>

#include "cobol/analysis.hpp"

namespace cobol {

constexpr std::int64_t kOffsetLimit = std::int64_t{1} << 62;
/// Sum and product of values that are not negative, cut at 2^62.
inline std::int64_t saturatingAdd(std::int64_t a, std::int64_t b) {
  return a > kOffsetLimit - b ? kOffsetLimit : a + b;
}
inline std::int64_t saturatingMultiply(std::int64_t a, std::int64_t b) {
  if (b == 1) return a; // as nearly always: most items do not repeat
  return a != 0 && b != 0 && a > kOffsetLimit / b ? kOffsetLimit : a * b;
}

/// The items at the start of chains of redefinitions. All are sought when a chain of several is first asked for,
/// as few programs have one.
class RedefinitionRoots {
 public:
  explicit RedefinitionRoots(const Analysis& analysis) : m_analysis(analysis) {}
  /// The item itself when it redefines nothing.
  int of(int item) {
    const int target = redefinedBy(item);
    if (target < 0) return item;
    if (target < item && redefinedBy(target) < 0) return target; // as in nearly all programs
    if (m_roots.empty()) seek();
    return m_roots[static_cast<std::size_t>(item)];
  }

 private:
  int redefinedBy(int item) const { return m_analysis.constructs[static_cast<std::size_t>(item)].redefines; }
  void seek();

  const Analysis& m_analysis;
  std::vector<int> m_roots; ///< by construct
};

/// Lays out one record at a time: positions, lengths and sizes of all items below a level 01 or 77.
class RecordLayout {
 public:
  RecordLayout(Analysis& analysis, const Options& options, Diagnostics& diagnostics)
      : m_analysis(analysis), m_options(options), m_diagnostics(diagnostics), m_roots(analysis) {}

  void layOut(int record);
  /// The item at the start of a chain of redefinitions; the item itself when it redefines nothing.
  int rootOf(int item) { return m_roots.of(item); }

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
  int close();
  void passPlain(Frame& frame);
  std::int64_t startOf(const Frame& frame, const Construct& item);
  std::int64_t startOfRedefinition(int item);
  void advance(Frame& frame, int boundaryInside);
  void compare(const Construct& item, const Construct& root);
  void grow(int item, std::int64_t slack);
  int boundaryBefore(const Construct& item) const;
  Construct& at(int index) { return m_analysis.constructs[static_cast<std::size_t>(index)]; }
  const Construct& at(int index) const { return m_analysis.constructs[static_cast<std::size_t>(index)]; }

  Analysis& m_analysis;
  const Options& m_options;
  Diagnostics& m_diagnostics;
  RedefinitionRoots m_roots;
  std::vector<Frame> m_frames;
  std::int64_t m_farthest = 0; ///< end of report lines, whose columns may run backwards
};

} // namespace cobol
