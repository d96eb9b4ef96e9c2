#include "cobol/shading.hpp"

#include <cerrno>
#include <cstring>

#include "cobol/characters.hpp"
#include "cobol/line_reader.hpp"
#include "cobol/scanner.hpp"
#include "cobol/source_text.hpp"

namespace cobol {
namespace {

std::optional<Shade> shadeOfWord(const Token& token) {
  const Keyword word = keywordOf(token.text);
  if (token.has(inExec)) {
    if (token.has(hostMark)) return std::nullopt;
    return word == Keyword::Exec || word == Keyword::EndExec ? Shade::keyword : Shade::embedded;
  }
  switch (classOf(word)) {
  case WordClass::none:
    return std::nullopt;
  case WordClass::division:
  case WordClass::section:
  case WordClass::paragraph:
    return Shade::header;
  case WordClass::figurative:
  case WordClass::specialRegister:
    return Shade::constant;
  default:
    return Shade::keyword;
  }
}

std::optional<Shade> shadeOf(const Token& token) {
  switch (token.kind) {
  case TokenKind::word:
    return shadeOfWord(token);
  case TokenKind::number:
    return Shade::number;
  case TokenKind::literal:
    return Shade::literal;
  case TokenKind::picture:
    return Shade::picture;
  default:
    return std::nullopt;
  }
}

std::uint32_t charactersIn(const char* from, const char* to) {
  std::uint32_t count = 0;
  for (; from < to; ++from)
    count += startsCharacter(*from);
  return count;
}

// One line while its spans are put together. Columns here count from 0.
class LineShader {
 public:
  LineShader(std::string_view line, std::vector<ShadedSpan>& spans) : m_spans(spans) {
    for (std::size_t i = 0; i < line.size(); ++i)
      if (startsCharacter(line[i])) m_blank.push_back(isBlank(line[i]) || charClass(line[i]) == CharClass::comma);
  }
  std::uint32_t size() const { return static_cast<std::uint32_t>(m_blank.size()); }

  /// What is written from `from` up to `to`, without the blanks round it; nothing when it is blank.
  void written(std::uint32_t from, std::uint32_t to, Shade shade) {
    to = std::min(to, size());
    while (from < to && m_blank[from])
      ++from;
    while (to > from && m_blank[to - 1])
      --to;
    if (from < to) m_spans.push_back({from + 1, to - from, shade});
  }

 private:
  std::vector<ShadedSpan>& m_spans;
  std::vector<bool> m_blank;
};

} // namespace

std::span<const ShadedSpan> ShadedText::spans(std::size_t line) const {
  if (line == 0 || line > m_ends.size()) return {};
  const std::size_t from = line == 1 ? 0 : m_ends[line - 2];
  return std::span(m_spans).subspan(from, m_ends[line - 1] - from);
}

// The tokens say what the scanner took; what is left over on a line of text is the rest of a continued token, or a
// comment.
ShadedText shade(std::string_view text, Format format) {
  TextBlock block;
  Interner names;
  ScanSettings settings;
  settings.format = format;
  settings.debugging = true;
  const TextTraits traits = traitsOf(text);
  Scanner(text, traits, settings, block, names).run();
  ShadedText shaded;
  shaded.lines = splitLines(text);
  Diagnostics remarks;
  LineReader reader(text, traits, format, remarks);
  CodeLine code;
  bool more = reader.next(code);
  const std::vector<Token>& tokens = block.tokens;
  std::size_t at = 0;
  const std::uint32_t sequence = format == Format::free ? 0 : 6;
  for (std::uint32_t number = 1; number <= shaded.lines.size(); ++number) {
    const std::string& line = shaded.lines[number - 1];
    LineShader shader(line, shaded.m_spans);
    while (more && code.line < number)
      more = reader.next(code);
    if (!more || code.line != number) {
      shader.written(0, sequence, Shade::margin);
      shader.written(sequence, shader.size(), Shade::comment);
    } else {
      while (at < tokens.size() && tokens[at].line < number)
        ++at;
      std::uint32_t column = charactersIn(code.begin, code.from);
      if (at < tokens.size() && tokens[at].line == number && tokens[at].column <= column)
        column = 0; // a directive above turned the format
      const std::uint32_t end = charactersIn(code.begin, code.to);
      shader.written(0, column, Shade::margin);
      std::optional<Shade> rest = code.indicator == '>' ? Shade::directive : Shade::comment;
      if (at > 0 && code.indicator != '>') {
        const Token& before = tokens[at - 1];
        if (before.has(continued) || before.has(inExec)) rest = shadeOf(before);
        if (!rest && !before.has(continued)) rest = Shade::comment;
      }
      for (; at < tokens.size() && tokens[at].line == number; ++at) {
        const Token& token = tokens[at];
        if (rest) shader.written(column, token.column - 1, *rest);
        rest = Shade::comment;
        column = std::min(token.column - 1 + token.length, end);
        if (const auto shade = shadeOf(token)) shader.written(token.column - 1, column, *shade);
      }
      if (rest) shader.written(column, end, *rest);
      shader.written(end, shader.size(), Shade::margin);
    }
    shaded.m_ends.push_back(shaded.m_spans.size());
  }
  return shaded;
}

std::optional<ShadedText> shadeFile(const std::string& path, const Options& options, std::optional<Format> format,
                                    std::string* error) {
  std::optional<std::string> bytes = readBytes(path);
  if (!bytes) {
    if (error) *error = "cannot read " + path + ": " + std::strerror(errno);
    return std::nullopt;
  }
  Diagnostics remarks;
  const SourceText source = decode(std::move(*bytes), options, remarks);
  return shade(source.text, format ? *format : detectFormat(source, remarks));
}

} // namespace cobol
