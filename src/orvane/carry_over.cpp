#include "orvane/carry_over.hpp"

#include <set>
#include <unordered_map>

#include <fmt/format.h>

#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

using platform::Value;

constexpr std::string_view kStatusEnd = "_status";

/// The columns of a project; of the earlier format "Status" and "Classification" with an empty stem.
struct ColumnPair {
  std::string stem;
  std::string status;         ///< in brackets
  std::string classification; ///< in brackets
};

struct Decision {
  std::size_t row = 0;
  std::size_t pair = 0;
  Value status, classification;
};

struct Archived {
  std::string kvid, name, stem;
  Value status, classification;
  std::int64_t since = 0;
  std::string proposed;
};

/// What the analyst decided about a program.
struct Decisions {
  std::vector<ColumnPair> pairs;
  std::vector<CarryRow> rows; ///< all constructs, unless nothing was decided and nothing is archived
  std::vector<Decision> decisions;
  std::vector<Archived> archive; ///< the latest last
};

std::string bracketed(std::string_view name) {
  return "[" + std::string(name) + "]";
}

std::vector<ColumnPair> columnPairs(const platform::Database& database) {
  std::vector<ColumnPair> pairs;
  for (const std::string& field : database.fieldNames("Constructs")) {
    if (platform::equalsIgnoringCase(field, "Status")) pairs.push_back({"", bracketed(field), "[Classification]"});
    if (!platform::lower(field).ends_with(kStatusEnd)) continue;
    const std::string stem = field.substr(0, field.size() - kStatusEnd.size());
    pairs.push_back({stem, bracketed(field), bracketed(stem + "_Classification")});
  }
  return pairs;
}

bool isDecided(const Value& status, const Value& classification) {
  return !status.isNull() || !classification.asText().empty();
}

void readRows(platform::Database& database, Decisions& old) {
  const bool hasShape = database.hasField("Constructs", "Shape");
  std::vector<bool> hasComment;
  for (const ColumnPair& pair : old.pairs)
    hasComment.push_back(database.hasField("Constructs", pair.classification));
  for (const auto rows = database.OpenRecordset("Constructs"); !rows->Eof(); rows->MoveNext()) {
    CarryRow row{rows->Field("KVID").asText(), rows->Field("Name").asText(), std::nullopt,
                 rows->Field("Size").asInteger()};
    if (const Value shape = hasShape ? rows->Field("Shape") : Value(); !shape.isNull()) row.shape = shape.asInteger();
    for (std::size_t i = 0; i < old.pairs.size(); ++i) {
      const Value status = rows->Field(old.pairs[i].status);
      const Value classification = hasComment[i] ? rows->Field(old.pairs[i].classification) : Value();
      if (isDecided(status, classification)) old.decisions.push_back({old.rows.size(), i, status, classification});
    }
    old.rows.push_back(std::move(row));
  }
}

void readArchive(platform::Database& database, Decisions& old) {
  if (!database.hasTable("Archive")) return;
  const bool hasProposals = database.hasField("Archive", "Proposed");
  for (const auto rows = database.OpenRecordset("Archive"); !rows->Eof(); rows->MoveNext())
    old.archive.push_back({rows->Field("KVID").asText(), rows->Field("Name").asText(), rows->Field("Project").asText(),
                           rows->Field("Status"), rows->Field("Classification"), rows->Field("ArchivedAt").asInteger(),
                           hasProposals ? rows->Field("Proposed").asText() : std::string()});
}

bool hasDecisions(platform::Database& database, const std::vector<ColumnPair>& pairs) {
  std::string condition;
  for (const ColumnPair& pair : pairs) {
    condition += (condition.empty() ? "" : " or ") + pair.status + " is not null";
    if (database.hasField("Constructs", pair.classification))
      condition += " or " + pair.classification + " is not null";
  }
  if (condition.empty()) return false;
  return database.OpenRecordset("select count(*) as cnt from Constructs where " + condition)->Field("cnt").asInteger() >
         0;
}

// Most databases have neither an archive nor a column of a project, and their schema tells it at once.
bool isUntouched(platform::Database& database) {
  bool hasConstructs = false;
  for (const auto rows = database.OpenRecordset("select name, sql from sqlite_master where type = 'table'");
       !rows->Eof(); rows->MoveNext()) {
    const std::string name = rows->Field("name").asText();
    if (platform::equalsIgnoringCase(name, "Archive")) return false;
    if (!platform::equalsIgnoringCase(name, "Constructs")) continue;
    if (platform::lower(rows->Field("sql").asText()).find("status") != std::string::npos) return false;
    hasConstructs = true;
  }
  return hasConstructs;
}

Decisions readDecisions(const std::string& path) {
  Decisions old;
  {
    const auto database = platform::dbEngine().OpenSettled(path);
    if (isUntouched(*database)) return old;
    old.pairs = columnPairs(*database);
    readArchive(*database, old);
    if (!old.archive.empty() || hasDecisions(*database, old.pairs)) readRows(*database, old);
  }
  platform::dbEngine().release(path);
  return old;
}

