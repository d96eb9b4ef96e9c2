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
  std::vector<SiteLink> links; ///< each place once, in any order; not shown when the file has changed
};

/// Writes the page below `folder`. A source that cannot be read gives a page that says so, with anchors for all links.
void writeSourcePage(const std::string& folder, const SourcePage& page, const cobol::Options& options);

} // namespace orvane
