#pragma once

#include "cobol/analysis.hpp"

namespace cobol {

/// Appends the relationships that declarations alone tell: Condition (88 to its item), Redefinition (to the root of the
/// chain), Renaming (66 to its first and THRU item), Index (INDEXED BY name to its table).
void addDeclaredRelations(Analysis& analysis);

} // namespace cobol
