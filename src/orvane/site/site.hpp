#pragma once

#include <array>
#include <string>
#include <vector>

#include "orvane/host.hpp"
#include "orvane/program_facts.hpp"
#include "orvane/site/page_generator.hpp"

namespace orvane {

/// A program of the index.
struct SiteProgram {
  ProgramFacts facts;
  std::string type;
  bool leftOut = false; ///< its analysis or database cannot be read; `facts.reason` says why
  int file = -1;        ///< its source, index into SiteFiles
  std::array<std::int64_t, 3> lists{};
  std::size_t datanames = 0;
  std::size_t usages = 0;
};

struct SiteResult {
  struct LeftOut {
    std::string program, reason;
  };
  std::string index; ///< native path of index.html
  std::size_t programs = 0;
  std::size_t sourcePages = 0;
  std::vector<LeftOut> leftOut;
  std::vector<std::string> changed; ///< stored paths of sources that are not as they were verified
};

/// Writes the pages of the host's project into a folder, which is made when missing: index.html, a page for every
/// source file below Sources/, Decor.css and Decor.js, and the page of the component's add-on. Each file is written
/// whole; what other pages lie there stays. Holds the project meanwhile. When something cannot be written:
/// platform::Error in one line that says what is missing then.
SiteResult writeSite(Host& host, const std::string& folder, const SiteProgress& progress);

/// Where a project's pages go when nothing is said.
std::string defaultSiteFolder(const BaseFolder& base, const std::string& project);

} // namespace orvane
