#pragma once

#include <cstdint>
#include <string>

#include "cobol/analysis.hpp"
#include "orvane/carry_over.hpp"
#include "orvane/store_format.hpp"

namespace orvane {

/// Replaces a program's analysis file (native path, `*.kva`) and the database beside it by those of a new analysis. Both are
/// whole before either is put in place, the database first; what the analyst decided is carried over. `now` is in
/// microseconds since 1970 UTC. On failure a platform::Error, and both files are as they were.
///
/// The database: Constructs(KVID, Name, Offset, Size, Kind, Level, Shape) with the index ID on KVID, in the order of the
/// analysis; Relationships(KVID1, KVID2, RelID); Host(Generation), the number that the analysis file has too; Archive (see
/// carryOver).
CarryCounts writeProgramFiles(const std::string& analysisFile, const cobol::Analysis& analysis, const StoreData& data, std::int64_t now);


/// The generation of a program's database; Null where it has none.
platform::Value databaseGeneration(platform::Database& database);

/// Removes what killed writers left in a folder. Only while nobody else writes there.
void removeLeftovers(const std::string& folder);

} // namespace orvane
