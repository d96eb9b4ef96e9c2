#pragma once

#include <optional>

#include "cobol/data_words.hpp"

namespace cobol {

/// Walks over a part of a token stream. Behind the part every token reads as the end.
class TokenCursor {
 public:
  TokenCursor(const TokenStream& stream, const Words& words, std::uint32_t from, std::uint32_t to)
      : m_stream(&stream), m_words(&words), m_behind(&stream.tokens.back()), m_end(to) {
    moveTo(from);
  }

  bool atEnd() const { return m_at >= m_end; }
  std::uint32_t index() const { return m_at; }
  const Token& token() const { return *m_token; }
  const Token& token(std::uint32_t ahead) const { return m_at + ahead < m_end ? m_token[ahead] : *m_behind; }
  Word word() const { return m_words->of(*m_token); }
  Word word(std::uint32_t ahead) const { return m_words->of(token(ahead)); }
  TokenKind kind() const { return m_token->kind; }
  TokenKind kind(std::uint32_t ahead) const { return token(ahead).kind; }
  std::string_view text() const { return m_stream->textOf(*m_token); }
  bool isPeriod() const { return kind() == TokenKind::period; }
  bool isWord() const { return kind() == TokenKind::word && !token().has(inExec); }
  bool isSymbol(std::string_view symbol) const { return kind() == TokenKind::symbol && text() == symbol; }

  void next() { m_token = ++m_at < m_end ? m_token + 1 : m_behind; }
  void moveTo(std::uint32_t index) {
    m_at = index;
    m_token = m_at < m_end ? &m_stream->tokens[m_at] : m_behind;
  }
  bool take(Word wanted) {
    if (word() != wanted) return false;
    next();
    return true;
  }
  /// Steps over any of IS, ARE, ON, FOR, TO and the like in front of an operand.
  void takeFillers();
  void skipPeriod() {
    if (isPeriod()) next();
  }
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
  const Token* m_behind; ///< stands for every token behind the part
  std::uint32_t m_at = 0;
  std::uint32_t m_end;
  const Token* m_token = nullptr; ///< the token in hand
};

/// The value of a whole number; nothing when the text is anything else. Cut at 2^62.
std::optional<std::int64_t> integerOf(std::string_view text);

} // namespace cobol
