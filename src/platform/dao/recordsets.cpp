#include "platform/dao/recordsets.hpp"

#include "platform/dao/sql_text.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace platform {

namespace {

/// All rows of a table by rowid, with Index and Seek.
class TableRecordset final : public UpdatableRecordset {
 public:
  TableRecordset(std::shared_ptr<Connection> connection, const std::string& table)
      : UpdatableRecordset(std::move(connection), table,
                           "select rowid, * from " + bracketed(table) + " where rowid = ?1") {
    readFirstPage();
  }

  std::int64_t RecordCount() override {
    Statement count(*m_connection, "select count(*) from " + bracketed(m_table));
    return count.step() ? count.integer(0) : 0;
  }

  void setIndex(std::string_view name) override {
    const std::string_view plain = unbracketed(name);
    if (equalsIgnoringCase(plain, m_index)) return;
    const auto index = findIndex(*m_connection, m_table, plain);
    if (!index) fail("there is no index " + std::string(name));
    Statement columns(*m_connection, "select name from pragma_index_info(?1)");
    columns.bindText(1, *index);
    const std::string column = columns.step() ? columns.text(0) : std::string();
    if (column.empty() || columns.step()) fail("the index " + std::string(name) + " is not of one column");
    m_index = plain;
    m_seekSql = "select rowid, * from " + bracketed(m_table) + " where " + bracketed(column) +
                " = ?1 collate nocase order by rowid limit 1";
  }

  void Seek(std::string_view comparison, const Value& key) override {
    if (comparison != "=") fail("Seek knows the comparison = only");
    if (m_seekSql.empty()) fail("Seek needs an Index");
    leaveRow();
    m_noMatch = true;
    seekRow(key);
  }

  bool NoMatch() const override { return m_noMatch; }

 private:
  void readPage(Page& page, const std::optional<Page::Row>& last, std::size_t count) override {
    std::string sql = "select rowid, * from " + bracketed(m_table);
    if (last) sql += " where rowid > ?2";
    Statement statement(*m_connection, sql + " order by rowid limit ?1");
    statement.bindInteger(1, static_cast<std::int64_t>(count));
    if (last) statement.bindInteger(2, last->rowid);
    bool row = statement.step();
    m_columns.readFrom(statement, 1);
    for (; row; row = statement.step())
      page.add(statement, 0);
  }

  void seekRow(const Value& key) {
    Page page;
    markRead();
    Statement statement(*m_connection, m_seekSql);
    statement.bind(1, key);
    m_noMatch = !statement.step();
    m_columns.readFrom(statement, 1);
    if (m_noMatch) return;
    page.add(statement, 0);
    m_page = std::move(page);
    startPage();
  }

  std::string m_index;
  std::string m_seekSql;
  bool m_noMatch = false;
};

/// One read transaction for several statements, so that a page costs one lock.
class ReadTransaction {
 public:
  explicit ReadTransaction(Connection& connection) : m_connection(connection), m_own(!connection.inTransaction()) {
    if (m_own) m_connection.run("begin");
  }
  ~ReadTransaction() {
    // Ending a transaction that only read has nothing to lose.
    ignoring([&] {
      if (m_own && m_connection.inTransaction()) m_connection.run("commit");
    });
  }
  ReadTransaction(const ReadTransaction&) = delete;
  ReadTransaction& operator=(const ReadTransaction&) = delete;

 private:
  Connection& m_connection;
  bool m_own;
};

/// A query over one table: its rows are fixed by their rowids, the values come page by page.
class QueryRecordset final : public UpdatableRecordset {
 public:
  QueryRecordset(std::shared_ptr<Connection> connection, const SingleTableSelect& select,
                 const std::vector<Value>& parameters)
      : UpdatableRecordset(std::move(connection), select.tableName, rowSql(select) + " = ?1"),
        m_rangeSql(rowSql(select) + " between ?1 and ?2 order by 1") {
    SqlTemplate query =
        sqlTemplate("select " + rowid(select) + ", " + select.list + " from " + select.table + " " + select.tail);
    // Equal sort keys keep the order of the rows, too.
    query.text += (select.ordered ? ", " : " order by ") + rowid(select);
    markRead();
    Statement statement(*m_connection, query.text);
    statement.bind(parameters.empty() ? query.literals : parameters);
    bool row = statement.step();
    m_columns.readFrom(statement, 1);
    for (; row; row = statement.step()) {
      const std::int64_t id = statement.integer(0);
      m_ascending = m_ascending && (m_rowids.empty() || m_rowids.back() < id);
      // What is read here holds until somebody writes, so a plain walk reads each row once.
      if (m_rowids.size() * m_columns.count() < kFirstPageCells) m_page.add(statement, m_rowids.size());
      m_rowids.push_back(id);
    }
    startPage();
  }

  std::int64_t RecordCount() override { return static_cast<std::int64_t>(m_rowids.size()); }
  void setIndex(std::string_view) override { fail("a query has no Index"); }
  void Seek(std::string_view, const Value&) override { fail("Seek works on a table only"); }
  bool NoMatch() const override { return false; }

