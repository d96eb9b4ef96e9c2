#pragma once

#include <string>
#include <vector>

#include "orvane/program_facts.hpp"
#include "orvane/site/site_files.hpp"

namespace orvane {

/// What a source's page says beside the source.
struct SourcePage {
  const SiteFile& file;
  const SiteFiles& files;
  std::string project;
  std::string remark;          ///< why there is more or less to see than usual; HTML
  std::string facts;           ///< a line under the heading; HTML
  std::vector<SiteLink> links; ///< none when the file changed
  /// Names that stand in a list, by line and column: the status.
  std::unordered_map<std::uint64_t, int> lists = {};
};

inline std::uint64_t sitePlace(std::uint32_t line, std::uint32_t column) {
  return std::uint64_t{line} << 32U | column;
}

/// Writes the page below `folder`. A source that cannot be read gives a page that says so, with anchors for all links.
void writeSourcePage(const std::string& folder, const SourcePage& page, const cobol::Options& options);

} // namespace orvane
