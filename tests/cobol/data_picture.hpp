#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cobol/analysis.hpp"

namespace cobol_test {

/// A source in fixed form: each line moved to column 8 (area A); lines must be short enough.
std::string fixedForm(std::string_view lines);

/// A program P with these lines in its WORKING-STORAGE SECTION.
std::string workingStorage(std::string_view lines);

struct DataRun {
  cobol::Analysis analysis;
  std::vector<cobol::Diagnostic> diagnostics;
};

/// Reads, lays out, relates and names.
DataRun readAndLayOut(const std::string& source, const cobol::Options& options = {},
                      const std::map<std::string, std::string>& copybooks = {});

/// A line for each construct: `05 CUST-ID @16+4 len 8 x12 PIC 9(8) COMP-3 dims … flags …`; @base+position.
std::string picture(const DataRun& run);
/// picture() of workingStorage().
std::string layoutOf(std::string_view lines, const cobol::Options& options = {});
/// `B Overlay A` for each relationship, in their order.
std::string relationsOf(const DataRun& run);
/// `PictureBad 12` for each diagnostic.
std::string diagnosticsOf(const DataRun& run);

} // namespace cobol_test