class Carrying {
 public:
  Carrying(platform::Database& fresh, const std::function<std::vector<CarryRow>()>& rows, std::int64_t now,
           Decisions old)
      : m_fresh(fresh), m_now(now), m_old(std::move(old)) {
    if (!m_old.decisions.empty() || !m_old.archive.empty()) m_rows = rows();
  }

  CarryCounts run() {
    for (const ColumnPair& pair : m_old.pairs) {
      m_fresh.Execute("alter table Constructs add column " + pair.status + " Integer");
      m_fresh.Execute("alter table Constructs add column " + pair.classification + " varchar(255)");
    }
    if (!m_old.decisions.empty() || !m_old.archive.empty()) {
      const auto matches = matchRows(m_old.rows, m_rows);
      restore(matches);
      followProposals(matches);
      carry(matches);
    }
    writeArchive();
    return m_counts;
  }

 private:
  void store(std::size_t row, const ColumnPair& pair, const Value& status, const Value& classification) {
    m_fresh.Execute("update Constructs set " + pair.status + " = ?, " + pair.classification + " = ? where rowid = ?",
                    {status, classification, static_cast<std::int64_t>(row + 1)});
  }

  void carry(const std::vector<CarryMatch>& matches) {
    for (const Decision& decision : m_old.decisions) {
      const ColumnPair& pair = m_old.pairs[decision.pair];
      const CarryMatch& match = matches[decision.row];
      const CarryRow& row = m_old.rows[decision.row];
      if (match.row < 0) {
        m_old.archive.push_back(
            {row.kvid, row.name, pair.stem, decision.status, decision.classification, m_now, keyOf(match.proposed)});
        ++m_counts.archived;
      } else {
        store(static_cast<std::size_t>(match.row), pair, decision.status, decision.classification);
        ++(match.moved ? m_counts.moved : m_counts.carried);
      }
    }
  }

  std::string keyOf(int row) const { return row < 0 ? std::string() : m_rows[static_cast<std::size_t>(row)].kvid; }

  // What was proposed earlier goes where the construct went, or with it.
  void followProposals(const std::vector<CarryMatch>& matches) {
    std::unordered_map<std::string_view, std::size_t> rows;
    for (const Archived& entry : m_old.archive)
      if (!entry.proposed.empty()) rows.emplace(entry.proposed, m_old.rows.size());
    if (rows.empty()) return;
    for (std::size_t i = 0; i < m_old.rows.size(); ++i)
      if (const auto row = rows.find(m_old.rows[i].kvid); row != rows.end()) row->second = i;
    std::vector<std::string> now;
    for (const Archived& entry : m_old.archive) {
      const auto row = rows.find(entry.proposed);
      const bool known = row != rows.end() && row->second < matches.size();
      now.push_back(known ? keyOf(matches[row->second].row) : std::string());
    }
    for (std::size_t i = 0; i < now.size(); ++i)
      m_old.archive[i].proposed = std::move(now[i]);
  }

  // Only constructs that the old database does not have in another place take back what was decided about them: by
  // their key, else by their name when no other construct of the program has it.
  void restore(const std::vector<CarryMatch>& matches) {
    if (m_old.archive.empty()) return;
    std::unordered_map<std::string_view, std::size_t> appeared;
    for (std::size_t i = 0; i < m_rows.size(); ++i)
      appeared.emplace(m_rows[i].kvid, i);
    for (const CarryMatch& match : matches)
      if (match.row >= 0) appeared.erase(m_rows[static_cast<std::size_t>(match.row)].kvid);
    takeBack(appeared, [](const Archived& entry) { return std::string_view(entry.kvid); });

    // Not under its key: a name that nothing else has, neither in the program nor in the archive.
    std::unordered_map<std::string_view, std::string_view> keys;
    for (const CarryRow& row : m_rows)
      unite(keys, row.name, row.kvid);
    std::unordered_map<std::string_view, std::size_t> appearedNames;
    for (const auto& [kvid, row] : appeared)
      if (keys[m_rows[row].name] == kvid && m_rows[row].name != "FILLER") appearedNames.emplace(m_rows[row].name, row);
    std::unordered_map<std::string_view, std::string_view> archived;
    for (const Archived& entry : m_old.archive)
      unite(archived, entry.name, entry.kvid);
    for (const auto& [name, kvid] : archived)
      if (kvid.empty()) appearedNames.erase(name);
    takeBack(appearedNames, [](const Archived& entry) { return std::string_view(entry.name); });
  }

  // The one key of a name; empty once it has several.
  static void unite(std::unordered_map<std::string_view, std::string_view>& keys, std::string_view name,
                    std::string_view kvid) {
    const auto [known, isNew] = keys.emplace(name, kvid);
    if (!isNew && known->second != kvid) known->second = {};
  }

