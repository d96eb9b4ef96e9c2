#include "platform/dao/connection.hpp"
#include "platform/dao/recordsets.hpp"
#include "platform/dao/sql_text.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace platform {

namespace {

/// The indexes of a table whose columns or condition mention the column, by SQLite's names.
std::vector<std::string> indexesOn(Connection& connection, const DropColumn& drop) {
  std::vector<std::string> names;
  Statement indexes(connection, "select name, sql from sqlite_master where type = 'index' and sql is not null "
                                "and tbl_name = ?1 collate nocase");
  indexes.bindText(1, drop.table);
  while (indexes.step()) {
    const std::vector<SqlToken> tokens = sqlTokens(indexes.text(1));
    auto columns = std::find_if(tokens.begin(), tokens.end(), [](const SqlToken& token) { return token.isSign('('); });
    if (std::any_of(columns, tokens.end(), [&](const SqlToken& token) {
          return token.isName() && equalsIgnoringCase(token.value, drop.column);
        })) {
      names.push_back(indexes.text(0));
    }
  }
  return names;
}

std::string columnType(ColumnKind kind) {
  switch (kind) {
  case ColumnKind::key:
    return "text collate nocase";
  case ColumnKind::text:
    return "text";
  case ColumnKind::integer:
    return "integer";
  case ColumnKind::number:
    return "real";
  case ColumnKind::blob:
    return "blob";
  }
  return {};
}

} // namespace

Database::Database(std::shared_ptr<Connection> connection) : m_connection(std::move(connection)) {}

void Database::Execute(const std::string& sql, const std::vector<Value>& parameters) {
  const std::vector<SqlToken> tokens = sqlTokens(sql);
  if (const auto create = translatedCreateIndex(sql, tokens)) {
    m_connection->run(*create, parameters);
  } else if (const auto drop = parseDropIndex(tokens)) {
    m_connection->run("drop index " + bracketed(indexName(drop->table, drop->index)), parameters);
  } else if (const auto column = parseDropColumn(tokens)) {
    Savepoint whole(*this);
    for (const std::string& index : indexesOn(*m_connection, *column))
      m_connection->run("drop index " + bracketed(index));
    m_connection->run(sql, parameters);
    whole.commit();
  } else {
    m_connection->run(sql, parameters);
  }
}

std::unique_ptr<Recordset> Database::OpenRecordset(const std::string& tableOrSelect,
                                                   const std::vector<Value>& parameters) {
  return openRecordset(m_connection, tableOrSelect, parameters);
}

bool Database::hasTable(std::string_view name) const {
  Statement statement(*m_connection,
                      "select 1 from sqlite_master where type in ('table', 'view') and name = ?1 collate nocase");
  statement.bindText(1, unbracketed(name));
  return statement.step();
}

bool Database::hasField(std::string_view table, std::string_view name) const {
  Statement statement(*m_connection, "select 1 from pragma_table_info(?1) where name = ?2 collate nocase");
  statement.bindText(1, unbracketed(table));
  statement.bindText(2, unbracketed(name));
  return statement.step();
}

bool Database::hasIndex(std::string_view table, std::string_view name) const {
  return findIndex(*m_connection, unbracketed(table), unbracketed(name)).has_value();
}

std::vector<std::string> Database::fieldNames(std::string_view table) const {
  Statement statement(*m_connection, "select name from pragma_table_info(?1) order by cid");
  statement.bindText(1, unbracketed(table));
  std::vector<std::string> names;
  while (statement.step())
    names.push_back(statement.text(0));
  if (names.empty()) m_connection->fail("has no table " + std::string(table));
  return names;
}

void Database::createTable(std::string_view name, const std::vector<Column>& columns) {
  std::string sql = "create table " + bracketed(name) + " (";
  for (const Column& column : columns) {
    if (&column != &columns.front()) sql += ", ";
    sql += bracketed(column.name) + " " + columnType(column.kind);
  }
  m_connection->run(sql + ")");
}

const std::string& Database::path() const {
  return m_connection->path();
}

// ---- Savepoint

Savepoint::Savepoint(Database& database) : m_connection(database.m_connection) {
  if (m_connection->inTransaction()) {
    m_name = "inner";
    m_connection->run("savepoint inner");
  } else {
    // A transaction that begins by reading could no longer write once another process has written.
    m_connection->run("begin immediate");
  }
}

Savepoint::~Savepoint() {
  if (!m_open || !m_connection->inTransaction()) return; // SQLite itself undoes all on a full disk
  try {
    if (m_name.empty()) {
      m_connection->run("rollback");
    } else {
      m_connection->run("rollback to inner");
      m_connection->run("release inner");
    }
  } catch (const Error&) {
    // The failure that leads here is on its way already; the connection is closed in the midst of its transaction.
  }
}

void Savepoint::commit() {
  m_connection->run(m_name.empty() ? "commit" : "release inner");
  m_open = false;
}

// ---- Insertion

struct Insertion::State {
  std::shared_ptr<Connection> connection;
  Statement statement;
  std::size_t columns;
};

Insertion::Insertion(Database& database, std::string_view table, const std::vector<std::string>& columns) {
  std::string names;
  std::string marks;
  for (const std::string& column : columns) {
    names += (names.empty() ? "" : ", ") + bracketed(unbracketed(column));
    marks += marks.empty() ? "?" : ", ?";
  }
  std::string sql = "insert into " + bracketed(unbracketed(table)) + " (" + names + ") values (" + marks + ")";
  m_state.reset(new State{database.m_connection, Statement(*database.m_connection, std::move(sql)), columns.size()});
}

Insertion::~Insertion() = default;

void Insertion::expect(std::size_t fieldCount) const {
  if (fieldCount != m_state->columns) m_state->connection->fail("a row to insert has another number of fields");
}

void Insertion::bind(int position, std::int64_t value) {
  m_state->statement.bindInteger(position, value);
}
void Insertion::bind(int position, double value) {
  m_state->statement.bindDouble(position, value);
}
void Insertion::bind(int position, std::string_view value) {
  m_state->statement.bindText(position, value);
}
void Insertion::bind(int position, const Blob& value) {
  m_state->statement.bindBlob(position, value.bytes);
}
void Insertion::bind(int position, Null) {
  m_state->statement.bindNull(position);
}
void Insertion::bind(int position, const Value& value) {
  m_state->statement.bind(position, value);
}

std::int64_t Insertion::finishRow() {
  try {
    m_state->statement.step();
  } catch (...) {
    m_state->statement.reset();
    throw;
  }
  m_state->statement.reset();
  return m_state->connection->lastRowid();
}

} // namespace platform
