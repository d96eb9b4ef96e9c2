#include "orvane/program_files.hpp"

#include <filesystem>

#include "cobol/kvid.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "tarnsift/store/program_database.hpp"

namespace orvane {

namespace {

namespace fs = std::filesystem;
using platform::ColumnKind;

std::int64_t shapeOf(const cobol::Construct& construct) {
  std::string text = construct.picture;
  ((text += '\n') += construct.usage) += '\n';
  text += std::to_string(construct.occurs) + '\n' + std::to_string(construct.length) + '\n' +
          std::to_string(static_cast<int>(construct.kind));
  return static_cast<std::int64_t>(cobol::lastingHash(text));
}

void writeConstructs(platform::Database& database, const cobol::Analysis& analysis) {
  database.createTable("Constructs", {{"KVID", ColumnKind::key},
                                      {"Name", ColumnKind::key},
                                      {"Offset", ColumnKind::integer},
                                      {"Size", ColumnKind::integer},
                                      {"Kind", ColumnKind::text},
                                      {"Level", ColumnKind::integer},
                                      {"Shape", ColumnKind::integer}});
  platform::Insertion rows(database, "Constructs", {"KVID", "Name", "Offset", "Size", "Kind", "Level", "Shape"});
  for (const cobol::Construct& c : analysis.constructs)
    rows.row(c.kvid, c.name, c.offset, c.size, kindWord(static_cast<std::uint8_t>(c.kind)), c.level, shapeOf(c));
}

void writeRelationships(platform::Database& database, const cobol::Analysis& analysis) {
  database.createTable("Relationships",
                       {{"KVID1", ColumnKind::key}, {"KVID2", ColumnKind::key}, {"RelID", ColumnKind::text}});
  platform::Insertion rows(database, "Relationships", {"KVID1", "KVID2", "RelID"});
  const auto& kinds = cobol::relationKinds();
  for (const cobol::Relationship& relation : analysis.relationships)
    rows.row(analysis.constructs[relation.from].kvid, analysis.constructs[relation.to].kvid,
             kinds[static_cast<std::size_t>(relation.kind)].name);
}

void writeGeneration(platform::Database& database, std::uint64_t generation) {
  database.createTable("Host", {{"Generation", ColumnKind::integer}});
  platform::Insertion(database, "Host", {"Generation"}).row(static_cast<std::int64_t>(generation));
}

} // namespace

std::vector<CarryRow> carryRows(const cobol::Analysis& analysis) {
  std::vector<CarryRow> rows;
  rows.reserve(analysis.constructs.size());
  for (const cobol::Construct& c : analysis.constructs)
    rows.push_back({c.kvid, c.name, shapeOf(c), c.size});
  return rows;
}

struct NewProgramFiles::Parts {
  Parts(const std::string& analysisFile, const StoreData& data)
      : analysis(analysisFile), database(tarnsift::DatabasePath(analysisFile)) {
    analysis.write(storeBytes(data));
    analysis.seal();
  }
  platform::WholeFile analysis; ///< never synced: it has a checksum and can be made anew
  platform::DatabaseBuilder database;
  CarryCounts decisions;
};

NewProgramFiles::NewProgramFiles(const std::string& analysisFile, const cobol::Analysis& analysis,
                                 const StoreData& data, std::int64_t now)
    : m_parts(std::make_unique<Parts>(analysisFile, data)) {
  platform::Database& database = m_parts->database.database();
  writeConstructs(database, analysis);
  writeRelationships(database, analysis);
  writeGeneration(database, data.generation);
  m_parts->decisions = carryOver(
      tarnsift::DatabasePath(analysisFile), database, [&] { return carryRows(analysis); }, now);
  database.Execute("create index ID on Constructs(KVID)");
  database.Execute("create index IdxKVID1 on Relationships(KVID1)");
  database.Execute("create index IdxKVID2 on Relationships(KVID2)");
  database.Execute("create index IdxOffset on Constructs(Offset)");
  database.Execute("create index IdxSize on Constructs(Size)");
  m_parts->database.seal();
}

NewProgramFiles::~NewProgramFiles() = default;

CarryCounts NewProgramFiles::decisions() const {
  return m_parts->decisions;
}

void NewProgramFiles::sync() {
  m_parts->database.sync();
}

void NewProgramFiles::place() {
  m_parts->database.finish();
  m_parts->analysis.finish();
}

platform::Value databaseGeneration(platform::Database& database) {
  if (!database.hasTable("Host")) return {};
  const auto rows = database.OpenRecordset("Host");
  return rows->Eof() ? platform::Value() : rows->Field("Generation");
}

void removeLeftovers(const std::string& folder) {
  std::error_code failed;
  std::vector<std::string> leftovers;
  for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end; entry.increment(failed))
    if (entry->path().extension() == ".new") leftovers.push_back(entry->path().string());
  if (failed) throw platform::FileError(folder, failed.message());
  for (const std::string& file : leftovers)
    platform::removeAll(file);
}

} // namespace orvane
