#pragma once

#include "platform/runtime/value.hpp"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// Databases in the vocabulary of DAO over one SQLite file each. Every failure of this header is a DatabaseError with
/// the file, the statement and SQLite's reason; an unknown column is a KeyError, and a new file that cannot be written
/// a FileError.
///
/// Objects are thread-compatible: a database and its record sets belong to one thread at a time; the engine may be used
/// from all. While a database is open no other code of this process may open and close its file: POSIX would drop the
/// locks.
namespace platform {

class Connection;
class WholeFile;

/// A walk over rows. It opens on its first row. No lock and no snapshot is held between two calls, so any connection
/// may write in between. Three kinds:
/// - a table (`OpenRecordset("Constructs")`): all rows by rowid as they are when reached, with Index and Seek;
/// - a query over one table without grouping: which rows and their order are fixed at opening (by rowid where nothing
/// else
///   is asked), the values are read when a row is reached;
/// - any other query and `rowsRecordset`: rows and values as of opening, read only.
/// Edit, setField and Update work on the first two.
class Recordset {
 public:
  virtual ~Recordset() = default;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  virtual bool Eof() const = 0;
  /// Drops assignments that were not updated. At the end: DatabaseError.
  virtual void MoveNext() = 0;
  /// The true number of rows: of a table now, else as of opening.
  virtual std::int64_t RecordCount() = 0;
  virtual std::vector<std::string> fieldNames() const = 0;
  /// The column of that name in the current row, without regard to case and brackets; the first where a name stands
  /// twice. Binary fields are texts of bytes.
  virtual Value Field(std::string_view name) const = 0;

  /// Chooses the index that Seek uses; it must exist and be of one column.
  virtual void setIndex(std::string_view name) = 0;
  /// `comparison` is "=". Makes the first row with that key current, read anew; letters compare without regard to case.
  virtual void Seek(std::string_view comparison, const Value& key) = 0;
  /// The last Seek found nothing; there is no current row then.
  virtual bool NoMatch() const = 0;

  /// Reads the current row anew and opens it for assignments.
  virtual void Edit() = 0;
  virtual void setField(std::string_view name, const Value& value) = 0;
  /// Writes the assigned fields of the current row, and only those, at once.
  virtual void Update() = 0;

 protected:
  Recordset() = default;
};

/// What a column of a table of ours holds. A key is a text that compares without regard to case, everywhere.
enum class ColumnKind : std::uint8_t { key, text, integer, number, blob };

struct Column {
  std::string name; ///< without brackets
  ColumnKind kind = ColumnKind::text;
};

/// Bytes for a binary field; must live until the row is written.
struct Blob {
  std::string_view bytes;
};

class Database;

/// A prepared insertion: `Insertion rows(database, "Constructs", {"KVID", "Name"}); rows.row("a1", "CUST-NO");`.
/// As fast as SQLite goes when a Savepoint or a DatabaseBuilder is around it.
class Insertion {
 public:
  Insertion(Database& database, std::string_view table, const std::vector<std::string>& columns);
  ~Insertion();
  Insertion(const Insertion&) = delete;
  Insertion& operator=(const Insertion&) = delete;

  /// One row, in the order of the columns: integers, doubles, texts, Blob, Null, Value, or std::optional of these.
  /// Returns its rowid.
  template<class... Fields>
  std::int64_t row(const Fields&... fields) {
    expect(sizeof...(fields));
    int position = 0;
    (bindField(++position, fields), ...);
    return finishRow();
  }

 private:
  struct State;
  template<class T>
  void bindField(int position, const T& field) {
    if constexpr (std::is_enum_v<T>) {
      bind(position, static_cast<std::int64_t>(field));
    } else if constexpr (std::is_integral_v<T>) {
      bind(position, static_cast<std::int64_t>(field));
    } else if constexpr (std::is_floating_point_v<T>) {
      bind(position, static_cast<double>(field));
    } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
      bind(position, std::string_view(field));
    } else {
      bind(position, field);
    }
  }
  template<class T>
  void bindField(int position, const std::optional<T>& field) {
    if (field) {
      bindField(position, *field);
    } else {
      bind(position, Null{});
    }
  }
  void expect(std::size_t fieldCount) const;
  void bind(int position, std::int64_t value);
  void bind(int position, double value);
  void bind(int position, std::string_view value);
  void bind(int position, const Blob& value);
  void bind(int position, Null value);
  void bind(int position, const Value& value);
  std::int64_t finishRow();

  std::unique_ptr<State> m_state;
};

