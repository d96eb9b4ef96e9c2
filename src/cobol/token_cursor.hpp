#pragma once

#include <optional>

#include "cobol/data_words.hpp"

namespace cobol {

/// Walks over a part of a token stream. Behind the part every token reads as the end.
class TokenCursor {
 public:
  TokenCursor(const TokenStream& stream, const Words& words, std::uint32_t from, std::uint32_t to)
      : m_stream(&stream), m_words(&words), m_at(from), m_end(to) {}

  bool atEnd() const { return m_at >= m_end; }
  std::uint32_t index() const { return m_at; }
  const Token& token(std::uint32_t ahead = 0) const {
    return m_at + ahead < m_end ? m_stream->tokens[m_at + ahead] : m_stream->tokens.back();
  }
  Word word(std::uint32_t ahead = 0) const { return m_words->of(token(ahead)); }
  TokenKind kind(std::uint32_t ahead = 0) const { return token(ahead).kind; }
  std::string_view text(std::uint32_t ahead = 0) const { return m_stream->textOf(token(ahead)); }
  bool isPeriod() const { return kind() == TokenKind::period; }
  bool isWord() const { return kind() == TokenKind::word && !token().has(inExec); }
  bool isSymbol(std::string_view symbol) const { return kind() == TokenKind::symbol && text() == symbol; }

  void next() { ++m_at; }
  void moveTo(std::uint32_t index) { m_at = index; }
  bool take(Word wanted) {
    if (word() != wanted) return false;
    next();
    return true;
  }
  /// Steps over any of IS, ARE, ON, FOR, TO and the like in front of an operand.
  void takeFillers();
  void skipPeriod();
  /// Steps behind the next period, or to the end.
  void skipSentence();
  /// At a name: steps over it, its qualifiers and subscripts, and gives the index of its token.
  std::optional<std::uint32_t> takeName();
  /// At a whole number without sign.
  std::optional<std::int64_t> takeInteger();
  void skipParentheses();

 private:
  const TokenStream* m_stream;
  const Words* m_words;
  std::uint32_t m_at;
  std::uint32_t m_end;
};

/// The value of a whole number; nothing when the text is anything else. Cut at 2^62.
std::optional<std::int64_t> integerOf(std::string_view text);

} // namespace cobol
