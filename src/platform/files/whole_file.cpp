#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"

namespace platform {

namespace {
constexpr std::size_t kBuffer = 1 << 16;
} // namespace

WholeFile::WholeFile(std::string path)
    : m_path(std::move(path)), m_temporary(temporaryNameFor(m_path)),
      m_file(::open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666)) {
  if (m_file < 0) throw FileError(m_path, std::strerror(errno));
}

WholeFile::~WholeFile() {
  if (m_file >= 0) ::close(m_file);
  if (!m_temporary.empty()) ::unlink(m_temporary.c_str());
}

void WholeFile::write(std::string_view text) {
  m_buffer += text;
  if (m_buffer.size() >= kBuffer) flush();
}

void WholeFile::flush() {
  for (std::string_view rest = m_buffer; !rest.empty();) {
    const ssize_t written = ::write(m_file, rest.data(), rest.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) throw FileError(m_path, std::strerror(errno));
    rest.remove_prefix(static_cast<std::size_t>(written));
  }
  m_buffer.clear();
}

void WholeFile::finish() {
  flush();
  if (::close(std::exchange(m_file, -1)) != 0) throw FileError(m_path, std::strerror(errno));
  renameFile(m_temporary, m_path);
  m_temporary.clear();
}

} // namespace platform
