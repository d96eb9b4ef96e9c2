#include "cobol/source_text.hpp"

#include "cobol/characters.hpp"

#include <array>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <iconv.h>
#include <sys/stat.h>
#include <unistd.h>

#include "cobol/interner.hpp"

namespace cobol {
namespace {

constexpr std::size_t kFileLimit = std::size_t(1) << 30;
constexpr std::size_t kSample = 8192;
constexpr std::size_t kRecord = 80;
constexpr unsigned char kEbcdicBlank = 0x40;
constexpr unsigned char kEbcdicNewLine = 0x15;
constexpr unsigned char kEbcdicLineFeed = 0x25;

unsigned char byteOf(char c) {
  return static_cast<unsigned char>(c);
}

bool isUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const unsigned char lead = byteOf(text[i]);
    const std::size_t more = lead < 0x80   ? 0
                             : lead < 0xC2 ? 9
                             : lead < 0xE0 ? 1
                             : lead < 0xF0 ? 2
                             : lead < 0xF5 ? 3
                                           : 9;
    if (more == 9 || i + more >= text.size() + (more == 0)) return false;
    for (std::size_t k = 1; k <= more; ++k) {
      if ((byteOf(text[i + k]) & 0xC0) != 0x80) return false;
    }
    i += more + 1;
  }
  return true;
}

std::string fromLatin1(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() + bytes.size() / 8);
  for (char c : bytes) {
    if (byteOf(c) < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xC0 | (byteOf(c) >> 6));
      text += static_cast<char>(0x80 | (byteOf(c) & 0x3F));
    }
  }
  return text;
}

// Bytes that the code page lacks become question marks. Nothing when the system does not know the code page.
std::optional<std::string> convert(std::string bytes, const std::string& codePage) {
  const iconv_t converter = iconv_open("UTF-8", codePage.c_str());
  if (converter == iconv_t(-1)) return std::nullopt;
  std::string text;
  std::array<char, 16384> buffer;
  char* in = bytes.data();
  std::size_t inLeft = bytes.size();
  while (inLeft > 0) {
    char* out = buffer.data();
    std::size_t outLeft = buffer.size();
    const std::size_t before = inLeft;
    const bool failed = iconv(converter, &in, &inLeft, &out, &outLeft) == static_cast<std::size_t>(-1);
    text.append(buffer.data(), buffer.size() - outLeft);
    if (failed && outLeft > 8 && (inLeft == before || outLeft > 64) && inLeft > 0) {
      text += '?';
      ++in;
      --inLeft;
    }
  }
  iconv_close(converter);
  return text;
}

std::string systemName(std::string_view codePage) {
  std::string name = upper(codePage);
  if (name.starts_with("CP") && name != "CP1252" && name != "CP437" && name != "CP850")
    return std::string("IBM").append(name, 2);
  return name;
}

// Blank is the commonest byte and nearly everything is printable there, while ASCII's blank is rare.
bool looksEbcdic(std::string_view bytes) {
  const std::string_view sample = bytes.substr(0, kSample);
  if (sample.size() < 16) return false;
  std::array<std::size_t, 256> counts{};
  for (char c : sample)
    ++counts[byteOf(c)];
  const std::size_t blanks = counts[kEbcdicBlank];
  if (blanks * 100 <= sample.size() * 15 || *std::max_element(counts.begin(), counts.end()) != blanks) return false;
  if (counts[0x20] * 100 > sample.size()) return false;
  std::size_t printable = counts[kEbcdicNewLine] + counts[kEbcdicLineFeed] + counts[0x0D];
  for (std::size_t c = 0x40; c < 0xFF; ++c) {
    const bool letterOrDigit = (c & 0x0F) <= 9 && c >= 0x81;
    const bool sign =
        c <= 0x7F && ((c & 0x0F) >= 0x0A || c == 0x40 || c == 0x50 || c == 0x60 || c == 0x61 || c == 0x79);
    if (letterOrDigit || sign) printable += counts[c];
  }
  return printable * 100 > sample.size() * 80;
}

std::string cutRecords(std::string_view bytes, char lineEnd) {
  std::string lines;
  lines.reserve(bytes.size() + bytes.size() / kRecord);
  for (std::size_t at = 0; at < bytes.size(); at += kRecord) {
    lines += bytes.substr(at, kRecord);
    lines += lineEnd;
  }
  return lines;
}

void decodeEbcdic(std::string& bytes, std::string_view codePage, SourceText& source, Diagnostics& diagnostics) {
  const bool hasLineEnds = bytes.find(static_cast<char>(kEbcdicNewLine)) != bytes.npos ||
                           bytes.find(static_cast<char>(kEbcdicLineFeed)) != bytes.npos;
  if (!hasLineEnds) bytes = cutRecords(bytes, static_cast<char>(kEbcdicLineFeed));
  for (char& c : bytes) {
    if (byteOf(c) == kEbcdicNewLine) c = static_cast<char>(kEbcdicLineFeed);
  }
  std::string& text = source.text;
  source.file.encoding = codePage;
  std::optional<std::string> whole = convert(bytes, systemName(codePage));
  if (!whole) {
    diagnostics.add(Code::EncodingGuessed, Severity::error, {0, 1, 1, 0},
                    "the system does not know the code page " + std::string(codePage));
    source.file.encoding = "ISO-8859-1";
    text = fromLatin1(bytes);
    return;
  }
  text.reserve(whole->size());
  // The code pages differ in which of the two bytes is the line feed and which the next-line character.
  for (std::size_t at = 0; at < whole->size(); ++at) {
    const bool nextLine = byteOf((*whole)[at]) == 0xC2 && at + 1 < whole->size() && byteOf((*whole)[at + 1]) == 0x85;
    if (nextLine) ++at;
    text += nextLine ? '\n' : (*whole)[at];
  }
}

