#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "cobol/interner.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// What passes through replacements untouched: `text` is an index into the lists of REPLACE, or kReplaceOff.
inline constexpr TokenKind kReplaceControl = TokenKind::areaHead;
inline constexpr NameId kReplaceOff = ~NameId(0);
inline constexpr NameId kReplaceLastOff = kReplaceOff - 1;

/// One `a BY b` of REPLACING or REPLACE. The words of `to` have their own places as their further ones.
struct ReplaceRule {
  enum class Part { whole, leading, trailing };
  std::vector<Token> from;
  std::vector<Token> to;
  Part part = Part::whole;
};

/// Replaces words of a text. Words compare by their ids, so case, line breaks and comments do not matter; the first
/// rule that matches wins and its result is not looked at again.
class Replacing {
 public:
  Replacing(std::vector<ReplaceRule> rules, Interner& names, FurtherPlaces& further);

  bool empty() const { return m_rules.empty(); }
  /// Appends the text `words` with its replacements to `out`. Words that now stand together without a blank are one.
  /// Replacements can make a text as long as they like: it ends where `out` has `limit` words.
  void apply(const std::vector<Token>& words, std::vector<Token>& out, std::size_t limit);

 private:
  bool concerns(const std::vector<Token>& words) const;
  void splitPictures(const std::vector<Token>& words);
  std::size_t matchAt(std::size_t at, const ReplaceRule*& rule);
  std::size_t wholeMatch(const ReplaceRule& rule, std::size_t at) const;
  bool partMatch(const ReplaceRule& rule, std::size_t at) const;
  void replaceWhole(const ReplaceRule& rule, std::size_t at, std::size_t count, std::vector<Token>& out);
  void replacePart(const ReplaceRule& rule, std::size_t at, std::vector<Token>& out);
  bool mayStart(NameId id) const { return id < m_starts.size() && m_starts[id]; }
  std::string textOf(const std::vector<Token>& words) const;

  std::vector<ReplaceRule> m_rules;
  Interner& m_names;
  FurtherPlaces& m_further;
  std::vector<bool> m_starts; ///< by id: the first word of some rule
  std::unordered_map<NameId, std::vector<std::size_t>> m_byFirst;
  bool m_hasParts = false;
  std::vector<Token> m_words; ///< the text with pictures taken apart
  bool m_joinBroken = false;  ///< an empty replacement stood at the start of a word
};

/// Puts words that stand together without a blank into one again, from `from` on: names (where one part was replaced)
/// and picture strings.
void glueWords(std::vector<Token>& words, std::size_t from, Interner& names, FurtherPlaces& further);

/// The parts of a picture string as text words, each at its place.
void appendPictureParts(const Token& picture, Interner& names, std::vector<Token>& out);

} // namespace cobol
