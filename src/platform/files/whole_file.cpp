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
  if (m_buffer.empty() && text.size() >= kBuffer) return put(text);
  m_buffer += text;
  if (m_buffer.size() >= kBuffer) flush();
}

void WholeFile::flush() {
  put(m_buffer);
  m_buffer.clear();
}

void WholeFile::put(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(m_file, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) throw FileError(m_path, std::strerror(errno));
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

void WholeFile::seal(Writeback writeback) {
  if (m_file < 0) return;
  flush();
  // The blocks get their places now, so that one commit of the file system's journal covers many files.
  if (writeback == Writeback::now) ::sync_file_range(m_file, 0, 0, SYNC_FILE_RANGE_WRITE); // a hint, which may fail
  if (::close(std::exchange(m_file, -1)) != 0) throw FileError(m_path, std::strerror(errno));
}

void WholeFile::sync() {
  seal();
  syncFile(m_temporary);
}

void WholeFile::finish() {
  seal();
  renameFile(m_temporary, m_path);
  m_temporary.clear();
}

} // namespace platform
