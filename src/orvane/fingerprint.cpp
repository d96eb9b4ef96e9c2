#include "orvane/fingerprint.hpp"

#include <fmt/format.h>

#include "cobol/analyse.hpp"
#include "cobol/source_text.hpp"
#include "platform/files/files.hpp"

namespace orvane {

namespace {

constexpr int kFormatVersion = 3; // of analysis file and database

/// Texts and numbers one behind the other, each with its end marked.
class Mix {
 public:
  explicit Mix(std::uint64_t seed = 14695981039346656037ULL) : m_sum(seed) {}
  Mix& operator<<(std::string_view text) {
    for (const char c : text)
      step(static_cast<unsigned char>(c));
    step(0xFF); // occurs in no UTF-8 text
    return *this;
  }
  Mix& operator<<(std::uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8)
      step(static_cast<unsigned char>(number >> static_cast<unsigned>(shift)));
    return *this;
  }
  std::uint64_t value() const { return m_sum; }

 private:
  void step(unsigned char byte) { m_sum = (m_sum ^ byte) * 1099511628211ULL; }
  std::uint64_t m_sum;
};

template<typename Enum>
std::uint64_t number(Enum value) {
  return static_cast<std::uint64_t>(value);
}

std::uint64_t seedOf(const BaseFolder& base, const cobol::Options& options) {
  Mix mix;
  mix << number(cobol::kAnalyserVersion) << number(kFormatVersion) << number(options.dialect) << number(options.format)
      << number(options.debugLines) << number(options.binarySize) << number(options.sync) << number(options.sameArea)
      << number(options.comp5Small) << number(options.pointerBytes) << number(options.conditionStorage)
      << number(options.allBranches) << options.encoding << options.ebcdic;
  for (const auto& folder : options.copybookFolders)
    mix << storedPath(base, folder);
  for (const auto& extension : options.copyExtensions)
    mix << extension;
  return mix.value();
}

} // namespace

std::string storedPath(const BaseFolder& base, const std::string& native) {
  return base.relative(native).value_or(native);
}
std::string nativePathOf(const BaseFolder& base, const std::string& stored) {
  return stored.starts_with('/') ? stored : base.native(stored);
}

Fingerprints::Fingerprints(const BaseFolder& base, const cobol::Options& options, cobol::CopyLibrary& library)
    : m_base(base), m_library(library), m_seed(seedOf(base, options)) {}

std::uint64_t Fingerprints::recorded(const StoreData& data) const {
  Mix mix(m_seed);
  for (const FileRecord& file : data.files)
    mix << data.text(file.path) << file.hash;
  for (const CopyRecord& copy : data.copies)
    mix << (copy.file < 0 ? std::string_view() : data.text(data.files.at(static_cast<std::size_t>(copy.file)).path));
  return mix.value();
}

std::optional<std::uint64_t> Fingerprints::current(const StoreData& data) {
  Mix mix(m_seed);
  for (std::size_t i = 0; i < data.files.size(); ++i) {
    const std::string path(data.text(data.files[i].path));
    const auto content = contentOf(nativePathOf(m_base, path), i > 0);
    if (!content) return std::nullopt;
    mix << path << *content;
  }
  for (const CopyRecord& copy : data.copies) {
    if (copy.place.file >= data.files.size()) return std::nullopt;
    const std::string includer(data.text(data.files[copy.place.file].path));
    const auto found = m_library.find(data.text(copy.name), data.text(copy.library), nativePathOf(m_base, includer));
    mix << (found ? storedPath(m_base, *found) : std::string());
  }
  return mix.value();
}

std::optional<std::uint64_t> Fingerprints::contentOf(const std::string& native, bool shared) {
  if (shared) {
    const std::lock_guard guard(m_lock);
    if (const auto found = m_contents.find(native); found != m_contents.end()) return found->second;
  }
  const auto bytes = cobol::readBytes(native);
  const auto content = bytes ? std::optional(cobol::contentHash(*bytes)) : std::nullopt;
  if (shared) {
    const std::lock_guard guard(m_lock);
    m_contents.emplace(native, content);
  }
  return content;
}

std::string fingerprintText(std::uint64_t fingerprint) {
  return fmt::format("{:016x}", fingerprint);
}

} // namespace orvane
