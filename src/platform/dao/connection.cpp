#include "platform/dao/connection.hpp"

#include "platform/dao/sql_text.hpp"
#include "platform/runtime/error.hpp"

#include <sqlite3.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstring>

namespace platform {

namespace {

constexpr std::size_t kIdleStatements = 48;

std::string oneLine(std::string text) {
  std::replace_if(
      text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r' || c == '\t'; }, ' ');
  return text;
}

std::string reasonOf(sqlite3* handle, int code) {
  switch (code & 0xff) {
  case SQLITE_NOTADB:
    return "is not a database file";
  case SQLITE_CORRUPT:
    return std::string("is damaged: ") + sqlite3_errmsg(handle);
  case SQLITE_BUSY:
  case SQLITE_LOCKED:
    return "is locked by another program; close that program or try again";
  case SQLITE_READONLY:
    return "is read-only; make the file and its folder writable";
  case SQLITE_FULL:
    return "the disk is full";
  case SQLITE_CANTOPEN:
  case SQLITE_IOERR: {
    const int number = sqlite3_system_errno(handle);
    const std::string message = sqlite3_errmsg(handle);
    return number == 0 ? message : message + ": " + std::strerror(number);
  }
  default:
    return sqlite3_errmsg(handle);
  }
}

/// The path as a database name that promises that nobody changes the file.
std::string immutableName(const std::string& path) {
  std::string name = "file:";
  for (const char c : path) {
    if (c == '%')
      name += "%25";
    else if (c == '?')
      name += "%3f";
    else if (c == '#')
      name += "%23";
    else
      name += c;
  }
  return name + "?immutable=1";
}

} // namespace

FileIdentity fileIdentity(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return {};
  return {static_cast<std::uint64_t>(status.st_dev), static_cast<std::uint64_t>(status.st_ino)};
}

// ---- Statement

Statement::Statement(Connection& connection, std::string sql)
    : m_connection(connection), m_sql(std::move(sql)), m_statement(connection.lend(m_sql)) {}

Statement::~Statement() {
  reset();
  m_connection.giveBack(std::move(m_sql), m_statement);
}

void Statement::check(int result) const {
  if (result != SQLITE_OK) m_connection.fail(result, m_sql);
}

void Statement::bind(int position, const Value& value) {
  if (value.isNull()) {
    bindNull(position);
  } else if (const auto* text = value.getIf<std::string>()) {
    bindText(position, *text);
  } else if (const auto* number = value.getIf<double>()) {
    bindDouble(position, *number);
  } else {
    bindInteger(position, value.asInteger());
  }
}

void Statement::bind(const std::vector<Value>& values) {
  if (static_cast<std::size_t>(parameterCount()) != values.size()) {
    m_connection.fail("needs " + std::to_string(parameterCount()) + " parameters", m_sql);
  }
  for (std::size_t i = 0; i < values.size(); ++i)
    bind(static_cast<int>(i) + 1, values[i]);
}

void Statement::bindInteger(int position, std::int64_t value) {
  check(sqlite3_bind_int64(m_statement, position, value));
}

void Statement::bindDouble(int position, double value) {
  check(sqlite3_bind_double(m_statement, position, value));
}

void Statement::bindText(int position, std::string_view value) {
  // A null pointer would bind Null, and an empty view may hold one.
  const char* data = value.data() == nullptr ? "" : value.data();
  check(sqlite3_bind_text64(m_statement, position, data, value.size(), SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::bindBlob(int position, std::string_view value) {
  const char* data = value.data() == nullptr ? "" : value.data();
  check(sqlite3_bind_blob64(m_statement, position, data, value.size(), SQLITE_STATIC));
}

void Statement::bindNull(int position) {
  check(sqlite3_bind_null(m_statement, position));
}

int Statement::parameterCount() const {
  return sqlite3_bind_parameter_count(m_statement);
}

bool Statement::step() {
  const int result = sqlite3_step(m_statement);
  if (result == SQLITE_ROW) return true;
  if (result == SQLITE_DONE) return false;
  m_connection.fail(result, m_sql);
}

void Statement::reset() {
  sqlite3_reset(m_statement); // repeats the last error of step, which was told there
  sqlite3_clear_bindings(m_statement);
}

int Statement::columnCount() const {
  return sqlite3_column_count(m_statement);
}

std::string_view Statement::columnName(int column) const {
  return sqlite3_column_name(m_statement, column);
}

FieldKind Statement::kind(int column) const {
  switch (sqlite3_column_type(m_statement, column)) {
  case SQLITE_INTEGER:
    return FieldKind::integer;
  case SQLITE_FLOAT:
    return FieldKind::number;
  case SQLITE_NULL:
    return FieldKind::null;
  default:
    return FieldKind::bytes;
  }
}

Value Statement::column(int column) const {
  switch (kind(column)) {
  case FieldKind::integer:
    return Value(integer(column));
  case FieldKind::number:
    return Value(number(column));
  case FieldKind::bytes:
    return Value(bytes(column));
  case FieldKind::null:
    break;
  }
  return {};
}

std::int64_t Statement::integer(int column) const {
  return sqlite3_column_int64(m_statement, column);
}

double Statement::number(int column) const {
  return sqlite3_column_double(m_statement, column);
}

std::string_view Statement::bytes(int column) const {
  const void* data = sqlite3_column_blob(m_statement, column);
  const int size = sqlite3_column_bytes(m_statement, column);
  return {static_cast<const char*>(data), static_cast<std::size_t>(size)};
}

// ---- Connection

Connection::Connection(std::string path, OpenMode mode, std::chrono::milliseconds busyTimeout, WriteCounter writes)
    : m_path(std::move(path)), m_writes(std::move(writes)) {
  try {
    open(mode, busyTimeout);
  } catch (...) {
    close();
    throw;
  }
}

Connection::~Connection() {
  close();
}

void Connection::open(OpenMode mode, std::chrono::milliseconds busyTimeout) {
  struct stat status {};
  const bool inMemory = mode == OpenMode::memory;
  if (!inMemory) {
    if (::stat(m_path.c_str(), &status) != 0) fail(std::string("cannot be opened: ") + std::strerror(errno));
    if (!S_ISREG(status.st_mode)) fail("is not a database file");
  }
  const bool settled = mode == OpenMode::settled;
  const int flags = SQLITE_OPEN_NOMUTEX | (settled ? SQLITE_OPEN_READONLY | SQLITE_OPEN_URI : SQLITE_OPEN_READWRITE) |
                    (inMemory ? SQLITE_OPEN_CREATE | SQLITE_OPEN_MEMORY : 0);
  const std::string name = inMemory ? ":memory:" : settled ? immutableName(m_path) : m_path;
  const int result = sqlite3_open_v2(name.c_str(), &m_handle, flags, nullptr);
  if (result != SQLITE_OK) fail(result, {});
  sqlite3_extended_result_codes(m_handle, 1);
  sqlite3_busy_timeout(m_handle, static_cast<int>(busyTimeout.count()));
  // An unknown name in double quotes is an error, not a text.
  sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  if (!inMemory) {
    m_identity = fileIdentity(m_path);
    probePages();
  }
  if (settled) return;
  if (!inMemory) prepareWriting();
  run("pragma secure_delete = off");
  if (m_writes) {
    sqlite3_commit_hook(
        m_handle,
        [](void* writes) {
          static_cast<std::atomic<std::uint64_t>*>(writes)->fetch_add(1);
          return 0;
        },
        m_writes.get());
  }
}

void Connection::probePages() {
  // SQLite takes an empty file for an empty database; nobody made it as one.
  Statement pages(*this, "pragma page_count");
  if (!pages.step() || pages.integer(0) == 0) fail(SQLITE_NOTADB, {});
}

void Connection::prepareWriting() {
  if (sqlite3_db_readonly(m_handle, "main") == 1) fail(SQLITE_READONLY, {});
  Statement journal(*this, "pragma journal_mode = wal");
  if (!journal.step() || journal.text(0) != "wal") fail("cannot be opened for writing beside other programs");
  run("pragma synchronous = normal");
  // Copying the log into the file syncs twice and so costs more than the rows; at 16 MB is soon enough.
  Statement checkpoint(*this, "pragma wal_autocheckpoint = 4000");
  checkpoint.step();
}

void Connection::close() noexcept {
  if (m_handle == nullptr) return;
  dropStatements();
  if (m_identity != FileIdentity{} && fileIdentity(m_path) != m_identity) {
    // Another file stands at the path by now, and side files of that name are its own.
    sqlite3_db_config(m_handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  }
  sqlite3_close_v2(m_handle);
  m_handle = nullptr;
}

void Connection::startAnew(std::string path) {
  if (inTransaction()) run("rollback");
  dropStatements();
  m_path = std::move(path);
}

std::pair<Connection::Image, std::size_t> Connection::image() {
  sqlite3_int64 size = 0;
  Image bytes(sqlite3_serialize(m_handle, "main", &size, 0), &sqlite3_free);
  if (!bytes) fail(SQLITE_NOMEM, {});
  return {std::move(bytes), static_cast<std::size_t>(size)};
}

void Connection::dropStatements() noexcept {
  for (auto& [sql, statement] : m_idleStatements)
    sqlite3_finalize(statement);
  m_idleStatements.clear();
}

void Connection::run(const std::string& sql, const std::vector<Value>& parameters) {
  Statement statement(*this, sql);
  statement.bind(parameters);
  while (statement.step()) {
  }
}

bool Connection::inTransaction() const {
  return sqlite3_get_autocommit(m_handle) == 0;
}

std::pair<std::uint64_t, std::int64_t> Connection::changes() const {
  return {m_writes ? m_writes->load() : 0, sqlite3_total_changes64(m_handle)};
}

std::int64_t Connection::changedRows() const {
  return sqlite3_changes64(m_handle);
}

std::int64_t Connection::lastRowid() const {
  return sqlite3_last_insert_rowid(m_handle);
}

void Connection::fail(int code, const std::string& statement) const {
  throw DatabaseError(m_path, oneLine(statement), oneLine(reasonOf(m_handle, code)));
}

void Connection::fail(const std::string& reason, const std::string& statement) const {
  throw DatabaseError(m_path, oneLine(statement), reason);
}

sqlite3_stmt* Connection::lend(const std::string& sql) {
  for (auto entry = m_idleStatements.begin(); entry != m_idleStatements.end(); ++entry) {
    if (entry->first != sql) continue;
    sqlite3_stmt* statement = entry->second;
    m_idleStatements.erase(entry);
    return statement;
  }
  sqlite3_stmt* statement = nullptr;
  const char* tail = nullptr;
  const int result = sqlite3_prepare_v3(m_handle, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                                        &statement, &tail);
  if (result != SQLITE_OK) fail(result, sql);
  const std::size_t used = static_cast<std::size_t>(tail - sql.data());
  if (statement == nullptr || !sqlTokens(std::string_view(sql).substr(used)).empty()) {
    sqlite3_finalize(statement);
    fail(statement == nullptr ? "there is no statement" : "there is more than one statement", sql);
  }
  return statement;
}

void Connection::giveBack(std::string sql, sqlite3_stmt* statement) {
  m_idleStatements.emplace_front(std::move(sql), statement);
  if (m_idleStatements.size() <= kIdleStatements) return;
  sqlite3_finalize(m_idleStatements.back().second);
  m_idleStatements.pop_back();
}

} // namespace platform
