#include "cobol/source_words.hpp"

#include <cerrno>
#include <cstring>

#include "cobol/keywords.hpp"
#include "cobol/scanner.hpp"
#include "cobol/source.hpp"
#include "cobol/source_text.hpp"

namespace cobol {
namespace {

constexpr std::size_t kIndicator = 6;       // byte of column 7
constexpr std::size_t kIdentification = 72; // byte of column 73

WordKind kindOf(const Token& token) {
  switch (token.kind) {
  case TokenKind::number:
    return WordKind::number;
  case TokenKind::literal:
    return WordKind::literal;
  case TokenKind::picture:
    return WordKind::picture;
  default:
    return classOf(token.text) == WordClass::none ? WordKind::name : WordKind::keyword;
  }
}

std::size_t firstText(std::string_view line, std::size_t from) {
  return std::min(line.find_first_not_of(" \t", std::min(from, line.size())), line.size());
}

std::size_t textEnd(std::string_view line, std::size_t to) {
  const std::size_t last = line.substr(0, std::min(to, line.size())).find_last_not_of(" \t");
  return last == std::string_view::npos ? 0 : last + 1;
}

/// Gathers the words of a file line by line.
class Words {
 public:
  Words(SourceWords& result, Format format) : m_result(result), m_format(format) {}

  void run(const std::vector<Token>& tokens) {
    std::size_t at = 0;
    for (std::uint32_t line = 1; line <= m_result.lines.size(); ++line) {
      const std::size_t first = at;
      while (at < tokens.size() && tokens[at].line == line)
        ++at;
      m_open = beginLine(line);
      std::size_t done = m_open;
      if (m_literalRunsOn) {
        const std::size_t to = at > first ? start(tokens[first]) : m_end;
        add(WordKind::literal, firstText(text(), done), textEnd(text(), to));
        done = std::max(done, to);
        if (at > first) m_literalRunsOn = false;
      } else if (at == first) {
        add(WordKind::comment, firstText(text(), m_format == Format::free ? 0 : std::min(kIndicator, m_end)), m_end);
      }
      for (std::size_t i = first; i < at; ++i)
        done = addToken(tokens[i], done);
      if (at > first) addRemark(done);
      if (m_end < text().size()) add(WordKind::margin, firstText(text(), m_end), textEnd(text(), text().size()));
    }
  }

 private:
  std::string_view text() const { return m_result.lines[m_line - 1]; }
  std::size_t start(const Token& token) const { return byteOfColumn(text(), token.column); }

  // The margins count in columns, so lines with tabs or wide characters are left without.
  std::size_t beginLine(std::uint32_t line) {
    m_line = line;
    m_end = text().size();
    const bool plain = std::all_of(text().begin(), text().end(), [](char c) { return c != '\t' && (c & 0x80) == 0; });
    if (m_format == Format::free || !plain) return 0;
    if (m_format == Format::fixed) m_end = std::min(m_end, kIdentification);
    add(WordKind::margin, firstText(text(), 0), textEnd(text(), std::min(kIndicator, m_end)));
    return std::min(kIndicator + 1, m_end);
  }

  std::size_t addToken(const Token& token, std::size_t done) {
    const std::size_t from = start(token);
    const std::size_t to = std::min(from + (byteOfColumn(text().substr(from), token.length + 1U)), text().size());
    if (token.kind == TokenKind::literal && token.has(TokenFlag::continued)) m_literalRunsOn = true;
    if (token.kind != TokenKind::symbol && token.kind != TokenKind::period && from >= done)
      add(kindOf(token), from, to);
    return std::max(done, to);
  }

  // A comment behind the last word.
  void addRemark(std::size_t from) {
    const std::size_t mark = text().substr(0, m_end).find("*>", from);
    if (mark != std::string_view::npos) add(WordKind::comment, mark, textEnd(text(), m_end));
  }

  void add(WordKind kind, std::size_t from, std::size_t to) {
    if (from >= to) return;
    m_result.words.push_back({m_line, static_cast<std::uint32_t>(from), static_cast<std::uint32_t>(to), kind});
  }

  SourceWords& m_result;
  Format m_format;
  std::uint32_t m_line = 0;
  std::size_t m_open = 0;
  std::size_t m_end = 0; ///< of the text proper on the line
  bool m_literalRunsOn = false;
};

} // namespace

std::size_t byteOfColumn(std::string_view line, std::uint32_t column) {
  std::size_t at = 0;
  for (std::uint32_t left = column; left > 1 && at < line.size(); --left) {
    ++at;
    while (at < line.size() && (static_cast<unsigned char>(line[at]) & 0xC0) == 0x80)
      ++at;
  }
  return at;
}

std::optional<SourceWords> readWords(const std::string& path, const Options& options, std::optional<Format> format,
                                     std::string& error) {
  std::optional<std::string> bytes = readBytes(path);
  if (!bytes) {
    error = std::strerror(errno);
    return std::nullopt;
  }
  return wordsOf(std::move(*bytes), options, format);
}

SourceWords wordsOf(std::string bytes, const Options& options, std::optional<Format> format) {
  Diagnostics remarks;
  const SourceText source = decode(std::move(bytes), options, remarks);
  if (!format) format = detectFormat(source.text, remarks);
  ScanSettings settings;
  settings.format = *format;
  settings.debugging = options.debugLines == DebugLines::code;
  settings.debuggingByClause = options.debugLines == DebugLines::automatic;
  settings.allBranches = true; // conditions may stand on what another file defines
  TextBlock block;
  Interner names;
  Scanner(source.text, settings, block, names).run();
  SourceWords result;
  result.lines = splitLines(source.text);
  result.hash = source.file.hash;
  result.encoding = source.file.encoding;
  Words(result, *format).run(block.tokens);
  return result;
}

} // namespace cobol
