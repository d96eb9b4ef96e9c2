#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "orvane/base_folder.hpp"
#include "orvane/carry_over.hpp"
#include "orvane/repository_file.hpp"

namespace orvane {

/// What happened to a program.
enum class Verified { written, unchanged, failed };

struct VerifyProgress {
  std::size_t done = 0; ///< programs, this one included
  std::size_t total = 0;
  const std::string& program;
  Verified outcome;
};

struct VerifySettings {
  unsigned jobs = 0;                                        ///< threads; 0: as many as the machine has cores
  bool force = false;                                       ///< unchanged programs too
  std::function<void(const VerifyProgress&)> progress = {}; ///< called on the calling thread
  const std::atomic<bool>* cancel = nullptr;                ///< once true, no further program is begun
};

struct VerifyResult {
  struct Failure {
    std::string program, source, reason; ///< the name, the path relative to the base folder, one line
  };
  std::size_t programs = 0; ///< of the project
  std::size_t written = 0, unchanged = 0;
  std::vector<Failure> failed;       ///< ordered by name
  std::vector<std::string> added;    ///< programs that were found anew
  std::vector<std::string> problems; ///< source paths that could not be looked through
  std::uint64_t lines = 0; ///< of the verified programs' own sources, unchanged ones included; so the next ones
  std::uint64_t constructs = 0, relationships = 0;
  std::map<std::string, std::uint64_t> diagnostics;    ///< warnings and errors by code
  std::map<std::string, std::size_t> missingCopybooks; ///< name to number of programs
  CarryCounts decisions;
  bool cancelled = false;
};

/// Verifies a project: looks its source paths through for new programs, analyses each program whose files, copybooks or
/// options changed, writes `Analysis\<NAME>-<id>.kva` and the database beside it, and sets the attributes Kelvane,
/// DataRelations, Modified (microseconds since 1970 UTC), Fingerprint, Files (with copybooks), Lines (of the source)
/// and Reason. A program that fails says why in Reason and stays out; its older files stay. Holds the base folder's
/// lock; when another process is in the way, and for what ends the whole command, a platform::Error. Killed at any
/// point, the next run goes on.
VerifyResult verifyProject(const BaseFolder& base, RepositoryFile& repository, const std::string& project,
                           const VerifySettings& settings = {});

} // namespace orvane
