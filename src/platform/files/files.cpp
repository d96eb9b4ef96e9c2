#include "platform/files/files.hpp"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>

#include "platform/runtime/error.hpp"

namespace platform {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& path, int number) {
  throw FileError(path, std::strerror(number));
}

void check(const std::string& path, const std::error_code& error) {
  if (error) throw FileError(path, error.message());
}

struct stat statusOf(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) fail(path, errno);
  return status;
}

} // namespace

bool fileExists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && !S_ISDIR(status.st_mode);
}

bool folderExists(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

void createFolder(const std::string& path) {
  if (::mkdir(path.c_str(), 0777) != 0) fail(path, errno);
}

void createFolders(const std::string& path) {
  std::error_code error;
  fs::create_directories(path, error);
  check(path, error);
  if (!folderExists(path)) fail(path, ENOTDIR);
}

void removeAll(const std::string& path) {
  std::error_code error;
  fs::remove_all(path, error);
  check(path, error);
}

void renameFile(const std::string& from, const std::string& to) {
  if (::rename(from.c_str(), to.c_str()) != 0) fail(to, errno);
}

std::uint64_t fileSize(const std::string& path) {
  return static_cast<std::uint64_t>(statusOf(path).st_size);
}

std::chrono::system_clock::time_point modificationTime(const std::string& path) {
  const timespec time = statusOf(path).st_mtim;
  const auto since = std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
  return std::chrono::system_clock::time_point(std::chrono::duration_cast<std::chrono::system_clock::duration>(since));
}

LineReader::LineReader(const std::string& path) : m_path(path) {
  if (folderExists(path)) fail(path, EISDIR);
  errno = 0;
  m_stream.open(path, std::ios::binary);
  if (!m_stream) fail(path, errno == 0 ? EIO : errno);
}

std::optional<std::string> LineReader::next() {
  std::string line;
  if (!std::getline(m_stream, line)) {
    if (m_stream.bad()) fail(m_path, EIO);
    return std::nullopt;
  }
  if (line.ends_with('\r')) line.pop_back();
  return line;
}

std::vector<std::string> walkFiles(const std::string& folder) {
  if (!folderExists(folder)) fail(folder, fileExists(folder) ? ENOTDIR : ENOENT);
  std::vector<std::string> files;
  std::set<std::pair<dev_t, ino_t>> seen; // links may lead in circles
  std::vector<std::string> open = {""};
  while (!open.empty()) {
    const std::string below = std::move(open.back());
    open.pop_back();
    const std::string path = folder + "/" + below;
    const struct stat status = statusOf(path);
    if (!seen.emplace(status.st_dev, status.st_ino).second) continue;
    std::error_code error;
    for (fs::directory_iterator entry(path, error), end; !error && entry != end; entry.increment(error)) {
      const std::string name = entry->path().filename().string();
      if (name.starts_with('.')) continue;
      if (folderExists(path + name)) {
        open.push_back(below + name + "/");
      } else if (fileExists(path + name)) {
        files.push_back(below + name);
      }
    }
    check(path, error);
  }
  std::sort(files.begin(), files.end());
  return files;
}

TemporaryFolder::TemporaryFolder() : m_path((fs::temp_directory_path() / "tarnsift-XXXXXX").string()) {
  if (::mkdtemp(m_path.data()) == nullptr) fail(m_path, errno);
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code error; // a leftover in the temporary folder is no failure of what was done in it
  fs::remove_all(m_path, error);
}

} // namespace platform
