#include "platform/dao/connection.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"

#include <algorithm>

namespace platform {

namespace {

constexpr std::size_t kVersions = 18; // offset of the write and the read version in the head of a database file
constexpr unsigned char kWal = 2;

/// Side files of a process that was killed hold commits of the old file; opening it once brings them in.
void settleOldFile(const std::string& path) {
  dbEngine().release(path);
  if (fileExists(path + "-wal") && fileExists(path)) {
    ignoring([&] { dbEngine().OpenDatabase(path); }); // a damaged file is about to be replaced
    dbEngine().release(path);
  }
  for (const char* const side : {"-wal", "-shm"}) // as a rule there is none, and asking locks no folder
    if (fileExists(path + side)) removeAll(path + side);
}

} // namespace

DatabaseBuilder::DatabaseBuilder(std::string path)
    : m_path(std::move(path)), m_file(std::make_unique<WholeFile>(m_path)),
      m_connection(dbEngine().openInMemory(m_path)), m_database(std::make_unique<Database>(m_connection)) {
  m_connection->run("begin");
  m_connection->run("pragma application_id = 1413565006"); // "TARN"; an empty database gets its header, too
}

DatabaseBuilder::~DatabaseBuilder() = default;

void DatabaseBuilder::seal() {
  requireFile();
  if (m_step != Step::open) return;
  if (m_connection.use_count() > 2) { // ours and the database's
    throw DatabaseError(m_path, "", "is finished while an insertion or a record set is still there");
  }
  discardUnless([&] {
    if (!m_connection->inTransaction()) throw DatabaseError(m_path, "", "was undone by an earlier failure");
    // Statistics of a few rows of each index keep SQLite from choosing an index with many equal keys (Size) over one
    // with few (Offset).
    m_connection->run("pragma analysis_limit = 400");
    m_connection->run("analyze");
    const auto [bytes, size] = m_connection->image();
    m_database.reset();
    m_connection.reset();
    std::fill_n(bytes.get() + kVersions, 2, kWal); // or else the first opening would convert it
    m_file->write({reinterpret_cast<const char*>(bytes.get()), size});
    m_file->seal(WholeFile::Writeback::now);
    m_step = Step::sealed;
  });
}

void DatabaseBuilder::sync() {
  requireFile();
  seal();
  if (m_step == Step::synced) return;
  discardUnless([&] {
    m_file->sync();
    m_step = Step::synced;
  });
}

void DatabaseBuilder::finish() {
  sync();
  discardUnless([&] {
    settleOldFile(m_path);
    m_file->finish();
  });
  m_file.reset();
}

void DatabaseBuilder::requireFile() const {
  if (!m_file) throw DatabaseError(m_path, "", "was finished already");
}

void DatabaseBuilder::discardUnless(const std::function<void()>& done) {
  try {
    done();
  } catch (...) {
    m_database.reset();
    m_connection.reset();
    m_file.reset();
    throw;
  }
}

} // namespace platform
