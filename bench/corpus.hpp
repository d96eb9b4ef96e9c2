#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// COBOL programs in a folder of their own, and the folders of their copybooks.
struct Corpus {
  std::vector<std::string> programs;
  std::vector<std::string> copybooks;
  std::uint64_t lines = 0; ///< of the programs; copybooks come on top
  std::uint64_t bytes = 0;

  /// Every n-th program, about `count` of them.
  Corpus sample(std::size_t count) const;
};

/// Copies the programs of `sources` (files .cbl, .cob, .cobol below each folder) into `folder` under other names, again
/// and again, until there are at least `lines`. Folders below a source that hold .cpy files are its copybook folders.
Corpus makeCorpus(const std::vector<std::string>& sources, const std::string& folder, std::uint64_t lines);

} // namespace bench
