#include "cobol/relations.hpp"

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>
#include <set>
#include <string>
#include <string_view>
#include <tuple>

#include "cobol/picture.hpp"

namespace cobol {

namespace {

constexpr std::size_t kPairsPerMove = 4096;
constexpr std::size_t kPairsPerSource = 8'000'000;
constexpr std::size_t kCachedPairs = 1'000'000;
constexpr std::size_t kLeavesPerItem = 20'000;
constexpr std::size_t kUsualLeaves = 64; ///< fewer than this have most items
constexpr std::size_t kStepsPerMove = 2'000'000;

/// A copybook that is copied twice gives the same place twice, not side by side. The end of what is left.
cobol::Position* dropRepeats(cobol::Position* begin, cobol::Position* end) {
  const bool ascend = std::adjacent_find(begin, end, std::greater_equal<>()) == end;
  if (ascend) return end;
  std::set<cobol::Position> seen;
  return std::remove_if(begin, end, [&](const cobol::Position& at) { return !seen.insert(at).second; });
}

/// Numeric and not edited, as ADD CORRESPONDING asks for.
bool isNumeric(const Construct& item) {
  if (item.isGroup() || (item.flags & ConstructFlag::blankWhenZero) != 0) return false;
  if (item.picture.empty())
    return item.usage.starts_with("COMP-") || item.usage.starts_with("BINARY-") || item.usage.starts_with("FLOAT-");
  return readPicture(item.picture, {}).kind == PictureClass::numeric;
}

} // namespace

const std::vector<RelationKindInfo>& relationKinds() {
  using enum RelationKind;
  static const std::vector<RelationKindInfo> kinds = {
      {Move, "Move", Affinity::high},
      {PartMove, "PartMove", Affinity::high},
      {OverlapMove, "OverlapMove", Affinity::low},
      {GroupMove, "GroupMove", Affinity::low},
      {Addition, "Addition", Affinity::high},
      {Computation, "Computation", Affinity::low},
      {Comparison, "Comparison", Affinity::high},
      {Condition, "Condition", Affinity::high},
      {Redefinition, "Redefinition", Affinity::low},
      {Renaming, "Renaming", Affinity::low},
      {Overlay, "Overlay", Affinity::high},
      {Address, "Address", Affinity::high},
      {Pointer, "Pointer", Affinity::low},
      {Index, "Index", Affinity::low},
      {Subscript, "Subscript", Affinity::low},
      {RelationKind::Position, "Position", Affinity::low},
      {Dependence, "Dependence", Affinity::low},
      {Length, "Length", Affinity::low},
      {Key, "Key", Affinity::low},
      {FileStatus, "FileStatus", Affinity::low},
      {Read, "Read", Affinity::high},
      {Write, "Write", Affinity::high},
      {Sort, "Sort", Affinity::low},
      {String, "String", Affinity::low},
      {Unstring, "Unstring", Affinity::low},
      {Tally, "Tally", Affinity::low},
      {Inspection, "Inspection", Affinity::low},
      {Argument, "Argument", Affinity::high},
      {Parameter, "Parameter", Affinity::high},
      {RecordSlot, "RecordSlot", Affinity::low},
      {ExecKey, "ExecKey", Affinity::low},
  };
  return kinds;
}

// A 66 has no children: it is elementary when what it renames is one elementary item.
bool Relations::isElementary(std::uint32_t construct) const {
  const Construct& item = m_analysis.constructs[construct];
  if (item.kind != Kind::renames || item.renamesFirst < 0 || item.parent < 0) return !item.isGroup();
  if (!m_analysis.constructs[static_cast<std::size_t>(item.parent)].isGroup()) return true;
  return item.renamesFirst == item.renamesLast &&
         !m_analysis.constructs[static_cast<std::size_t>(item.renamesFirst)].isGroup();
}

/// The only elementary item below a group, perhaps inside groups that have no other item, or null.
const Construct* Relations::onlyLeaf(std::uint32_t group) const {
  const Construct* item = &m_analysis.constructs[group];
  if (item->kind == Kind::renames) {
    if (item->renamesFirst != item->renamesLast) return nullptr;
    item = &m_analysis.constructs[static_cast<std::size_t>(item->renamesFirst)];
  }
  while (item->isGroup()) {
    item = &m_analysis.constructs[static_cast<std::size_t>(item->firstChild)];
    if (item->nextSibling >= 0 || item->repeats) return nullptr;
  }
  return item;
}

void Relations::addGroupMove(std::uint32_t from, std::uint32_t to, std::uint32_t site, Part fromPart, Part toPart) {
  if (from == to) {
    if (fromPart != toPart) addLeaves(from, to, site, fromPart, toPart); // from one part of a group to another
    return;
  }
  if (isElementary(from) && isElementary(to)) {
    add(RelationKind::Move, from, to, site);
    return;
  }
  const Construct& a = m_analysis.constructs[from];
  const Construct& b = m_analysis.constructs[to];
  if (!a.hasStorage() || !b.hasStorage()) {
    add(RelationKind::Move, from, to, site);
    return;
  }
  // A group of one elementary item of the full length is that item under another name.
  const bool fromGroup = !isElementary(from);
  const Construct& other = fromGroup ? b : a;
  const Construct* only = onlyLeaf(fromGroup ? from : to);
  const bool sameShape = isElementary(fromGroup ? to : from) && only != nullptr && only->kind != Kind::filler &&
                         only->length == other.length;
  add(sameShape ? RelationKind::Move : RelationKind::GroupMove, from, to, site);
  addLeaves(from, to, site, fromPart, toPart);
}

void Relations::collectLeaves(std::uint32_t item, std::vector<Leaf>& leaves) {
  leaves.clear();
  const auto& constructs = m_analysis.constructs;
  if (isElementary(item)) {
    leaves.push_back({0, constructs[item].length, item});
    return;
  }
  // A 66 has the items of its record that lie in its range.
  const bool renames = constructs[item].kind == Kind::renames;
  const auto top = renames ? static_cast<std::uint32_t>(constructs[item].parent) : item;
  const std::int64_t origin = constructs[item].position;
  const std::int64_t length = constructs[item].length;
  const auto add = [&](std::int64_t begin, std::int64_t end, int construct) {
    const auto leaf = static_cast<std::uint32_t>(construct);
    if (!renames) {
      leaves.push_back({begin, end, leaf});
    } else if (begin < length && end > 0) {
      leaves.push_back({std::max<std::int64_t>(begin, 0), std::min(end, length), leaf, begin >= 0 && end <= length});
    }
  };
  const auto push = [&](int group, std::int64_t begin, std::uint64_t copies) {
    const std::int64_t from = constructs[static_cast<std::size_t>(group)].position;
    for (int child = constructs[static_cast<std::size_t>(group)].firstChild; child >= 0;
         child = constructs[static_cast<std::size_t>(child)].nextSibling) {
      const Construct& c = constructs[static_cast<std::size_t>(child)];
      m_open.push_back({child, begin + c.position - from, copies});
    }
  };
  push(static_cast<int>(top), constructs[top].position, 1);
  while (!m_open.empty()) {
    const Open next = m_open.back();
    m_open.pop_back();
    const Construct& c = constructs[static_cast<std::size_t>(next.construct)];
    if (!c.hasStorage() || c.size == 0 || (c.kind == Kind::filler && !c.isGroup())) continue;
    const std::uint64_t copies = next.copies * std::max<std::uint32_t>(1, c.occurs);
    const std::int64_t begin = next.begin - origin;
    if (renames && (begin >= length || begin + c.size <= 0)) continue;
    // Past the limit a table counts as the span of its first occurrence's place to its last one's end.
    const bool spanOnly = copies > kLeavesPerItem || leaves.size() + m_open.size() + c.occurs > kLeavesPerItem;
    if (!c.isGroup() && spanOnly) {
      add(begin, begin + c.size, next.construct);
      continue;
    }
    const std::uint32_t times = spanOnly ? 1 : std::max<std::uint32_t>(1, c.occurs);
    if (c.isGroup()) {
      for (std::uint32_t k = 0; k < times; ++k)
        push(next.construct, next.begin + k * c.length, copies);
    } else {
      for (std::uint32_t k = times; k-- > 0;)
        add(begin + k * c.length, begin + (k + 1) * c.length, next.construct);
    }
  }
  std::reverse(leaves.begin(), leaves.end()); // the last item was taken first
}

/// Leaves what lies in the part, counted from the part's begin.
void Relations::cutLeaves(std::uint32_t item, Part part, std::vector<Leaf>& leaves) const {
  if (part.isWhole()) return;
  const std::string_view usage = m_analysis.constructs[item].usage;
  const std::int64_t width = usage == "NATIONAL" || usage == "DISPLAY-1" ? 2 : 1; // bytes of a character
  const std::int64_t begin = part.begin * width;
  const std::int64_t end = part.end == Part::kUnknown ? std::numeric_limits<std::int64_t>::max() : part.end * width;
  std::erase_if(leaves, [&](const Leaf& leaf) { return leaf.end <= begin || leaf.begin >= end; });
  for (Leaf& leaf : leaves) {
    leaf.whole = leaf.whole && leaf.begin >= begin && leaf.end <= end;
    leaf.begin = std::max(leaf.begin, begin) - begin;
    leaf.end = std::min(leaf.end, end) - begin;
  }
}

/// Appends the pairs to `m_pairs`; whether there were too many, so that none was kept.
bool Relations::align(const Meeting& meeting) {
  const auto& [ends, fromPart, toPart] = meeting;
  const auto from = static_cast<std::uint32_t>(ends >> 32);
  const auto to = static_cast<std::uint32_t>(ends);
  auto& left = m_left;
  auto& right = m_right;
  for (auto* leaves : {&left, &right})
    leaves->reserve(kUsualLeaves);
  m_open.reserve(kUsualLeaves);
  m_reach.reserve(kUsualLeaves);
  m_pairs.reserve(kUsualLeaves);
  collectLeaves(from, left);
  collectLeaves(to, right);
  cutLeaves(from, fromPart, left);
  cutLeaves(to, toPart, right);
  // Mostly they stand in order; redefinitions and the range of a 66 may break it.
  const auto byBegin = [](const Leaf& a, const Leaf& b) {
    return std::tie(a.begin, a.end, a.construct) < std::tie(b.begin, b.end, b.construct);
  };
  for (auto* leaves : {&left, &right}) {
    if (!std::is_sorted(leaves->begin(), leaves->end(), byBegin)) std::sort(leaves->begin(), leaves->end(), byBegin);
  }
  // Redefinitions make leaves of one side overlap each other: the greatest end so far tells where a search must start.
  auto& reach = m_reach;
  reach.clear();
  for (const Leaf& leaf : right)
    reach.push_back(std::max(leaf.end, reach.empty() ? 0 : reach.back()));

  const std::size_t before = m_pairs.size();
  std::size_t steps = 0;
  for (const Leaf& a : left) {
    auto i = static_cast<std::size_t>(std::upper_bound(reach.begin(), reach.end(), a.begin) - reach.begin());
    for (; i < right.size() && right[i].begin < a.end; ++i) {
      const Leaf& b = right[i];
      if (++steps > kStepsPerMove) break;
      if (b.end <= a.begin || a.construct == b.construct) continue;
      m_pairs.push_back({a.construct, b.construct, a.begin == b.begin && a.end == b.end && a.whole && b.whole});
    }
  }
  const auto begin = m_pairs.begin() + static_cast<std::ptrdiff_t>(before);
  std::sort(begin, m_pairs.end(), [](const Pair& a, const Pair& b) {
    return std::tie(a.from, a.to, b.exact) < std::tie(b.from, b.to, a.exact);
  });
  m_pairs.erase(
      std::unique(begin, m_pairs.end(), [](const Pair& a, const Pair& b) { return a.from == b.from && a.to == b.to; }),
      m_pairs.end());
  const bool capped = m_pairs.size() - before > kPairsPerMove || steps > kStepsPerMove;
  if (capped) m_pairs.resize(before);
  return capped;
}

void Relations::addLeaves(std::uint32_t from, std::uint32_t to, std::uint32_t site, Part fromPart, Part toPart) {
  if (fromPart.begin == Part::kUnknown || toPart.begin == Part::kUnknown) return;
  if (!m_analysis.constructs[from].hasStorage() || !m_analysis.constructs[to].hasStorage()) return;
  if (isElementary(from) && isElementary(to)) return;
  if (m_pairs.size() + m_aligned.size() > kCachedPairs) {
    m_aligned.clear();
    m_pairs.clear();
  }
  const auto [found, isNew] = m_aligned.try_emplace({endsOf(from, to), fromPart, toPart});
  if (isNew) {
    const std::size_t before = m_pairs.size();
    const bool capped = align(found->first);
    found->second = {before, m_pairs.size()};
    if (capped) {
      m_diagnostics.add(Code::PairsCapped, Severity::information, m_stream.tokens[site].position(),
                        "more than 4096 parts of " + std::string(m_analysis.constructs[from].name) + " meet parts of " +
                            std::string(m_analysis.constructs[to].name) + "; only the move of the whole is kept");
    }
  }
  if (m_leafEntries > kPairsPerSource) return;
  const auto [begin, end] = found->second;
  m_leafEntries += end - begin;
  if (m_leafEntries > kPairsPerSource) {
    m_diagnostics.add(Code::PairsCapped, Severity::warning, m_stream.tokens[site].position(),
                      "too many parts of groups are moved; from here on only the moves of whole groups are kept");
    return;
  }
  for (std::size_t i = begin; i < end; ++i) {
    const Pair& pair = m_pairs[i];
    add(pair.exact ? RelationKind::PartMove : RelationKind::OverlapMove, pair.from, pair.to, site);
  }
}

bool Relations::takesPart(const Construct& c) const {
  return c.kind != Kind::filler && c.hasStorage() && c.redefines < 0 && !c.repeats && c.usage != "INDEX" &&
         c.usage.find("POINTER") == std::string::npos;
}

void Relations::addCorresponding(RelationKind kind, std::uint32_t from, std::uint32_t to, std::uint32_t site) {
  const auto& constructs = m_analysis.constructs;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> open{{from, to}};
  std::unordered_map<std::string_view, std::uint32_t> byName;
  while (!open.empty()) {
    const auto [a, b] = open.back();
    open.pop_back();
    byName.clear();
    for (int child = constructs[b].firstChild; child >= 0;
         child = constructs[static_cast<std::size_t>(child)].nextSibling) {
      const Construct& c = constructs[static_cast<std::size_t>(child)];
      if (takesPart(c)) byName.try_emplace(c.name, static_cast<std::uint32_t>(child));
    }
    for (int child = constructs[a].firstChild; child >= 0;
         child = constructs[static_cast<std::size_t>(child)].nextSibling) {
      const Construct& c = constructs[static_cast<std::size_t>(child)];
      if (!takesPart(c)) continue;
      const auto match = byName.find(c.name);
      if (match == byName.end()) continue;
      const auto sender = static_cast<std::uint32_t>(child);
      const Construct& receiver = constructs[match->second];
      if (c.isGroup() && receiver.isGroup()) {
        open.emplace_back(sender, match->second);
      } else if (kind == RelationKind::Move) {
        addMove(sender, match->second, site);
      } else if (isNumeric(c) && isNumeric(receiver)) {
        add(kind, sender, match->second, site);
      }
    }
  }
}

/// What the analysis holds already becomes entries, whose sites stand before those of all tokens.
void Relations::takeDeclared(const std::vector<Relationship>& declared) {
  for (const Relationship& r : declared) {
    for (std::uint32_t i = 0; i < r.siteCount; ++i) {
      if (r.from != r.to) m_entries.push_back({endsOf(r.from, r.to), r.firstSite + i, r.kind});
    }
  }
}

// By ends, kind and site. Counting puts together what begins at the same construct; these are few each time.
void Relations::sortEntries() {
  const auto fromOf = [](const Entry& entry) { return static_cast<std::size_t>(entry.ends >> 32); };
  std::vector<std::uint32_t> next(m_analysis.constructs.size() + 1);
  for (const Entry& entry : m_entries)
    ++next[fromOf(entry) + 1];
  std::partial_sum(next.begin(), next.end(), next.begin());
  std::vector<Entry> entries(m_entries.size());
  for (const Entry& entry : m_entries)
    entries[next[fromOf(entry)]++] = entry;
  const auto before = [](const Entry& a, const Entry& b) {
    return a.ends != b.ends ? a.ends < b.ends : a.kind != b.kind ? a.kind < b.kind : a.site < b.site;
  };
  auto begin = entries.begin();
  while (begin != entries.end()) {
    const auto end = entries.begin() + next[fromOf(*begin)];
    if (end - begin > 1) std::sort(begin, end, before);
    begin = end;
  }
  m_entries = std::move(entries);
}

void Relations::finish() {
  const std::vector<Relationship> declared = std::move(m_analysis.relationships);
  const std::vector<cobol::Position> declaredSites = std::move(m_analysis.sites);
  if (!declaredSites.empty()) {
    for (Entry& entry : m_entries)
      entry.site += static_cast<std::uint32_t>(declaredSites.size());
  }
  takeDeclared(declared);
  sortEntries();
  const auto siteOf = [&](const Entry& entry) {
    return entry.site < declaredSites.size() ? declaredSites[entry.site]
                                             : m_stream.tokens[entry.site - declaredSites.size()].position();
  };
  std::vector<Relationship> all;
  all.reserve(m_entries.size());
  std::vector<cobol::Position> sites(m_entries.size());
  cobol::Position* next = sites.data();
  for (auto entry = m_entries.cbegin(); entry != m_entries.cend();) {
    const auto [ends, site, kind] = *entry;
    cobol::Position* const first = next;
    do {
      *next++ = siteOf(*entry++);
    } while (entry != m_entries.cend() && entry->ends == ends && entry->kind == kind);
    if (next - first > 1) next = dropRepeats(first, next);
    all.push_back({static_cast<std::uint32_t>(ends >> 32), static_cast<std::uint32_t>(ends), kind,
                   static_cast<std::uint32_t>(first - sites.data()), static_cast<std::uint32_t>(next - first)});
  }
  sites.resize(static_cast<std::size_t>(next - sites.data()));
  m_analysis.relationships = std::move(all);
  m_analysis.sites = std::move(sites);
  m_entries.clear();
}

} // namespace cobol
