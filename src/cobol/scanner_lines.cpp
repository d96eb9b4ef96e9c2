// The line side of the scanner: directives, comment entries, continuation, and what single words change for the lines
// behind.
#include <algorithm>
#include <array>
#include <cstring>

#include "cobol/characters.hpp"
#include "cobol/scanner.hpp"

namespace cobol {
namespace {

constexpr int kMarginColumn = 73; ///< the first column behind the text
constexpr std::size_t kLogicalLimit = 10 * 1024 * 1024;

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && isBlank(text.front()))
    text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back()))
    text.remove_suffix(1);
  return text;
}

// The word that begins at `from`, in capitals, and the rest behind it.
std::string wordAt(const char* from, const char* to, std::string_view& rest) {
  const char* end = from;
  while (end < to && end - from < 40 && isWordChar(*end))
    ++end;
  rest = trimmed({end, static_cast<std::size_t>(to - end)});
  return upper({from, static_cast<std::size_t>(end - from)});
}

bool startsWithWord(std::string_view text, std::string_view word) {
  return text.size() >= word.size() && upper(text.substr(0, word.size())) == word &&
         (text.size() == word.size() || !isWordChar(text[word.size()]));
}

// Nearly always the first character tells that a line is none of those below.
bool mayBeListingWord(const CodeLine& line) {
  switch (toUpper(*line.first)) {
  case 'E':
  case 'S':
  case 'T':
  case 'C':
  case 'P':
  case '*':
    return true;
  default:
    return line.from - line.begin < 6 || !startsWithSixSpaces(line.begin);
  }
}

// The words that change how the text behind them is read, outside EXEC text: the cases of `onWord`, which is left at
// once for all others.
constexpr auto kTurns = [] {
  std::array<bool, static_cast<std::size_t>(Keyword::Count_)> turns{};
  for (const Keyword word :
       {Keyword::Pic, Keyword::Picture, Keyword::Copy, Keyword::Replace, Keyword::Exec, Keyword::Execute,
        Keyword::Division, Keyword::ProgramId, Keyword::Comma, Keyword::Mode, Keyword::Author, Keyword::Installation,
        Keyword::DateWritten, Keyword::DateCompiled, Keyword::Security, Keyword::Remarks})
    turns[idOf(word)] = true;
  return turns;
}();

} // namespace

// What a line is for besides its words. False: it has been dealt with.
bool Scanner::passesBefore(const CodeLine& line) {
  if (line.indicator == '>') {
    m_line = line;
    directive(line);
    return false;
  }
  if (line.indicator == 'D' && !m_settings.debugging) return false;
  if (m_commentEntry) {
    if (!endsCommentEntry(line)) return false;
    m_commentEntry = false;
  }
  if (m_openQuote) return true;
  if (m_inExec) {
    if (closesExec(line)) {
      remark(Code::ExecOpen, Severity::warning, m_block.tokens[m_execToken].position(), "END-EXEC is missing");
      Token& last = m_block.tokens.back();
      if (last.kind == TokenKind::symbol && m_names.text(last.text) == ".") last.kind = TokenKind::period;
      m_inExec = m_inSql = m_sqlComment = false;
    }
    return true;
  }
  return !mayBeListingWord(line) || !isListingWord(line);
}

// EJECT, SKIP1 …, TITLE, *CBL, *CONTROL alone on a line, and the lines of compiler options in front of a program.
bool Scanner::isListingWord(const CodeLine& line) const {
  const char* from = line.first;
  std::string_view rest;
  const char second = line.to - from > 1 ? toUpper(from[1]) : ' ';
  switch (toUpper(*from)) {
  case 'E':
  case 'S': {
    if (second != 'J' && second != 'K') break;
    const std::string word = wordAt(from, line.to, rest);
    if (word == "EJECT" || word == "SKIP1" || word == "SKIP2" || word == "SKIP3") return rest.empty() || rest == ".";
    break;
  }
  case '*': {
    const std::string word = wordAt(from + 1, line.to, rest);
    return word == "CBL" || word == "CONTROL";
  }
  case 'T':
    if (second != 'I') break;
    return wordAt(from, line.to, rest) == "TITLE" && !rest.empty() && charClass(rest[0]) == CharClass::quote;
  default:
    break;
  }
  const std::vector<Token>& tokens = m_block.tokens;
  const bool behindProgram = !tokens.empty() && tokens.back().kind == TokenKind::period &&
                             before(2) == Keyword::Program && before(3) == Keyword::End;
  if (!tokens.empty() && !behindProgram) return false;
  for (const char* start : {from, skipBlanks(line.begin, line.to)}) {
    const std::string word = wordAt(start, line.to, rest);
    // A paragraph of a copybook may be called PROCESS.
    if ((word == "CBL" || word == "PROCESS") && !rest.starts_with('.') && !startsWithWord(rest, "SECTION")) return true;
  }
  return false;
}

