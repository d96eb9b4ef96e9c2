#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "cobol/text_arena.hpp"

namespace cobol {

using NameId = std::uint32_t; ///< 0 is the empty text

/// Texts by number. Ids below `keywordCount()` are the reserved words of keywords.hpp in the order of their enum, so a
/// `switch` on an id classifies a word. Ids never leak into results.
class Interner {
 public:
  Interner();
  Interner(const Interner&) = delete;
  Interner& operator=(const Interner&) = delete;
  Interner(Interner&&) = default;
  Interner& operator=(Interner&&) = default;

  /// The id of the text as it stands (callers upper-case words before).
  NameId intern(std::string_view text);
  /// The same with the hash that another interner gave for the text.
  NameId intern(std::string_view text, std::uint64_t hash);
  /// The id if the text is known, else 0.
  NameId find(std::string_view text) const;
  std::string_view text(NameId id) const { return {m_entries[id].text, m_entries[id].length}; }
  std::uint64_t hash(NameId id) const { return m_entries[id].hash; }
  std::size_t size() const { return m_entries.size(); }
  /// Where the texts lie (those of the keywords live for ever): who holds it may keep views of them.
  const std::shared_ptr<TextArena>& texts() const { return m_texts; }

 private:
  struct Entry {
    std::uint64_t hash;
    const char* text;
    std::uint32_t length;
  };
  struct Prototype {};
  explicit Interner(Prototype);
  static std::uint64_t hashOf(std::string_view text);
  static bool isText(const Entry& entry, std::string_view text, std::uint64_t hash);
  std::size_t slotOf(std::uint64_t hash) const { return hash >> m_slotShift; }
  NameId lookUp(std::string_view text, std::uint64_t hash);
  NameId add(std::string_view text, std::uint64_t hash, std::size_t slot);
  void grow();

  std::shared_ptr<TextArena> m_texts = std::make_shared<TextArena>();
  std::vector<Entry> m_entries;
  std::vector<NameId> m_slots; ///< open addressing, size a power of two
  unsigned m_slotShift;        ///< leaves of a hash the bits that number the slots: the upper ones depend on all
};

} // namespace cobol
