#pragma once

#include "platform/dao/dao.hpp"

#include <atomic>
#include <compare>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace platform {

/// Which file a path meant when it was opened; another one there now means that the file was replaced.
struct FileIdentity {
  std::uint64_t device = 0;
  std::uint64_t node = 0;
  auto operator<=>(const FileIdentity&) const = default;
};

/// Of all connections of this process to a file: counts their commits, so that rows read ahead are known to be old.
using WriteCounter = std::shared_ptr<std::atomic<std::uint64_t>>;

enum class OpenMode : std::uint8_t {
  shared, ///< an existing database, WAL, synchronous NORMAL
  memory, ///< an empty one that no file has; the path is that of the file to be made of it
  settled ///< an existing database that nobody changes: read only, without locks and side files
};

enum class FieldKind : std::uint8_t { null, integer, number, bytes };

/// A statement lent by its connection; goes back reset, so that it holds no lock.
class Statement {
 public:
  Statement(Connection& connection, std::string sql);
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  /// Positions count from 1. Texts are not copied and must live until the reset.
  void bind(int position, const Value& value);
  void bind(const std::vector<Value>& values);
  void bindInteger(int position, std::int64_t value);
  void bindDouble(int position, double value);
  void bindText(int position, std::string_view value);
  void bindBlob(int position, std::string_view value);
  void bindNull(int position);
  int parameterCount() const;

  /// True while there is a row.
  bool step();
  void reset();

  int columnCount() const;
  std::string_view columnName(int column) const;
  FieldKind kind(int column) const;
  Value column(int column) const;
  std::int64_t integer(int column) const;
  double number(int column) const;
  /// Holds until the next step.
  std::string_view bytes(int column) const;
  std::string text(int column) const { return std::string(bytes(column)); }

 private:
  void check(int result) const;
  Connection& m_connection;
  std::string m_sql;
  sqlite3_stmt* m_statement = nullptr;
};

/// One SQLite handle with its prepared statements.
class Connection {
 public:
  Connection(std::string path, OpenMode mode, std::chrono::milliseconds busyTimeout, WriteCounter writes);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  const std::string& path() const { return m_path; }
  /// Of a database in memory: undoes the transaction and forgets the statements; `path` is that of the next file.
  void startAnew(std::string path);
  /// The bytes of the file that holds all that was written.
  using Image = std::unique_ptr<unsigned char, void (*)(void*)>;
  std::pair<Image, std::size_t> image();
  FileIdentity identity() const { return m_identity; }
  /// Runs a statement to its end.
  void run(const std::string& sql, const std::vector<Value>& parameters = {});
  bool inTransaction() const;
  /// Grows with each change that a row read earlier may not show.
  std::pair<std::uint64_t, std::int64_t> changes() const;
  std::int64_t changedRows() const;
  std::int64_t lastRowid() const;
  [[noreturn]] void fail(int code, const std::string& statement) const;
  [[noreturn]] void fail(const std::string& reason, const std::string& statement = {}) const;

 private:
  friend class Statement;
  sqlite3_stmt* lend(const std::string& sql);
  void giveBack(std::string sql, sqlite3_stmt* statement);
  void open(OpenMode mode, std::chrono::milliseconds busyTimeout);
  void probePages();
  void prepareWriting();
  void dropStatements() noexcept;
  void close() noexcept;

  std::string m_path;
  sqlite3* m_handle = nullptr;
  FileIdentity m_identity;
  WriteCounter m_writes;
  std::list<std::pair<std::string, sqlite3_stmt*>> m_idleStatements; ///< the last used in front
};

/// What lies at the path now; all zero for nothing.
FileIdentity fileIdentity(const std::string& path);

} // namespace platform
