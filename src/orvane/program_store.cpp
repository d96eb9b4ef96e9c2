#include "orvane/program_store.hpp"

#include <cerrno>
#include <cstring>
#include <fstream>

#include "orvane/columns.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/store/program_database.hpp"

namespace orvane {

namespace {

using platform::Ref;
using Data = std::shared_ptr<const StoreData>;

std::string fileName(const StoreData& data, std::uint32_t file) {
  return file < data.files.size() ? std::string(data.text(data.files[file].path)) : "";
}

class StoreConstruct final : public StoredConstruct {
 public:
  StoreConstruct(Data data, std::uint32_t construct, PlaceRecord place)
      : m_data(std::move(data)), m_construct(construct), m_place(place) {}
  std::string FileId() override { return std::to_string(m_place.file); }
  std::string FileName() override { return fileName(*m_data, m_place.file); }
  std::int64_t Line() override { return m_place.line; }
  std::int64_t Column() override { return m_place.column; }
  Ref<tarnsift::InstanceCursor> Related(const std::string& relation) override;
  std::string ColumnText(const std::string& column) override { return columnText(*m_data, m_construct, column); }
  std::uint32_t construct() const override { return m_construct; }

 private:
  Data m_data;
  std::uint32_t m_construct;
  PlaceRecord m_place;
};

// A run of instances of one construct, or several runs one behind the other.
class Instances final : public tarnsift::InstanceCursor {
 public:
  struct Run {
    std::uint32_t first, count;
  };
  Instances(Data data, std::vector<Run> runs) : m_data(std::move(data)), m_runs(std::move(runs)) {
    for (const Run& run : m_runs)
      m_count += run.count;
    skipEmpty();
  }
  bool AtEnd() override { return m_run >= m_runs.size(); }
  Ref<tarnsift::StoreConstruct> Current() override {
    const InstanceRecord& instance = m_data->instances.at(m_runs.at(m_run).first + m_at);
    return new StoreConstruct(m_data, instance.construct, instance.place);
  }
  void MoveNext() override {
    ++m_at;
    skipEmpty();
  }
  std::size_t Count() override { return m_count; }

 private:
  void skipEmpty() {
    while (m_run < m_runs.size() && m_at >= m_runs[m_run].count) {
      ++m_run;
      m_at = 0;
    }
  }
  Data m_data;
  std::vector<Run> m_runs;
  std::size_t m_run = 0;
  std::uint32_t m_at = 0;
  std::size_t m_count = 0;
};

// Places that belong to no construct: files, paragraphs, literals, copies, calls.
class Places final : public tarnsift::InstanceCursor {
 public:
  Places(Data data, std::vector<PlaceRecord> places) : m_data(std::move(data)), m_places(std::move(places)) {}
  bool AtEnd() override { return m_at >= m_places.size(); }
  Ref<tarnsift::StoreConstruct> Current() override { return new StoreConstruct(m_data, UINT32_MAX, m_places.at(m_at)); }
  void MoveNext() override { ++m_at; }
  std::size_t Count() override { return m_places.size(); }

 private:
  Data m_data;
  std::vector<PlaceRecord> m_places;
  std::size_t m_at = 0;
};

Ref<tarnsift::InstanceCursor> StoreConstruct::Related(const std::string& relation) {
  std::vector<Instances::Run> runs;
  if (relation == "Instances" && m_construct < m_data->constructs.size()) {
    const ConstructRecord& record = m_data->constructs[m_construct];
    runs.push_back({record.firstInstance, record.usages});
  }
  return new Instances(m_data, std::move(runs));
}

class StoredFile final : public tarnsift::SourceFile {
 public:
  StoredFile(std::uint32_t index, std::string path) : m_index(index), m_path(std::move(path)) {}
  std::string Id() override { return std::to_string(m_index); }
  std::string Path() override { return m_path; }

 private:
  std::uint32_t m_index;
  std::string m_path;
};

class StoredFiles final : public tarnsift::SourceFiles {
 public:
  explicit StoredFiles(Data data) : m_data(std::move(data)) {}
  std::size_t Count() override { return m_data->files.size(); }
  Ref<tarnsift::SourceFile> Item(std::size_t index) override {
    const auto at = static_cast<std::uint32_t>(index - 1);
    if (at >= m_data->files.size()) throw platform::KeyError("the program has no file " + std::to_string(index));
    return new StoredFile(at, fileName(*m_data, at));
  }

 private:
  Data m_data;
};

class Model final : public tarnsift::StoreModel {
 public:
  std::string Name() override { return kModelName; }
  std::string ColumnType(const std::string& column) override {
    const int index = columnIndex(column);
    return index >= 0 && analysisColumns()[static_cast<std::size_t>(index)].isInteger ? "Integer" : "String";
  }
};

class StoredMatches final : public tarnsift::MatchList {
 public:
  explicit StoredMatches(std::vector<std::string> kvids) : m_kvids(std::move(kvids)) {}
  std::unique_ptr<platform::Recordset> OpenRecordset() override {
    std::vector<std::vector<platform::Value>> rows;
    rows.reserve(m_kvids.size());
    for (const auto& kvid : m_kvids)
      rows.push_back({kvid});
    return platform::rowsRecordset({"KVID"}, std::move(rows));
  }

 private:
  std::vector<std::string> m_kvids;
};

class StoredMatchLists final : public tarnsift::MatchLists {
 public:
  explicit StoredMatchLists(std::string analysisFile) : m_analysisFile(std::move(analysisFile)) {}
  Ref<tarnsift::MatchList> Open(const std::string& listName, const std::string& ownerName,
                                const std::string&) override {
    return new StoredMatches(readMatches(m_analysisFile, listName, ownerName));
  }

