#include "tarnsift/fake_parts.hpp"

namespace tarnsift_test {

namespace {

using tarnsift::StoreConstruct;

// A construct or a usage, from its places: FILE:LINE:COLUMN.
struct Construct : StoreConstruct {
  explicit Construct(std::vector<std::string> places, FakeHost* host = nullptr, std::string key = "")
      : m_at(platform::splitAt(places.at(0), ':')), m_usages(places.begin() + 1, places.end()), m_host(host),
        m_key(std::move(key)) {}
  std::string FileId() override { return "id of " + FileName(); }
  std::string FileName() override { return m_at.at(0); }
  std::int64_t Line() override { return std::stoll(m_at.at(1)); }
  std::int64_t Column() override { return std::stoll(m_at.at(2)); }
  Ref<tarnsift::InstanceCursor> Related(const std::string& relation) override;
  std::string ColumnText(const std::string& column) override {
    const auto found =
        m_host ? m_host->columnTexts.find(m_key + "." + column) : std::map<std::string, std::string>::iterator();
    return !m_host || found == m_host->columnTexts.end() ? column : found->second;
  }

  std::vector<std::string> m_at;
  std::vector<std::string> m_usages;
  FakeHost* m_host;
  std::string m_key;
};

struct Usages : tarnsift::InstanceCursor {
  explicit Usages(std::vector<std::string> places) : m_places(std::move(places)) {}
  bool AtEnd() override { return m_at == m_places.size(); }
  Ref<StoreConstruct> Current() override { return new Construct({m_places.at(m_at)}); }
  void MoveNext() override { ++m_at; }
  std::size_t Count() override { return m_places.size(); }

  std::vector<std::string> m_places;
  std::size_t m_at = 0;
};

Ref<tarnsift::InstanceCursor> Construct::Related(const std::string& relation) {
  if (relation != "Instances") throw platform::KeyError("no relation " + relation);
  return new Usages(m_usages);
}

struct File : tarnsift::SourceFile {
  explicit File(std::string path) : m_path(std::move(path)) {}
  std::string Id() override { return "id of " + m_path; }
  std::string Path() override { return m_path; }

  std::string m_path;
};

struct Files : tarnsift::SourceFiles {
  explicit Files(std::vector<std::string> paths) : m_paths(std::move(paths)) {}
  std::size_t Count() override { return m_paths.size(); }
  Ref<tarnsift::SourceFile> Item(std::size_t index) override { return new File(m_paths.at(index - 1)); }

  std::vector<std::string> m_paths;
};

struct Model : OfHost<tarnsift::StoreModel> {
  Model(FakeHost& host, std::string language) : OfHost(host), m_language(std::move(language)) {}
  std::string Name() override { return m_language; }
  std::string ColumnType(const std::string& column) override {
    const auto found = m_host.columnTypes.find(column);
    return found == m_host.columnTypes.end() ? "String" : found->second;
  }

  std::string m_language;
};

struct Matches : tarnsift::MatchList {
  explicit Matches(std::vector<std::string> keys) : m_keys(std::move(keys)) {}
  std::unique_ptr<platform::Recordset> OpenRecordset() override {
    std::vector<std::vector<Value>> rows;
    for (const auto& key : m_keys)
      rows.push_back({key});
    return platform::rowsRecordset({"KVID"}, std::move(rows));
  }

  std::vector<std::string> m_keys;
};

struct Lists : tarnsift::MatchLists {
  Lists(FakeHost& host, std::string program) : m_host(host), m_program(std::move(program)) {}
  Ref<tarnsift::MatchList> Open(const std::string& listName, const std::string& ownerName,
                                const std::string& text) override {
    m_host.log += "match list " + listName + " of " + ownerName + " '" + text + "' in " + m_program + "\n";
    return new Matches(m_host.search.matches[m_program]);
  }

  FakeHost& m_host;
  std::string m_program;
};

struct Store : tarnsift::AnalysisStore {
  Store(FakeHost& host, std::string program) : m_host(host), m_program(std::move(program)) { ++m_host.storesOpen; }
  std::shared_ptr<platform::Database> Database() override {
    if (!m_database) m_database = m_host.database(m_program);
    return m_database;
  }
  Ref<tarnsift::StoreModel> Model() override {
    return new tarnsift_test::Model(m_host, programOf(m_host, m_program)->language);
  }
  Ref<StoreConstruct> ObjectById(const std::string& id) override {
    const auto& places = programOf(m_host, m_program)->places;
    const auto found = places.find(id);
    if (found == places.end()) throw platform::KeyError("no construct " + id);
    return new Construct(found->second, &m_host, id);
  }
  Ref<tarnsift::SourceFiles> Files() override { return new tarnsift_test::Files(programOf(m_host, m_program)->files); }
  Ref<tarnsift::InstanceCursor> SelectByKind(const std::string& nameFilter, const std::string& kindWord) override {
    m_host.log += "select '" + nameFilter + "' " + kindWord + " in " + m_program + "\n";
    return new Usages(std::vector<std::string>(programOf(m_host, m_program)->variableUsages));
  }
  Ref<tarnsift::MatchLists> MatchLists() override { return new Lists(m_host, m_program); }
  void Close() override {
    --m_host.storesOpen;
    m_database.reset();
  }

  FakeHost& m_host;
  std::string m_program;
  std::shared_ptr<platform::Database> m_database;
};

struct Stores : OfHost<tarnsift::ProgramStore> {
  using OfHost::OfHost;
  Ref<tarnsift::AnalysisStore> Open(const std::string& path, const std::string& storeClass) override {
    for (const Program& program : m_host.programs) {
      if (path != m_host.path("Analysis/" + program.id + ".kva")) continue;
      m_host.log += "store " + program.id + " as " + storeClass + "\n";
      if (m_host.brokenStores.contains(program.id)) throw platform::Error(program.id + " is broken");
      return new Store(m_host, program.id);
    }
    throw platform::FileError(path, "is no analysis");
  }
};

} // namespace

Ref<tarnsift::AnalysisStore> openStore(FakeHost& host, const std::string& program) {
  return new Store(host, program);
}

Ref<tarnsift::SourceFile> sourceFileAt(const std::string& path) {
  return new File(path);
}

std::string keyOf(StoreConstruct& construct) {
  return dynamic_cast<Construct&>(construct).m_key;
}

Ref<tarnsift::ProgramStore> makeProgramStore(FakeHost& host) {
  return new Stores(host);
}

} // namespace tarnsift_test
