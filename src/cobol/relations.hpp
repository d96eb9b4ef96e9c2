#pragma once

#include <cstdint>
#include <map>
#include <tuple>
#include <utility>
#include <vector>

#include "cobol/analysis.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// The part of an item that reference modification takes, in characters from 0.
struct Part {
  static constexpr std::int64_t kUnknown = -1;
  std::int64_t begin = 0;      ///< kUnknown: only running tells
  std::int64_t end = kUnknown; ///< one behind the last; kUnknown: as far as the item goes
  bool isWhole() const { return begin == 0 && end == kUnknown; }
  auto operator<=>(const Part&) const = default;
};

/// Collects the relations of one source: pairs of constructs with a kind and the token that names the place. Pairs with
/// both ends equal are dropped. `finish` sorts, makes unique and merges with what the analysis already holds.
class Relations {
 public:
  Relations(const TokenStream& stream, Analysis& analysis, Diagnostics& diagnostics)
      : m_stream(stream), m_analysis(analysis), m_diagnostics(diagnostics) {
    m_entries.reserve(256); // most programs have fewer
  }

  void add(RelationKind kind, std::uint32_t from, std::uint32_t to, std::uint32_t site) {
    if (from != to) m_entries.push_back({endsOf(from, to), site, kind});
  }

  /// A move of one item to another: Move between elementary items, else GroupMove and the aligned leaves.
  void addMove(std::uint32_t from, std::uint32_t to, std::uint32_t site, const Part& fromPart = {},
               const Part& toPart = {}) {
    if (from != to && isLeaf(from) && isLeaf(to)) {
      add(RelationKind::Move, from, to, site);
    } else {
      addGroupMove(from, to, site, fromPart, toPart);
    }
  }

  /// PartMove and OverlapMove between the leaves of two items laid over each other from their first byte. FILLER is
  /// left out; a pair that matches exactly at one occurrence gives no OverlapMove. At most 4096 pairs, none where a
  /// part begins at an unknown place.
  void addLeaves(std::uint32_t from, std::uint32_t to, std::uint32_t site, Part fromPart = {}, Part toPart = {});

  /// The pairs of a CORRESPONDING phrase, as `Move` or `Addition`.
  void addCorresponding(RelationKind kind, std::uint32_t from, std::uint32_t to, std::uint32_t site);

  void finish();

 private:
  struct Leaf {
    std::int64_t begin;
    std::int64_t end;
    std::uint32_t construct;
    bool whole = true; ///< false: cut at the end of a 66's range or of a part
  };
  struct Pair {
    std::uint32_t from;
    std::uint32_t to;
    bool exact;
  };
  /// An item below a group whose leaves are collected.
  struct Open {
    int construct;
    std::int64_t begin;
    std::uint64_t copies; ///< how often the enclosing tables repeat it
  };
  struct Entry {
    std::uint64_t ends; ///< from in the upper half, to in the lower
    std::uint32_t site;
    RelationKind kind;
  };

  static std::uint64_t endsOf(std::uint32_t from, std::uint32_t to) { return (std::uint64_t{from} << 32) | to; }

  using Meeting = std::tuple<std::uint64_t, Part, Part>; ///< the ends, and of each its part

  /// As most items: no group and nothing that could stand for one.
  bool isLeaf(std::uint32_t construct) const {
    const Construct& item = m_analysis.constructs[construct];
    return item.kind != Kind::renames && !item.isGroup();
  }
  bool isElementary(std::uint32_t construct) const;
  void addGroupMove(std::uint32_t from, std::uint32_t to, std::uint32_t site, Part fromPart, Part toPart);
  const Construct* onlyLeaf(std::uint32_t group) const;
  bool takesPart(const Construct& construct) const;
  void collectLeaves(std::uint32_t item, std::vector<Leaf>& leaves);
  void cutLeaves(std::uint32_t item, Part part, std::vector<Leaf>& leaves) const;
  bool align(const Meeting& meeting);
  void takeDeclared(const std::vector<Relationship>& declared);
  void sortEntries();

  const TokenStream& m_stream;
  Analysis& m_analysis;
  Diagnostics& m_diagnostics;
  std::vector<Entry> m_entries;
  /// Where the result of `align` begins and ends in `m_pairs`: the same moves come again.
  std::map<Meeting, std::pair<std::size_t, std::size_t>> m_aligned;
  std::vector<Pair> m_pairs;
  std::vector<Open> m_open;
  std::vector<Leaf> m_left; ///< of the move in hand, as the next two
  std::vector<Leaf> m_right;
  std::vector<std::int64_t> m_reach;
  std::size_t m_leafEntries = 0;
};

} // namespace cobol
