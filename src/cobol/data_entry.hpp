#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cobol/analysis.hpp"
#include "cobol/picture.hpp"
#include "cobol/token_cursor.hpp"

namespace cobol {

/// What one data description entry says once; tokens are stream indices, 0 is none.
struct DataClauses {
  int level = 0;
  std::uint32_t levelToken = 0;
  std::uint32_t nameToken = 0; ///< the level's token when nameless
  bool isNamed = false;

  std::uint32_t redefines = 0;
  std::uint32_t renamesFirst = 0;
  std::uint32_t renamesLast = 0;
  std::uint32_t picture = 0;
  std::uint32_t copiedFrom = 0; ///< the name in TYPE, SAME AS or LIKE
  Representation held;
  std::uint16_t flags = 0;     ///< ConstructFlag: what the clauses make of the item
  std::int64_t fixedBytes = 0; ///< size told by the usage itself (SQL TYPE IS …)
  bool isTypedef = false;
  bool isConstant = false;
  bool isDynamic = false; ///< DYNAMIC LENGTH
  std::int64_t byteLength = 0;

  bool repeats = false;
  std::uint32_t occursFirst = 0; ///< token of the only or smallest count
  std::uint32_t occursLast = 0;  ///< token of the count behind TO
  bool isUnbounded = false;

  std::uint32_t valueFrom = 0; ///< tokens of the VALUE clause [from, to)
  std::uint32_t valueTo = 0;
  bool valueIsLiteral = false;
  std::int64_t column = 0; ///< of a report item, from 1; 0: none
  bool isColumnRelative = false;
  bool hasLine = false;
  bool hasColumn = false;
};

/// One data description entry as written.
struct DataEntry : DataClauses {
  struct NameUse {
    DataReference::Role role{};
    std::uint32_t token = 0;
  };
  std::string sqlType; ///< "SQL BLOB"
  std::vector<std::uint32_t> indexNames;
  std::vector<NameUse> uses;

  void clear();
  void set(ConstructFlag flag) { flags = static_cast<std::uint16_t>(flags | flag); }
};

/// Reads the clauses of entries, in any order, up to their period; a period that is missing in front of a level number
/// or a header is supplied with a diagnostic. What is no clause is passed over.
class DataEntryReader {
 public:
  DataEntryReader(const TokenStream& stream, TokenCursor& cursor, Diagnostics& diagnostics)
      : m_stream(stream), m_cursor(cursor), m_diagnostics(diagnostics) {}

  /// Reads the entry that begins where the cursor stands; false: none does.
  bool read(Section section, DataEntry& entry);

 private:
  /// The level number in hand; 0: there is none.
  int level() const;
  bool beginsNameless(Word word) const;
  bool atNewEntry() const;
  bool takePlainPicture();
  bool takePicture();
  void clause();
  void commonClause(Word word);
  bool reportClause(Word word);
  bool screenClause(Word word);
  void usageClause();
  bool takeUsage();
  void sqlType();
  void signClause();
  void occursClause();
  void tableKeys();
  void valueClause();
  void constantClause();
  void columnClause();
  void expression(DataReference::Role role);
  void useName(DataReference::Role role);
  void useNameOrNumber(DataReference::Role role);

  const TokenStream& m_stream;
  TokenCursor& m_cursor;
  Diagnostics& m_diagnostics;
  Section m_section = Section::none;
  DataEntry* m_entry = nullptr;
};

} // namespace cobol
