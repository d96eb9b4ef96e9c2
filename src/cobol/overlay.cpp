#include "cobol/overlay.hpp"

#include <unordered_set>

#include "cobol/record_layout.hpp"

namespace cobol {
namespace {

constexpr std::size_t kOccurrencesPerItem = 10'000;
constexpr std::size_t kPairs = 200'000;
constexpr std::size_t kMeetings = 20'000'000; // of occurrences, counted over the program
constexpr std::size_t kIntervals = 4'000'000; // of one area

struct Interval {
  std::int64_t begin = 0;
  std::int64_t end = 0;
  std::uint32_t item = 0;
  bool below = false; ///< below a repeating group
};

class OverlaySearch {
 public:
  OverlaySearch(Analysis& analysis, Diagnostics& diagnostics)
      : m_analysis(analysis), m_diagnostics(diagnostics), m_roots(analysis) {}

  void run() {
    collectAreas();
    for (const auto& leaves : m_leaves)
      if (!m_capped && !leaves.empty()) searchArea(leaves);
    if (m_capped)
      m_diagnostics.add(Code::OverlaysCapped, Severity::warning, {},
                        "more than 200000 overlays of table elements; the rest is left out");
  }

 private:
  const Construct& at(std::size_t index) const { return m_analysis.constructs[index]; }
  const Construct& at(int index) const { return m_analysis.constructs[static_cast<std::size_t>(index)]; }

  /// Elementary items of the areas that have more than one layout and a table of groups.
  void collectAreas() {
    struct Area {
      bool hasTable = false;
      bool hasLayouts = false;
      std::uint32_t records = 0;
    };
    std::vector<Area> areas;
    for (const auto& item : m_analysis.constructs) {
      if (!item.repeats || !item.isGroup() || !isPlaced(item)) continue;
      areas.resize(std::max(areas.size(), areaOf(item) + 1));
      areas[areaOf(item)].hasTable = true;
    }
    if (areas.empty()) return;
    for (const auto& item : m_analysis.constructs) {
      if (!isPlaced(item) || areaOf(item) >= areas.size()) continue;
      auto& area = areas[areaOf(item)];
      if (item.redefines >= 0 || (item.parent < 0 && ++area.records > 1)) area.hasLayouts = true;
    }
    m_leaves.resize(areas.size());
    for (std::size_t i = 0; i < m_analysis.constructs.size(); ++i) {
      const auto& item = at(i);
      if (!isPlaced(item) || areaOf(item) >= areas.size()) continue;
      const auto& area = areas[areaOf(item)];
      if (!area.hasTable || !area.hasLayouts) continue;
      if (item.isGroup() || item.kind == Kind::filler || item.size == 0) continue;
      m_leaves[areaOf(item)].push_back(static_cast<std::uint32_t>(i));
    }
  }
  static bool isPlaced(const Construct& item) { return item.kind < Kind::renames && item.area >= 0; }
  static std::size_t areaOf(const Construct& item) { return static_cast<std::size_t>(item.area); }

  void searchArea(const std::vector<std::uint32_t>& leaves) {
    m_intervals.clear();
    for (const auto leaf : leaves)
      addOccurrences(leaf);
    std::sort(m_intervals.begin(), m_intervals.end(), [](const Interval& a, const Interval& b) {
      return a.begin != b.begin ? a.begin < b.begin : a.item < b.item;
    });
    m_open.clear();
    for (const auto& interval : m_intervals) {
      std::erase_if(m_open, [&](const Interval& other) { return other.end <= interval.begin; });
      m_meetings += m_open.size();
      if (m_meetings > kMeetings) {
        m_capped = true;
        return;
      }
      for (const auto& other : m_open)
        if (interval.below || other.below) meet(other, interval);
      m_open.push_back(interval);
      if (m_capped) return;
    }
  }

  /// All occurrences of the item that its repeating ancestors make; its own occurrences are one range.
  void addOccurrences(std::uint32_t leaf) {
    const auto& item = at(std::size_t{leaf});
    m_repeats.clear();
    std::size_t total = 1;
    std::int64_t span = item.size;
    for (int up = item.parent; up >= 0; up = at(up).parent) {
      if (!at(up).repeats || at(up).occurs < 2) continue;
      m_repeats.push_back({at(up).occurs, at(up).length});
      total = std::min<std::size_t>(total * at(up).occurs, kOccurrencesPerItem + 1);
      span = saturatingAdd(span, saturatingMultiply(at(up).length, at(up).occurs - 1));
    }
    const bool below = !m_repeats.empty();
    if (total > kOccurrencesPerItem || m_intervals.size() + total > kIntervals) {
      m_intervals.push_back({item.offset, saturatingAdd(item.offset, span), leaf, below});
      return;
    }
    const auto first = m_intervals.size();
    m_intervals.push_back({item.offset, saturatingAdd(item.offset, item.size), leaf, below});
    for (const auto& [count, stride] : m_repeats) {
      const auto known = m_intervals.size();
      for (std::uint32_t k = 1; k < count; ++k)
        for (auto i = first; i < known; ++i) {
          const auto shift = saturatingMultiply(stride, k);
          m_intervals.push_back(
              {saturatingAdd(m_intervals[i].begin, shift), saturatingAdd(m_intervals[i].end, shift), leaf, below});
        }
    }
  }

  void meet(const Interval& a, const Interval& b) {
    if (a.item == b.item) return;
    const auto& x = at(std::size_t{a.item});
    const auto& y = at(std::size_t{b.item});
    if (x.offset < y.offset + y.size && y.offset < x.offset + x.size) return;
    // The table element comes first; of two, the one declared first.
    const bool swap = a.below == b.below ? a.item > b.item : !a.below;
    const auto from = swap ? b.item : a.item;
    const auto to = swap ? a.item : b.item;
    if (!m_seen.insert((std::uint64_t{from} << 32U) | to).second) return;
    if (!inDifferentLayouts(static_cast<int>(from), static_cast<int>(to))) return;
    if (m_pairs++ >= kPairs) {
      m_capped = true;
      return;
    }
    m_analysis.relate(RelationKind::Overlay, from, to, at(std::size_t{from}).declared);
  }

  /// Spans may meet within one layout as well: there the branches below the nearest common group share no root.
  bool inDifferentLayouts(int a, int b) {
    m_path.clear();
    for (int up = a; up >= 0; up = at(up).parent)
      m_path.push_back(up);
    int branch = b;
    for (int up = b; up >= 0; up = at(up).parent) {
      const auto found = std::find(m_path.begin(), m_path.end(), up);
      if (found != m_path.end()) return found != m_path.begin() && m_roots.of(*(found - 1)) == m_roots.of(branch);
      branch = up;
    }
    return true;
  }

  Analysis& m_analysis;
  Diagnostics& m_diagnostics;
  RedefinitionRoots m_roots;
  std::vector<std::vector<std::uint32_t>> m_leaves; ///< by area
  std::vector<Interval> m_intervals;
  std::vector<Interval> m_open;
  std::vector<std::pair<std::uint32_t, std::int64_t>> m_repeats;
  std::unordered_set<std::uint64_t> m_seen;
  std::vector<int> m_path;
  std::size_t m_pairs = 0;
  std::size_t m_meetings = 0;
  bool m_capped = false;
};

} // namespace

void addOverlays(Analysis& analysis, Diagnostics& diagnostics) {
  OverlaySearch(analysis, diagnostics).run();
}

} // namespace cobol
