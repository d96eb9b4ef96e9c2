#pragma once

#include <map>
#include <string>
#include <string_view>

#include "cobol/analysis.hpp"
#include "cobol/copy_library.hpp"
#include "cobol/options.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// Grows with every change that gives another analysis of the same input.
inline constexpr int kAnalyserVersion = 3;

/// Everything known of a source program and what it copies. Bad input gives diagnostics, never an exception; an
/// unreadable file gives an analysis without programs. Several threads may share the library. The same input gives the
/// same analysis.
Analysis analyse(const std::string& path, const Options& options, CopyLibrary& library);

/// The same for texts in memory; `copybooks` gives texts by upper-case name or `LIBRARY/NAME`.
Analysis analyse(std::string_view text, const Options& options, const std::map<std::string, std::string>& copybooks);

} // namespace cobol
