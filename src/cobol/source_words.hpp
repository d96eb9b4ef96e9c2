#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/options.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// What a stretch of a source line is to a reader.
enum class WordKind : std::uint8_t {
  keyword,
  name,
  number,
  literal,
  picture,
  comment, ///< also lines that compilation leaves out
  margin,  ///< sequence number, identification
};

/// A stretch of a line, in bytes of its text.
struct SourceWord {
  std::uint32_t line = 0; ///< from 1
  std::uint32_t from = 0;
  std::uint32_t to = 0; ///< one behind it
  WordKind kind = WordKind::name;
};

/// A file as it stands, for showing it.
struct SourceWords {
  std::vector<std::string> lines; ///< UTF-8, numbered as tokens are
  std::vector<SourceWord> words;  ///< in text order, no two over each other; blanks and symbols belong to none
  std::uint64_t hash = 0;         ///< as SourceFile::hash
  std::string encoding;
};

/// Splits a file into lines and words as the analyser does, before COPY and REPLACE. `format` is what its analysis
/// found; without one the text itself says. Nothing when the file cannot be read; then `error` says why.
std::optional<SourceWords> readWords(const std::string& path, const Options& options, std::optional<Format> format,
                                     std::string& error);

/// The same for a file's bytes.
SourceWords wordsOf(std::string bytes, const Options& options, std::optional<Format> format);

/// The byte at which that column (from 1, in characters) of a line begins; at most the line's size.
std::size_t byteOfColumn(std::string_view line, std::uint32_t column);

} // namespace cobol
