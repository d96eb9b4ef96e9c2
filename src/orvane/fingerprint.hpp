#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>

#include "cobol/copy_library.hpp"
#include "cobol/options.hpp"
#include "orvane/base_folder.hpp"
#include "orvane/store_format.hpp"

namespace orvane {

/// The path as an analysis keeps it: below the base folder relative with backslashes, else native; and back.
std::string storedPath(const BaseFolder& base, const std::string& native);
std::string nativePathOf(const BaseFolder& base, const std::string& stored);

/// A number that is another one whenever a verification would give another result: from the contents of all files of a
/// program, how each COPY was resolved (failed look-ups too), the options, the analyser's version and the file formats.
/// Safe for several threads; a copybook is read once.
class Fingerprints {
 public:
  Fingerprints(const BaseFolder& base, const cobol::Options& options, cobol::CopyLibrary& library);

  /// As the analysis found the files.
  std::uint64_t recorded(const StoreData& data) const;
  /// As the files lie now; nothing when one of them cannot be read.
  std::optional<std::uint64_t> current(const StoreData& data);

 private:
  std::optional<std::uint64_t> contentOf(const std::string& native, bool shared);

  const BaseFolder& m_base;
  cobol::CopyLibrary& m_library;
  std::uint64_t m_seed = 0; ///< of options and versions
  std::mutex m_lock;
  std::map<std::string, std::optional<std::uint64_t>> m_contents;
};

/// As an attribute holds it: 16 hexadecimal digits.
std::string fingerprintText(std::uint64_t fingerprint);

} // namespace orvane
