#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orvane/criteria/criterion.hpp"
#include "platform/xml/xml.hpp"

namespace orvane {

/// How the two kinds of criteria that live in a project's options are named: what the analyst saved, and its filter.
inline constexpr std::string_view kSavedCriterion = "Saved:";
inline constexpr std::string_view kProjectFilter = "Filters:Patterns";

/// A criterion that the analyst gave a name; it lives in the project's options and is chosen as "Saved:name".
struct SavedCriterion {
  std::string name;
  std::string definition; ///< the name of a criterion as criterionNamed takes it
};

/// In the order in which they were saved.
std::vector<SavedCriterion> savedCriteria(const platform::Document& options);
/// Adds it, or gives the one of that name another definition. Throws platform::Error for a name that is blank or cannot
/// stand in a document, or a definition that is no criterion; then nothing has changed.
void saveCriterion(platform::Document& options, const SavedCriterion& criterion);
/// One that is not there is no error.
void removeCriterion(platform::Document& options, const std::string& name);

/// The names to look for that the project's filter lists.
struct PatternFilter {
  std::vector<std::string> like;   ///< a name has to match one of them; none: all names
  std::vector<std::string> unlike; ///< and none of these
};
/// The ticked patterns of the project's filter, chosen as "Filters:Patterns".
PatternFilter patternFilter(const platform::Document& options);

/// The criterion of that name in a project: "Saved:…", "Filters:Patterns", or one of criterionNamed. Throws
/// platform::Error for an unknown one and for an empty filter.
Criterion projectCriterion(const platform::Document& options, const std::string& name);

} // namespace orvane