void decodeText(std::string& bytes, const Options& options, SourceText& source, Diagnostics& diagnostics) {
  const TextTraits raw = traitsOf(bytes);
  const std::string ebcdic = upper(options.ebcdic);
  const std::string wanted = upper(options.encoding);
  const bool ebcdicNamed = ebcdic != "AUTO" && ebcdic != "NEVER" && !ebcdic.empty();
  const bool encodingNamed = wanted != "AUTO" && wanted != "UTF-8" && !wanted.empty();
  if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF")) {
    source.file.encoding = bytes[0] == '\xFF' ? "UTF-16LE" : "UTF-16BE";
    source.text = convert(bytes.substr(2), source.file.encoding).value_or("");
  } else if (bytes.starts_with("\xEF\xBB\xBF")) {
    source.file.encoding = "UTF-8";
    bytes.erase(0, 3);
    source.text = std::move(bytes);
  } else if (ebcdicNamed) {
    decodeEbcdic(bytes, ebcdic, source, diagnostics);
  } else if (encodingNamed) {
    source.file.encoding = wanted;
    std::optional<std::string> converted;
    if (wanted != "ISO-8859-1") converted = convert(bytes, systemName(wanted));
    source.text = converted ? std::move(*converted) : fromLatin1(bytes);
  } else if (raw.ascii || wanted == "UTF-8" || isUtf8(bytes)) {
    source.file.encoding = "UTF-8";
    source.text = std::move(bytes);
    source.traits = raw;
    return;
  } else if (ebcdic != "NEVER" && looksEbcdic(bytes)) {
    decodeEbcdic(bytes, "CP037", source, diagnostics);
    diagnostics.add(Code::EncodingGuessed, Severity::information, {0, 1, 1, 0},
                    "the file is read as EBCDIC, code page 037");
  } else {
    source.file.encoding = "ISO-8859-1";
    source.text = fromLatin1(bytes);
    diagnostics.add(Code::EncodingGuessed, Severity::information, {0, 1, 1, 0},
                    "the file is no UTF-8 and is read as ISO-8859-1");
  }
  source.traits = traitsOf(source.text);
}

} // namespace

std::optional<std::string> readBytes(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::nullopt;
  struct stat facts {};
  std::string bytes;
  std::size_t got = 0;
  // One byte more than the file is said to have: the call that finds its end is not needed then.
  std::size_t room = 64 * 1024;
  if (::fstat(file, &facts) == 0 && facts.st_size > 0)
    room = std::min(static_cast<std::size_t>(facts.st_size), kFileLimit) + 1;
  bool good = true;
  for (;;) {
    if (got + room > bytes.size()) bytes.resize(got + room);
    const ssize_t count = ::read(file, bytes.data() + got, bytes.size() - got);
    if (count < 0 && errno == EINTR) continue;
    good = count >= 0 && got + static_cast<std::size_t>(count) <= kFileLimit;
    if (!good || count == 0) break;
    got += static_cast<std::size_t>(count);
    if (facts.st_size > 0 && got == static_cast<std::size_t>(facts.st_size)) break;
  }
  const int fault = errno;
  ::close(file);
  errno = fault;
  bytes.resize(got);
  if (!good) return std::nullopt;
  return bytes;
}

std::uint64_t contentHash(std::string_view bytes) {
  constexpr std::uint64_t kPrime = 1099511628211ULL;
  std::array<std::uint64_t, 4> sums = {14695981039346656037ULL ^ bytes.size(), 1, 2, 3};
  const auto take = [&](std::uint64_t& sum, const char* from, std::size_t count) {
    std::uint64_t word = 0;
    std::memcpy(&word, from, count);
    sum = (sum ^ word) * kPrime;
    sum ^= sum >> 29;
  };
  const char* at = bytes.data();
  const char* const end = at + bytes.size();
  for (; end - at >= 32; at += 32)
    for (std::size_t lane = 0; lane < sums.size(); ++lane)
      take(sums[lane], at + 8 * lane, 8);
  for (; end - at >= 8; at += 8)
    take(sums[0], at, 8);
  take(sums[0], at, static_cast<std::size_t>(end - at));
  for (std::size_t lane = 1; lane < sums.size(); ++lane)
    sums[0] = (sums[0] ^ sums[lane]) * kPrime;
  return sums[0] ^ (sums[0] >> 29);
}

SourceText decode(std::string bytes, const Options& options, Diagnostics& diagnostics) {
  SourceText source;
  source.file.size = bytes.size();
  source.file.hash = contentHash(bytes);
  const bool wide = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
  if (!wide) {
    while (!bytes.empty() && (bytes.back() == '\0' || bytes.back() == '\x1A'))
      bytes.pop_back();
  }
  decodeText(bytes, options, source, diagnostics);
  std::string& text = source.text;
  while (!text.empty() && (text.back() == '\0' || text.back() == '\x1A'))
    text.pop_back();
  if (text.size() > kRecord && text.size() % kRecord == 0 && source.traits.ascii &&
      text.find_first_of("\n\r") == text.npos) {
    text = cutRecords(text, '\n');
  }
  return source;
}

std::vector<std::string> splitLines(std::string_view text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find_first_of("\n\r", at), text.size());
    lines.emplace_back(text.substr(at, end - at));
    at = end + 1;
    if (end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n') ++at;
  }
  return lines;
}

} // namespace cobol
