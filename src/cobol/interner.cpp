#include "cobol/interner.hpp"

#include <cstring>

#include "cobol/keywords.hpp"

namespace cobol {
namespace {

constexpr unsigned kHashBits = 64;
constexpr unsigned kFirstSlotBits = 12;
constexpr std::size_t kStep = 8; // bytes that the hash takes at once
constexpr std::uint64_t kMix = 0x9E3779B97F4A7C15U;

template<typename Word>
Word load(const char* at) {
  Word word;
  std::memcpy(&word, at, sizeof word);
  return word;
}

} // namespace

// Eight bytes a step; the last ones overlap those before them. Every operation of a step can be undone.
inline std::uint64_t Interner::hashOf(std::string_view text) {
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

// Up to eight bytes are one step, so the hash and the length tell the text.
bool Interner::isText(const Entry& entry, std::string_view text, std::uint64_t hash) {
  if (entry.hash != hash || entry.length != text.size()) return false;
  if (text.size() <= kStep) return true;
  const std::size_t last = text.size() - kStep;
  for (std::size_t at = 0; at < last; at += kStep) {
    if (load<std::uint64_t>(entry.text + at) != load<std::uint64_t>(text.data() + at)) return false;
  }
  return load<std::uint64_t>(entry.text + last) == load<std::uint64_t>(text.data() + last);
}

Interner::Interner(Prototype) : m_slots(std::size_t{1} << kFirstSlotBits, 0), m_slotShift(kHashBits - kFirstSlotBits) {
  m_entries.push_back({hashOf({}), "", 0});
  for (NameId id = 1; id < keywordCount(); ++id)
    intern(textOf(static_cast<Keyword>(id)));
}

// Every run needs hundreds of them, so the words of the table are entered once and copied.
Interner::Interner() {
  static const Interner prototype{Prototype{}};
  m_entries.reserve(prototype.m_slots.size() / 2);
  m_entries = prototype.m_entries;
  m_slots = prototype.m_slots;
  m_slotShift = prototype.m_slotShift;
}

inline NameId Interner::lookUp(std::string_view text, std::uint64_t hash) {
  if (text.empty()) return 0;
  const std::size_t mask = m_slots.size() - 1;
  std::size_t slot = slotOf(hash);
  for (; const NameId id = m_slots[slot]; slot = (slot + 1) & mask)
    if (isText(m_entries[id], text, hash)) return id;
  return add(text, hash, slot);
}

NameId Interner::intern(std::string_view text) {
  return lookUp(text, hashOf(text));
}

NameId Interner::intern(std::string_view text, std::uint64_t hash) {
  return lookUp(text, hash);
}

// Enters a text that is new in a slot that is free.
NameId Interner::add(std::string_view text, std::uint64_t hash, std::size_t slot) {
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
  for (std::size_t slot = slotOf(hash); const NameId id = m_slots[slot]; slot = (slot + 1) & mask)
    if (isText(m_entries[id], text, hash)) return id;
  return 0;
}

void Interner::grow() {
  m_slots.assign(m_slots.size() * 2, 0);
  --m_slotShift;
  const std::size_t mask = m_slots.size() - 1;
  for (NameId id = 1; id < m_entries.size(); ++id) {
    std::size_t slot = slotOf(m_entries[id].hash);
    while (m_slots[slot])
      slot = (slot + 1) & mask;
    m_slots[slot] = id;
  }
}

} // namespace cobol
