#pragma once

#include <string>
#include <vector>

#include "orvane/site/site.hpp"

namespace orvane {

/// Writes index.html: the programs with their counts, the copybooks, what was left out and what has changed.
/// `addOnPage` is the add-on's page, relative, slashes.
void writeIndexPage(const std::string& folder, const std::string& project, const std::vector<SiteProgram>& programs,
                    const SiteFiles& files, const std::string& addOnPage);

} // namespace orvane