void Scanner::directive(const CodeLine& line) {
  const char* from = line.from;
  while (from < line.to && (*from == '>' || *from == '$'))
    ++from;
  std::string_view text = trimmed({from, static_cast<std::size_t>(line.to - from)});
  if (const std::size_t comment = text.find("*>"); comment != std::string_view::npos)
    text = trimmed(text.substr(0, comment));
  if (startsWithWord(text, "SET") && startsWithWord(trimmed(text.substr(3)), "CONSTANT"))
    text = trimmed(text.substr(3));
  if (startsWithWord(text, "SOURCE") || startsWithWord(text, "SET")) return sourceFormat(text);
  if (*line.from == '>' && text.size() > 1 && toUpper(text[0]) == 'D' && isBlank(text[1])) {
    if (!m_settings.debugging) return;
    CodeLine debug = line;
    debug.from = text.data() + 1;
    beginRange(debug);
    return scanRange(debug.from, debug.to);
  }
  const auto column = static_cast<std::uint32_t>(line.from - line.begin) + 1;
  std::string words = upper(text);
  m_conditions.take(words);
  m_block.marks.push_back({static_cast<std::uint32_t>(m_block.tokens.size()), MarkKind::directive,
                           static_cast<std::uint32_t>(m_block.directives.size())});
  m_block.directives.push_back({std::move(words),
                                {0, line.line, column, static_cast<std::uint32_t>(line.to - line.from)},
                                m_reader.format(),
                                static_cast<std::uint32_t>(text.data() - line.from)});
}

// `SOURCE [FORMAT] [IS] FREE`, `SET SOURCEFORMAT"FREE"`; other settings change no words.
void Scanner::sourceFormat(std::string_view text) {
  if (!m_conditions.active()) return;
  const std::string words = upper(text);
  const std::size_t format = words.starts_with("SOURCE") ? 0 : words.find("SOURCEFORMAT");
  if (format == std::string::npos) return;
  const auto has = [&](std::string_view word) { return words.find(word, format) != std::string::npos; };
  if (has("FREE"))
    m_reader.setFormat(Format::free);
  else if (has("VARIABLE"))
    m_reader.setFormat(Format::variable);
  else if (has("FIXED"))
    m_reader.setFormat(Format::fixed);
}

// A comment entry of the IDENTIFICATION DIVISION ends before the next header.
bool Scanner::endsCommentEntry(const CodeLine& line) const {
  if (line.indicator == '-') return false;
  const char* from = skipBlanks(line.from, line.to);
  std::string_view rest;
  const NameId id = m_names.find(wordAt(from, line.to, rest));
  if (id == 0 || id >= keywordCount()) return false;
  if (startsWithWord(rest, "DIVISION")) return true;
  const std::uint32_t column =
      line.plain ? static_cast<std::uint32_t>(from - line.begin) + 1 : spreadColumn(line, from);
  if (m_reader.format() != Format::free && column > 11) return false;
  switch (classOf(id)) {
  case WordClass::paragraph:
    return rest.starts_with(".");
  case WordClass::section:
    return startsWithWord(rest, "SECTION");
  default:
    return false;
  }
}

