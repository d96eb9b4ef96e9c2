#pragma once

#include <platform/dao/dao.hpp>
#include <platform/files/files.hpp>

#include <string>
#include <vector>

/// A program's database as the host makes it: three constructs, two relationships, keys without regard to case, index
/// ID.
inline void makeProgramFile(const std::string& path) {
  using platform::ColumnKind;
  platform::DatabaseBuilder builder(path);
  platform::Database& database = builder.database();
  database.createTable("Constructs", {{"KVID", ColumnKind::key},
                                      {"Name", ColumnKind::text},
                                      {"Offset", ColumnKind::integer},
                                      {"Size", ColumnKind::integer},
                                      {"Status", ColumnKind::integer},
                                      {"Classification", ColumnKind::text}});
  database.createTable("Relationships",
                       {{"KVID1", ColumnKind::key}, {"KVID2", ColumnKind::key}, {"RelID", ColumnKind::key}});
  {
    platform::Insertion rows(database, "Constructs", {"KVID", "Name", "Offset", "Size", "Status", "Classification"});
    rows.row("k1", "CUST-NO", 0, 4, platform::Null{}, platform::Null{});
    rows.row("k2", "CUST-KEY", 4, 6, 0, "first");
    rows.row("k3", "CUST-NAME", 4, 6, 1, "second");
  }
  {
    platform::Insertion relations(database, "Relationships", {"KVID1", "KVID2", "RelID"});
    relations.row("k1", "k2", "Move");
    relations.row("k1", "k2", "Move");
    relations.row("k1", "k3", "Compare");
  }
  database.Execute("create index ID on Constructs(KVID)");
  builder.finish();
}

/// The rows of a record set as lines, fields parted by a bar; Null is "-".
inline std::vector<std::string> linesOf(platform::Recordset& rows, const std::vector<std::string>& fields) {
  std::vector<std::string> lines;
  for (; !rows.Eof(); rows.MoveNext()) {
    std::string line;
    for (const std::string& field : fields) {
      const platform::Value value = rows.Field(field);
      line += (line.empty() ? "" : "|") + (value.isNull() ? "-" : value.asText());
    }
    lines.push_back(line);
  }
  return lines;
}

/// The message of the platform error that the step ends with; empty where it does not fail.
template<class Step>
std::string messageOf(Step&& step) {
  try {
    step();
  } catch (const platform::Error& error) {
    return error.what();
  }
  return {};
}

/// A temporary folder with one program's database in it.
class ProgramFile {
 public:
  ProgramFile() { makeProgramFile(path()); }
  ~ProgramFile() { platform::dbEngine().settle(); }
  std::string path() const { return m_folder.file("program.mdb"); }
  std::shared_ptr<platform::Database> open() const { return platform::dbEngine().OpenDatabase(path()); }
  const platform::TemporaryFolder& folder() const { return m_folder; }

 private:
  platform::TemporaryFolder m_folder;
};
