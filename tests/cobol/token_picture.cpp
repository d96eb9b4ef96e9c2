#include "cobol/token_picture.hpp"

namespace cobol {
namespace {

std::string shown(const TokenStream& stream, const Token& token) {
  const std::string text(stream.textOf(token));
  switch (token.kind) {
  case TokenKind::number:
    return "#" + text;
  case TokenKind::literal:
    return "'" + text + "'";
  case TokenKind::picture:
    return "{" + text + "}";
  case TokenKind::end:
    return "";
  default:
    return text;
  }
}

std::string place(const Token& token) {
  const std::string file = token.file == 0 ? "" : std::to_string(token.file) + "/";
  return "<" + file + std::to_string(token.line) + ":" + std::to_string(token.column) + ">";
}

void append(std::string& line, const std::string& word) {
  if (!line.empty()) line += ' ';
  line += word;
}

} // namespace

std::string TokenPicture::flagged(char flag) const {
  static const std::map<char, TokenFlag> kFlags = {{'A', areaA},     {'X', inExec},    {'R', replaced}, {'J', joined},
                                                   {'C', continued}, {'L', lineStart}, {'H', hostMark}};
  std::string found;
  for (const Token& token : stream.tokens) {
    if (token.has(kFlags.at(flag))) append(found, shown(stream, token));
  }
  return found;
}

std::string TokenPicture::scattered() const {
  std::string found;
  for (const Token& token : stream.tokens) {
    if (token.further == 0) continue;
    append(found, shown(stream, token));
    std::vector<Position> all{token.position()};
    all.insert(all.end(), stream.further.of(token.further).begin(), stream.further.of(token.further).end());
    for (const Position& at : all) {
      found += at.file == 0 ? "<" : "<" + std::to_string(at.file) + "/";
      found += std::to_string(at.line) + ":" + std::to_string(at.column) + "+" + std::to_string(at.length) + ">";
    }
  }
  return found;
}

TokenPicture pictureOf(const std::string& text, const Options& options,
                       const std::map<std::string, std::string>& copybooks) {
  Diagnostics diagnostics;
  TokenPicture picture;
  picture.stream = readTokens(text, options, copybooks, diagnostics);
  for (const Token& token : picture.stream.tokens) {
    if (token.kind == TokenKind::end) continue;
    append(picture.words, shown(picture.stream, token));
    append(picture.places, shown(picture.stream, token) + place(token));
  }
  for (const Diagnostic& remark : diagnostics.all()) {
    picture.remarks.push_back(std::string(nameOf(remark.code)) + " " + std::to_string(remark.at.line) + ":" +
                              std::to_string(remark.at.column));
  }
  return picture;
}

Options inFormat(FormatChoice format) {
  Options options;
  options.format = format;
  return options;
}

} // namespace cobol
