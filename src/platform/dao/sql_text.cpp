#include "platform/dao/sql_text.hpp"

#include "platform/runtime/text.hpp"

#include <algorithm>
#include <charconv>

namespace platform {

namespace {

char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isWordStart(char c) {
  return (folded(c) >= 'a' && folded(c) <= 'z') || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool isWordPart(char c) {
  return isWordStart(c) || isDigit(c) || c == '$';
}

/// From an opening quote to behind its closing one; a doubled quote stands for itself.
SqlToken quotedToken(std::string_view sql, std::size_t begin) {
  const char open = sql[begin];
  const char close = open == '[' ? ']' : open;
  SqlToken token{open == '\'' ? SqlTokenKind::text : SqlTokenKind::quotedName, begin, sql.size(), {}};
  for (std::size_t at = begin + 1; at < sql.size(); ++at) {
    if (sql[at] == close) {
      if (open == '[' || at + 1 >= sql.size() || sql[at + 1] != close) {
        token.end = at + 1;
        return token;
      }
      ++at;
    }
    token.value += sql[at];
  }
  // No quote closes it; left as it stands, so that SQLite says so.
  token.kind = SqlTokenKind::sign;
  token.value = sql.substr(begin);
  return token;
}

SqlToken numberToken(std::string_view sql, std::size_t begin) {
  std::size_t end = begin;
  SqlTokenKind kind = SqlTokenKind::integer;
  while (end < sql.size() && (isWordPart(sql[end]) || sql[end] == '.')) {
    const bool exponentSign =
        folded(sql[end]) == 'e' && end + 1 < sql.size() && (sql[end + 1] == '-' || sql[end + 1] == '+');
    if (!isDigit(sql[end])) kind = SqlTokenKind::number;
    end += exponentSign ? 2 : 1;
  }
  return {kind, begin, end, std::string(sql.substr(begin, end - begin))};
}

/// Behind blanks and comments.
std::size_t skipBlanks(std::string_view sql, std::size_t at) {
  while (at < sql.size()) {
    if (sql[at] == ' ' || (sql[at] >= '\t' && sql[at] <= '\r')) {
      ++at;
    } else if (sql.substr(at, 2) == "--") {
      at = std::min(sql.find('\n', at), sql.size());
    } else if (sql.substr(at, 2) == "/*") {
      const std::size_t end = sql.find("*/", at + 2);
      at = end == std::string_view::npos ? sql.size() : end + 2;
    } else {
      break;
    }
  }
  return at;
}

/// Whether the tokens begin with these keywords; "*" stands for any name.
bool startsWith(const std::vector<SqlToken>& tokens, std::initializer_list<std::string_view> keywords) {
  if (tokens.size() < keywords.size()) return false;
  return std::equal(keywords.begin(), keywords.end(), tokens.begin(),
                    [](std::string_view keyword, const SqlToken& token) {
                      return keyword == "*" ? token.isName() : token.is(keyword);
                    });
}

bool isAny(const SqlToken& token, std::initializer_list<std::string_view> keywords) {
  return std::any_of(keywords.begin(), keywords.end(), [&](std::string_view keyword) { return token.is(keyword); });
}

std::optional<Value> literal(const SqlToken& token) {
  if (token.kind == SqlTokenKind::text) return Value(token.value);
  if (token.kind != SqlTokenKind::integer) return std::nullopt;
  std::int64_t number = 0;
  const char* end = token.value.data() + token.value.size();
  const auto [stop, error] = std::from_chars(token.value.data(), end, number);
  if (error != std::errc{} || stop != end) return std::nullopt;
  return Value(number);
}

} // namespace

bool SqlToken::is(std::string_view keyword) const {
  return kind == SqlTokenKind::word && equalsIgnoringCase(value, keyword);
}

std::vector<SqlToken> sqlTokens(std::string_view sql) {
  std::vector<SqlToken> tokens;
  for (std::size_t at = skipBlanks(sql, 0); at < sql.size(); at = skipBlanks(sql, tokens.back().end)) {
    const char c = sql[at];
    if (c == '[' || c == '"' || c == '`' || c == '\'') {
      tokens.push_back(quotedToken(sql, at));
    } else if (isDigit(c)) {
      tokens.push_back(numberToken(sql, at));
    } else if (isWordStart(c)) {
      std::size_t end = at;
      while (end < sql.size() && isWordPart(sql[end]))
        ++end;
      const bool binaryText = end - at == 1 && folded(c) == 'x' && end < sql.size() && sql[end] == '\'';
      tokens.push_back({SqlTokenKind::word, at, end, std::string(sql.substr(at, end - at))});
      if (binaryText) { // x'0102' is one token, and no text
        tokens.back().kind = SqlTokenKind::number;
        tokens.back().end = quotedToken(sql, end).end;
      }
    } else {
      tokens.push_back({SqlTokenKind::sign, at, at + 1, std::string(1, c)});
    }
  }
  return tokens;
}

std::string bracketed(std::string_view name) {
  const bool inBrackets = name.find(']') == std::string_view::npos;
  std::string quoted(1, inBrackets ? '[' : '"');
  for (const char c : name) {
    if (c == '"' && !inBrackets) quoted += c;
    quoted += c;
  }
  return quoted += inBrackets ? ']' : '"';
}

std::string_view unbracketed(std::string_view name) {
  const bool inBrackets =
      name.size() >= 2 && ((name.front() == '[' && name.back() == ']') || (name.front() == '"' && name.back() == '"'));
  return inBrackets ? name.substr(1, name.size() - 2) : name;
}

std::string indexName(std::string_view table, std::string_view index) {
  return std::string(table) + "_" + std::string(index);
}

std::optional<std::string> translatedCreateIndex(const std::string& sql, const std::vector<SqlToken>& tokens) {
  const std::size_t name = startsWith(tokens, {"create", "index"})             ? 2
                           : startsWith(tokens, {"create", "unique", "index"}) ? 3
                                                                               : 0;
  if (name == 0 || tokens.size() < name + 4 || !tokens[name].isName() || !tokens[name + 1].is("on"))
    return std::nullopt;
  return sql.substr(0, tokens[name].begin) + bracketed(indexName(tokens[name + 2].value, tokens[name].value)) +
         sql.substr(tokens[name].end);
}

std::optional<DropIndex> parseDropIndex(const std::vector<SqlToken>& tokens) {
  if (tokens.size() != 5 || !startsWith(tokens, {"drop", "index", "*", "on", "*"})) return std::nullopt;
  return DropIndex{tokens[4].value, tokens[2].value};
}

std::optional<DropColumn> parseDropColumn(const std::vector<SqlToken>& tokens) {
  if (tokens.size() != 6 || !startsWith(tokens, {"alter", "table", "*", "drop", "column", "*"})) return std::nullopt;
  return DropColumn{tokens[2].value, tokens[5].value};
}

std::optional<SingleTableSelect> parseSingleTableSelect(const std::string& sql, const std::vector<SqlToken>& tokens) {
  if (tokens.size() < 4 || !tokens[0].is("select") || isAny(tokens[1], {"distinct", "all"})) return std::nullopt;
  std::size_t from = 1;
  while (from < tokens.size() && !tokens[from].is("from")) {
    if (tokens[from].isSign('(') || tokens[from].isSign('?')) return std::nullopt;
    ++from;
  }
  if (from == 1 || from + 1 >= tokens.size() || !tokens[from + 1].isName()) return std::nullopt;

  SingleTableSelect select;
  std::size_t last = from + 1;
  select.tableName = tokens[last].value;
  select.qualifier = select.tableName;
  if (last + 1 < tokens.size() && tokens[last + 1].is("as")) ++last;
  if (last + 1 < tokens.size() && tokens[last + 1].isName() && !isAny(tokens[last + 1], {"where", "order"})) {
    select.qualifier = tokens[++last].value;
  }
  if (last + 1 < tokens.size() && !isAny(tokens[last + 1], {"where", "order"})) return std::nullopt;

  int depth = 0;
  for (std::size_t at = last + 1; at < tokens.size(); ++at) {
    if (tokens[at].isSign('(')) ++depth;
    if (tokens[at].isSign(')')) --depth;
    const bool columnNumber = select.ordered && tokens[at].kind == SqlTokenKind::integer;
    if (columnNumber || tokens[at].isSign(';')) return std::nullopt;
    if (depth == 0 && isAny(tokens[at], {"group", "having", "union", "intersect", "except", "limit", "window"})) {
      return std::nullopt;
    }
    if (depth == 0 && tokens[at].is("order")) select.ordered = true;
  }
  select.table = sql.substr(tokens[from + 1].begin, tokens[last].end - tokens[from + 1].begin);
  select.list = sql.substr(tokens[1].begin, tokens[from - 1].end - tokens[1].begin);
  if (last + 1 < tokens.size())
    select.tail = sql.substr(tokens[last + 1].begin, tokens.back().end - tokens[last + 1].begin);
  return select;
}

SqlTemplate sqlTemplate(const std::string& sql) {
  const std::vector<SqlToken> tokens = sqlTokens(sql);
  const bool keep =
      tokens.empty() || !tokens[0].is("select") || std::any_of(tokens.begin(), tokens.end(), [](const SqlToken& token) {
        return isAny(token, {"order", "group", "limit", "like", "glob"}) || token.isSign('?') || token.isSign(':') ||
               token.isSign('@');
      });
  SqlTemplate result;
  if (keep) {
    result.text = sql;
    return result;
  }
  std::size_t copied = 0;
  bool behindList = false; // a literal in the list would lend its text to a column name
  for (const SqlToken& token : tokens) {
    behindList = behindList || token.is("from");
    std::optional<Value> value = behindList ? literal(token) : std::nullopt;
    if (!value) continue;
    result.literals.push_back(std::move(*value));
    result.text += sql.substr(copied, token.begin - copied) + "?" + std::to_string(result.literals.size());
    copied = token.end;
  }
  result.text += sql.substr(copied);
  return result;
}

} // namespace platform
