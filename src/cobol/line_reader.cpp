#include "cobol/line_reader.hpp"

#include <algorithm>
#include <cstring>

#include "cobol/characters.hpp"

namespace cobol {
namespace {

constexpr int kMargin = 72;
constexpr int kIndicator = 7;
constexpr std::ptrdiff_t kLineLimit = 10 * 1024 * 1024;

bool hasLoneReturn(std::string_view text) {
  for (std::size_t at = text.find('\r'); at != text.npos; at = text.find('\r', at + 1)) {
    if (at + 1 == text.size() || text[at + 1] != '\n') return true;
  }
  return false;
}

// `>>word`, `$word`, `++INCLUDE` and `-INC` stand in any column, also in those of the sequence number.
bool opensDirective(const char* from, const char* to) {
  const std::string_view text(from, static_cast<std::size_t>(to - from));
  const auto startsWith = [&](std::string_view word) {
    if (text.size() < word.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i) {
      if ((text[i] >= 'a' && text[i] <= 'z' ? text[i] - 32 : text[i]) != word[i]) return false;
    }
    return true;
  };
  switch (text.empty() ? ' ' : text[0]) {
  case '>':
    return startsWith(">>");
  case '$':
    return startsWith("$SET") || startsWith("$IF") || startsWith("$ELSE") || startsWith("$END");
  case '+':
    return startsWith("++INCLUDE ");
  case '-':
    return startsWith("-INC ");
  default:
    return false;
  }
}

bool mayOpenDirective(char c) {
  return c == '>' || c == '$' || c == '+' || c == '-';
}

// CBL and PROCESS may begin in any column, also where the sequence number stands.
bool isOptionLine(const char* from, const char* to) {
  from = skipBlanks(from, to);
  const std::string_view text(from, static_cast<std::size_t>(to - from));
  const auto startsWith = [&](std::string_view word) {
    return text.size() > word.size() && isBlank(text[word.size()]) &&
           std::equal(word.begin(), word.end(), text.begin(), [](char a, char b) { return a == toUpper(b); });
  };
  return startsWith("CBL") || startsWith("PROCESS");
}

} // namespace

std::uint32_t spreadColumn(const CodeLine& line, const char* at) {
  std::uint32_t column = 1;
  for (const char* p = line.begin; p < at; ++p) {
    if (*p == '\t')
      column = (column + 7) / 8 * 8 + 1;
    else if ((static_cast<unsigned char>(*p) & 0xC0) != 0x80)
      ++column;
  }
  return column;
}

LineReader::LineReader(std::string_view text, const TextTraits& traits, Format format, Diagnostics& diagnostics)
    : m_at(text.data()), m_end(text.data() + text.size()), m_format(format), m_traits(traits),
      m_loneReturn(traits.returns && hasLoneReturn(text)), m_diagnostics(diagnostics) {}

// Gives the end of the text of the line and where the next one begins.
inline const char* LineReader::lineEnd(const char* from, const char*& nextLine) const {
  const auto left = static_cast<std::size_t>(m_end - from);
  const auto* end = static_cast<const char*>(std::memchr(from, '\n', left));
  nextLine = end ? end + 1 : m_end;
  if (!end) end = m_end;
  if (!m_traits.returns) return end;
  if (m_loneReturn) {
    if (const auto* turn = static_cast<const char*>(std::memchr(from, '\r', static_cast<std::size_t>(end - from)))) {
      if (turn + 1 != end || end == m_end) nextLine = turn + 1;
      return turn;
    }
  }
  return end > from && end[-1] == '\r' ? end - 1 : end;
}

// The text of a plain line in fixed or variable format that reaches column 7.
inline void LineReader::setArea(CodeLine& line, const char* end) const {
  line.from = line.begin + kIndicator;
  line.fromColumn = kIndicator + 1;
  line.fullMargin = m_format == Format::fixed;
  line.to = line.fullMargin && end - line.begin > kMargin ? line.begin + kMargin : end;
}

// Takes the commonest lines at once, text or a comment behind a blank sequence number area.
inline LineReader::Sort LineReader::classify(CodeLine& line, const char* end) const {
  const char* const text = line.begin;
  if (m_traits.plain && m_format != Format::free && end - text > kIndicator && startsWithSixSpaces(text)) {
    const char indicator = text[kIndicator - 1];
    if (indicator == '*' || indicator == '/') return Sort::skipped;
    if (indicator == ' ') {
      setArea(line, end);
      line.first = skipBlanks(line.from, line.to);
      if (line.first == line.to) return Sort::skipped;
      if (!mayOpenDirective(*line.first)) return Sort::code;
    }
  }
  return classifyRare(line, end);
}

// Reads on to the next line with text and says what is to be said of those on the way.
bool LineReader::walk(CodeLine& line) {
  m_ahead.valid = false;
  while (m_at < m_end) {
    line = CodeLine();
    line.begin = m_at;
    line.line = ++m_line;
    const char* end = lineEnd(m_at, m_at);
    if (end - line.begin > kLineLimit) {
      end = line.begin + kLineLimit;
      m_diagnostics.add(Code::LineTooLong, Severity::warning, {0, m_line, 1, 0}, "the line is cut after 10 MiB");
    }
    const Sort sort = classify(line, end);
    if (sort == Sort::code) return true;
    if (sort == Sort::unknownIndicator) {
      m_diagnostics.add(Code::IndicatorUnknown, Severity::information, {0, m_line, kIndicator, 1},
                        "the character in column 7 is no indicator; the line is taken as a comment");
    }
  }
  return false;
}

void LineReader::lookAhead() {
  m_ahead.valid = true;
  m_ahead.found = m_ahead.remarked = false;
  CodeLine& line = m_ahead.line;
  const char* at = m_at;
  std::uint32_t number = m_line;
  while (at < m_end && !m_ahead.found) {
    line = CodeLine();
    line.begin = at;
    const char* const end = lineEnd(at, at);
    ++number;
    const Sort sort = classify(line, end);
    m_ahead.found = sort == Sort::code;
    m_ahead.remarked = m_ahead.remarked || sort == Sort::unknownIndicator || end - line.begin > kLineLimit;
  }
  line.line = number;
  m_ahead.behind = at;
}

LineReader::Sort LineReader::classifyRare(CodeLine& line, const char* end) const {
  line.plain = m_traits.plain || isPlain({line.begin, static_cast<std::size_t>(end - line.begin)});
  if (m_format == Format::free) {
    line.from = line.first = skipBlanks(line.begin, end);
    line.to = end;
    if (line.from == end) return Sort::skipped;
    line.fromColumn = static_cast<std::uint32_t>(line.from - line.begin) + 1;
    if (*line.from == '*' && line.from + 1 < end && line.from[1] == '>') return Sort::skipped;
    if (mayOpenDirective(*line.from) && opensDirective(line.from, end)) line.indicator = '>';
    return Sort::code;
  }
  return line.plain ? classifyFixed(line, end) : classifySpread(line, end);
}

LineReader::Sort LineReader::classifyFixed(CodeLine& line, const char* end) const {
  const char* text = line.begin;
  while (text < end && text - line.begin < kIndicator && isBlank(*text))
    ++text;
  if (text == end) return Sort::skipped;
  if (mayOpenDirective(*text) && opensDirective(text, end)) {
    line.from = line.first = text;
    line.fromColumn = static_cast<std::uint32_t>(text - line.begin) + 1;
    line.to = end;
    line.indicator = '>';
    return Sort::code;
  }
  if (end - line.begin < kIndicator) return Sort::skipped;
  setArea(line, end);
  return byIndicator(line, line.begin[kIndicator - 1]);
}

// Lines with tabs or characters of several bytes: columns are counted.
LineReader::Sort LineReader::classifySpread(CodeLine& line, const char* end) const {
  int column = 1;
  int characters = 0;
  bool tabbed = false;
  char indicator = ' ';
  const char* margin = nullptr;
  for (const char* p = line.begin; p < end; ++p) {
    if ((static_cast<unsigned char>(*p) & 0xC0) == 0x80) continue;
    ++characters;
    if (!line.from && column > kIndicator) {
      line.from = p;
      line.fromColumn = static_cast<std::uint32_t>(column);
    }
    if (!margin && column > kMargin) margin = p;
    if (column == kIndicator && *p != '\t') indicator = *p;
    if (*p == '\t') tabbed = true;
    column = *p == '\t' ? (column + 7) / 8 * 8 + 1 : column + 1;
  }
  const char* text = skipBlanks(line.begin, end);
  if (text == end) return Sort::skipped;
  if (opensDirective(text, end)) {
    line.from = line.first = text;
    line.to = end;
    line.indicator = '>';
    return Sort::code;
  }
  if (!line.from) return Sort::skipped;
  line.to = end;
  // Tabbed text is wider than it is long: only a line that is too long by itself carries an identification.
  if (m_format == Format::fixed && margin && (!tabbed || characters > kMargin)) line.to = margin;
  line.fullMargin = m_format == Format::fixed && !tabbed;
  return byIndicator(line, indicator);
}

LineReader::Sort LineReader::byIndicator(CodeLine& line, char indicator) const {
  switch (indicator) {
  case ' ':
  case '\0':
    break;
  case '*':
  case '/':
    return Sort::skipped;
  case '-':
    line.indicator = '-';
    break;
  case 'D':
  case 'd':
    line.indicator = 'D';
    break;
  case '$':
  case '>':
    if (opensDirective(line.from - 1, line.to)) { // behind a sequence number
      line.first = --line.from;
      --line.fromColumn;
      line.indicator = '>';
      return Sort::code;
    }
    [[fallthrough]];
  default:
    if (isOptionLine(line.begin, line.to)) return Sort::skipped;
    return skipBlanks(line.from, line.to) == line.to ? Sort::skipped : Sort::unknownIndicator;
  }
  const char* text = line.first = skipBlanks(line.from, line.to);
  if (text < line.to && (*text == '>' || *text == '+') && line.indicator == ' ' && opensDirective(text, line.to)) {
    line.from = text;
    line.indicator = '>';
  }
  // Trailing blanks stay: they belong to a literal that is open there.
  return text == line.to ? Sort::skipped : Sort::code;
}

} // namespace cobol
