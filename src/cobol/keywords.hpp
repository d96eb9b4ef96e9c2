#pragma once

#include <cstdint>
#include <string_view>

#include "cobol/interner.hpp"

namespace cobol {

/// The words that the analyser knows by number. A word's id in every Interner is the value of its enumerator, so
/// `switch (keywordOf(token.text))` classifies it. `None` is every other word.
enum class Keyword : NameId {
  None = 0,
#define WORD(name, text, kind) name,
#include "cobol/keyword_table.inc"
#undef WORD
  Count_,
};

enum class WordClass : std::uint8_t {
  none,            ///< no word of the table
  verb,            ///< begins a statement
  division,        ///< IDENTIFICATION, DATA …, and DIVISION itself
  section,         ///< WORKING-STORAGE …, and SECTION itself
  paragraph,       ///< PROGRAM-ID, FILE-CONTROL …
  terminator,      ///< END-IF …
  figurative,      ///< ZERO, SPACES … (ALL is `reserved`)
  specialRegister, ///< RETURN-CODE … (may be used as operands without a declaration)
  reserved,        ///< any other reserved word
  context,         ///< reserved only where a clause expects it: may be a data name
};

constexpr NameId keywordCount() {
  return static_cast<NameId>(Keyword::Count_);
}
constexpr Keyword keywordOf(NameId id) {
  return id < keywordCount() ? static_cast<Keyword>(id) : Keyword::None;
}
constexpr NameId idOf(Keyword word) {
  return static_cast<NameId>(word);
}

/// The word as written in capitals; empty for None.
std::string_view textOf(Keyword word);

extern const WordClass kWordClasses[];
inline WordClass classOf(Keyword word) {
  return kWordClasses[static_cast<NameId>(word)];
}
inline WordClass classOf(NameId id) {
  return classOf(keywordOf(id));
}

} // namespace cobol
