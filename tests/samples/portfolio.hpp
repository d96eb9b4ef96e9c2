#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "cobol/analyse.hpp"

/// The bank's portfolio under samples/ as the tests see it.
namespace samples {

std::filesystem::path bankFolder();

/// File names of the programs, `BKB010.cbl` …, sorted.
std::vector<std::string> programNames();

/// Texts of all copybooks by upper-case name, as the analyser takes them.
std::map<std::string, std::string> copybookTexts();

std::string textOf(const std::filesystem::path& path);

/// One program of a folder built as samples/bank is, with the default options.
cobol::Analysis analysed(const std::filesystem::path& bank, const std::string& program);
cobol::Analysis analysed(const std::string& program);

/// Everything that an analysis says, a line each; equal lines mean equal analyses.
std::vector<std::string> linesOf(const cobol::Analysis& analysis);

/// What must hold in every analysis, also of damaged text: unique keys, children inside their parents, areas apart,
/// relations between constructs that exist. A sentence for every fault.
std::vector<std::string> faultsOf(const cobol::Analysis& analysis);

} // namespace samples
