#pragma once

#include "cobol/analysis.hpp"

namespace cobol {

/// Appends the relationships Overlay: an elementary item below a repeating group and an item of another layout of the
/// same storage that meet in an occurrence which their plain ranges [offset, offset + size) do not show. Needs layOut.
/// Items of more than 10 000 occurrences count with their whole span; at most 200 000 pairs (OverlaysCapped).
void addOverlays(Analysis& analysis, Diagnostics& diagnostics);

} // namespace cobol
