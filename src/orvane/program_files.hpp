#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "cobol/analysis.hpp"
#include "orvane/carry_over.hpp"
#include "orvane/store_format.hpp"

namespace orvane {

/// The constructs of an analysis as the carrying over of decisions sees them, in their order.
std::vector<CarryRow> carryRows(const cobol::Analysis& analysis);

/// A program's analysis file (native path, `*.kva`) and the database beside it, made of a new analysis under temporary
/// names; what the analyst decided is carried over from the files that they replace. Both are whole before either is
/// put in place, the database first. `now` is in microseconds since 1970 UTC. On failure, and without `place`, a
/// platform::Error or nothing, and both files are as they were.
///
/// The database: Constructs(KVID, Name, Offset, Size, Kind, Level, Shape) with the index ID on KVID, in the order of
/// the analysis; Relationships(KVID1, KVID2, RelID); Host(Generation), the number that the analysis file has too;
/// Archive (see carryOver).
class NewProgramFiles {
 public:
  NewProgramFiles(const std::string& analysisFile, const cobol::Analysis& analysis, const StoreData& data,
                  std::int64_t now);
  ~NewProgramFiles();
  CarryCounts decisions() const;
  /// Waits until the database is on the disk; of several, sync all before the first is placed. Any thread will do.
  void sync();
  void place();

 private:
  struct Parts;
  std::unique_ptr<Parts> m_parts;
};

/// The generation of a program's database; Null where it has none.
platform::Value databaseGeneration(platform::Database& database);

/// Removes what killed writers left in a folder. Only while nobody else writes there.
void removeLeftovers(const std::string& folder);

} // namespace orvane
