#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "cobol/diagnostic.hpp"
#include "cobol/interner.hpp"
#include "cobol/position.hpp"

namespace cobol {

enum class TokenKind : std::uint8_t {
  end,      ///< one at the very end
  word,     ///< reserved or user-defined word, upper case; `text` is its id
  number,   ///< numeric literal or integer, as written
  literal,  ///< alphanumeric literal (any prefix); `text` is the id of its content without quotes, case kept
  picture,  ///< a PICTURE character string, upper case, its ending period taken off
  period,   ///< the separator period
  symbol,   ///< ( ) : = < > <= >= <> + - * / ** & and `::`; `text` is the id of the symbol. Commas and semicolons
            ///< are dropped; in EXEC text they are symbols, and so is the period. A sign is always a symbol.
  areaHead, ///< never stored: a word in area A carries TokenFlag::areaA instead
};

enum TokenFlag : std::uint8_t {
  areaA = 1,      ///< first on its line and begins in area A (free format: first on its line)
  inExec = 2,     ///< between EXEC and END-EXEC, both included
  replaced = 4,   ///< made by REPLACING or REPLACE; the position is that of the first replaced word
  joined = 8,     ///< no blank between the token before and this one
  continued = 16, ///< runs on over a line end; the position is that of its first part
  lineStart = 32, ///< first token on its physical line
  hostMark = 64,  ///< in EXEC text: the word follows a colon (host variable)
};

/// One token after text manipulation: copybooks expanded, replacements made, comments and continuation gone. It starts
/// as `Token{}`, all zero: without values of their own its members are moved as so many bytes.
struct Token {
  NameId text;
  std::uint32_t line;   ///< from 1
  std::uint32_t column; ///< from 1
  std::uint16_t file;   ///< index into TokenStream::files
  std::uint16_t length; ///< characters in the file, saturating
  TokenKind kind;
  std::uint8_t flags;
  std::uint16_t further; ///< what else of the text makes the token: a number of TokenStream::further; mostly 0

  bool has(TokenFlag flag) const { return (flags & flag) != 0; }
  Position position() const { return {file, line, column, length}; }
};

static_assert(sizeof(Token) == 20 && std::is_trivial_v<Token>, "millions of them are walked over");

/// Adds a place unless it is there; one that follows the last on its line becomes one with it. Of 64 places, more than
/// a name has characters, those behind are left out.
void addPlace(std::vector<Position>& places, const Position& place);

/// Lists of places, for the few tokens that stand in several: the later parts of a word that continues over line ends,
/// and the operands of REPLACING and REPLACE that a word is made of.
class FurtherPlaces {
 public:
  /// The number of a list: 0 for none, also when there are 65535 different ones already.
  std::uint16_t add(const std::vector<Position>& places);
  const std::vector<Position>& of(std::uint16_t number) const { return m_lists[number]; }
  std::size_t size() const { return m_lists.size(); }

 private:
  std::vector<std::vector<Position>> m_lists{1};
  std::map<std::vector<Position>, std::uint16_t> m_numbers;
};

enum class Format : std::uint8_t { fixed, variable, free };

/// One file that took part: the program's own source first, then copybooks in order of first use.
struct SourceFile {
  std::string path;        ///< as found, native
  std::uint64_t size = 0;  ///< bytes
  std::uint64_t hash = 0;  ///< contentHash of the raw bytes
  std::uint32_t lines = 0; ///< physical lines
  Format format = Format::fixed;
  std::string encoding; ///< "UTF-8", "ISO-8859-1", "UTF-16LE", "CP037", …
};

/// How one COPY (or INCLUDE) was resolved, also when it was not: part of the fingerprint of a verified program.
struct CopyUse {
  std::string name;    ///< as written; a word in upper case, a literal as it is
  std::string library; ///< OF/IN, upper case, or empty
  int file = -1;       ///< index into files, -1: not found
  Position at;
};

/// A constant of conditional compilation, `>>DEFINE` or `$SET CONSTANT`.
struct DefinedConstant {
  NameId name = 0;
  std::string value; ///< empty where only the compiler is told
  Position at;       ///< of the name
};

/// All tokens of one registered source with everything it copies.
struct TokenStream {
  std::vector<Token> tokens; ///< ends with one TokenKind::end
  Interner names;
  std::vector<SourceFile> files;
  std::vector<CopyUse> copies;
  FurtherPlaces further;
  std::vector<DefinedConstant> defines; ///< each name once, where it is defined first
  int pointerBytes = 0;                 ///< as LP of the CBL and PROCESS lines says; 0: it is not there

  std::string_view textOf(const Token& token) const { return names.text(token.text); }
};

} // namespace cobol
