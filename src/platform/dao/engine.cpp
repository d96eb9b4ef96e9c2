#include "platform/dao/connection.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"

#include <map>
#include <mutex>

#include <sqlite3.h>

namespace platform {

namespace {

constexpr std::size_t kOpenConnections = 64;
constexpr int kRefreshCache = 8;

} // namespace

/// The open connections. Closing may write and sync, so it is done outside the lock.
class DBEngine::Pool : public std::enable_shared_from_this<Pool> {
 public:
  using Connections = std::list<std::unique_ptr<Connection>>;

  std::shared_ptr<Connection> take(const std::string& path) {
    const FileIdentity identity = fileIdentity(path);
    std::unique_ptr<Connection> connection;
    Connections closing;
    WriteCounter writes;
    std::chrono::milliseconds timeout{};
    {
      const std::lock_guard lock(m_mutex);
      moveOut(closing, [&](const Connection& idle) { return idle.path() == path && idle.identity() != identity; });
      const auto found = std::find_if(m_idle.begin(), m_idle.end(), [&](const auto& idle) {
        return idle->identity() == identity && idle->path() == path;
      });
      if (found != m_idle.end()) {
        connection = std::move(*found);
        m_idle.erase(found);
      } else {
        while (!m_idle.empty() && m_idle.size() + m_used.size() >= kOpenConnections) {
          closing.splice(closing.end(), m_idle, std::prev(m_idle.end()));
        }
        writes = writeCounter(identity);
        timeout = m_busyTimeout;
      }
    }
    closing.clear();
    if (!connection) connection = std::make_unique<Connection>(path, OpenMode::shared, timeout, std::move(writes));
    const std::lock_guard lock(m_mutex);
    m_used.push_back(connection.get());
    return {connection.release(), [pool = shared_from_this()](Connection* used) { pool->giveBack(used); }};
  }

  std::shared_ptr<Connection> takeInMemory(const std::string& path) {
    std::unique_ptr<Connection> connection;
    {
      const std::lock_guard lock(m_mutex);
      if (!m_inMemory.empty()) {
        connection = std::move(m_inMemory.front());
        m_inMemory.pop_front();
      }
    }
    if (!connection)
      connection = std::make_unique<Connection>(path, OpenMode::memory, std::chrono::milliseconds(0), nullptr);
    connection->startAnew(path);
    return {connection.release(), [pool = shared_from_this()](Connection* used) { pool->keepInMemory(used); }};
  }

  void closeIdle() {
    Connections closing;
    const std::lock_guard lock(m_mutex);
    closing.swap(m_idle);
    closing.splice(closing.end(), m_inMemory);
  }

  void shutDown() {
    {
      const std::lock_guard lock(m_mutex);
      m_shutDown = true;
    }
    closeIdle();
  }

  void release(const std::string& path) {
    const FileIdentity identity = fileIdentity(path);
    Connections closing;
    const std::lock_guard lock(m_mutex);
    const auto same = [&](const Connection& connection) {
      return connection.path() == path || (identity != FileIdentity{} && connection.identity() == identity);
    };
    if (std::any_of(m_used.begin(), m_used.end(), [&](const Connection* used) { return same(*used); })) {
      throw DatabaseError(path, "", "is still in use by this program");
    }
    moveOut(closing, same);
  }

  void setBusyTimeout(std::chrono::milliseconds timeout) {
    const std::lock_guard lock(m_mutex);
    m_busyTimeout = timeout;
  }

  std::size_t open() const {
    const std::lock_guard lock(m_mutex);
    return m_idle.size() + m_used.size();
  }

 private:
  void giveBack(Connection* used) {
    std::unique_ptr<Connection> connection(used);
    const std::lock_guard lock(m_mutex);
    m_used.remove(used);
    // A connection in the midst of a transaction is a guard that was lost; closing undoes it.
    if (m_shutDown || connection->inTransaction() || m_idle.size() + m_used.size() >= kOpenConnections) return;
    m_idle.push_front(std::move(connection));
  }

  // Opening a database in memory takes longer than writing a small one.
  void keepInMemory(Connection* used) {
    std::unique_ptr<Connection> connection(used);
    // Outside a transaction something was written that cannot be undone.
    if (!connection->inTransaction() || !ignoring([&] { connection->startAnew({}); })) return;
    const std::lock_guard lock(m_mutex);
    if (!m_shutDown) m_inMemory.push_front(std::move(connection));
  }

  template<class Condition>
  void moveOut(Connections& closing, Condition condition) {
    for (auto at = m_idle.begin(); at != m_idle.end();) {
      const auto next = std::next(at);
      if (condition(**at)) closing.splice(closing.end(), m_idle, at);
      at = next;
    }
  }

  WriteCounter writeCounter(const FileIdentity& identity) {
    std::erase_if(m_writes, [](const auto& entry) { return entry.second.expired(); });
    WriteCounter counter = m_writes[identity].lock();
    if (!counter) {
      counter = std::make_shared<std::atomic<std::uint64_t>>(0);
      m_writes[identity] = counter;
    }
    return counter;
  }

  mutable std::mutex m_mutex;
  Connections m_idle;     ///< the last used in front
  Connections m_inMemory; ///< the idle ones of builders
  std::list<Connection*> m_used;
  std::map<FileIdentity, std::weak_ptr<std::atomic<std::uint64_t>>> m_writes;
  std::chrono::milliseconds m_busyTimeout{5000};
  bool m_shutDown = false;
};

DBEngine::DBEngine() : m_pool(std::make_shared<Pool>()) {
  // Counting what is allocated takes a lock of the whole process each time.
  sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
}

DBEngine::~DBEngine() {
  m_pool->shutDown();
}

std::shared_ptr<Database> DBEngine::OpenDatabase(const std::string& path) {
  return std::make_shared<Database>(m_pool->take(path));
}

std::shared_ptr<Connection> DBEngine::openInMemory(const std::string& path) {
  return m_pool->takeInMemory(path);
}

std::shared_ptr<Database> DBEngine::OpenSettled(const std::string& path) {
  release(path); // the log of a connection of our own is in the file then
  if (fileExists(path + "-wal") || fileExists(path + "-journal")) return OpenDatabase(path);
  return std::make_shared<Database>(
      std::make_shared<Connection>(path, OpenMode::settled, std::chrono::milliseconds(0), nullptr));
}

void DBEngine::Idle(int action) {
  if (action == kRefreshCache) m_pool->closeIdle();
}

void DBEngine::release(const std::string& path) {
  m_pool->release(path);
}

void DBEngine::setBusyTimeout(std::chrono::milliseconds timeout) {
  m_pool->setBusyTimeout(timeout);
}

std::size_t DBEngine::openConnections() const {
  return m_pool->open();
}

DBEngine& dbEngine() {
  static DBEngine engine;
  return engine;
}

} // namespace platform
