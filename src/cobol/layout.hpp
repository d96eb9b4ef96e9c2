#pragma once

#include "cobol/analysis.hpp"

namespace cobol {

/// Gives every construct its place: position in its record, length, size, dims, storage area and program-wide offset.
/// Records that share storage (REDEFINES at level 01, records of one file, SAME RECORD AREA, EXTERNAL of one name)
/// share an area; areas never touch. Constructs without storage get size 0 and offsets -1, -2, …; constructs made by
/// later stages need a further call of `layOutWithoutStorage`. Counts and sums saturate at 2^62.
void layOut(Analysis& analysis, const Options& options, Diagnostics& diagnostics);

/// Offsets -1, -2, … for all constructs that have no storage, in their order. Registers that are made with a length get
/// an area of their own behind the last one.
void layOutWithoutStorage(Analysis& analysis, const Options& options);

} // namespace cobol
