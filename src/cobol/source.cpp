#include "cobol/source.hpp"

#include "cobol/scanner.hpp"

namespace cobol {
namespace {

bool isDivisionWord(Keyword word) {
  return word == Keyword::Identification || word == Keyword::Id || word == Keyword::Environment || word == Keyword::Data ||
         word == Keyword::Procedure;
}

} // namespace

TokenStream readTokens(std::string_view text, const Options& options, const std::map<std::string, std::string>&,
                       Diagnostics& diagnostics) {
  TokenStream stream;
  TextBlock block;
  ScanSettings settings;
  settings.format = options.format == FormatChoice::free ? Format::free : options.format == FormatChoice::variable ? Format::variable : Format::fixed;
  Scanner(text, settings, block, stream.names).run();
  stream.tokens = std::move(block.tokens);
  Token end;
  end.line = block.file.lines + 1;
  end.column = 1;
  stream.tokens.push_back(end);
  stream.files.push_back(block.file);
  for (const Diagnostic& one : block.diagnostics.all()) diagnostics.add(one.code, one.severity, one.at, one.text);
  return stream;
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
