#include "orvane/border.hpp"

#include <algorithm>
#include <charconv>
#include <set>

#include <fmt/format.h>

#include "orvane/criteria/number_range.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

constexpr std::size_t kOccurrences = 2000; // of a table element that are told apart; of larger tables the first one
constexpr std::string_view kTab = "Across:";
constexpr std::string_view kAt = " at ";

std::string_view wordBefore(bool isFile) {
  return isFile ? " with " : " from ";
}

std::optional<SlotName> slotOf(const StoreData& data, std::uint32_t construct) {
  const ConstructRecord& record = data.constructs[construct];
  const auto kind = static_cast<cobol::Kind>(record.kind);
  if (kind != cobol::Kind::callSlot && kind != cobol::Kind::fileSlot) return std::nullopt;
  std::string name(data.text(record.name));
  if (name.starts_with("?(")) return std::nullopt;
  return SlotName{kind == cobol::Kind::fileSlot, std::move(name)};
}

bool isKind(const RelationRecord& relation, std::initializer_list<cobol::RelationKind> kinds) {
  return std::find(kinds.begin(), kinds.end(), static_cast<cobol::RelationKind>(relation.kind)) != kinds.end();
}

bool isStored(const ConstructRecord& record) {
  return record.offset >= 0 && record.size > 0 && record.kind <= static_cast<std::uint8_t>(cobol::Kind::renames);
}

// "12x9,2x4": counts and strides, outermost first.
std::vector<std::pair<std::int64_t, std::int64_t>> dimensions(std::string_view dims) {
  std::vector<std::pair<std::int64_t, std::int64_t>> all;
  const char* at = dims.data();
  const char* const end = at + dims.size();
  while (at < end) {
    std::pair<std::int64_t, std::int64_t> one{1, 0};
    at = std::from_chars(at, end, one.first).ptr;
    if (at < end) at = std::from_chars(at + 1, end, one.second).ptr;
    all.push_back(one);
    if (at < end) ++at;
  }
  return all;
}

// Where the occurrences of an item begin, from its first one.
std::vector<std::int64_t> occurrences(std::string_view dims) {
  std::vector<std::int64_t> starts{0};
  for (const auto& [count, stride] : dimensions(dims)) {
    if (count <= 1) continue;
    if (starts.size() > kOccurrences / static_cast<std::size_t>(std::min<std::int64_t>(count, kOccurrences + 1)))
      return {0};
    const std::size_t before = starts.size();
    for (std::int64_t i = 1; i < count; ++i)
      for (std::size_t k = 0; k < before; ++k)
        starts.push_back(starts[k] + i * stride);
  }
  return starts;
}

// The text behind "Across:" up to the end of the criterion's name.
std::string_view criterionIn(std::string_view comment) {
  const auto tab = comment.find(kTab);
  if (tab == comment.npos) return {};
  comment.remove_prefix(tab + kTab.size());
  return comment.substr(0, std::min(comment.find('\''), comment.find("...")));
}

} // namespace

std::string Crossing::criterion(const std::string& program) const {
  std::string text = fmt::format("{}{} {}", kTab, slot.isFile ? "file" : "call", slot.name);
  if (!program.empty()) text += fmt::format("{}{}", wordBefore(slot.isFile), program);
  if (bytes) text += fmt::format("{}{}-{}", kAt, bytes->first + 1, bytes->last);
  return text;
}

std::string originIn(std::string_view comment) {
  const std::string_view criterion = criterionIn(comment);
  return std::string(platform::trimmed(criterion.substr(0, criterion.rfind(kAt))));
}

std::optional<SlotName> slotIn(std::string_view comment) {
  const std::string_view criterion = criterionIn(comment);
  const auto blank = criterion.find(' ');
  if (blank == criterion.npos) return std::nullopt;
  const bool isFile = criterion.substr(0, blank) == "file";
  const std::string_view rest = criterion.substr(blank + 1);
  return SlotName{isFile, std::string(rest.substr(0, std::min(rest.rfind(wordBefore(isFile)), rest.rfind(kAt))))};
}

Crossing crossingNamed(const std::string& argument, bool isFile) {
  Crossing crossing{{isFile, argument}, std::nullopt};
  std::string& name = crossing.slot.name;
  if (const auto at = name.rfind(kAt); at != name.npos) {
    const NumberRange range = readRange(name.substr(at + kAt.size()));
    if (range.low < 1) throw platform::Error(fmt::format("the bytes in 'Across:{}' are counted from 1", argument));
    crossing.bytes = SlotBytes{range.low - 1, range.high};
    name.erase(at);
  }
  if (const auto program = name.rfind(wordBefore(isFile)); program != name.npos) name.erase(program);
  name = platform::upper(platform::trimmed(name));
  return crossing;
}

