#pragma once

#include <string>

#include "bench/corpus.hpp"

namespace bench {

/// Reading COBOL and writing what was found: one table of lines a second, with the aims and how each was met. `folder`
/// takes files of the bench. Gives whether every aim that could be measured was met.
bool benchAnalyse(const Corpus& corpus, const std::string& folder);

/// One analysis of every program and nothing else, for a profiler.
void analyseOnce(const Corpus& corpus);

} // namespace bench
