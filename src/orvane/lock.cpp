#include "orvane/lock.hpp"

#include <cerrno>
#include <cstring>
#include <ctime>

#include <fcntl.h>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <sys/file.h>
#include <unistd.h>

#include "platform/runtime/error.hpp"

namespace orvane {

namespace {

std::string holderIn(int descriptor) {
  char text[128] = {};
  const ssize_t length = ::pread(descriptor, text, sizeof text - 1, 0);
  return length > 0 ? std::string(text, static_cast<std::size_t>(length)) : std::string("another process");
}

} // namespace

FolderLock::FolderLock(const std::string& file, Mode mode, const std::string& what) {
  m_descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (m_descriptor < 0) throw platform::FileError(file, std::strerror(errno));
  const int operation = (mode == Mode::exclusive ? LOCK_EX : LOCK_SH) | LOCK_NB;
  if (::flock(m_descriptor, operation) != 0) {
    const std::string holder = holderIn(m_descriptor);
    ::close(m_descriptor);
    throw platform::Error(fmt::format("{} is in use by {}; wait for it, or end it", what, holder));
  }
  const bool emptied = ::ftruncate(m_descriptor, 0) == 0; // who is named there has let go
  if (mode == Mode::shared) return;
  const std::string holder =
      fmt::format("process {} since {:%Y-%m-%d %H:%M:%S}", ::getpid(), fmt::localtime(std::time(nullptr)));
  if (emptied) static_cast<void>(::pwrite(m_descriptor, holder.data(), holder.size(), 0) > 0);
}

FolderLock::~FolderLock() {
  ::close(m_descriptor);
}

} // namespace orvane