 private:
  static constexpr std::size_t kFirstPageCells = std::size_t{1} << 20;

  static std::string rowid(const SingleTableSelect& select) { return bracketed(select.qualifier) + ".rowid"; }
  static std::string rowSql(const SingleTableSelect& select) {
    return "select " + rowid(select) + ", " + select.list + " from " + select.table + " where " + rowid(select);
  }

  void readPage(Page& page, const std::optional<Page::Row>& last, std::size_t count) override {
    std::size_t from = last ? last->ordinal + 1 : 0;
    // Rows may be gone by now; a page is empty at the end only.
    while (page.rows.empty() && from < m_rowids.size()) {
      const std::size_t to = std::min(from + count, m_rowids.size());
      const std::int64_t span = m_rowids[to - 1] - m_rowids[from];
      if (m_ascending && to - from > 1 && 4 * span < 5 * static_cast<std::int64_t>(to - from)) {
        readRange(page, from, to);
      } else {
        readEach(page, from, to);
      }
      from = to;
    }
  }

  void readRange(Page& page, std::size_t from, std::size_t to) {
    Statement statement(*m_connection, m_rangeSql);
    statement.bindInteger(1, m_rowids[from]);
    statement.bindInteger(2, m_rowids[to - 1]);
    bool row = statement.step();
    m_columns.readFrom(statement, 1);
    for (; row; row = statement.step()) {
      while (from < to && m_rowids[from] < statement.integer(0))
        ++from;
      if (from < to && m_rowids[from] == statement.integer(0)) page.add(statement, from);
    }
  }

  void readEach(Page& page, std::size_t from, std::size_t to) {
    const ReadTransaction transaction(*m_connection);
    Statement statement(*m_connection, m_rowSql);
    for (; from < to; ++from) {
      statement.bindInteger(1, m_rowids[from]);
      const bool row = statement.step();
      if (page.rows.empty()) m_columns.readFrom(statement, 1);
      if (row) page.add(statement, from);
      statement.reset();
    }
  }

  std::string m_rangeSql;
  std::vector<std::int64_t> m_rowids;
  bool m_ascending = true;
};

/// Whether it is a table of the file whose rows have rowids.
bool hasRowids(Connection& connection, std::string_view table) {
  Statement statement(connection, "select 1 from sqlite_master where type = 'table' and name = ?1 collate nocase "
                                  "and sql not like '%without%rowid%'");
  statement.bindText(1, table);
  return statement.step();
}

std::unique_ptr<Recordset> readWhole(Connection& connection, const std::string& sql,
                                     const std::vector<Value>& parameters) {
  const SqlTemplate query = sqlTemplate(sql);
  Statement statement(connection, query.text);
  statement.bind(parameters.empty() ? query.literals : parameters);
  bool row = statement.step();
  if (statement.columnCount() == 0) connection.fail("gives no rows", sql);
  std::vector<std::string> columns;
  for (int i = 0; i < statement.columnCount(); ++i)
    columns.emplace_back(statement.columnName(i));
  std::vector<std::vector<Value>> rows;
  for (; row; row = statement.step()) {
    std::vector<Value>& values = rows.emplace_back();
    values.reserve(columns.size());
    for (int i = 0; i < statement.columnCount(); ++i)
      values.push_back(statement.column(i));
  }
  return rowsRecordset(std::move(columns), std::move(rows));
}

} // namespace

std::optional<std::string> findIndex(Connection& connection, std::string_view table, std::string_view index) {
  // A file that was not made by this layer may have the plain name.
  Statement statement(connection,
                      "select name from sqlite_master where type = 'index' and tbl_name = ?1 collate nocase "
                      "and (name = ?2 collate nocase or name = ?3 collate nocase)");
  const std::string mapped = indexName(table, index);
  statement.bindText(1, table);
  statement.bindText(2, mapped);
  statement.bindText(3, index);
  if (!statement.step()) return std::nullopt;
  return statement.text(0);
}

std::unique_ptr<Recordset> openRecordset(const std::shared_ptr<Connection>& connection,
                                         const std::string& tableOrSelect, const std::vector<Value>& parameters) {
  const std::vector<SqlToken> tokens = sqlTokens(tableOrSelect);
  if (tokens.size() == 1 && tokens[0].isName()) return std::make_unique<TableRecordset>(connection, tokens[0].value);
  if (tokens.empty() || !(tokens[0].is("select") || tokens[0].is("with"))) {
    connection->fail("neither a table nor a select", tableOrSelect);
  }
  try {
    const auto single = parseSingleTableSelect(tableOrSelect, tokens);
    if (single && hasRowids(*connection, single->tableName)) {
      return std::make_unique<QueryRecordset>(connection, *single, parameters);
    }
    return readWhole(*connection, tableOrSelect, parameters);
  } catch (const DatabaseError& error) {
    connection->fail(error.reason(), tableOrSelect); // the statement as its author knows it
  }
}

} // namespace platform