Border::Border(const StoreData& data) {
  using enum cobol::RelationKind;
  for (std::uint32_t i = 0; i < data.constructs.size(); ++i)
    if (auto slot = slotOf(data, i)) m_slots.emplace_back(std::move(*slot), i);
  if (m_slots.empty()) return;
  for (const RelationRecord& relation : data.relations) {
    if (!isKind(relation, {RecordSlot, Read, Write, Argument, Parameter})) continue;
    const auto from = slotOf(data, relation.from);
    const auto to = slotOf(data, relation.to);
    if (from) addWindow(data, *from, relation.to);
    if (to) addWindow(data, *to, relation.from);
    if (to && isKind(relation, {RecordSlot})) m_records.emplace_back(*to, relation.from);
  }
  // What is read into or written from another area has the bytes of the record.
  std::sort(m_records.begin(), m_records.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  for (const RelationRecord& relation : data.relations) {
    if (!isKind(relation, {Read, Write})) continue;
    const bool isRead = isKind(relation, {Read});
    const std::uint32_t record = isRead ? relation.from : relation.to;
    const auto found = std::lower_bound(m_records.begin(), m_records.end(), record,
                                        [](const auto& known, auto wanted) { return known.second < wanted; });
    for (auto known = found; known != m_records.end() && known->second == record; ++known)
      addWindow(data, known->first, isRead ? relation.to : relation.from);
  }
  std::vector<std::uint32_t> byOffset;
  for (std::uint32_t i = 0; i < data.constructs.size(); ++i)
    if (isStored(data.constructs[i])) byOffset.push_back(i);
  std::stable_sort(byOffset.begin(), byOffset.end(), [&](std::uint32_t a, std::uint32_t b) {
    return data.constructs[a].offset < data.constructs[b].offset;
  });
  for (Window& window : m_windows)
    fill(data, byOffset, window);
}

// The records of a file begin at the same place: one window, as long as the longest.
void Border::addWindow(const StoreData& data, const SlotName& slot, std::uint32_t attached) {
  const ConstructRecord& record = data.constructs[attached];
  if (!isStored(record)) return;
  const std::int64_t size = record.repeats ? record.length : record.size;
  for (Window& window : m_windows) {
    if (window.base != record.offset || window.slot != slot) continue;
    window.size = std::max(window.size, size);
    if (std::find(window.attached.begin(), window.attached.end(), attached) == window.attached.end())
      window.attached.push_back(attached);
    return;
  }
  m_windows.push_back({slot, record.offset, size, {attached}, {}});
}

void Border::fill(const StoreData& data, const std::vector<std::uint32_t>& byOffset, Window& window) const {
  const auto first = std::lower_bound(
      byOffset.begin(), byOffset.end(), window.base,
      [&](std::uint32_t construct, std::int64_t offset) { return data.constructs[construct].offset < offset; });
  for (auto at = first; at != byOffset.end() && data.constructs[*at].offset < window.base + window.size; ++at) {
    const ConstructRecord& record = data.constructs[*at];
    const auto kind = static_cast<cobol::Kind>(record.kind);
    const bool isElementary = kind == cobol::Kind::elementary || (kind == cobol::Kind::filler && record.picture != 0);
    const bool isFiller = kind == cobol::Kind::filler;
    const std::int64_t start = record.offset - window.base;
    const auto add = [&](std::int64_t from, std::int64_t length) {
      if (from + length <= window.size) window.pieces.push_back({{from, from + length}, *at, isElementary, isFiller});
    };
    if (record.repeats) add(start, record.size);
    for (const std::int64_t occurrence : occurrences(data.text(record.dims)))
      add(start + occurrence, record.length);
  }
  const auto order = [](const Piece& piece) { return std::pair(piece.bytes, piece.construct); };
  std::sort(window.pieces.begin(), window.pieces.end(),
            [&](const Piece& a, const Piece& b) { return order(a) < order(b); });
}

std::vector<Crossing> Border::carriedBy(std::uint32_t construct) const {
  std::set<Crossing> all;
  for (const auto& [slot, own] : m_slots)
    if (own == construct) all.insert({slot, std::nullopt});
  for (const auto& [slot, record] : m_records)
    if (record == construct) all.insert({slot, std::nullopt});
  for (const Window& window : m_windows) {
    const bool isPassed = std::find(window.attached.begin(), window.attached.end(), construct) != window.attached.end();
    for (const Piece& piece : window.pieces) {
      if (piece.construct != construct) continue;
      // A passed group is known as a whole by its relation; only an elementary one can lie over a part of the other
      // side.
      if (isPassed && (window.slot.isFile || !piece.isElementary)) continue;
      all.insert({window.slot, piece.bytes});
    }
  }
  return {all.begin(), all.end()};
}

std::vector<std::uint32_t> Border::reachedBy(const Crossing& crossing) const {
  std::set<std::uint32_t> exact;
  std::set<std::uint32_t> overlapping;
  if (!crossing.bytes) {
    for (const auto& [slot, construct] : m_slots)
      if (slot == crossing.slot) exact.insert(construct);
    for (const auto& [slot, record] : m_records)
      if (slot == crossing.slot) exact.insert(record);
    return {exact.begin(), exact.end()};
  }
  const SlotBytes& wanted = *crossing.bytes;
  for (const Window& window : m_windows) {
    if (window.slot != crossing.slot) continue;
    for (const Piece& piece : window.pieces) {
      if (piece.bytes.first >= wanted.last) break;
      if (piece.isFiller) continue;
      if (piece.bytes == wanted)
        exact.insert(piece.construct);
      else if (piece.isElementary && piece.bytes.last > wanted.first)
        overlapping.insert(piece.construct);
    }
  }
  const std::set<std::uint32_t>& reached = exact.empty() ? overlapping : exact;
  return {reached.begin(), reached.end()};
}

bool Border::hasSeveralWindows(const SlotName& slot) const {
  return std::count_if(m_windows.begin(), m_windows.end(), [&](const Window& window) { return window.slot == slot; }) >
         1;
}

} // namespace orvane
