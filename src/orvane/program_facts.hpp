#pragma once

#include <array>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "orvane/base_folder.hpp"
#include "orvane/repository_file.hpp"
#include "orvane/store_format.hpp"

namespace orvane {

/// A source program of a project as the repository knows it.
struct ProgramFacts {
  std::string id;
  std::string name;
  std::string source;       ///< relative, backslashes
  std::string analysisFile; ///< native; "" before the first verification
  bool verified = false;
  std::string reason; ///< why it is not verified
  std::string size;   ///< change size S to XL; "" until a project was derived with it
  std::int64_t files = 0;
  std::int64_t lines = 0;
};

/// The programs of a project by name; with a wildcard pattern (letters without regard to case) those that match. Throws
/// platform::Error when the pattern matches none.
std::vector<ProgramFacts> programsOf(const BaseFolder& base, RepositoryFile& repository, const std::string& project,
                                     const std::string& pattern);

/// What the analyst decided on one dataname.
struct Decision {
  std::optional<int> status;
  std::string comment;
};
/// By KVID, only those with a status or a comment; nothing when the project was never opened on this program.
using Decisions = std::unordered_map<std::string, Decision>;
Decisions decisionsOf(const ProgramFacts& program, const std::string& project);

/// Names in the Working, Affected and Clean list.
std::array<std::int64_t, 3> countsOf(const ProgramFacts& program, const std::string& project);

} // namespace orvane
