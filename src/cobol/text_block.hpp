#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cobol/diagnostic.hpp"
#include "cobol/interner.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// Places in a block where text manipulation has something to do; everything between is copied as it stands.
enum class MarkKind : std::uint8_t {
  copy,       ///< the token is the word COPY
  replace,    ///< the token is the word REPLACE
  sqlInclude, ///< the token is the EXEC of EXEC SQL INCLUDE
  directive,  ///< in front of the token stands TextBlock::directives[index]
};

struct Mark {
  std::uint32_t token = 0;
  MarkKind kind{};
  std::uint32_t index = 0; ///< of a directive; else the Format of the text there
};

/// A compiler directive line that text manipulation evaluates; `text` in capitals without `>>` or `$`.
struct Directive {
  std::string text;
  Position at;
  Format format{};              ///< of the text there
  std::uint32_t textColumn = 0; ///< columns from `at` to where `text` begins
};

/// The words of one file, before COPY and REPLACE. Of a copybook it is shared by all programs of a run and never
/// changes. Positions carry file 0. Inside, `==` is a symbol of its own.
struct TextBlock {
  SourceFile file;
  std::vector<Token> tokens; ///< without an end token
  std::vector<Mark> marks;   ///< ascending by token
  std::vector<Directive> directives;
  FurtherPlaces further; ///< of words that continue over line ends
  Diagnostics diagnostics;
  bool readable = true;
  bool decimalComma = false; ///< DECIMAL-POINT IS COMMA held at the end
  bool debugging = false;    ///< WITH DEBUGGING MODE held at the end
};

} // namespace cobol
