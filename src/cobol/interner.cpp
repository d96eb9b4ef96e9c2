#include "cobol/interner.hpp"

#include <cstring>

#include "cobol/keywords.hpp"

namespace cobol {
namespace {

constexpr std::size_t kFirstSlots = 4096;
constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;

template<typename Word>
Word load(const char* at) {
  Word word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

} // namespace

// Eight bytes a step; the last ones overlap those before them.
std::uint64_t Interner::hashOf(std::string_view text) {
  const char* at = text.data();
  std::size_t left = text.size();
  std::uint64_t hash = left * kMix;
  const auto take = [&](std::uint64_t word) {
    hash = (hash ^ word) * kMix;
    hash ^= hash >> 32;
  };
  if (left >= 8) {
    for (; left > 8; at += 8, left -= 8)
      take(load<std::uint64_t>(at));
    take(load<std::uint64_t>(at + left - 8));
  } else if (left >= 4) {
    take(std::uint64_t{load<std::uint32_t>(at)} << 32 | load<std::uint32_t>(at + left - 4));
  } else if (left > 0) {
    const auto byte = [&](std::size_t i) { return std::uint64_t{static_cast<unsigned char>(at[i])}; };
    take(byte(0) << 16 | byte(left / 2) << 8 | byte(left - 1));
  }
  return hash;
}

Interner::Interner(Prototype) : m_slots(kFirstSlots, 0) {
  m_entries.push_back({hashOf({}), "", 0});
  for (NameId id = 1; id < keywordCount(); ++id)
    intern(textOf(static_cast<Keyword>(id)));
}

// Every run needs hundreds of them, so the words of the table are entered once and copied.
Interner::Interner() {
  static const Interner prototype{Prototype{}};
  m_entries = prototype.m_entries;
  m_slots = prototype.m_slots;
}

NameId Interner::intern(std::string_view text, std::uint64_t hash) {
  if (text.empty()) return 0;
  const std::size_t mask = m_slots.size() - 1;
  std::size_t slot = (hash ^ (hash >> 32)) & mask;
  while (const NameId id = m_slots[slot]) {
    const Entry& entry = m_entries[id];
    if (entry.hash == hash && this->text(id) == text) return id;
    slot = (slot + 1) & mask;
  }
  const auto id = static_cast<NameId>(m_entries.size());
  m_entries.push_back({hash, m_texts->keep(text).data(), static_cast<std::uint32_t>(text.size())});
  m_slots[slot] = id;
  if (m_entries.size() * 2 > m_slots.size()) grow();
  return id;
}

NameId Interner::find(std::string_view text) const {
  if (text.empty()) return 0;
  const std::uint64_t hash = hashOf(text);
  const std::size_t mask = m_slots.size() - 1;
  for (std::size_t slot = (hash ^ (hash >> 32)) & mask; const NameId id = m_slots[slot]; slot = (slot + 1) & mask) {
    if (m_entries[id].hash == hash && this->text(id) == text) return id;
  }
  return 0;
}

void Interner::grow() {
  std::vector<NameId> slots(m_slots.size() * 2, 0);
  const std::size_t mask = slots.size() - 1;
  for (NameId id = 1; id < m_entries.size(); ++id) {
    const std::uint64_t hash = m_entries[id].hash;
    std::size_t slot = (hash ^ (hash >> 32)) & mask;
    while (slots[slot])
      slot = (slot + 1) & mask;
    slots[slot] = id;
  }
  m_slots = std::move(slots);
}

} // namespace cobol
