#pragma once

#include <cstdint>
#include <string_view>

#include "cobol/characters.hpp"
#include "cobol/diagnostic.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// One line that holds text: its areas without sequence number, indicator and identification.
struct CodeLine {
  const char* begin = nullptr; ///< first byte of the physical line
  const char* from = nullptr;  ///< first byte of the text
  const char* first = nullptr; ///< first byte of it that is no blank
  const char* to = nullptr;    ///< one behind the text
  std::uint32_t line = 0;
  std::uint32_t fromColumn = 1; ///< where the text begins with tabs spread out
  char indicator = ' ';         ///< blank, '-', 'D', or '>' for a directive (which `from` points at)
  bool plain = true;            ///< one byte is one column
  bool fullMargin = false;      ///< an open literal is padded up to column 72
};

/// Number of columns, tab stops of 8, that precede `at` on the line, plus 1.
std::uint32_t spreadColumn(const CodeLine& line, const char* at);

/// Cuts a decoded text into lines and drops blank and comment lines. Lines end at LF, CRLF or a lone CR.
class LineReader {
 public:
  LineReader(std::string_view text, const TextTraits& traits, Format format, Diagnostics& diagnostics);

  /// The next line with text; false at the end.
  bool next(CodeLine& line) {
    if (!m_ahead.valid || m_ahead.remarked) return walk(line);
    m_ahead.valid = false;
    line = m_ahead.line;
    m_at = m_ahead.behind;
    m_line = line.line;
    return m_ahead.found;
  }
  /// Whether the next line with text continues the one that was read last. For `next` nothing changes.
  bool continuationFollows() {
    if (m_format == Format::free) return false;
    if (!m_ahead.valid) lookAhead();
    return m_ahead.found && m_ahead.line.indicator == '-';
  }
  /// Holds from the next line on.
  void setFormat(Format format) {
    m_format = format;
    m_ahead.valid = false;
  }
  Format format() const { return m_format; }
  /// Physical lines passed so far.
  std::uint32_t lines() const { return m_line; }
  /// End of the whole text.
  const char* end() const { return m_end; }
  /// What has not been read yet.
  std::string_view rest() const { return {m_at, static_cast<std::size_t>(m_end - m_at)}; }

 private:
  enum class Sort { code, skipped, unknownIndicator };
  /// The next line with text, found before it is asked for.
  struct Ahead {
    CodeLine line;
    const char* behind = nullptr; ///< where the lines behind it begin
    bool found = false;           ///< else there is none any more
    bool valid = false;
    bool remarked = false; ///< something is to be said of a line on the way, so `next` goes there itself
  };
  bool walk(CodeLine& line);
  void lookAhead();
  const char* lineEnd(const char* from, const char*& nextLine) const;
  Sort classify(CodeLine& line, const char* end) const;
  Sort classifyRare(CodeLine& line, const char* end) const;
  Sort classifyFixed(CodeLine& line, const char* end) const;
  void setArea(CodeLine& line, const char* end) const;
  Sort classifySpread(CodeLine& line, const char* end) const;
  Sort byIndicator(CodeLine& line, char indicator) const;

  const char* m_at;
  const char* m_end;
  Format m_format;
  std::uint32_t m_line = 0;
  TextTraits m_traits;
  bool m_loneReturn; ///< some line ends with CR alone
  Ahead m_ahead;
  Diagnostics& m_diagnostics;
};

} // namespace cobol
