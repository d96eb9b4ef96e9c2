#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "platform/dao/dao.hpp"

namespace tarnsift {

/// A dataname whose relatives are looked for.
struct Seed {
  std::string key;
  std::string name;
  std::int64_t offset = 0; ///< bytes, numbered through the program
  std::int64_t size = 0;   ///< bytes; 0: no redefinitions
};
/// The construct that the record set stands on.
Seed seedAt(const platform::Recordset& row);

/// Constructs joined to it by one of the relations (quoted, joined by ", "): with side 1 those that it leads to, with
/// side 2 those that lead to it. It may be among them itself. Each pair of construct and RelID once.
std::unique_ptr<platform::Recordset> openRelated(platform::Database& database, const Seed& seed, int Side,
                                                 const std::string& relations);
/// Other constructs of the same offset and size.
std::unique_ptr<platform::Recordset> openSameRange(platform::Database& database, const Seed& seed);
/// Other constructs whose range overlaps; ranges that merely touch do not. `largest` is largestSize().
std::unique_ptr<platform::Recordset> openOverlapping(platform::Database& database, const Seed& seed,
                                                     std::int64_t largest);
/// Size of the largest construct of the program.
std::int64_t largestSize(platform::Database& database);

} // namespace tarnsift
