#pragma once

#include <string>

#include "cobol/analysis.hpp"

namespace bench {

/// The limit of writing a program's database: the same rows and indexes through the database library alone, one
/// transaction, indexes behind the rows, no journal, synced once and renamed.
void insertBare(const cobol::Analysis& analysis, const std::string& file);

} // namespace bench
