#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/options.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// What a piece of a source line is to the reader of a listing. User-defined words and separators have no shade.
enum class Shade : std::uint8_t {
  margin,    ///< sequence number, indicator, identification
  comment,   ///< also text that the scanner passes over: AUTHOR's paragraph, debugging lines that are off
  directive, ///< compiler directive
  header,    ///< words that open a division, section or paragraph of the language
  keyword,   ///< any other reserved word, EXEC and END-EXEC
  constant,  ///< figurative constants and special registers
  number,
  literal,
  picture,
  embedded, ///< words inside EXEC that are no host variables
};

/// A piece of one line. Columns count decoded characters from 1, a tab is one.
struct ShadedSpan {
  std::uint32_t column = 0;
  std::uint32_t length = 0;
  Shade shade{};
  auto operator<=>(const ShadedSpan&) const = default;
};

/// A file's lines as UTF-8 without their ends, numbered as the analysis numbers them, and what is to be shaded on each,
/// ascending and without overlap.
class ShadedText {
 public:
  std::vector<std::string> lines;
  /// Of a line, from 1.
  std::span<const ShadedSpan> spans(std::size_t line) const;

 private:
  friend ShadedText shade(std::string_view text, Format format);
  std::vector<ShadedSpan> m_spans;
  std::vector<std::size_t> m_ends; ///< per line: one behind its last span
};

/// Shades a decoded text as the scanner reads it.
ShadedText shade(std::string_view text, Format format);

/// Shades a file. `format` is the one that the analysis found; none: it is detected. Nothing when the file cannot be
/// read; then `error`, if given, says why.
std::optional<ShadedText> shadeFile(const std::string& path, const Options& options, std::optional<Format> format,
                                    std::string* error = nullptr);

} // namespace cobol
