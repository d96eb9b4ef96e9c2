#include "orvane/zip_reader.hpp"

#include <zlib.h>

#include <array>
#include <fstream>

#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"

namespace orvane {

namespace {

constexpr std::size_t kEndSize = 22, kEntrySize = 46, kHeadSize = 30;
constexpr std::uint32_t kEndMark = 0x06054b50, kEntryMark = 0x02014b50, kHeadMark = 0x04034b50;
constexpr std::uint32_t kStored = 0, kDeflated = 8;
constexpr std::size_t kLongestComment = 65535;
constexpr std::size_t kPiece = 65536;

[[noreturn]] void damaged(const std::string& path, const std::string& what) {
  throw platform::FileError(path, "is no whole archive: " + what);
}

std::uint32_t numberAt(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t i = size; i-- > 0;)
    number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
  return number;
}

std::string bytesAt(std::ifstream& file, const std::string& path, std::uint64_t at, std::size_t count) {
  std::string bytes(count, '\0');
  file.seekg(static_cast<std::streamoff>(at));
  if (!file.read(bytes.data(), static_cast<std::streamsize>(count))) damaged(path, "it ends early");
  return bytes;
}

// One part on its way out of the archive.
class Inflater {
 public:
  Inflater() { m_ready = inflateInit2(&m_stream, -MAX_WBITS) == Z_OK; }
  ~Inflater() {
    if (m_ready) inflateEnd(&m_stream);
  }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;

  // False when the bytes are no deflated data.
  bool feed(std::string& packed, const std::function<void(std::string_view)>& take) {
    m_stream.next_in = reinterpret_cast<Bytef*>(packed.data());
    m_stream.avail_in = static_cast<uInt>(packed.size());
    std::array<char, kPiece> room;
    do {
      m_stream.next_out = reinterpret_cast<Bytef*>(room.data());
      m_stream.avail_out = static_cast<uInt>(room.size());
      const int status = m_ready ? inflate(&m_stream, Z_NO_FLUSH) : Z_MEM_ERROR;
      if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR) return false;
      take({room.data(), room.size() - m_stream.avail_out});
      if (status != Z_OK) break;
    } while (m_stream.avail_in > 0 || m_stream.avail_out == 0);
    return true;
  }

 private:
  z_stream m_stream{};
  bool m_ready = false;
};

} // namespace

ZipReader::ZipReader(std::string path) : m_path(std::move(path)) {
  std::ifstream file(m_path, std::ios::binary);
  const std::uint64_t size = platform::fileSize(m_path);
  const std::uint64_t tail = std::min<std::uint64_t>(size, kEndSize + kLongestComment);
  const std::string end = bytesAt(file, m_path, size - tail, tail);
  const auto mark = end.rfind("PK\x05\x06");
  if (mark == std::string::npos || mark + kEndSize > end.size() || numberAt(end, mark, 4) != kEndMark)
    damaged(m_path, "its directory is missing");
  const std::uint32_t count = numberAt(end, mark + 10, 2);
  const std::string directory = bytesAt(file, m_path, numberAt(end, mark + 16, 4), numberAt(end, mark + 12, 4));
  std::size_t at = 0;
  for (std::uint32_t i = 0; i < count; ++i) {
    if (at + kEntrySize > directory.size() || numberAt(directory, at, 4) != kEntryMark)
      damaged(m_path, "its directory is broken");
    const std::uint32_t nameSize = numberAt(directory, at + 28, 2);
    m_entries.push_back({directory.substr(at + kEntrySize, nameSize), numberAt(directory, at + 10, 2),
                         numberAt(directory, at + 16, 4), numberAt(directory, at + 20, 4),
                         numberAt(directory, at + 24, 4), numberAt(directory, at + 42, 4)});
    at += kEntrySize + nameSize + numberAt(directory, at + 30, 2) + numberAt(directory, at + 32, 2);
  }
}

std::vector<std::string> ZipReader::names() const {
  std::vector<std::string> names;
  for (const Entry& entry : m_entries)
    names.push_back(entry.name);
  return names;
}

void ZipReader::read(std::string_view name, const std::function<void(std::string_view)>& take) const {
  const auto entry =
      std::find_if(m_entries.begin(), m_entries.end(), [&](const auto& one) { return one.name == name; });
  if (entry == m_entries.end()) damaged(m_path, "it has no " + std::string(name));
  std::ifstream file(m_path, std::ios::binary);
  const std::string head = bytesAt(file, m_path, entry->at, kHeadSize);
  if (numberAt(head, 0, 4) != kHeadMark || (entry->method != kStored && entry->method != kDeflated))
    damaged(m_path, entry->name);
  file.seekg(numberAt(head, 26, 2) + numberAt(head, 28, 2), std::ios::cur);
  std::uint64_t size = 0;
  uLong sum = crc32(0, nullptr, 0);
  const auto pass = [&](std::string_view piece) {
    size += piece.size();
    sum = crc32(sum, reinterpret_cast<const Bytef*>(piece.data()), static_cast<uInt>(piece.size()));
    take(piece);
  };
  Inflater inflater;
  for (std::uint32_t left = entry->packed; left > 0;) {
    std::string packed(std::min<std::size_t>(left, kPiece), '\0');
    if (!file.read(packed.data(), static_cast<std::streamsize>(packed.size()))) damaged(m_path, "it ends early");
    left -= static_cast<std::uint32_t>(packed.size());
    if (entry->method == kStored)
      pass(packed);
    else if (!inflater.feed(packed, pass))
      damaged(m_path, entry->name);
  }
  if (size != entry->size || sum != entry->sum) damaged(m_path, entry->name);
}

} // namespace orvane
