#include "cobol/source.hpp"

#include <cerrno>
#include <cstring>

#include "cobol/characters.hpp"
#include "cobol/expander.hpp"
#include "cobol/scanner.hpp"
#include "cobol/source_text.hpp"

namespace cobol {
namespace {

bool isDivisionWord(Keyword word) {
  return word == Keyword::Identification || word == Keyword::Id || word == Keyword::Environment ||
         word == Keyword::Data || word == Keyword::Procedure;
}

Format chosenFormat(const SourceText& source, FormatChoice choice, Diagnostics& diagnostics) {
  switch (choice) {
  case FormatChoice::fixed:
    return Format::fixed;
  case FormatChoice::variable:
    return Format::variable;
  case FormatChoice::free:
    return Format::free;
  case FormatChoice::detect:
    break;
  }
  return detectFormat(source, diagnostics);
}

ScanSettings settingsFor(const Options& options) {
  ScanSettings settings;
  settings.debugging = options.debugLines == DebugLines::code;
  settings.allBranches = options.allBranches;
  settings.debuggingByClause = options.debugLines == DebugLines::automatic;
  return settings;
}

// Lines of compiler options stand in front of a program, among blank and comment lines only. Of what they say LP alone
// changes the analysis.
int pointerBytesOf(const SourceText& source) {
  std::string_view text = source.text;
  int bytes = 0;
  const auto isDigits = [](std::string_view part) { return part.find_first_not_of("0123456789") == part.npos; };
  while (!text.empty()) {
    const std::size_t end = std::min(source.traits.returns ? text.find_first_of("\n\r") : text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.size() > 6 && isDigits(line.substr(0, 6))) line.remove_prefix(6);
    const std::size_t from = line.find_first_not_of(" \t");
    if (from == line.npos || line[from] == '*' || (line.size() > 6 && line[6] == '*')) continue;
    const std::string words = upper(line.substr(from));
    if (!words.starts_with("CBL ") && !words.starts_with("PROCESS ")) break;
    if (words.find("LP(64)") != words.npos) bytes = 8;
    if (words.find("LP(32)") != words.npos) bytes = 4;
  }
  return bytes;
}

// What a copybook sets for the program (decimal comma, debugging mode) holds for the text behind it too: read once
// more.
TokenStream readText(std::string bytes, const std::string& path, const Options& options, CopyLibrary& library,
                     Diagnostics& diagnostics) {
  Diagnostics decoding;
  SourceText source = decode(std::move(bytes), options, decoding);
  source.file.path = path;
  ScanSettings settings = settingsFor(options);
  settings.format = source.file.format = chosenFormat(source, options.format, decoding);
  for (int pass = 0;; ++pass) {
    TokenStream stream;
    TextBlock block;
    block.diagnostics = decoding;
    block.file = source.file;
    Scanner(source.text, source.traits, settings, block, stream.names).run();
    Diagnostics remarks;
    Expander expander(stream, library, options, settings, remarks);
    expander.run(block);
    if (pass == 0 && expander.learned() != settings) {
      settings = expander.learned();
      continue;
    }
    stream.pointerBytes = pointerBytesOf(source);
    for (const Diagnostic& remark : remarks.all())
      diagnostics.add(remark.code, remark.severity, remark.at, remark.text);
    return stream;
  }
}

} // namespace

TokenStream readTokens(const std::string& path, const Options& options, CopyLibrary& library,
                       Diagnostics& diagnostics) {
  if (std::optional<std::string> bytes = readBytes(path)) {
    return readText(std::move(*bytes), path, options, library, diagnostics);
  }
  TokenStream stream;
  stream.files.emplace_back().path = path;
  Token& end = stream.tokens.emplace_back();
  end.line = end.column = 1;
  diagnostics.add(Code::SourceUnreadable, Severity::error, {0, 1, 1, 0},
                  "cannot read " + path + ": " + std::strerror(errno));
  return stream;
}

TokenStream readTokens(std::string_view text, const Options& options,
                       const std::map<std::string, std::string>& copybooks, Diagnostics& diagnostics) {
  CopyLibrary library(copybooks);
  return readText(std::string(text), "", options, library, diagnostics);
}

std::vector<std::string> readLines(const std::string& path, const Options& options, std::string* error) {
  std::optional<std::string> bytes = readBytes(path);
  if (!bytes) {
    if (error) *error = "cannot read " + path + ": " + std::strerror(errno);
    return {};
  }
  Diagnostics remarks;
  const SourceText source = decode(std::move(*bytes), options, remarks);
  return splitLines(source.text);
}

bool looksLikeCobol(const TokenStream& stream) {
  Keyword last = Keyword::None;
  for (const Token& token : stream.tokens) {
    const Keyword word = token.kind == TokenKind::word ? keywordOf(token.text) : Keyword::None;
    if (word == Keyword::Division && isDivisionWord(last)) return true;
    if (word == Keyword::ProgramId || word == Keyword::FunctionId || word == Keyword::ClassId) return true;
    last = word;
  }
  return false;
}

} // namespace cobol
