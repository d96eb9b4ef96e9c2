#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"

namespace platform {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const std::string& path, int number) {
  throw FileError(path, std::strerror(number));
}

/// An open file; the errors are told for `path`, the name that the user knows.
class Descriptor {
 public:
  Descriptor(int file, std::string path) : m_file(file), m_path(std::move(path)) {
    if (m_file < 0) fail(m_path, errno);
  }
  ~Descriptor() {
    if (m_file >= 0) ::close(m_file);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int get() const { return m_file; }

  void write(std::string_view contents) const {
    while (!contents.empty()) {
      const ssize_t written = ::write(m_file, contents.data(), contents.size());
      if (written < 0 && errno == EINTR) continue;
      if (written < 0) fail(m_path, errno);
      contents.remove_prefix(static_cast<std::size_t>(written));
    }
  }

  std::string read(std::uint64_t limit) const {
    struct stat status {};
    if (::fstat(m_file, &status) != 0) fail(m_path, errno);
    if (S_ISDIR(status.st_mode)) fail(m_path, EISDIR);
    std::string contents;
    std::size_t size = 0;
    // One byte more than the size tells the end without a second read.
    std::size_t room = static_cast<std::size_t>(std::max<off_t>(status.st_size, 0)) + 1;
    for (;;) {
      if (size > limit) throw FileError(m_path, "is larger than " + std::to_string(limit) + " bytes");
      contents.resize(size + room);
      const ssize_t count = ::read(m_file, contents.data() + size, room);
      if (count < 0 && errno == EINTR) continue;
      if (count < 0) fail(m_path, errno);
      size += static_cast<std::size_t>(count);
      if (count == 0) break;
      room = std::max<std::size_t>(contents.size() - size, 4096);
    }
    contents.resize(size);
    return contents;
  }

  void sync() const {
    if (::fsync(m_file) != 0) fail(m_path, errno);
  }

  /// Closing is the last chance of some file systems to say that the disk is full.
  void close() {
    const int file = std::exchange(m_file, -1);
    if (::close(file) != 0) fail(m_path, errno);
  }

 private:
  int m_file;
  std::string m_path;
};

} // namespace

std::string temporaryNameFor(const std::string& path) {
  static std::atomic<unsigned> number{0};
  return path + "." + std::to_string(::getpid()) + "-" + std::to_string(++number) + ".new";
}

void syncFile(const std::string& path) {
  Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC), path).sync();
}

std::string readText(const std::string& path, std::uint64_t limit) {
  return Descriptor(::open(path.c_str(), O_RDONLY | O_CLOEXEC), path).read(limit);
}

void WriteFileAtomically(const std::string& path, std::string_view contents) {
  struct stat old {};
  const bool replaces = ::stat(path.c_str(), &old) == 0;
  if (replaces && S_ISDIR(old.st_mode)) fail(path, EISDIR);
  std::error_code unresolved; // a link stays, and what it points to is replaced
  const fs::path resolved = fs::canonical(path, unresolved);
  const std::string target = unresolved ? path : resolved.string();
  const std::string temporary = temporaryNameFor(target);
  Descriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666), path);
  try {
    if (replaces && ::fchmod(file.get(), old.st_mode & 07777) != 0) fail(path, errno);
    file.write(contents);
    file.sync();
    file.close();
    if (::rename(temporary.c_str(), target.c_str()) != 0) fail(path, errno);
  } catch (...) {
    ::unlink(temporary.c_str());
    throw;
  }
}

} // namespace platform