/// All or nothing for what stands between its making and `commit`; without it everything is undone. May nest. Must not
/// outlive the call that makes it.
class Savepoint {
 public:
  explicit Savepoint(Database& database);
  ~Savepoint();
  Savepoint(const Savepoint&) = delete;
  Savepoint& operator=(const Savepoint&) = delete;
  void commit();

 private:
  std::shared_ptr<Connection> m_connection;
  std::string m_name; ///< empty: the outermost, a transaction
  bool m_open = true;
};

/// One connection to a database file. Give it back by letting go of it and of its record sets.
class Database {
 public:
  Database(std::shared_ptr<Connection> connection);

  /// One statement in the dialect of the component: bracketed names; `create [unique] index X on T(C)` and `drop index
  /// X on T`, where X is unique within its table; `alter table T drop column C`, which drops the indexes that mention C
  /// as well. `parameters` stand for `?` in their order.
  void Execute(const std::string& sql, const std::vector<Value>& parameters = {});
  /// A bare table name, or a select.
  std::unique_ptr<Recordset> OpenRecordset(const std::string& tableOrSelect, const std::vector<Value>& parameters = {});

  bool hasTable(std::string_view name) const;
  bool hasField(std::string_view table, std::string_view name) const;
  bool hasIndex(std::string_view table, std::string_view name) const;
  /// In the order of the table. A missing table is a DatabaseError.
  std::vector<std::string> fieldNames(std::string_view table) const;
  /// Makes a table whose key columns compare without regard to case.
  void createTable(std::string_view name, const std::vector<Column>& columns);
  const std::string& path() const;

 private:
  friend class Insertion;
  friend class Savepoint;
  std::shared_ptr<Connection> m_connection;
};

/// Opens databases. Connections stay open between uses, at most 64 in all, and are shared by file.
class DBEngine {
 public:
  DBEngine();
  ~DBEngine();
  DBEngine(const DBEngine&) = delete;
  DBEngine& operator=(const DBEngine&) = delete;

  /// A connection of its own to an existing database, at a native path, read-write and in WAL mode. Creates nothing; a
  /// file that is missing, no database, damaged, locked for longer than the busy timeout, or read-only is told at once.
  std::shared_ptr<Database> OpenDatabase(const std::string& path);
  /// For a reading of a database that no process changes meanwhile, which the caller knows: read only, without locks
  /// and side files, so much cheaper. What a killed process left in a log beside the file is seen, too.
  std::shared_ptr<Database> OpenSettled(const std::string& path);
  /// 8 (dbRefreshCache) closes the connections that nobody uses; other actions do nothing.
  void Idle(int action);
  /// The end of a command: closes all unused connections, so their files are whole and have no side files.
  void settle() { Idle(8); }
  /// Closes all connections to that file, so that it can be replaced or removed. One still in use is a DatabaseError.
  void release(const std::string& path);
  /// How long a statement waits for another process; 5 s at the start. Holds for databases opened from then on.
  void setBusyTimeout(std::chrono::milliseconds timeout);
  /// Connections that are open now, used or not.
  std::size_t openConnections() const;

 private:
  friend class DatabaseBuilder;
  class Pool;
  std::shared_ptr<Connection> openInMemory(const std::string& path);
  std::shared_ptr<Pool> m_pool;
};

/// The engine of the process.
DBEngine& dbEngine();

/// Writes a new database whole: rows go to memory, and all of it then to a temporary file beside `path`; `finish` syncs
/// that once and renames it into place, over an older file with its side files. Without `finish` nothing stays. Create
/// the indexes after the rows. Insertions and record sets must be gone before `seal` or `finish`.
class DatabaseBuilder {
 public:
  explicit DatabaseBuilder(std::string path);
  ~DatabaseBuilder();
  DatabaseBuilder(const DatabaseBuilder&) = delete;
  DatabaseBuilder& operator=(const DatabaseBuilder&) = delete;

  Database& database() { return *m_database; }
  /// The steps of `finish`, for who finishes several: `seal` writes the file and sends it on its way to the disk;
  /// `sync` waits until it is there, which for a second file is quick while nothing else was written. Both may be done
  /// by another thread than the next step.
  void seal();
  void sync();
  /// Does the steps that are not done yet, then puts the file in its place.
  void finish();

 private:
  void discardUnless(const std::function<void()>& done);
  void requireFile() const;
  std::string m_path;
  std::unique_ptr<WholeFile> m_file; ///< null after a failure, and at the end
  enum class Step { open, sealed, synced };
  Step m_step = Step::open;
  std::shared_ptr<Connection> m_connection;
  std::unique_ptr<Database> m_database;
};

/// A record set over rows in memory, read only. Each row has a value per column.
std::unique_ptr<Recordset> rowsRecordset(std::vector<std::string> columns, std::vector<std::vector<Value>> rows);

} // namespace platform
