#include <deque>
#include <unordered_map>

#include "orvane/carry_over.hpp"

namespace orvane {

namespace {

using Rows = std::vector<CarryRow>;
using Ids = std::vector<int>;

std::size_t at(int index) {
  return static_cast<std::size_t>(index);
}

// The key without the `#n` that tells equal paths apart.
std::string_view withoutNumber(std::string_view kvid) {
  std::size_t end = kvid.size();
  while (end > 0 && kvid[end - 1] >= '0' && kvid[end - 1] <= '9')
    --end;
  return end > 0 && end < kvid.size() && kvid[end - 1] == '#' ? kvid.substr(0, end - 1) : kvid;
}

// The key of what holds the item: its group, its file, or the program alone.
std::string_view parentKey(std::string_view kvid) {
  const std::size_t program = kvid.find(':');
  const std::size_t last = kvid.rfind('.');
  return kvid.substr(0, last == kvid.npos || (program != kvid.npos && last < program) ? program : last);
}

// FILLER has a key made of the name before it; slots, registers and undeclared names have no place of their own.
bool hasPlace(const CarryRow& row) {
  const std::size_t item = row.kvid.find(':') + 1;
  const char first = item < row.kvid.size() ? row.kvid[item] : '?';
  return row.name != "FILLER" && first != '?' && first != '!';
}

// The name in front of the last one of the item path; empty at level 01.
std::string_view parentName(std::string_view kvid) {
  kvid.remove_prefix(kvid.find(':') == kvid.npos ? 0 : kvid.find(':') + 1);
  const std::size_t last = kvid.rfind('.');
  if (last == kvid.npos) return {};
  const std::string_view before = kvid.substr(0, last);
  return before.substr(before.rfind('.') == before.npos ? 0 : before.rfind('.') + 1);
}

class Matching {
 public:
  Matching(const Rows& old, const Rows& fresh)
      : m_old(old), m_fresh(fresh), m_matches(old.size()), m_taken(fresh.size()) {
    m_haveShapes = std::all_of(old.begin(), old.end(), [](const CarryRow& row) { return row.shape.has_value(); }) &&
                   std::all_of(fresh.begin(), fresh.end(), [](const CarryRow& row) { return row.shape.has_value(); });
  }

  std::vector<CarryMatch> run() {
    byKey();
    byPlace();
    byName();
    byNeighbours();
    return std::move(m_matches);
  }

 private:
  struct Group {
    Ids old, fresh;
  };

  std::int64_t shape(const CarryRow& row) const { return m_haveShapes ? *row.shape : row.size; }
  bool open(int old) const { return m_matches[at(old)].row < 0; }
  bool isFree(int fresh) const { return !m_taken[at(fresh)]; }

  void match(int old, int fresh, bool moved) {
    m_matches[at(old)] = {fresh, moved};
    m_taken[at(fresh)] = true;
  }

  void byKey() {
    std::unordered_map<std::string_view, Group> groups;
    groups.reserve(m_old.size() + m_fresh.size());
    for (std::size_t i = 0; i < m_old.size(); ++i)
      groups[withoutNumber(m_old[i].kvid)].old.push_back(static_cast<int>(i));
    for (std::size_t i = 0; i < m_fresh.size(); ++i)
      groups[withoutNumber(m_fresh[i].kvid)].fresh.push_back(static_cast<int>(i));
    for (const auto& [key, group] : groups) {
      if (group.old.empty() || group.fresh.empty()) continue;
      if (group.old.size() == 1 && group.fresh.size() == 1)
        match(group.old[0], group.fresh[0], false);
      else
        align(group);
    }
  }

  void align(const Group& group) {
    std::unordered_map<std::string_view, int> keys;
    std::unordered_map<std::int64_t, std::deque<int>> shapes;
    for (const int fresh : group.fresh)
      keys[m_fresh[at(fresh)].kvid] = fresh;
    const auto sameKey = [&](int old) {
      const auto found = keys.find(m_old[at(old)].kvid);
      return found != keys.end() && isFree(found->second) ? found->second : -1;
    };
    for (const int old : group.old)
      if (const int fresh = sameKey(old); fresh >= 0 && shape(m_old[at(old)]) == shape(m_fresh[at(fresh)]))
        match(old, fresh, false);
    for (const int fresh : group.fresh)
      if (isFree(fresh)) shapes[shape(m_fresh[at(fresh)])].push_back(fresh);
    for (const int old : group.old) {
      if (!open(old)) continue;
      auto& sameShape = shapes[shape(m_old[at(old)])];
      if (sameShape.empty()) continue;
      match(old, sameShape.front(), false);
      sameShape.pop_front();
    }
    for (const int old : group.old)
      if (const int fresh = open(old) ? sameKey(old) : -1; fresh >= 0) match(old, fresh, false);
    auto next = group.fresh.begin();
    for (const int old : group.old) {
      if (!open(old)) continue;
      next = std::find_if(next, group.fresh.end(), [&](int fresh) { return isFree(fresh); });
      if (next == group.fresh.end()) return;
      match(old, *next, false);
    }
  }

