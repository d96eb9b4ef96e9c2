// Words that came together by replacement become one token again.
#include "cobol/characters.hpp"
#include "cobol/keywords.hpp"
#include "cobol/replacing.hpp"

namespace cobol {
namespace {

constexpr std::size_t kTextLimit = 64 * 1024;

bool isNamePart(const Token& token, const Interner& names) {
  if (token.kind == TokenKind::word || token.kind == TokenKind::number) return true;
  return token.kind == TokenKind::symbol && names.text(token.text) == "-";
}

TokenKind kindOf(std::string_view text) {
  bool point = false;
  for (char c : text) {
    if (c == '.' || c == ',')
      point = true;
    else if (!isDigit(c))
      return TokenKind::word;
  }
  return text.empty() || (point && text.size() == 1) ? TokenKind::word : TokenKind::number;
}

void join(Token& first, const Token& last, std::string& text, Interner& names) {
  first.text = names.intern(std::string_view(text).substr(0, kTextLimit));
  if (last.line == first.line && last.file == first.file && last.column + last.length >= first.column + first.length) {
    first.length =
        static_cast<std::uint16_t>(std::min<std::uint32_t>(last.column + last.length - first.column, 0xFFFF));
  }
}

/// Walks once over the words and writes the joined ones over them.
class Gluer {
 public:
  Gluer(std::vector<Token>& words, std::size_t from, Interner& names)
      : m_words(words), m_names(names), m_at(from), m_out(from) {}

  void run() {
    const NameId colon = m_names.intern(":");
    while (m_at < m_words.size()) {
      Token token = m_words[m_at];
      if (m_picture != Expect::nothing && !isReplaceControl(token)) {
        if (token.kind == TokenKind::word && m_picture == Expect::pictureOrIs && token.text == idOf(Keyword::Is)) {
          m_picture = Expect::picture;
          m_words[m_out++] = m_words[m_at++];
          continue;
        }
        m_picture = Expect::nothing;
        if (gluePicture()) continue;
      }
      if (token.kind == TokenKind::word || token.kind == TokenKind::number)
        token = glueName();
      else
        ++m_at;
      if (token.kind == TokenKind::word && !token.has(inExec)) {
        const Keyword word = keywordOf(token.text);
        if (word == Keyword::Pic || word == Keyword::Picture) m_picture = Expect::pictureOrIs;
      }
      if (token.kind == TokenKind::word && token.has(inExec) && m_out > 0) {
        const Token& before = m_words[m_out - 1];
        const bool host = before.kind == TokenKind::symbol && before.text == colon && before.has(inExec);
        token.flags = static_cast<std::uint8_t>(host ? token.flags | hostMark : token.flags & ~hostMark);
      }
      m_words[m_out++] = token;
    }
    m_words.resize(m_out);
  }

 private:
  enum class Expect { nothing, picture, pictureOrIs };
  static bool isReplaceControl(const Token& token) { return token.kind == kReplaceControl; }

  // Names grow only around a replaced part; what was apart in the file stays apart.
  Token glueName() {
    Token first = m_words[m_at];
    std::string text;
    std::size_t last = m_at;
    while (last + 1 < m_words.size()) {
      const Token& next = m_words[last + 1];
      if (!next.has(joined) || !isNamePart(next, m_names)) break;
      const bool touched = m_words[last].has(replaced) || next.has(replaced) || !text.empty();
      const bool gone = m_words[last].kind != TokenKind::symbol && next.kind != TokenKind::symbol;
      if (!touched && !gone) break;
      if (text.empty()) text = m_names.text(first.text);
      text += m_names.text(next.text);
      first.flags |= next.flags & (replaced | continued);
      ++last;
    }
    if (last > m_at) {
      join(first, m_words[last], text, m_names);
      first.kind = kindOf(m_names.text(first.text));
    }
    m_at = last + 1;
    return first;
  }

  bool gluePicture() {
    Token first = m_words[m_at];
    if (first.kind == TokenKind::literal || first.kind == TokenKind::period || m_names.text(first.text) == "SYMBOL" ||
        m_names.text(first.text) == "==") {
      return false;
    }
    std::string text(m_names.text(first.text));
    std::size_t last = m_at;
    while (last + 1 < m_words.size() && m_words[last + 1].has(joined)) {
      const Token& next = m_words[last + 1];
      const bool ends =
          next.kind == TokenKind::period && (last + 2 >= m_words.size() || !m_words[last + 2].has(joined));
      if (ends || next.kind == TokenKind::literal || isReplaceControl(next)) break;
      text += m_names.text(next.text);
      first.flags |= next.flags & (replaced | continued);
      ++last;
    }
    join(first, m_words[last], text, m_names);
    first.kind = TokenKind::picture;
    m_words[m_out++] = first;
    m_at = last + 1;
    return true;
  }

  std::vector<Token>& m_words;
  Interner& m_names;
  std::size_t m_at;
  std::size_t m_out;
  Expect m_picture = Expect::nothing;
};

} // namespace

void glueWords(std::vector<Token>& words, std::size_t from, Interner& names) {
  Gluer(words, from, names).run();
}

} // namespace cobol