 private:
  std::string m_analysisFile;
};

std::string nameOf(const StoreData& data, std::int32_t construct) {
  return construct >= 0 ? std::string(data.text(data.constructs[static_cast<std::size_t>(construct)].name)) : "";
}

std::string numberUnlessNone(bool present, std::int64_t number) {
  return present ? std::to_string(number) : "";
}

} // namespace

std::string columnText(const StoreData& data, std::uint32_t construct, std::string_view column) {
  if (construct >= data.constructs.size()) return "";
  const ConstructRecord& record = data.constructs[construct];
  const bool stored = record.offset >= 0 && record.kind <= static_cast<std::uint8_t>(cobol::Kind::renames);
  switch (columnIndex(column)) {
  case 0:
    return std::string(kindWord(record.kind));
  case 1:
    return numberUnlessNone(record.level > 0, record.level);
  case 2:
    return std::string(sectionWord(record.section));
  case 3:
    return nameOf(data, record.parent);
  case 4:
    return nameOf(data, record.record);
  case 5:
    return std::string(data.text(record.picture));
  case 6:
    return std::string(data.text(record.usage));
  case 7:
    return numberUnlessNone(stored, record.offset);
  case 8:
    return numberUnlessNone(stored, record.position);
  case 9:
    return numberUnlessNone(stored, record.size);
  case 10:
    return numberUnlessNone(stored, record.length);
  case 11:
    return numberUnlessNone(record.repeats, record.occurs);
  case 12:
    return std::string(data.text(record.dims));
  case 13:
    return numberUnlessNone(record.digits > 0, record.digits);
  case 14:
    return numberUnlessNone(record.digits > 0, record.scale);
  case 15:
    return record.isSigned ? "yes" : "";
  case 16:
    return nameOf(data, record.redefines);
  case 17:
    return std::string(data.text(record.value));
  case 18:
    return fileName(data, record.declared.file);
  case 19:
    return std::to_string(record.declared.line);
  case 20:
    return std::to_string(record.declared.column);
  case 21:
    return flagLetters(record.flags);
  case 22:
    return std::to_string(record.usages);
  default:
    return "";
  }
}

Ref<tarnsift::AnalysisStore> ProgramStores::Open(const std::string& path, const std::string&) {
  return new StoredAnalysis(path, readStore(path));
}

std::shared_ptr<platform::Database> StoredAnalysis::Database() {
  if (!m_database) m_database = platform::dbEngine().OpenDatabase(tarnsift::DatabasePath(m_path));
  return m_database;
}

Ref<tarnsift::StoreModel> StoredAnalysis::Model() {
  return new orvane::Model;
}

Ref<tarnsift::StoreConstruct> StoredAnalysis::ObjectById(const std::string& id) {
  const int index = m_data->find(id);
  if (index < 0) throw platform::KeyError(m_path + ": the analysis has no construct '" + id + "'");
  const auto construct = static_cast<std::uint32_t>(index);
  return new StoreConstruct(m_data, construct, m_data->constructs[construct].declared);
}

Ref<tarnsift::SourceFiles> StoredAnalysis::Files() {
  return new StoredFiles(m_data);
}

Ref<tarnsift::InstanceCursor> StoredAnalysis::SelectByKind(const std::string& nameFilter, const std::string& kindWord) {
  const auto wanted = [&](std::string_view name) {
    return nameFilter.empty() || platform::equalsIgnoringCase(name, nameFilter);
  };
  if (platform::equalsIgnoringCase(kindWord, "VAR")) {
    std::vector<Instances::Run> runs;
    for (const auto& construct : m_data->constructs)
      if (construct.usages > 0 && wanted(m_data->text(construct.name)))
        runs.push_back({construct.firstInstance, construct.usages});
    return new Instances(m_data, std::move(runs));
  }
  std::vector<PlaceRecord> places;
  for (const auto& place : m_data->places)
    if (platform::equalsIgnoringCase(m_data->text(place.kindWord), kindWord) && wanted(m_data->text(place.name)))
      places.push_back(place.place);
  return new Places(m_data, std::move(places));
}

Ref<tarnsift::MatchLists> StoredAnalysis::MatchLists() {
  return new StoredMatchLists(m_path);
}

// Lines: list name, owner, then a key each. One search's list at a time, read by the command that wrote it and written
// anew by the next, so it needs neither sync nor rename.
std::string matchFile(const std::string& analysisFile) {
  return analysisFile.substr(0, analysisFile.size() - 4) + ".kvm";
}

void writeMatches(const std::string& analysisFile, const std::string& listName, const std::string& owner,
                  const std::vector<std::string>& kvids) {
  std::string text = listName + "\n" + owner + "\n";
  for (const auto& kvid : kvids)
    text += kvid + "\n";
  std::ofstream out(matchFile(analysisFile), std::ios::binary | std::ios::trunc);
  out << text;
  out.flush();
  if (!out) throw platform::FileError(matchFile(analysisFile), std::strerror(errno));
}

std::vector<std::string> readMatches(const std::string& analysisFile, const std::string& listName,
                                     const std::string& owner) {
  std::vector<std::string> kvids;
  if (!platform::fileExists(matchFile(analysisFile))) return kvids;
  platform::LineReader lines(matchFile(analysisFile));
  if (lines.next() != listName || lines.next() != owner) return kvids;
  while (auto line = lines.next())
    kvids.push_back(std::move(*line));
  return kvids;
}

} // namespace orvane
