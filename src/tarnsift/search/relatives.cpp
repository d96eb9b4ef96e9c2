#include "tarnsift/search/relatives.hpp"

namespace tarnsift {

Seed seedAt(const platform::Recordset& row) {
  return {row.Field("KVID").asText(), row.Field("Name").asText(), row.Field("Offset").asInteger(),
          row.Field("Size").asInteger()};
}

std::unique_ptr<platform::Recordset> openRelated(platform::Database& database, const Seed& seed, int Side,
                                                 const std::string& relations) {
  const std::string side = std::to_string(Side);
  const std::string other = std::to_string(3 - Side);
  return database.OpenRecordset("select distinct C.*, R.RelID "
                                "from Relationships R, Constructs C "
                                "where C.KVID = R.KVID" +
                                other + " " + " and R.KVID" + side + " = '" + seed.key + "' " + " and R.RelID in (" +
                                relations + ")");
}

// The plus keeps the choice of index on the offset: sizes repeat, offsets hardly do.
std::unique_ptr<platform::Recordset> openSameRange(platform::Database& database, const Seed& seed) {
  return database.OpenRecordset("select C.* "
                                "from Constructs C "
                                "where C.KVID <> '" +
                                seed.key + "' " + "and C.offset = " + std::to_string(seed.offset) + " " +
                                "and +C.Size = " + std::to_string(seed.size) + " ");
}

// No construct that reaches into the range begins further ahead of it than the largest one is long.
std::unique_ptr<platform::Recordset> openOverlapping(platform::Database& database, const Seed& seed,
                                                     std::int64_t largest) {
  return database.OpenRecordset("select C.* "
                                "from Constructs C "
                                "where C.KVID <> '" +
                                seed.key + "' " + "and C.offset < " + std::to_string(seed.offset + seed.size) + " " +
                                "and (C.offset + C.Size) > " + std::to_string(seed.offset) + " " + "and C.offset > " +
                                std::to_string(seed.offset - largest) + " ");
}

std::int64_t largestSize(platform::Database& database) {
  const auto largest = database.OpenRecordset("select max(Size) as largest from Constructs");
  return largest->Eof() ? 0 : largest->Field("largest").asInteger();
}

} // namespace tarnsift
