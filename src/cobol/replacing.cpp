#include "cobol/replacing.hpp"

#include "cobol/characters.hpp"

namespace cobol {
namespace {

bool sameWord(const Token& a, const Token& b) {
  return a.text == b.text && (a.kind == TokenKind::literal) == (b.kind == TokenKind::literal) &&
         a.kind != kReplaceControl;
}

// How many characters the words [from, to) take up in the file, if they stand on one line.
std::uint16_t extent(const Token& first, const Token& last) {
  if (first.line != last.line || first.file != last.file || last.column < first.column) return first.length;
  const std::uint32_t length = last.column + last.length - first.column;
  return static_cast<std::uint16_t>(std::min<std::uint32_t>(length, 0xFFFF));
}

// The further places of one token and those of others behind them.
std::uint16_t joinedPlaces(const Token& token, const std::vector<Token>& others, FurtherPlaces& further) {
  std::vector<Position> places = further.of(token.further);
  for (const Token& other : others) {
    for (const Position& more : further.of(other.further))
      addPlace(places, more);
  }
  return further.add(places);
}

} // namespace

void appendPictureParts(const Token& picture, Interner& names, std::vector<Token>& out) {
  const std::string_view text = names.text(picture.text);
  for (std::size_t i = 0; i < text.size();) {
    std::size_t end = i + 1;
    bool digits = isDigit(text[i]);
    if (isWordChar(text[i])) {
      for (; end < text.size() && isWordChar(text[end]); ++end)
        digits = digits && isDigit(text[end]);
    }
    Token part = picture;
    part.text = names.intern(text.substr(i, end - i));
    part.kind = digits ? TokenKind::number : isWordChar(text[i]) ? TokenKind::word : TokenKind::symbol;
    part.column += static_cast<std::uint32_t>(i);
    part.length = static_cast<std::uint16_t>(end - i);
    if (i > 0) part.flags = static_cast<std::uint8_t>((part.flags & (inExec | replaced)) | joined);
    out.push_back(part);
    i = end;
  }
}

Replacing::Replacing(std::vector<ReplaceRule> rules, Interner& names, FurtherPlaces& further)
    : m_rules(std::move(rules)), m_names(names), m_further(further) {
  for (std::size_t i = 0; i < m_rules.size(); ++i) {
    ReplaceRule& rule = m_rules[i];
    std::vector<Token> apart;
    for (const Token& token : rule.from) {
      if (token.kind == TokenKind::picture)
        appendPictureParts(token, m_names, apart);
      else
        apart.push_back(token);
    }
    rule.from = std::move(apart);
    if (rule.from.empty()) continue;
    if (rule.part != ReplaceRule::Part::whole) {
      m_hasParts = true;
      continue;
    }
    const NameId first = rule.from.front().text;
    if (first >= m_starts.size()) m_starts.resize(first + 1);
    m_starts[first] = true;
    m_byFirst[first].push_back(i);
  }
}

bool Replacing::concerns(const std::vector<Token>& words) const {
  if (m_hasParts) return true;
  return std::any_of(words.begin(), words.end(),
                     [&](const Token& token) { return token.kind == TokenKind::picture || mayStart(token.text); });
}

void Replacing::splitPictures(const std::vector<Token>& words) {
  m_words.clear();
  m_words.reserve(words.size() + words.size() / 4);
  for (const Token& token : words) {
    if (token.kind == TokenKind::picture)
      appendPictureParts(token, m_names, m_words);
    else
      m_words.push_back(token);
  }
}

void Replacing::apply(const std::vector<Token>& words, std::vector<Token>& out, std::size_t limit) {
  if (m_rules.empty() || !concerns(words)) {
    out.insert(out.end(), words.begin(), words.end());
    return;
  }
  splitPictures(words);
  const std::size_t start = out.size();
  m_joinBroken = false;
  for (std::size_t at = 0; at < m_words.size() && out.size() < limit;) {
    const ReplaceRule* rule = nullptr;
    const std::size_t count = matchAt(at, rule);
    if (count == 0) {
      out.push_back(m_words[at]);
      if (m_joinBroken) out.back().flags &= static_cast<std::uint8_t>(~joined);
      m_joinBroken = false;
      ++at;
      continue;
    }
    if (rule->part == ReplaceRule::Part::whole)
      replaceWhole(*rule, at, count, out);
    else
      replacePart(*rule, at, out);
    at += count;
  }
  glueWords(out, start, m_names, m_further);
}

// How many words the first matching rule takes here; 0: none matches.
std::size_t Replacing::matchAt(std::size_t at, const ReplaceRule*& rule) {
  const Token& token = m_words[at];
  const bool starts = mayStart(token.text) && token.kind != kReplaceControl;
  if (!starts && !m_hasParts) return 0;
  // `-A` behind `:` or `)` is one text word, though its hyphen is a symbol here.
  if (at > 1 && token.has(joined) && m_words[at - 1].has(joined) && m_names.text(m_words[at - 1].text) == "-") return 0;
  if (!m_hasParts) {
    for (const std::size_t i : m_byFirst[token.text]) {
      rule = &m_rules[i];
      if (const std::size_t count = wholeMatch(*rule, at)) return count;
    }
    return 0;
  }
  for (const ReplaceRule& one : m_rules) {
    rule = &one;
    if (one.from.empty()) continue;
    if (one.part != ReplaceRule::Part::whole) {
      if (partMatch(one, at)) return 1;
    } else if (starts) {
      if (const std::size_t count = wholeMatch(one, at)) return count;
    }
  }
  return 0;
}

std::size_t Replacing::wholeMatch(const ReplaceRule& rule, std::size_t at) const {
  if (rule.from.size() > m_words.size() - at) return 0;
  for (std::size_t i = 0; i < rule.from.size(); ++i) {
    if (!sameWord(rule.from[i], m_words[at + i])) return 0;
  }
  return rule.from.size();
}

bool Replacing::partMatch(const ReplaceRule& rule, std::size_t at) const {
  const Token& token = m_words[at];
  if (token.kind != TokenKind::word && token.kind != TokenKind::number) return false;
  const std::string_view text = m_names.text(token.text);
  const std::string part = textOf(rule.from);
  return rule.part == ReplaceRule::Part::leading ? text.starts_with(part) : text.ends_with(part);
}

std::string Replacing::textOf(const std::vector<Token>& words) const {
  std::string text;
  for (const Token& token : words)
    text += m_names.text(token.text);
  return text;
}

void Replacing::replaceWhole(const ReplaceRule& rule, std::size_t at, std::size_t count, std::vector<Token>& out) {
  const Token& first = m_words[at];
  const Token& last = m_words[at + count - 1];
  const bool joinedBefore = first.has(joined) && !m_joinBroken;
  if (rule.to.empty()) {
    m_joinBroken = !joinedBefore;
    return;
  }
  m_joinBroken = false;
  for (std::size_t i = 0; i < rule.to.size(); ++i) {
    Token token = rule.to[i];
    const std::uint8_t kept = i == 0 ? first.flags & ~joined : first.flags & (inExec | continued);
    const bool isJoined = i == 0 ? joinedBefore : token.has(joined);
    token.flags = static_cast<std::uint8_t>(kept | replaced | (isJoined ? joined : 0));
    token.line = first.line;
    token.column = first.column;
    token.file = first.file;
    token.length = rule.to.size() == 1 ? extent(first, last) : first.length;
    if (i == 0 && first.has(continued) && first.further != 0) token.further = joinedPlaces(first, {token}, m_further);
    out.push_back(token);
  }
}

void Replacing::replacePart(const ReplaceRule& rule, std::size_t at, std::vector<Token>& out) {
  Token token = m_words[at];
  const std::string_view text = m_names.text(token.text);
  const std::size_t cut = textOf(rule.from).size();
  std::string result;
  if (rule.part == ReplaceRule::Part::leading)
    result = textOf(rule.to).append(text.substr(cut));
  else
    result = std::string(text.substr(0, text.size() - cut)) + textOf(rule.to);
  if (result.empty()) return;
  token.text = m_names.intern(result);
  token.flags |= replaced;
  token.further = joinedPlaces(token, rule.to, m_further);
  out.push_back(token);
}

} // namespace cobol