  // The latest of several that were archived for a construct comes back; the others stay in the archive.
  void takeBack(const std::unordered_map<std::string_view, std::size_t>& rows,
                std::string_view (*key)(const Archived&)) {
    std::vector<Archived> kept;
    for (auto entry = m_old.archive.rbegin(); entry != m_old.archive.rend(); ++entry) {
      const auto row = rows.find(key(*entry));
      bool back = false;
      for (std::size_t i = 0; row != rows.end() && i < m_old.pairs.size(); ++i) {
        // The one pair of the earlier format has become a pair for each project.
        if (!entry->stem.empty() && !platform::equalsIgnoringCase(m_old.pairs[i].stem, entry->stem)) continue;
        if (!m_restored.emplace(row->second, i).second) continue;
        store(row->second, m_old.pairs[i], entry->status, entry->classification);
        ++m_counts.restored;
        back = true;
      }
      if (!back) kept.push_back(std::move(*entry));
    }
    m_old.archive.assign(std::make_move_iterator(kept.rbegin()), std::make_move_iterator(kept.rend()));
  }

  // Most programs have none.
  void writeArchive() {
    if (m_old.archive.empty()) return;
    using platform::ColumnKind;
    m_fresh.createTable("Archive", {{"KVID", ColumnKind::key},
                                    {"Name", ColumnKind::key},
                                    {"Project", ColumnKind::key},
                                    {"Status", ColumnKind::integer},
                                    {"Classification", ColumnKind::text},
                                    {"ArchivedAt", ColumnKind::integer},
                                    {"Proposed", ColumnKind::key}});
    platform::Insertion rows(m_fresh, "Archive",
                             {"KVID", "Name", "Project", "Status", "Classification", "ArchivedAt", "Proposed"});
    for (const Archived& entry : m_old.archive)
      rows.row(entry.kvid, entry.name, entry.stem, entry.status, entry.classification, entry.since,
               entry.proposed.empty() ? Value() : Value(entry.proposed));
  }

  platform::Database& m_fresh;
  std::vector<CarryRow> m_rows;
  std::int64_t m_now;
  Decisions m_old;
  std::set<std::pair<std::size_t, std::size_t>> m_restored; ///< row and pair
  CarryCounts m_counts;
};

ArchivedDecision decisionOf(const Archived& entry) {
  std::optional<int> status;
  if (!entry.status.isNull()) status = static_cast<int>(entry.status.asInteger());
  return {entry.kvid, entry.name, entry.stem, status, entry.classification.asText(), entry.since, entry.proposed};
}

// What the analyst decided on the construct since then stays.
bool giveUndecided(platform::Database& database, const ColumnPair& pair, const Archived& entry) {
  const std::string isFree =
      " where KVID = ? and " + pair.status + " is null and coalesce(" + pair.classification + ", '') = ''";
  if (database.OpenRecordset("select count(*) as cnt from Constructs" + isFree, {entry.proposed})
          ->Field("cnt")
          .asInteger() == 0)
    return false;
  database.Execute("update Constructs set " + pair.status + " = ?, " + pair.classification + " = ?" + isFree,
                   {entry.status, entry.classification, entry.proposed});
  return true;
}

} // namespace

CarryCounts& CarryCounts::operator+=(const CarryCounts& other) {
  carried += other.carried;
  moved += other.moved;
  archived += other.archived;
  restored += other.restored;
  return *this;
}

std::vector<ArchivedDecision> archivedDecisions(const std::string& path) {
  std::vector<ArchivedDecision> all;
  const auto database = platform::dbEngine().OpenDatabase(path);
  Decisions old;
  readArchive(*database, old);
  for (const Archived& entry : old.archive)
    all.push_back(decisionOf(entry));
  return all;
}

std::vector<Acceptance> acceptProposals(const std::string& path, const std::string& stem,
                                        const std::function<bool(const ArchivedDecision&)>& chosen) {
  const auto database = platform::dbEngine().OpenDatabase(path);
  if (!database->hasTable("Archive")) return {};
  Decisions old;
  readArchive(*database, old);
  old.pairs = columnPairs(*database);
  std::vector<Acceptance> all;
  platform::Savepoint change(*database);
  for (auto entry = old.archive.rbegin(); entry != old.archive.rend(); ++entry) {
    if (entry->proposed.empty() || !(entry->stem.empty() || platform::equalsIgnoringCase(entry->stem, stem))) continue;
    ArchivedDecision decision = decisionOf(*entry);
    if (!chosen(decision)) continue;
    bool taken = false;
    for (const ColumnPair& pair : old.pairs)
      if (entry->stem.empty() || platform::equalsIgnoringCase(pair.stem, entry->stem))
        taken = giveUndecided(*database, pair, *entry) || taken;
    if (taken)
      database->Execute("delete from Archive where KVID = ? and Project = ? and ArchivedAt = ?",
                        {entry->kvid, entry->stem, entry->since});
    all.push_back({std::move(decision), taken});
  }
  if (database->OpenRecordset("Archive")->Eof()) database->Execute("drop table Archive");
  change.commit();
  return all;
}

CarryCounts carryOver(const std::string& oldDatabase, platform::Database& fresh,
                      const std::function<std::vector<CarryRow>()>& rows, std::int64_t now) {
  return Carrying(fresh, rows, now, platform::fileExists(oldDatabase) ? readDecisions(oldDatabase) : Decisions()).run();
}

} // namespace orvane
