#pragma once

#include "platform/dao/connection.hpp"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {

/// The columns of a record set, found by name as the component writes them.
class ColumnNames {
 public:
  /// Takes the columns of a statement from `first` on, if they are others than before; a table's columns may change
  /// between two pages. Ask after the first step, which sees the table as it is.
  void readFrom(const Statement& statement, int first);
  void set(std::vector<std::string> names) { m_names = std::move(names); }
  const std::vector<std::string>& all() const { return m_names; }
  std::size_t count() const { return m_names.size(); }
  /// KeyError where there is none.
  std::size_t find(std::string_view name) const;

 private:
  std::vector<std::string> m_names;
};

/// Rows read ahead in one go. Texts lie in one array, for most fields of most rows are never asked for.
class Page {
 public:
  struct Row {
    std::int64_t rowid;
    std::size_t ordinal; ///< the place in a fixed list of rows
  };
  std::vector<Row> rows;

  void clear();
  /// Column 0 of the statement is the rowid, the others are the row.
  void add(const Statement& statement, std::size_t ordinal);
  Value value(std::size_t row, std::size_t column) const;

 private:
  struct Text {
    std::size_t begin, size;
  };
  std::size_t m_columns = 0;
  std::vector<std::variant<Null, std::int64_t, double, Text>> m_cells;
  std::string m_texts;
};

/// What the two kinds that can be changed share: reading ahead, the current row, and writing it.
class UpdatableRecordset : public Recordset {
 public:
  bool Eof() const override { return m_place == Place::end; }
  void MoveNext() override;
  std::vector<std::string> fieldNames() const override { return m_columns.all(); }
  Value Field(std::string_view name) const override;
  void Edit() override;
  void setField(std::string_view name, const Value& value) override;
  void Update() override;

 protected:
  /// `rowSql` gives the rowid and the columns of the row with the rowid ?1.
  UpdatableRecordset(std::shared_ptr<Connection> connection, std::string table, std::string rowSql);

  /// Fills the empty page with up to `count` rows behind `last` (nothing: from the start).
  virtual void readPage(Page& page, const std::optional<Page::Row>& last, std::size_t count) = 0;
  void readFirstPage();
  /// The page holds the rows from the current one on.
  void startPage();
  void leaveRow();
  /// Notes which changes the rows read from here on show.
  void markRead() { m_changesSeen = m_connection->changes(); }
  [[noreturn]] void fail(const std::string& reason) const;

  std::shared_ptr<Connection> m_connection;
  std::string m_table;
  std::string m_rowSql;
  ColumnNames m_columns;
  Page m_page;

 private:
  enum class Place : std::uint8_t { row, end, none };
  void readAnew();
  void requireRow() const;

  Place m_place = Place::none;
  std::size_t m_at = 0;
  std::size_t m_pageSize = 1;
  std::pair<std::uint64_t, std::int64_t> m_changesSeen;
  bool m_editing = false;
  std::vector<std::pair<std::string, Value>> m_assigned; ///< columns by their names in the table
};

std::unique_ptr<Recordset> openRecordset(const std::shared_ptr<Connection>& connection,
                                         const std::string& tableOrSelect, const std::vector<Value>& parameters);

/// SQLite's name of an index of a table.
std::optional<std::string> findIndex(Connection& connection, std::string_view table, std::string_view index);

} // namespace platform
