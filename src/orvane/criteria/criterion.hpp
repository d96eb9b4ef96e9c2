#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orvane/store_format.hpp"

namespace orvane {

/// Whether a construct of a program matches. A program's constructs are asked for in ascending order, all of them.
using Criterion = std::function<bool(const StoreData&, std::uint32_t construct)>;

/// A kind of criterion: one row of the table, one file. Its name is "tab:word" or "tab:word argument".
struct CriterionKind {
  std::string_view tab;
  std::string_view word;     ///< "" where the argument alone stands behind the tab
  std::string_view argument; ///< what the argument is, for messages; "" when it takes none
  std::string_view example;
  bool asksForKind = false; ///< may match FILLER and slots, which the others never do
  /// Throws platform::Error for an argument that cannot be used.
  Criterion (*make)(const std::string& argument);
};
std::span<const CriterionKind> criterionKinds();

/// The criterion of that name, or of several joined by " & " that must all match. Throws platform::Error in one line
/// that lists what is known.
Criterion criterionNamed(const std::string& name);

/// "A & B" from its parts, and back.
std::string joinedCriteria(const std::vector<std::string>& parts);
std::vector<std::string> criterionParts(const std::string& name);

/// The name of the criterion for a pattern and, unless empty, a second one of names to leave out.
std::string nameOfPatterns(const std::string& like, const std::string& unlike);
/// The two patterns in the argument of such a criterion; the second "" when it has none.
std::pair<std::string, std::string> patternsIn(const std::string& argument);

// The kinds.
Criterion namesLike(const std::string& argument);
Criterion levelIs(const std::string& argument);
Criterion pictureLike(const std::string& argument);
Criterion usageIs(const std::string& argument);
Criterion sizeIs(const std::string& argument);
Criterion kindIs(const std::string& argument);
Criterion isUnused(const std::string& argument);
Criterion isReadOnly(const std::string& argument);
Criterion isWrittenOnly(const std::string& argument);
Criterion isInFileRecord(const std::string& argument);
Criterion isPassedToCall(const std::string& argument);
Criterion isInEmbeddedStatement(const std::string& argument);
Criterion isAcrossCall(const std::string& argument);
Criterion isAcrossFile(const std::string& argument);

} // namespace orvane
