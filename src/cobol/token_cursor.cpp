#include "cobol/token_cursor.hpp"

#include <algorithm>

namespace cobol {

void TokenCursor::takeFillers() {
  for (;; next()) {
    switch (word()) {
    case Word::is:
    case Word::on:
    case Word::for_:
    case Word::to:
    case Word::with:
    case Word::key:
    case Word::mode:
    case Word::by:
      continue;
    default:
      return;
    }
  }
}

void TokenCursor::skipSentence() {
  while (!atEnd() && !isPeriod())
    next();
  skipPeriod();
}

void TokenCursor::skipParentheses() {
  int depth = 0;
  while (!atEnd() && !isPeriod()) {
    if (isSymbol("(")) ++depth;
    if (isSymbol(")")) --depth;
    next();
    if (depth <= 0) return;
  }
}

std::optional<std::uint32_t> TokenCursor::takeName() {
  if (!isWord()) return std::nullopt;
  const auto name = m_at;
  next();
  while ((word() == Word::of || word() == Word::in) && kind(1) == TokenKind::word)
    moveTo(m_at + 2);
  while (isSymbol("("))
    skipParentheses();
  return name;
}

std::optional<std::int64_t> TokenCursor::takeInteger() {
  if (kind() != TokenKind::number) return std::nullopt;
  const auto value = integerOf(text());
  if (value) next();
  return value;
}

std::optional<std::int64_t> integerOf(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  if (text.empty() || !std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; }))
    return std::nullopt;
  constexpr std::int64_t kLimit = std::int64_t{1} << 62;
  std::int64_t value = 0;
  for (const char c : text)
    value = value > kLimit / 10 ? kLimit : std::min(value * 10 + (c - '0'), kLimit);
  return value;
}

} // namespace cobol