// Without its END-EXEC a run ends before a header, before the next EXEC, and before a statement or entry behind a
// period.
bool Scanner::closesExec(const CodeLine& line) const {
  if (line.indicator == '-' || m_block.tokens.empty()) return false;
  const char* from = skipBlanks(line.from, line.to);
  std::string_view rest;
  const std::string word = wordAt(from, line.to, rest);
  if (word.empty()) return false;
  const auto keyword = keywordOf(m_names.find(word));
  if ((classOf(keyword) == WordClass::division || classOf(keyword) == WordClass::section) &&
      (startsWithWord(rest, "DIVISION") || startsWithWord(rest, "SECTION"))) {
    return true;
  }
  if (keyword == Keyword::Exec &&
      (startsWithWord(rest, "SQL") || startsWithWord(rest, "CICS") || startsWithWord(rest, "DLI")))
    return true;
  const std::uint32_t column =
      line.plain ? static_cast<std::uint32_t>(from - line.begin) + 1 : spreadColumn(line, from);
  const bool inAreaA = m_reader.format() != Format::free && column >= 8 && column <= 11;
  if (inAreaA && (rest == "." || startsWithWord(rest, "SECTION"))) return true;
  if (m_names.text(m_block.tokens.back().text) != ".") return false;
  return isDigit(word[0]) || (classOf(keyword) == WordClass::verb && keyword != Keyword::Set);
}

Keyword Scanner::before(std::size_t back) const {
  const std::size_t count = m_block.tokens.size();
  if (count <= back || m_block.tokens[count - 1 - back].kind != TokenKind::word) return Keyword::None;
  return keywordOf(m_block.tokens[count - 1 - back].text);
}

// Does what a word changes; gives where to read on.
const char* Scanner::onWord(Keyword word, const char* behind, const char* end) {
  if (m_inExec) {
    onExecWord(word);
    return behind;
  }
  if (!kTurns[idOf(word)]) return behind;
  switch (word) {
  case Keyword::Pic:
  case Keyword::Picture:
    m_expect = Expect::pictureOrIs;
    break;
  case Keyword::Copy:
  case Keyword::Replace:
    m_block.marks.push_back({static_cast<std::uint32_t>(m_block.tokens.size() - 1),
                             word == Keyword::Copy ? MarkKind::copy : MarkKind::replace, formatHere()});
    break;
  case Keyword::Exec:
  case Keyword::Execute:
    m_inExec = true;
    m_execToken = m_block.tokens.size() - 1;
    m_block.tokens.back().flags |= TokenFlag::inExec;
    break;
  case Keyword::Division:
    onDivision();
    break;
  case Keyword::ProgramId:
    m_inIdentification = true;
    break;
  case Keyword::Comma:
    if (before(1) == Keyword::DecimalPoint || (before(1) == Keyword::Is && before(2) == Keyword::DecimalPoint)) {
      m_settings.decimalComma = m_settings.decimalComma || m_conditions.active();
    }
    break;
  case Keyword::Mode:
    if (before(1) == Keyword::Debugging && m_settings.debuggingByClause && m_conditions.active())
      m_settings.debugging = true;
    break;
  case Keyword::Author:
  case Keyword::Installation:
  case Keyword::DateWritten:
  case Keyword::DateCompiled:
  case Keyword::Security:
  case Keyword::Remarks:
    if (m_inIdentification && m_block.tokens.back().has(TokenFlag::lineStart)) {
      behind = skipBlanks(behind, end);
      if (behind < end && *behind == '.') addText(TokenKind::period, behind, behind + 1);
      m_commentEntry = true;
      return end;
    }
    break;
  default:
    break;
  }
  return behind;
}

void Scanner::onDivision() {
  switch (before(1)) {
  case Keyword::Identification:
  case Keyword::Id:
    m_inIdentification = true;
    break;
  case Keyword::Environment:
  case Keyword::Data:
  case Keyword::Procedure:
    m_inIdentification = false;
    break;
  default:
    break;
  }
}

void Scanner::onExecWord(Keyword word) {
  const std::size_t at = m_block.tokens.size() - 1 - m_execToken;
  if (word == Keyword::EndExec) {
    m_inExec = m_inSql = m_sqlComment = false;
  } else if (at == 1 && (word == Keyword::Sql || word == Keyword::Sqlims)) {
    m_inSql = true;
  } else if (at == 2 && m_inSql && word == Keyword::Include) {
    m_block.marks.push_back({static_cast<std::uint32_t>(m_execToken), MarkKind::sqlInclude, formatHere()});
  }
}

