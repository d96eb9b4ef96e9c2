#include "cobol/scanner.hpp"

#include <cstring>

#include "cobol/characters.hpp"
#include "cobol/word_bytes.hpp"

namespace cobol {
namespace {

constexpr std::size_t kTextLimit = 64 * 1024;

std::string_view view(const char* from, const char* to) {
  return {from, static_cast<std::size_t>(to - from)};
}

// A length as a token keeps it.
std::uint16_t saturated(std::ptrdiff_t length) {
  return static_cast<std::uint16_t>(std::min<std::ptrdiff_t>(length, 0xFFFF));
}

bool isLiteralPrefix(std::string_view word) {
  switch (word.size()) {
  case 1:
    return word == "X" || word == "N" || word == "G" || word == "U" || word == "Z" || word == "B" || word == "H";
  case 2:
    return word == "NX" || word == "UX" || word == "BX" || word == "GX";
  default:
    return false;
  }
}

} // namespace

Scanner::Scanner(std::string_view text, const TextTraits& traits, const ScanSettings& settings, TextBlock& block,
                 Interner& names)
    : m_settings(settings), m_conditions(settings.allBranches, settings.constants), m_block(block), m_names(names),
      m_reader(text, traits, settings.format, block.diagnostics), m_upper(new char[kTextLimit + kWordOverhang]),
      m_colon(names.intern(":")) {
  block.tokens.reserve(text.size() / 12 + 16);
}

void Scanner::run() {
  CodeLine line;
  while (m_reader.next(line)) {
    if (!passesBefore(line)) continue;
    if (m_reader.continuationFollows()) {
      assemble(line);
      scanRange(m_logical.data(), m_logical.data() + m_logical.size());
    } else {
      beginRange(line);
      scanRange(m_openQuote ? line.from : line.first, line.to);
    }
  }
  if (m_concatenate)
    remark(Code::ContinuationBad, Severity::warning, m_block.tokens.back().position(), "no literal follows");
  if (m_inExec && !m_block.tokens.empty()) {
    remark(Code::ExecOpen, Severity::warning, m_block.tokens[m_execToken].position(), "END-EXEC is missing");
  }
  m_block.file.lines = m_reader.lines();
  m_block.decimalComma = m_settings.decimalComma;
  m_block.debugging = m_settings.debugging;
}

void Scanner::remark(Code code, Severity severity, Position at, std::string text) {
  m_block.diagnostics.add(code, severity, at, std::move(text));
}

void Scanner::remarkCut(const Token& token) {
  remark(Code::LineTooLong, Severity::warning, token.position(), "the word is cut after 64 KiB");
}

void Scanner::beginRange(const CodeLine& line) {
  m_line = line;
  m_segments.clear();
  m_simple = line.plain;
  m_readable = m_reader.end();
  m_counted = line.begin;
  m_column = 1;
  m_last = nullptr;
  m_first = true;
}

void Scanner::scanRange(const char* p, const char* end) {
  if (m_openQuote) p = continueLiteral(p, end);
  while (p < end) {
    const CharClass sort = charClass(*p);
    if (sort == CharClass::blank) {
      ++p;
      if (p < end && *p == ' ') p = skipSpaces(p + 1, end);
      continue;
    }
    if (m_expect != Expect::nothing || m_sqlComment) {
      const char* behind = commentIn(p, end);
      p = behind ? behind : scanPicture(p, end);
      continue;
    }
    if (sort == CharClass::letter) { // most are
      p = scanWord(p, end);
      continue;
    }
    switch (sort) {
    case CharClass::digit:
      p = scanNumber(p, end);
      break;
    case CharClass::quote:
      p = scanLiteral(p, p, end);
      break;
    case CharClass::period:
    case CharClass::comma:
      p = scanPeriodOrComma(p, end);
      break;
    default:
      p = scanSymbol(p, end);
      break;
    }
  }
}

// The place behind a comment that begins here, else null.
const char* Scanner::commentIn(const char* p, const char* end) {
  if (!m_sqlComment) {
    if (end - p < 2) return nullptr;
    if (p[0] == '*' && p[1] == '>') return end;
    if (!m_inSql || p[0] != '/' || p[1] != '*') return nullptr;
    m_sqlComment = true;
    p += 2;
  }
  const std::size_t close = view(p, end).find("*/");
  if (close == std::string_view::npos) return end;
  m_sqlComment = false;
  return p + close + 2;
}

// The place in a range of several lines, or where a column may take several bytes; gives where the token begins in the
// file. Columns are counted from where the last token began, so a long line is walked once.
const char* Scanner::place(Token& token, const char* from, const char* to) {
  if (!m_segments.empty()) {
    const auto offset = static_cast<std::size_t>(from - m_logical.data());
    while (m_segment + 1 < m_segments.size() && m_segments[m_segment + 1].offset <= offset) {
      ++m_segment;
      m_first = true;
      m_line = m_segments[m_segment].line;
      m_counted = m_line.begin;
      m_column = 1;
    }
    const Segment& segment = m_segments[m_segment];
    const char* segmentEnd =
        m_logical.data() + (m_segment + 1 < m_segments.size() ? m_segments[m_segment + 1].offset : m_logical.size());
    if (to > segmentEnd) {
      token.flags |= TokenFlag::continued;
      if (token.kind == TokenKind::word) placeRest(token, static_cast<std::size_t>(to - m_logical.data()));
      to = segmentEnd;
    }
    const char* source = segment.source + (offset - segment.offset);
    to = source + (to - from);
    if (to > m_line.to) to = m_line.to;
    from = source;
  }
  token.line = m_line.line;
  std::ptrdiff_t length = to - from;
  if (m_line.plain) {
    token.column = static_cast<std::uint32_t>(from - m_line.begin) + 1;
  } else {
    for (; m_counted < from; ++m_counted)
      m_column += startsCharacter(*m_counted);
    token.column = m_column;
    for (const char* p = from; p < to; ++p)
      length -= !startsCharacter(*p);
  }
  token.length = saturated(length);
  return from;
}

// What the first token of a physical line tells of it.
void Scanner::beginLine(Token& token, const char* at) {
  m_first = false;
  token.flags |= TokenFlag::lineStart;
  if (m_line.indicator == '-') return;
  if (m_reader.format() == Format::free) {
    token.flags |= TokenFlag::areaA;
  } else {
    const std::uint32_t column = m_line.plain ? token.column : spreadColumn(m_line, at);
    if (column >= 8 && column <= 11) token.flags |= TokenFlag::areaA;
  }
}

Token& Scanner::add(TokenKind kind, NameId text, const char* from, const char* to) {
  Token& token = m_block.tokens.emplace_back();
  token.kind = kind;
  token.text = text;
  if (m_last == from) token.flags = TokenFlag::joined;
  if (m_inExec) token.flags |= TokenFlag::inExec;
  m_last = to;
  if (m_simple) {
    token.line = m_line.line;
    token.column = static_cast<std::uint32_t>(from - m_line.begin) + 1;
    token.length = saturated(to - from);
  } else {
    from = place(token, from, to);
  }
  if (m_first) beginLine(token, from);
  return token;
}

const char* Scanner::addText(TokenKind kind, const char* from, const char* to) {
  const Token& token = add(kind, m_names.intern(view(from, std::min(to, from + kTextLimit))), from, to);
  if (to - from > static_cast<std::ptrdiff_t>(kTextLimit)) remarkCut(token);
  return to;
}

// A period or a symbol of one character.
const char* Scanner::addSign(TokenKind kind, const char* at) {
  const auto byte = static_cast<unsigned char>(*at);
  if (byte >= m_signs.size()) return addText(kind, at, at + 1);
  NameId& id = m_signs[byte];
  if (id == 0) id = m_names.intern(view(at, at + 1));
  add(kind, id, at, at + 1);
  return at + 1;
}

const char* Scanner::scanWord(const char* p, const char* end) {
  if (m_inExec || end - p > static_cast<std::ptrdiff_t>(kTextLimit)) return scanRareWord(p, end);
  const std::size_t length = takeWord(p, end, m_readable, m_upper.get());
  const char* const behind = p + length;
  if (length <= 2 && behind < end && charClass(*behind) == CharClass::quote) return scanRareWord(p, end);
  const NameId id = m_names.intern({m_upper.get(), length});
  add(TokenKind::word, id, p, behind);
  return id < keywordCount() ? onWord(static_cast<Keyword>(id), behind, end) : behind;
}

// A word in EXEC text, one that may be the prefix of a literal, or one on a line that is too long for any word.
const char* Scanner::scanRareWord(const char* p, const char* end) {
  const char* from = p;
  const char* const kept = end - from > static_cast<std::ptrdiff_t>(kTextLimit) ? from + kTextLimit : end;
  std::size_t length = takeWord(from, kept, m_readable, m_upper.get());
  p = from + length;
  if (p == kept && kept != end) p = std::find_if_not(p, end, isWordChar);
  if (m_inSql) { // `--` opens a comment, names there hold single hyphens
    const std::size_t comment = view(from, p).find("--");
    if (comment != std::string_view::npos) p = from + comment;
    length = std::min(length, comment);
  }
  const std::string_view text(m_upper.get(), length);
  if (p < end && length <= 2 && charClass(*p) == CharClass::quote && isLiteralPrefix(text))
    return scanLiteral(from, p, end);
  const NameId id = m_names.intern(text);
  const bool afterColon = m_inExec && !m_block.tokens.empty() && m_block.tokens.back().text == m_colon &&
                          m_block.tokens.back().kind == TokenKind::symbol;
  Token& token = add(TokenKind::word, id, from, p);
  if (length == kTextLimit && p - from > static_cast<std::ptrdiff_t>(kTextLimit)) remarkCut(token);
  if (afterColon) token.flags |= TokenFlag::hostMark;
  return id < keywordCount() ? onWord(static_cast<Keyword>(id), p, end) : p;
}

// A number, unless letters show that it is a word with leading digits.
const char* Scanner::scanNumber(const char* p, const char* end) {
  const char* q = p;
  while (q < end && isDigit(*q))
    ++q;
  if (q < end && isWordChar(*q) && !(m_inSql && *q == '-')) return scanWord(p, end);
  const char point = m_settings.decimalComma ? ',' : '.';
  if (q + 1 < end && *q == point && isDigit(q[1])) {
    ++q;
    while (q < end && isDigit(*q))
      ++q;
    if (q + 1 < end && toUpper(*q) == 'E') {
      const char* exponent = q + 1;
      if (exponent + 1 < end && (*exponent == '+' || *exponent == '-')) ++exponent;
      if (isDigit(*exponent)) {
        q = exponent;
        while (q < end && isDigit(*q))
          ++q;
      }
    }
  }
  return addText(TokenKind::number, p, q);
}

const char* Scanner::scanPeriodOrComma(const char* p, const char* end) {
  const bool digitBehind = p + 1 < end && isDigit(p[1]);
  if (digitBehind && *p == (m_settings.decimalComma ? ',' : '.') && (!m_last || m_last != p || *(p - 1) == '(')) {
    const char* q = p + 1;
    while (q < end && isDigit(*q))
      ++q;
    return addText(TokenKind::number, p, q);
  }
  if (*p != '.') return m_inExec ? addSign(TokenKind::symbol, p) : p + 1;
  return addSign(m_inExec ? TokenKind::symbol : TokenKind::period, p);
}

const char* Scanner::scanSymbol(const char* p, const char* end) {
  if (end - p >= 2) {
    if (const char* behind = *p == '*' || *p == '/' ? commentIn(p, end) : nullptr) return behind;
    if (m_inSql && p[0] == '-' && p[1] == '-') return end;
    const std::string_view two = view(p, p + 2);
    // In `:A::B:` the colons belong to words apart, as in EXEC text.
    const bool colonsApart =
        m_inExec || (m_block.tokens.size() > 1 && m_last == p && m_block.tokens.back().has(joined) &&
                     m_block.tokens[m_block.tokens.size() - 2].text == m_colon);
    if (two == "::" && colonsApart) return addText(TokenKind::symbol, p, p + 1);
    if (two == "==" || two == "**" || two == "<=" || two == ">=" || two == "<>" || two == "::" || two == "||") {
      return addText(TokenKind::symbol, p, p + 2);
    }
  }
  return addSign(TokenKind::symbol, p);
}

// The string ends at a blank; its last period ends the entry, else its last comma separates.
const char* Scanner::scanPicture(const char* p, const char* end) {
  const char* q = p;
  while (q < end && !isBlank(*q) && charClass(*q) != CharClass::quote && !(*q == '=' && q + 1 < end && q[1] == '='))
    ++q;
  const char* behind = q;
  if (q > p && q[-1] == '.')
    --q;
  else if (q > p && (q[-1] == ',' || q[-1] == ';'))
    --q;
  const bool mayBeIs = m_expect == Expect::pictureOrIs;
  m_expect = Expect::nothing;
  if (q == p) return behind > p ? scanPeriodOrComma(p, end) : *p == '=' ? scanSymbol(p, end) : scanLiteral(p, p, end);
  std::size_t length = 0;
  for (const char* c = p; c < q && length < kTextLimit; ++c)
    m_upper[length++] = toUpper(*c);
  const std::string_view text(m_upper.get(), length);
  if ((mayBeIs && text == "IS") || text == "SYMBOL") {
    add(TokenKind::word, m_names.intern(text), p, q);
    if (text == "IS") m_expect = Expect::picture;
    return q;
  }
  const Token& picture = add(TokenKind::picture, m_names.intern(text), p, q);
  if (q - p > static_cast<std::ptrdiff_t>(kTextLimit)) remarkCut(picture);
  if (q < behind && *q == '.') addSign(TokenKind::period, q);
  return behind;
}

const char* Scanner::scanLiteral(const char* start, const char* quote, const char* end) {
  const char mark = *quote;
  const char* from = quote + 1;
  const char* close = static_cast<const char*>(std::memchr(from, mark, static_cast<std::size_t>(end - from)));
  std::string_view content;
  std::string doubled;
  const char* behind = end;
  bool closed = true;
  if (close && (close + 1 == end || close[1] != mark)) {
    content = view(from, close);
    behind = close + 1;
  } else {
    closed = false;
    const char* p = from;
    while (close) {
      doubled.append(p, close);
      p = close + 1;
      if (p == end || *p != mark) {
        closed = true;
        behind = p;
        break;
      }
      doubled += mark;
      ++p;
      close = static_cast<const char*>(std::memchr(p, mark, static_cast<std::size_t>(end - p)));
    }
    if (!closed) doubled.append(p, end);
    content = doubled;
  }
  if (!closed && m_inExec && closesLater(mark)) {
    m_openQuote = mark;
    m_openText = content;
    Token& open = add(TokenKind::literal, 0, start, behind);
    open.flags |= TokenFlag::continued;
    return end;
  }
  if (!closed) {
    while (!content.empty() && isBlank(content.back()))
      content.remove_suffix(1);
    behind = from + content.size() > end ? end : behind;
  }
  content = content.substr(0, kTextLimit);
  if (m_concatenate) {
    m_concatenate = false;
    Token& first = m_block.tokens.back();
    std::string whole(m_names.text(first.text));
    whole.append(content.substr(0, kTextLimit - std::min(kTextLimit, whole.size())));
    first.text = m_names.intern(whole);
    first.flags |= TokenFlag::continued;
    m_last = behind;
    m_first = false;
  } else {
    add(TokenKind::literal, m_names.intern(content), start, behind);
  }
  if (!closed) {
    remark(Code::LiteralOpen, Severity::warning, m_block.tokens.back().position(),
           "the literal has no closing quote on its line");
  } else if (m_reader.format() == Format::free && behind < end && *behind == '-') {
    const char* rest = behind + 1;
    while (rest < end && isBlank(*rest))
      ++rest;
    if (rest == end || (rest[0] == '*' && end - rest > 1 && rest[1] == '>')) {
      m_concatenate = true;
      return end;
    }
  }
  return behind;
}

const char* Scanner::continueLiteral(const char* p, const char* end) {
  while (p < end) {
    if (*p != m_openQuote) {
      m_openText += *p++;
      continue;
    }
    if (++p == end || *p != m_openQuote) {
      m_block.tokens.back().text = m_names.intern(std::string_view(m_openText).substr(0, kTextLimit));
      m_openQuote = 0;
      m_last = p;
      return p;
    }
    m_openText += *p++;
  }
  return end;
}

// Whether the literal that is open in EXEC text is closed before its END-EXEC.
bool Scanner::closesLater(char quote) const {
  const std::string_view rest = m_reader.rest().substr(0, 4096);
  const std::size_t close = rest.find(quote);
  if (close == std::string_view::npos) return false;
  for (std::size_t at = 0; at + 8 <= close; ++at) {
    if (rest[at] != '-' || at < 3) continue;
    if (upper(rest.substr(at - 3, 8)) == "END-EXEC") return false;
  }
  return true;
}

} // namespace cobol
