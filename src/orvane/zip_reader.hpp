#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// Reads an archive as written by the workbook library: one volume, no encryption, parts below 4 GB.
class ZipReader {
 public:
  /// Reads the directory. Throws platform::FileError when the file is no whole archive.
  explicit ZipReader(std::string path);

  /// Names in the order of the directory.
  std::vector<std::string> names() const;
  /// Hands a part's contents on in pieces. Throws platform::FileError when it is not there, damaged, or has another
  /// check sum or size than the directory says.
  void read(std::string_view name, const std::function<void(std::string_view)>& take) const;

 private:
  struct Entry {
    std::string name;
    std::uint32_t method = 0, sum = 0, packed = 0, size = 0, at = 0;
  };
  std::string m_path;
  std::vector<Entry> m_entries;
};

} // namespace orvane
