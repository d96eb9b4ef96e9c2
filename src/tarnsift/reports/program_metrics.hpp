#pragma once

#include <cstdint>
#include <string>

#include "tarnsift/session/analysis_store.hpp"

namespace tarnsift {

/// How much of a program its Affected list touches.
struct ProgramMetrics {
  std::int32_t declarations = 0;   ///< all rows of Constructs
  std::int32_t affected = 0;       ///< of these, on the Affected list
  std::int32_t affectedUsages = 0; ///< usages of the affected ones
  std::int32_t usages = 0;         ///< all variable usages, as the store counts them; can be below affectedUsages

  /// affected of declarations, and affectedUsages of usages; 0 where there is nothing to divide by.
  float declarationShare() const;
  float usageShare() const;
};

/// The counts of the program whose store that is. `statusColumn` is the project's, in brackets; in a database without
/// it nothing is affected. An affected name that the analysis does not know counts as a declaration and has no usages.
ProgramMetrics programMetrics(AnalysisStore& store, const std::string& statusColumn);
/// Only the usages of the affected ones.
std::int32_t usagesOfAffected(AnalysisStore& store, const std::string& statusColumn);

/// A share as reports and pages print it: a percentage with one digit behind the point, right-aligned in 10 characters.
std::string shareText(float share);

} // namespace tarnsift
