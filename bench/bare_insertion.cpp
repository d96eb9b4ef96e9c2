#include "bench/bare_insertion.hpp"

#include <filesystem>

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include "platform/runtime/error.hpp"

namespace bench {

namespace {

void check(sqlite3* database, int status) {
  if (status != SQLITE_OK && status != SQLITE_DONE && status != SQLITE_ROW)
    throw platform::Error(sqlite3_errmsg(database));
}

void run(sqlite3* database, const char* sql) {
  check(database, sqlite3_exec(database, sql, nullptr, nullptr, nullptr));
}

class Rows {
 public:
  Rows(sqlite3* database, const char* sql) : m_database(database) {
    check(database, sqlite3_prepare_v2(database, sql, -1, &m_statement, nullptr));
  }
  ~Rows() { sqlite3_finalize(m_statement); }
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;
  Rows& text(const std::string_view value) {
    check(m_database,
          sqlite3_bind_text(m_statement, ++m_at, value.data(), static_cast<int>(value.size()), SQLITE_STATIC));
    return *this;
  }
  Rows& number(std::int64_t value) {
    check(m_database, sqlite3_bind_int64(m_statement, ++m_at, value));
    return *this;
  }
  void insert() {
    check(m_database, sqlite3_step(m_statement));
    check(m_database, sqlite3_reset(m_statement));
    m_at = 0;
  }

 private:
  sqlite3* m_database;
  sqlite3_stmt* m_statement = nullptr;
  int m_at = 0;
};

} // namespace

void insertBare(const cobol::Analysis& analysis, const std::string& file) {
  const std::string temporary = file + ".new";
  std::filesystem::remove(temporary);
  sqlite3* database = nullptr;
  check(database, sqlite3_open(temporary.c_str(), &database));
  run(database, "pragma journal_mode=off; pragma synchronous=off; begin;"
                "create table Constructs(KVID text, Name text, Offset integer, Size integer, Kind text, Level integer, "
                "Shape integer);"
                "create table Relationships(KVID1 text, KVID2 text, RelID text)");
  {
    Rows rows(database, "insert into Constructs values(?,?,?,?,?,?,?)");
    for (const auto& c : analysis.constructs)
      rows.text(c.kvid)
          .text(c.name)
          .number(c.offset)
          .number(c.size)
          .text("item")
          .number(c.level)
          .number(c.size)
          .insert();
  }
  {
    Rows rows(database, "insert into Relationships values(?,?,?)");
    const auto& kinds = cobol::relationKinds();
    for (const auto& r : analysis.relationships)
      rows.text(analysis.constructs[r.from].kvid)
          .text(analysis.constructs[r.to].kvid)
          .text(kinds[static_cast<std::size_t>(r.kind)].name)
          .insert();
  }
  run(database, "create index ID on Constructs(KVID); create index IdxKVID1 on Relationships(KVID1); create index "
                "IdxKVID2 on Relationships(KVID2);"
                "create index IdxOffset on Constructs(Offset); create index IdxSize on Constructs(Size); commit");
  sqlite3_close(database);
  const int handle = ::open(temporary.c_str(), O_RDONLY | O_CLOEXEC);
  ::fsync(handle);
  ::close(handle);
  std::filesystem::rename(temporary, file);
}

} // namespace bench