// Which quote is open at the end of the logical line, given the one open at `from`; cuts off a comment.
char Scanner::quoteOpenBehind(std::size_t from, char open) {
  for (std::size_t i = from; i < m_logical.size(); ++i) {
    const char c = m_logical[i];
    if (open) {
      if (c == open) open = 0;
    } else if (charClass(c) == CharClass::quote) {
      open = c;
    } else if ((c == '*' && m_logical.compare(i, 2, "*>") == 0) ||
               (m_inSql && c == '-' && m_logical.compare(i, 2, "--") == 0)) {
      m_logical.resize(i);
    }
  }
  return open;
}

// Puts a line and those that continue it into one text with a map back.
void Scanner::assemble(const CodeLine& first) {
  beginRange(first);
  m_logical.assign(first.from, first.to);
  m_segments.push_back({0, first.from, first});
  m_simple = false;
  m_segment = 0;
  char open = quoteOpenBehind(0, m_openQuote);
  CodeLine line;
  while (m_reader.continuationFollows() && m_reader.next(line)) {
    if (m_logical.size() > kLogicalLimit) continue;
    appendContinuation(line, open);
  }
  m_readable = m_logical.data() + m_logical.size();
}

void Scanner::appendContinuation(const CodeLine& line, char& openQuote) {
  const CodeLine& last = m_segments.back().line;
  const char* from = skipBlanks(line.from, line.to);
  const bool quoteFirst = charClass(*from) == CharClass::quote;
  if (openQuote) {
    if (last.fullMargin) {
      const int used = static_cast<int>(spreadColumn(last, last.to));
      if (used < kMarginColumn) m_logical.append(static_cast<std::size_t>(kMarginColumn - used), ' ');
    }
    if (*from == openQuote) {
      ++from;
    } else {
      const auto column = static_cast<std::uint32_t>(from - line.begin) + 1;
      remark(Code::ContinuationBad, Severity::warning, {0, line.line, column, 1},
             "the continued literal has no quote here");
    }
  } else {
    const bool atMargin = last.fullMargin && spreadColumn(last, last.to) == kMarginColumn;
    const bool quoteLast = !m_logical.empty() && charClass(m_logical.back()) == CharClass::quote;
    while (!m_logical.empty() && isBlank(m_logical.back()))
      m_logical.pop_back();
    if (quoteFirst && quoteLast && atMargin && *from == m_logical.back() && from + 1 < line.to && from[1] == *from) {
      ++from; // both halves of a doubled quote: the first one only says that the literal goes on
      openQuote = *from;
      m_segments.push_back({m_logical.size(), from, line});
      m_logical.append(from, line.to);
      openQuote = quoteOpenBehind(m_segments.back().offset + 1, openQuote);
      return;
    }
    if (quoteFirst && quoteLast) m_logical += ' ';
  }
  m_segments.push_back({m_logical.size(), from, line});
  m_logical.append(from, line.to);
  openQuote = quoteOpenBehind(m_segments.back().offset, openQuote);
}

// Notes where a word that begins in the segment in hand goes on, up to `end` in the logical line.
void Scanner::placeRest(Token& token, std::size_t end) {
  std::vector<Position> parts;
  for (std::size_t i = m_segment + 1; i < m_segments.size() && m_segments[i].offset < end; ++i) {
    const Segment& segment = m_segments[i];
    const std::size_t behind = i + 1 < m_segments.size() ? std::min(m_segments[i + 1].offset, end) : end;
    const std::ptrdiff_t bytes = static_cast<std::ptrdiff_t>(behind - segment.offset);
    const auto column = std::count_if(segment.line.begin, segment.source, startsCharacter) + 1;
    const auto length = std::count_if(segment.source, segment.source + bytes, startsCharacter);
    addPlace(parts, {0, segment.line.line, static_cast<std::uint32_t>(column), static_cast<std::uint32_t>(length)});
  }
  token.further = m_block.further.add(parts);
}

} // namespace cobol
