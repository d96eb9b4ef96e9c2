#pragma once

#include "cobol/analysis.hpp"
#include "cobol/diagnostic.hpp"
#include "cobol/options.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// Reads the procedure text of every program and the clauses of the other divisions that name data. In: programs with
/// their procedure ranges, constructs with parents, positions and lengths, data files, references. Out: instances in
/// text order, relationships (those that are already there are kept and merged), places PARA, CALL and LIT, constructs
/// for undeclared names, for special registers that are used and for call and file slots, counts of statements.
/// The made constructs still need `layOutWithoutStorage` and `nameConstructs`. Bad text gives diagnostics, never an
/// exception.
void readProcedures(const TokenStream& stream, const Options& options, Analysis& analysis, Diagnostics& diagnostics);

} // namespace cobol
