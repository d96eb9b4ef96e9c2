#pragma once

#include "platform/runtime/value.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Reads just enough of a statement to translate what differs between the component's dialect and SQLite's.
namespace platform {

enum class SqlTokenKind : std::uint8_t { word, quotedName, text, integer, number, sign };

struct SqlToken {
  SqlTokenKind kind;
  std::size_t begin; ///< offset in the statement
  std::size_t end;
  std::string value; ///< names and texts without their quotes, words and signs as they stand

  /// A word that equals `keyword` without regard to case.
  bool is(std::string_view keyword) const;
  bool isName() const { return kind == SqlTokenKind::word || kind == SqlTokenKind::quotedName; }
  bool isSign(char sign) const { return kind == SqlTokenKind::sign && value.size() == 1 && value.front() == sign; }
};

std::vector<SqlToken> sqlTokens(std::string_view sql);

/// A name in brackets; a name that holds a closing bracket comes in double quotes.
std::string bracketed(std::string_view name);
/// The name without the brackets or quotes around it.
std::string_view unbracketed(std::string_view name);

/// What SQLite calls the index X of table T, as its index names are global to a file.
std::string indexName(std::string_view table, std::string_view index);

struct DropIndex {
  std::string table, index;
};
struct DropColumn {
  std::string table, column;
};

/// `create [unique] index X on T(…)` in SQLite's words; nothing where the statement is another.
std::optional<std::string> translatedCreateIndex(const std::string& sql, const std::vector<SqlToken>& tokens);
std::optional<DropIndex> parseDropIndex(const std::vector<SqlToken>& tokens);
std::optional<DropColumn> parseDropColumn(const std::vector<SqlToken>& tokens);

/// A select over one table whose rows can be told by their rowid: no distinct, grouping, join, union, limit, function
/// or order by a column's number.
struct SingleTableSelect {
  std::string table;     ///< as it stands after `from`, with its alias
  std::string tableName; ///< without brackets
  std::string qualifier; ///< the alias, or the table
  std::string list;      ///< between `select` and `from`
  std::string tail;      ///< from `where` or `order` to the end
  bool ordered = false;
};
std::optional<SingleTableSelect> parseSingleTableSelect(const std::string& sql, const std::vector<SqlToken>& tokens);

/// The statement with its literals taken out, so that statements that differ in values only are prepared once.
struct SqlTemplate {
  std::string text;
  std::vector<Value> literals; ///< for ?1, ?2, …
};
/// Only for selects; where a literal may be a column number (`order by 1`) or parameters stand already, nothing is
/// taken out.
SqlTemplate sqlTemplate(const std::string& sql);

} // namespace platform
