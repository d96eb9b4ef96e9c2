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

/// The places of words that become one: what stands on one line is one piece, operands of replacements come behind.
class JoinedPlaces {
 public:
  explicit JoinedPlaces(const FurtherPlaces& further) : m_further(further) {}

  void take(const Token& token) {
    const Position at = token.position();
    const bool sameLine = !m_pieces.empty() && m_pieces.back().file == at.file && m_pieces.back().line == at.line &&
                          m_pieces.back().column <= at.column;
    if (sameLine) {
      Position& piece = m_pieces.back();
      piece.length = std::max(piece.length, at.column + at.length - piece.column);
    } else {
      addPlace(m_pieces, at);
    }
    for (const Position& more : m_further.of(token.further))
      addPlace(token.has(replaced) ? m_operands : m_pieces, more);
  }
  std::uint16_t length() const {
    return static_cast<std::uint16_t>(std::min<std::uint32_t>(m_pieces.front().length, 0xFFFF));
  }
  std::vector<Position> further() const {
    std::vector<Position> places(m_pieces.begin() + 1, m_pieces.end());
    places.insert(places.end(), m_operands.begin(), m_operands.end());
    return places;
  }

 private:
  const FurtherPlaces& m_further;
  std::vector<Position> m_pieces;
  std::vector<Position> m_operands;
};

/// Walks once over the words and writes the joined ones over them.
class Gluer {
 public:
  Gluer(std::vector<Token>& words, std::size_t from, Interner& names, FurtherPlaces& further)
      : m_words(words), m_names(names), m_further(further), m_at(from), m_out(from) {}

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
      join(first, last, text);
      first.kind = kindOf(m_names.text(first.text));
    }
    m_at = last + 1;
    return first;
  }

  // The usual case: all on one line, and one of them at most with further places.
  bool joinOnLine(Token& first, std::size_t last) const {
    std::uint32_t end = 0;
    std::uint16_t further = 0;
    for (std::size_t i = m_at; i <= last; ++i) {
      const Token& word = m_words[i];
      if (word.line != first.line || word.file != first.file || word.column < first.column) return false;
      if (further != 0 && word.further != 0) return false;
      further = std::max(further, word.further);
      end = std::max(end, word.column + word.length);
    }
    first.length = static_cast<std::uint16_t>(std::min<std::uint32_t>(end - first.column, 0xFFFF));
    first.further = further;
    return true;
  }

  // Makes one token of the words from the one in hand up to `last`.
  void join(Token& first, std::size_t last, std::string_view text) {
    first.text = m_names.intern(text.substr(0, kTextLimit));
    if (joinOnLine(first, last)) return;
    JoinedPlaces places(m_further);
    for (std::size_t i = m_at; i <= last; ++i)
      places.take(m_words[i]);
    first.length = places.length();
    first.further = m_further.add(places.further());
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
    join(first, last, text);
    first.kind = TokenKind::picture;
    m_words[m_out++] = first;
    m_at = last + 1;
    return true;
  }

  std::vector<Token>& m_words;
  Interner& m_names;
  FurtherPlaces& m_further;
  std::size_t m_at;
  std::size_t m_out;
  Expect m_picture = Expect::nothing;
};

} // namespace

void glueWords(std::vector<Token>& words, std::size_t from, Interner& names, FurtherPlaces& further) {
  Gluer(words, from, names, further).run();
}

} // namespace cobol
