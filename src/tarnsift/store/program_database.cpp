#include "tarnsift/store/program_database.hpp"

#include <optional>
#include <vector>

#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/session/globals.hpp"

namespace tarnsift {

namespace {

constexpr std::size_t kNameLength = 48;
constexpr std::size_t kCountWidth = 10;
constexpr std::string_view kStatusSuffix = "_status";

void addIndexes(platform::Database& database) {
  if (database.hasIndex("Constructs", "IdxSize")) return;
  platform::ignoring([&] { database.Execute("drop index idxKVID1 on Relationships"); });
  platform::ignoring([&] { database.Execute("drop index idxKVID2 on Relationships"); });
  database.Execute("create index IdxKVID1 on Relationships(KVID1)");
  database.Execute("create index IdxKVID2 on Relationships(KVID2)");
  database.Execute("create index IdxOffset on Constructs(Offset)");
  database.Execute("create index IdxSize on Constructs(Size)");
}

void addProjectColumns(platform::Database& database) {
  const Globals& session = globals();
  if (database.hasField("Constructs", session.StatusColumn)) return;
  database.Execute("alter table Constructs add column " + session.StatusColumn + " Integer");
  database.Execute("alter table Constructs add column " + session.ClassificationColumn + " varchar(255)");
}

// Columns of projects that no longer exist.
void dropForeignColumns(platform::Database& database) {
  std::vector<std::string> stems;
  for (const std::string& field : database.fieldNames("Constructs")) {
    if (!platform::lower(field).ends_with(kStatusSuffix)) continue;
    std::string stem = field.substr(0, field.size() - kStatusSuffix.size());
    if (!KeyExists(globals().FolderNames, stem)) stems.push_back(std::move(stem));
  }
  for (const std::string& stem : stems) {
    database.Execute("alter table Constructs drop column [" + stem + "_Status] ");
    database.Execute("alter table Constructs drop column [" + stem + "_Classification] ");
  }
}

// One pair of columns for all projects becomes a pair for each project that the program belongs to. A program that
// belongs to none keeps its old columns, so nothing that the analyst decided is lost; it is upgraded once it joins a
// project.
bool splitEarlierColumns(platform::Database& database, const std::string& programId) {
  Repository& repository = *theRepositoryAccess().Repository();
  const Ref<RepositoryObject> program = repository.ObjectById(programId);
  bool copied = false;
  for (auto folders = repository.SelectObjects("FOLDER", "", ""); program && !folders->AtEnd(); folders->MoveNext()) {
    const Ref<RepositoryObject> folder = folders->Current();
    if (!program->IsMemberOf(folder->Id())) continue;
    const std::string name = folder->Attribute("Name").asText();
    const std::string status = statusColumnOf(name);
    const std::string classification = classificationColumnOf(name);
    database.Execute("alter table Constructs add column " + status + " Integer");
    database.Execute("update Constructs set " + status + " = Status");
    database.Execute("alter table Constructs add column " + classification + " varchar(255)");
    database.Execute("update Constructs set " + classification + " = Classification");
    copied = true;
  }
  if (!copied) return false;
  database.Execute("alter table Constructs drop column Status ");
  database.Execute("alter table Constructs drop column Classification ");
  return true;
}

} // namespace

std::string DatabasePath(std::string_view kelvanePath) {
  return std::string(kelvanePath.substr(0, kelvanePath.size() - 4)) + ".mdb";
}

std::string EscapeColumnName(std::string_view text) {
  static constexpr std::pair<std::string_view, std::string_view> kEscapes[] = {
      {"&", "&amp;"}, {"[", "&openbr;"},     {"]", "&closebr;"}, {"!", "&bang;"},  {"=", "&eq;"},
      {".", "&dot;"}, {"`", "&backsqoute;"}, {"'", "&sqoute;"},  {"\"", "&qoute;"}};
  std::string escaped(text);
  for (const auto& [plain, code] : kEscapes)
    escaped = platform::replaceAll(std::move(escaped), plain, code);
  return std::string(platform::firstCodePoints(escaped, kNameLength));
}

std::string statusColumnOf(std::string_view projectName) {
  return "[" + EscapeColumnName(projectName) + "_Status]";
}
std::string classificationColumnOf(std::string_view projectName) {
  return "[" + EscapeColumnName(projectName) + "_Classification]";
}

std::shared_ptr<platform::Database> openProgramDatabase(std::string_view kelvanePath) {
  return platform::dbEngine().OpenDatabase(platform::nativePath(belowBase(DatabasePath(kelvanePath))));
}

void UpgradeProgramDatabase(platform::Database& database, const std::string& programId) {
  platform::Savepoint whole(database);
  addIndexes(database);
  if (!database.hasField("Constructs", "Status")) {
    addProjectColumns(database);
    dropForeignColumns(database);
  } else if (!splitEarlierColumns(database, programId)) {
    addProjectColumns(database);
  }
  whole.commit();
}

std::string PadCount(std::string_view text) {
  const std::string_view trimmed = platform::trimmed(text);
  const std::size_t length = platform::countCodePoints(trimmed);
  return std::string(length < kCountWidth ? kCountWidth - length : 0, ' ') + std::string(trimmed);
}

std::int64_t countOf(const std::string& padded) {
  return platform::Value(padded).asInteger();
}

std::string NullToText(const platform::Value& value) {
  return value.asText();
}

} // namespace tarnsift
