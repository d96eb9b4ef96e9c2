#pragma once

#include <functional>

#include "tarnsift/session/repository.hpp"
#include "tarnsift/session/workspace.hpp"

namespace tarnsift {

/// Goes through the project's programs in the order of an attribute and opens the store of each whose source is
/// verified. One that is not, or whose store or database cannot be read, is passed over without a word: `read` may fail
/// with a platform::Error, and what it gathered is then not `write`n. Errors of `write` end the walk.
void eachProgramStore(const std::string& order, const std::function<void(RepositoryObject&, AnalysisStore&)>& read,
                      const std::function<void()>& write);

} // namespace tarnsift
