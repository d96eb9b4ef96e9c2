#pragma once

#include <string>

namespace orvane {

/// A lock of a folder between processes, held while the object lives. The system lets go of the lock of a dead process.
class FolderLock {
 public:
  enum class Mode { shared, exclusive };
  /// `file` is made when missing; who holds it exclusively is written into it. When another process is in the way:
  /// platform::Error in one line that names `what`, the holder's process id and since when.
  FolderLock(const std::string& file, Mode mode, const std::string& what);
  ~FolderLock();
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int m_descriptor = -1;
};

} // namespace orvane