  void byPlace() {
    const auto key = [&](const CarryRow& row) {
      return row.name + '\n' + std::string(parentName(row.kvid)) + '\n' + std::to_string(shape(row));
    };
    std::unordered_map<std::string, Group> groups;
    for (std::size_t i = 0; i < m_old.size(); ++i)
      if (open(static_cast<int>(i))) groups[key(m_old[i])].old.push_back(static_cast<int>(i));
    if (groups.empty()) return;
    for (std::size_t i = 0; i < m_fresh.size(); ++i)
      if (isFree(static_cast<int>(i))) groups[key(m_fresh[i])].fresh.push_back(static_cast<int>(i));
    matchSingles(groups);
  }

  // FILLER says nothing about which item it is.
  void byName() {
    if (std::none_of(m_matches.begin(), m_matches.end(), [](const CarryMatch& match) { return match.row < 0; })) return;
    std::unordered_map<std::string, Group> groups;
    for (std::size_t i = 0; i < m_old.size(); ++i)
      if (m_old[i].name != "FILLER") groups[m_old[i].name].old.push_back(static_cast<int>(i));
    for (std::size_t i = 0; i < m_fresh.size(); ++i)
      groups[m_fresh[i].name].fresh.push_back(static_cast<int>(i));
    matchSingles(groups);
  }

  void byNeighbours() {
    std::unordered_map<std::string_view, Group> siblings;
    for (std::size_t i = 0; i < m_old.size(); ++i)
      if (open(static_cast<int>(i)) && hasPlace(m_old[i])) siblings[parentKey(m_old[i].kvid)];
    if (siblings.empty()) return;
    for (std::size_t i = 0; i < m_old.size(); ++i)
      if (const auto group = siblings.find(parentKey(m_old[i].kvid)); group != siblings.end() && hasPlace(m_old[i]))
        group->second.old.push_back(static_cast<int>(i));
    for (std::size_t i = 0; i < m_fresh.size(); ++i)
      if (const auto group = siblings.find(parentKey(m_fresh[i].kvid)); group != siblings.end() && hasPlace(m_fresh[i]))
        group->second.fresh.push_back(static_cast<int>(i));
    for (const auto& [key, group] : siblings)
      proposeBetweenNeighbours(group);
  }

  void proposeBetweenNeighbours(const Group& group) {
    std::unordered_map<int, std::size_t> places; // of the new rows
    for (std::size_t k = 0; k < group.fresh.size(); ++k)
      places[group.fresh[k]] = k;
    for (std::size_t k = 0; k < group.old.size(); ++k) {
      const int old = group.old[k];
      if (!open(old)) continue;
      std::size_t place = 0;
      if (k > 0) {
        const auto before = places.find(m_matches[at(group.old[k - 1])].row);
        if (before == places.end()) continue;
        place = before->second + 1;
      }
      if (place >= group.fresh.size()) continue;
      const bool isLast = k + 1 == group.old.size();
      if (isLast != (place + 1 == group.fresh.size())) continue;
      if (!isLast && m_matches[at(group.old[k + 1])].row != group.fresh[place + 1]) continue;
      const int fresh = group.fresh[place];
      if (isFree(fresh) && shape(m_old[at(old)]) == shape(m_fresh[at(fresh)])) m_matches[at(old)].proposed = fresh;
    }
  }

  void matchSingles(const std::unordered_map<std::string, Group>& groups) {
    for (const auto& [key, group] : groups) {
      if (group.old.size() != 1 || group.fresh.size() != 1) continue;
      if (open(group.old[0]) && isFree(group.fresh[0])) match(group.old[0], group.fresh[0], true);
    }
  }

  const Rows& m_old;
  const Rows& m_fresh;
  std::vector<CarryMatch> m_matches;
  std::vector<bool> m_taken;
  bool m_haveShapes = false;
};

} // namespace

std::vector<CarryMatch> matchRows(const Rows& old, const Rows& fresh) {
  return Matching(old, fresh).run();
}

} // namespace orvane
