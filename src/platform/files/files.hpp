#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Files and folders. Paths are native unless said otherwise. Whatever fails is a FileError with the path and the
/// reason.
namespace platform {

enum class CaseRule : std::uint8_t { exact, ignore };

/// The one place where a path with backslashes becomes a native one. `basePath` is native already and may be empty; a
/// path that begins with a slash or backslash is taken below it all the same. With CaseRule::ignore each part that is
/// not there as written is looked up without regard to ASCII case (the first in sorted order); parts that are nowhere
/// stay as written.
std::string nativePath(const std::string& basePath, std::string_view backslashPath, CaseRule rule = CaseRule::exact);
/// The same for a path that is whole: only its separators change.
std::string nativePath(std::string_view backslashPath);

bool fileExists(const std::string& path);
bool folderExists(const std::string& path);
/// Makes the last level only; a folder that is there already or a missing parent is an error.
void createFolder(const std::string& path);
/// Makes all missing levels; a folder that is there already is fine.
void createFolders(const std::string& path);
/// A file, or a folder with all below it; what is missing already is fine.
void removeAll(const std::string& path);
/// Renames within a file system, over an existing file.
void renameFile(const std::string& from, const std::string& to);
/// Makes sure that the contents are on the disk.
void syncFile(const std::string& path);

std::uint64_t fileSize(const std::string& path);
std::chrono::system_clock::time_point modificationTime(const std::string& path);

/// The file's bytes as they are. More than `limit` bytes is an error.
std::string readText(const std::string& path, std::uint64_t limit = std::uint64_t{1} << 31);

/// Reads a text file line by line, without its line endings (LF or CR LF). The last line needs none.
class LineReader {
 public:
  explicit LineReader(const std::string& path);
  /// Nothing at the end.
  std::optional<std::string> next();

 private:
  std::string m_path;
  std::ifstream m_stream;
};

/// A name in the same folder that no other process or call has, ending in ".new".
std::string temporaryNameFor(const std::string& path);

/// Replaces a file as a whole: the contents go to a temporary file in the same folder, to the disk, and are then
/// renamed into place with the permissions of the file that was there. A link stays and leads to the new file. On
/// failure the old file stays as it was and nothing else is left.
void WriteFileAtomically(const std::string& path, std::string_view contents);

/// Writes a file piece by piece into a temporary file beside it; `finish` renames that into place, and without it
/// nothing stays. It is synced to the disk only where `sync` is called: the rest can be made again.
class WholeFile {
 public:
  explicit WholeFile(std::string path);
  ~WholeFile();
  WholeFile(const WholeFile&) = delete;
  WholeFile& operator=(const WholeFile&) = delete;
  void write(std::string_view text);
  /// Ends the writing. `now` sends the file on its way to the disk, so that `sync` waits less.
  enum class Writeback : std::uint8_t { later, now };
  void seal(Writeback writeback = Writeback::later);
  /// Seals, and waits until the contents are on the disk. Any thread will do.
  void sync();
  /// Seals, and puts the file in its place.
  void finish();

 private:
  void flush();
  void put(std::string_view text);
  std::string m_path;
  std::string m_temporary;
  std::string m_buffer;
  int m_file;
};

/// The files below a folder by relative native path in sorted order; folders and hidden names (leading dot) are left
/// out. Links to folders are followed, each real folder once.
std::vector<std::string> walkFiles(const std::string& folder);

/// A folder of its own below the system's temporary folder, gone with all below it when the object goes.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::string& path() const { return m_path; }
  std::string file(std::string_view name) const { return m_path + "/" + std::string(name); }

 private:
  std::string m_path;
};

} // namespace platform
