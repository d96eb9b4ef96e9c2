#pragma once

#include "cobol/analysis.hpp"

namespace cobol {

/// Reads everything that declares: finds the programs of the stream, reads their environment and data divisions, and
/// fills Analysis::programs, dataFiles, constructs (with length, digits and scale of elementary items), references,
/// places of kind FILE, and isCobol. Offsets, sizes of groups and keys come from later stages.
void readData(const TokenStream& stream, const Options& options, Analysis& analysis, Diagnostics& diagnostics);

} // namespace cobol
