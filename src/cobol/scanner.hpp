#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/conditions.hpp"
#include "cobol/keywords.hpp"
#include "cobol/line_reader.hpp"
#include "cobol/options.hpp"
#include "cobol/text_block.hpp"

namespace cobol {

/// What a file takes over from the one that copies it.
struct ScanSettings {
  Format format = Format::fixed;
  bool decimalComma = false;
  bool debugging = false;          ///< lines with indicator D are text
  bool debuggingByClause = true;   ///< … also from WITH DEBUGGING MODE on
  bool allBranches = false;        ///< text of every branch of conditional compilation counts
  Conditions::Constants constants; ///< defined in front of the file
  auto operator<=>(const ScanSettings&) const = default;
};

/// Splits one decoded text into words. Names go into `names`; everything else is added to `block`.
class Scanner {
 public:
  Scanner(std::string_view text, const TextTraits& traits, const ScanSettings& settings, TextBlock& block,
          Interner& names);
  void run();

 private:
  /// A physical line within a logical one that continuation put together.
  struct Segment {
    std::size_t offset; ///< in m_logical
    const char* source; ///< what was copied to there
    CodeLine line;
  };

  // lines
  bool passesBefore(const CodeLine& line);
  void directive(const CodeLine& line);
  void sourceFormat(std::string_view text);
  bool endsCommentEntry(const CodeLine& line) const;
  bool isListingWord(const CodeLine& line) const;
  void assemble(const CodeLine& first);
  void appendContinuation(const CodeLine& line, char& openQuote);
  char quoteOpenBehind(std::size_t from, char open);
  void beginRange(const CodeLine& line);

  // words; each takes the place where it begins and gives the one behind it
  void scanRange(const char* p, const char* end);
  const char* scanWord(const char* p, const char* end);
  const char* scanRareWord(const char* p, const char* end);
  const char* scanNumber(const char* p, const char* end);
  const char* scanLiteral(const char* start, const char* quote, const char* end);
  const char* continueLiteral(const char* p, const char* end);
  const char* scanPicture(const char* p, const char* end);
  const char* scanSymbol(const char* p, const char* end);
  const char* scanPeriodOrComma(const char* p, const char* end);
  const char* commentIn(const char* p, const char* end);

  Token& add(TokenKind kind, NameId text, const char* from, const char* to);
  const char* place(Token& token, const char* from, const char* to);
  void beginLine(Token& token, const char* at);
  void placeRest(Token& token, std::size_t end);
  const char* addText(TokenKind kind, const char* from, const char* to);
  const char* addSign(TokenKind kind, const char* at);
  const char* onWord(Keyword word, const char* behind, const char* end);
  void onDivision();
  void onExecWord(Keyword word);
  bool closesExec(const CodeLine& line) const;
  bool closesLater(char quote) const;
  Keyword before(std::size_t back) const;
  std::uint32_t formatHere() const { return static_cast<std::uint32_t>(m_reader.format()); }
  void remarkCut(const Token& token);
  void remark(Code code, Severity severity, Position at, std::string text);

  ScanSettings m_settings;
  Conditions m_conditions; ///< in a branch that does not count nothing changes how the text behind it is read
  TextBlock& m_block;
  Interner& m_names;
  LineReader m_reader;
  std::unique_ptr<char[]> m_upper;   ///< the word in hand; of the memory only what words need is ever touched
  std::array<NameId, 128> m_signs{}; ///< ids of the texts of one ASCII character, as far as they were met
  NameId m_colon;

  // the range in hand
  CodeLine m_line;
  std::string m_logical;
  std::vector<Segment> m_segments; ///< empty: the range lies in the file
  std::size_t m_segment = 0;
  bool m_simple = true;             ///< the range is one plain line of the file
  const char* m_readable = nullptr; ///< end of the memory that the range lies in
  const char* m_counted = nullptr;  ///< up to here columns have been counted
  std::uint32_t m_column = 1;
  const char* m_last = nullptr; ///< end of the token before
  bool m_first = true;          ///< no token on this line yet

  // what came before
  enum class Expect { nothing, picture, pictureOrIs };
  Expect m_expect = Expect::nothing;
  bool m_inIdentification = false;
  bool m_commentEntry = false;
  bool m_inExec = false;
  bool m_inSql = false;
  bool m_sqlComment = false;
  bool m_concatenate = false; ///< a free-form literal goes on with the next one
  std::size_t m_execToken = 0;
  char m_openQuote = 0; ///< of a literal that crosses a line inside EXEC
  std::string m_openText;
};

} // namespace cobol
