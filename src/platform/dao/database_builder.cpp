#include "platform/dao/connection.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace platform {

namespace {

/// Marks a closed database file as one in WAL mode: bytes 18 and 19 of the header, the write and read version. Its
/// first opening then has nothing to convert.
void markAsWal(const std::string& path) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  const char versions[] = {2, 2};
  const bool written = file >= 0 && ::pwrite(file, versions, sizeof versions, 18) == sizeof versions;
  const int number = errno;
  // The blocks get their places now, so that one commit of the file system's journal covers many files.
  if (written) ::sync_file_range(file, 0, 0, SYNC_FILE_RANGE_WRITE); // only makes a later sync faster
  if (file >= 0) ::close(file);
  if (!written) throw FileError(path, std::strerror(number));
}

/// Side files of a process that was killed hold commits of the old file; opening it once brings them in.
void settleOldFile(const std::string& path) {
  dbEngine().release(path);
  if (fileExists(path + "-wal") && fileExists(path)) {
    ignoring([&] { dbEngine().OpenDatabase(path); }); // a damaged file is about to be replaced
    dbEngine().release(path);
  }
  removeAll(path + "-wal");
  removeAll(path + "-shm");
}

} // namespace

DatabaseBuilder::DatabaseBuilder(std::string path) : m_path(std::move(path)), m_temporary(temporaryNameFor(m_path)) {
  try {
    m_connection = std::make_shared<Connection>(m_temporary, OpenMode::build, std::chrono::milliseconds(0), nullptr);
    m_connection->run("pragma application_id = 1413565006"); // "TARN"; an empty database gets its header, too
    m_connection->run("begin");
    m_database = std::make_unique<Database>(m_connection);
  } catch (...) {
    discard();
    throw;
  }
}

DatabaseBuilder::~DatabaseBuilder() {
  discard();
}

void DatabaseBuilder::seal() {
  if (!m_connection) throw DatabaseError(m_path, "", "was finished already");
  if (m_connection.use_count() > 2) { // ours and the database's
    throw DatabaseError(m_path, "", "is finished while an insertion or a record set is still there");
  }
  try {
    // Statistics of a few rows of each index keep SQLite from choosing an index with many equal keys (Size) over one
    // with few (Offset).
    m_connection->run("pragma analysis_limit = 400");
    m_connection->run("analyze");
    m_connection->run("commit");
    m_database.reset();
    m_connection.reset();
    markAsWal(m_temporary);
    m_step = Step::sealed;
  } catch (...) {
    discard();
    throw;
  }
}

void DatabaseBuilder::sync() {
  if (m_step == Step::open) seal();
  if (m_step != Step::sealed) return;
  try {
    syncFile(m_temporary);
    m_step = Step::synced;
  } catch (...) {
    discard();
    throw;
  }
}

void DatabaseBuilder::finish() {
  if (m_step == Step::finished) throw DatabaseError(m_path, "", "was finished already");
  sync();
  try {
    settleOldFile(m_path);
    renameFile(m_temporary, m_path);
    m_step = Step::finished;
  } catch (...) {
    discard();
    throw;
  }
}

void DatabaseBuilder::discard() noexcept {
  m_database.reset();
  m_connection.reset();
  m_step = Step::finished;
  ::unlink(m_temporary.c_str());
}

} // namespace platform
