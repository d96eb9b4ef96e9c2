#include <array>
#include <sstream>

#include "platform/runtime/text.hpp"
#include "tarnsift/fake_host.hpp"

namespace tarnsift_test {

namespace {

using platform::Object;
using tarnsift::StoreConstruct;

constexpr std::int64_t kProgramCode = 4;

/// A host object whose answers all come from the fake host.
template<typename Interface>
struct OfHost : Interface {
  explicit OfHost(FakeHost& host) : m_host(host) {}
  FakeHost& m_host;
};

std::string backslashed(std::string path) {
  return platform::replaceAll(std::move(path), "/", "\\");
}

const Program* programOf(const FakeHost& host, const std::string& id) {
  for (const Program& program : host.programs)
    if (program.id == id) return &program;
  return nullptr;
}

struct Type : tarnsift::RepositoryType {
  Type(std::string name, std::int64_t flags) : m_name(std::move(name)), m_flags(flags) {}
  std::string Name() override { return m_name; }
  std::int64_t Flags() override { return m_flags; }
  std::string DisplayName() override { return m_name + " programs"; }
  bool AttributeDefinition(const std::string& name) override { return name != "ChangeMagnitude" || m_name != "ASM"; }
  std::string StoreClass() override { return m_name + "-store"; }

  std::string m_name;
  std::int64_t m_flags;
};

struct Item : tarnsift::RepositoryObject {
  Item(std::string id, std::string type, std::map<std::string, Value> attributes, std::set<std::string> projects)
      : m_id(std::move(id)), m_type(std::move(type)), m_attributes(std::move(attributes)),
        m_projects(std::move(projects)) {}
  std::string Id() override { return m_id; }
  Ref<tarnsift::RepositoryType> Type() override { return new tarnsift_test::Type(m_type, 0); }
  std::string DisplayName() override { return m_id; }
  Value Attribute(const std::string& name) override {
    for (const auto& [known, value] : m_attributes)
      if (platform::equalsIgnoringCase(known, name)) return value;
    return {};
  }
  bool IsMemberOf(const std::string& folderId) override { return m_projects.contains(folderId); }
  void AddRelation(const std::string& relation, const Ref<RepositoryObject>& object) override {
    note("join " + m_id + " " + relation + " " + object->Id());
    if (m_host && m_host->unjoinable.contains(m_id)) throw platform::Error(m_id + " cannot be joined");
  }
  void BeginUpdate() override { note("begin " + m_id); }
  void SetAttribute(const std::string& name, const Value& value) override {
    m_attributes[name] = value;
    note("set " + name + " " + value.asText());
  }
  void CommitUpdate() override { note("commit " + m_id); }
  void note(const std::string& line) {
    if (m_host)
      m_host->log += line + (m_host->window().MousePointer == platform::kPointerHourglass ? " (busy)\n" : "\n");
  }

  FakeHost* m_host = nullptr;

  std::string m_id, m_type;
  std::map<std::string, Value> m_attributes;
  std::set<std::string> m_projects;
};

// The id of a project is its name.
Ref<tarnsift::RepositoryObject> folder(const std::string& name) {
  return new Item(name, "FOLDER", {{"Name", name}}, {});
}

Ref<tarnsift::RepositoryObject> object(FakeHost& host, const Program& program) {
  auto* item = new Item(program.id, program.type,
                        {{"Name", program.id},
                         {"Kelvane", "Analysis\\" + program.id + ".kva"},
                         {"DataRelations", program.dataRelations},
                         {"Modified", program.modified}},
                        program.projects);
  item->m_host = &host;
  return item;
}

// The logical program of a source; it refers to the source by its id.
struct LogicalProgram : Item {
  explicit LogicalProgram(const Program& program)
      : Item("L-" + program.id, "PROGRAM", {{"Name", program.id}, {"SID", program.id}}, program.projects),
        m_displayName(program.displayName.empty() ? program.id : program.displayName) {}
  std::string DisplayName() override { return m_displayName; }

  std::string m_displayName;
};

struct Cursor : tarnsift::RepositoryCursor {
  explicit Cursor(std::vector<Ref<tarnsift::RepositoryObject>> objects) : m_objects(std::move(objects)) {}
  bool AtEnd() override { return m_at == m_objects.size(); }
  Ref<tarnsift::RepositoryObject> Current() override { return m_objects.at(m_at); }
  void MoveNext() override { ++m_at; }
  std::size_t Count() override { return m_objects.size(); }

  std::vector<Ref<tarnsift::RepositoryObject>> m_objects;
  std::size_t m_at = 0;
};

struct Schema : tarnsift::RepositorySchema {
  std::vector<Ref<tarnsift::RepositoryType>> ObjectTypes() override {
    return {new Type("FOLDER", 1), new Type("COBOL", kProgramCode | 1), new Type("COPYBOOK", 2),
            new Type("ASM", kProgramCode)};
  }
  std::int64_t TypeFlags(const std::string& name) override { return name == "PROGRAMCODE" ? kProgramCode : 0; }
};

struct FakeRepository : OfHost<tarnsift::Repository> {
  using OfHost::OfHost;
  Ref<tarnsift::RepositorySchema> Schema() override { return new tarnsift_test::Schema; }
  Ref<tarnsift::RepositoryCursor> SelectObjects(const std::string& type, const std::string& parentId,
                                                const std::string&) override {
    std::vector<Ref<tarnsift::RepositoryObject>> found;
    if (type == "FOLDER")
      for (const auto& name : m_host.projects)
        found.push_back(folder(name));
    for (const Program& program : m_host.programs)
      if (program.type == type && program.projects.contains(parentId)) found.push_back(object(m_host, program));
    if (type == "PROGRAM")
      for (const Program& program : m_host.programs)
        if (program.projects.contains(parentId)) found.push_back(new LogicalProgram(program));
    return new Cursor(found);
  }
  Ref<tarnsift::RepositoryObject> ObjectById(const std::string& id) override {
    const Program* program = programOf(m_host, id);
    return program && !m_host.lostPrograms.contains(id) ? object(m_host, *program) : nullptr;
  }
  Ref<tarnsift::RepositoryObject> FindByName(const std::string& type, const std::string& name, int) override {
    m_host.log += "find " + type + " " + name + "\n";
    if (std::find(m_host.projects.begin(), m_host.projects.end(), name) == m_host.projects.end())
      throw platform::KeyError("there is no " + name);
    return folder(name);
  }
  std::string FilePath() override { return backslashed(m_host.path("Orvane.db")); }
};

struct Access : tarnsift::RepositoryAccess {
  explicit Access(FakeHost& host) : m_repository(new FakeRepository(host)) {}
  Ref<tarnsift::Repository> Repository() override { return m_repository; }
  std::string StoreClassOf(const std::string& id) override {
    return m_repository->ObjectById(id)->Type()->StoreClass();
  }

  Ref<tarnsift::Repository> m_repository;
};

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

struct Searching : OfHost<tarnsift::SearchHost> {
  using OfHost::OfHost;
  void setScopeList(const std::string& keys) override { m_host.log += "scope '" + keys + "'\n"; }
  void setDefaultSearchCriteriaName(const std::string& name) override { m_host.log += "default " + name + "\n"; }
  void setGlobalSearch(bool global) override { m_host.log += global ? "global\n" : "not global\n"; }
  Value FindConstructs(const Ref<tarnsift::StoreModel>& model, const std::string& listName, tarnsift::KVWorkSpace&,
                       bool flag, const std::string& text) override {
    m_host.log += "find " + (model ? model->Name() : "without model") + " " + listName + (flag ? " true" : " false") +
                  " '" + text + "'\n";
    return m_host.search.result;
  }
  std::string LastSearchCriteriaName() override { return m_host.search.used; }
  platform::Document Options() override {
    std::string text = "<RESULTS><MODELS><MODEL Name='" + m_host.search.modelName + "'><MATCHES ListName='Tarnsift'>";
    for (const auto& [program, matches] : m_host.search.matches) {
      const auto given = m_host.search.newCounts.find(program);
      const std::string count = given == m_host.search.newCounts.end() ? std::to_string(matches.size()) : given->second;
      text += "<OBJECT ObjID='" + program + "'" + (count == "-" ? "" : " NewCount='" + count + "'") + "/>";
    }
    return platform::Document::loadText(text + "</MATCHES></MODEL></MODELS></RESULTS>");
  }
};

struct Workspace : tarnsift::KVWorkSpace {
  explicit Workspace(FakeHost& host) : m_host(host) {}
  void RegisterObject(const std::string& text, const std::string& key, const Ref<Object>&) override {
    m_host.log += "object '" + text + "' " + key + "\n";
  }
  void RegisterControl(KVWorkSpace&, const std::string& key) override { m_host.log += "control " + key + "\n"; }
  void setOwnerForm(Object* form) override { m_owner = form; }
  Object* OwnerForm() override { return m_owner; }
  void Notify(const std::string& target, const std::string& command, int&) override {
    m_host.log += "notify " + target + " " + command + "\n";
  }
  void Close() override {
    m_host.log += "workspace closed\n";
    drop();
  }
  std::string CurrentProgram() override { return m_program; }
  void setCurrentProgram(const std::string& key) override {
    m_program = key;
    ProgramChanged.raise();
  }
  Ref<tarnsift::AnalysisStore> AnalysisStore() override {
    if (m_storeProgram == m_program) return m_store;
    drop();
    m_storeProgram = m_program;
    if (m_host.brokenStores.contains(m_program)) throw platform::Error(m_program + " is broken");
    if (programOf(m_host, m_program)) m_store = new Store(m_host, m_program);
    return m_store;
  }
  void setCurrentObject(const Ref<StoreConstruct>& object) override {
    m_host.currentObject = dynamic_cast<Construct&>(*object.get()).m_key;
  }
  Ref<tarnsift::SourceFile> SourceFile() override {
    return m_host.sourceFile.empty() ? Ref<tarnsift::SourceFile>()
                                     : Ref<tarnsift::SourceFile>(new File(m_host.sourceFile));
  }
  Ref<tarnsift::SearchHost> SearchHost() override { return new Searching(m_host); }

  void drop() {
    if (m_store) m_store->Close();
    m_store = {};
    m_storeProgram.clear();
  }
  FakeHost& m_host;
  Object* m_owner = nullptr;
  std::string m_program;
  std::string m_storeProgram;
  Ref<tarnsift::AnalysisStore> m_store;
};

struct Source : OfHost<tarnsift::KVSource> {
  using OfHost::OfHost;
  void Attach(tarnsift::KVWorkSpace&, const std::string& key, const std::string& caption) override {
    m_host.log += "source " + key + " '" + caption + "'\n";
  }
  void Detach() override { m_host.log += "source detached\n"; }
  void SetFocus() override {
    m_host.log += "source focused\n";
    GotFocus.raise();
  }
};

struct PaneTree;

struct Pane : tarnsift::SplitterPane {
  Pane(FakeHost& host, PaneTree& tree, std::string key) : m_host(host), m_tree(tree), m_key(std::move(key)) {}
  std::string Key() override { return m_key; }
  float Left() override { return m_at[0]; }
  float Top() override { return m_at[1]; }
  float Width() override { return m_at[2]; }
  float Height() override { return m_at[3]; }
  bool Visible() override { return m_visible; }
  void setVisible(bool visible) override;
  void setCaption(const std::string& caption) override { m_host.captions[m_key] = caption; }
  std::string Caption() override { return m_host.captions[m_key]; }
  bool IsActive() override { return m_host.activePane == m_key; }
  void Activate() override;
  void setPinned(bool) override {}
  void Split(int orientation, int kind, double size, const std::string& first, const std::string& second) override {
    std::ostringstream line;
    line << "split " << (m_key.empty() ? "unnamed" : m_key) << " " << orientation << " " << kind << " " << size << " '"
         << first << "' '" << second << "'\n";
    m_host.log += line.str();
    m_children[0] = std::make_unique<Pane>(m_host, m_tree, first);
    m_children[1] = std::make_unique<Pane>(m_host, m_tree, second);
    m_sideBySide = orientation == 1;
    m_size = static_cast<float>(size);
  }
  SplitterPane& Child(int position) override { return *m_children[static_cast<std::size_t>(position - 1)]; }
  Pane* find(const std::string& key) {
    if (m_key == key) return this;
    for (const auto& child : m_children)
      if (Pane* found = child ? child->find(key) : nullptr) return found;
    return nullptr;
  }
  /// Children lie edge to edge, hidden ones keep their place.
  void place(const std::array<float, 4>& at) {
    m_at = at;
    if (!m_children[0]) return;
    const std::size_t along = m_sideBySide ? 0 : 1;
    std::array<float, 4> first = at, second = at;
    first[along + 2] = std::min(m_size, at[along + 2]);
    second[along] += first[along + 2];
    second[along + 2] -= first[along + 2];
    m_children[0]->place(first);
    m_children[1]->place(second);
  }

  FakeHost& m_host;
  PaneTree& m_tree;
  std::string m_key;
  bool m_visible = false;
  std::array<float, 4> m_at{};
  bool m_sideBySide = false;
  float m_size = 0;
  std::unique_ptr<Pane> m_children[2];
};

struct PaneTree : tarnsift::Splitter {
  explicit PaneTree(FakeHost& host) : m_host(host), m_root(host, *this, "root") {}
  tarnsift::SplitterPane& RootPane() override { return m_root; }
  tarnsift::SplitterPane& Panes(const std::string& key) override {
    if (auto* pane = m_root.find(key)) return *pane;
    throw platform::KeyError("no pane " + key);
  }
  void setRedraw(bool redraw) override {
    m_redraw = redraw;
    m_host.log += redraw ? "redraw\n" : "no redraw\n";
  }
  void Arrange() override {
    m_host.log += "arrange\n";
    arranged();
  }
  void Arrange(double left, double top, double width, double height) override {
    m_whole = {static_cast<float>(left), static_cast<float>(top), static_cast<float>(width),
               static_cast<float>(height)};
    arranged();
  }
  void arranged() {
    if (!m_redraw) return;
    m_root.place(m_whole);
    PanesArranged.raise();
  }
  std::string SaveLayout() override { return " as it stood"; }
  void LoadLayout(const std::string& layout) override {
    m_host.log += "layout '" + layout + "'\n";
    if (layout == "damaged") throw platform::Error("no layout");
    const std::string before = m_host.log;
    m_root.Split(1, 2, 1, "Programs", "");
    static_cast<Pane&>(m_root.Child(2)).Split(1, 2, 1, "Lists", "");
    static_cast<Pane&>(m_root.Child(2)).Child(2).Split(1, 2, 1, "Synonyms", "Source");
    for (const char* key : {"Programs", "Lists", "Synonyms", "Source"})
      m_root.find(key)->m_visible = true;
    m_host.log = before;
  }
  void Release() override { m_host.log += "splitter released\n"; }

  FakeHost& m_host;
  Pane m_root;
  std::array<float, 4> m_whole{};
  bool m_redraw = true;
};

void Pane::setVisible(bool visible) {
  m_visible = visible;
  m_tree.arranged();
}

void Pane::Activate() {
  if (std::exchange(m_host.activePane, m_key) != m_key) m_tree.PaneActivated.raise(*this);
}

struct Options : tarnsift::ProjectOptions {
  Options(FakeHost& host, platform::Document document) : m_host(host), m_document(std::move(document)) {}
  platform::Document Document() override { return m_document; }
  void ShowDialog(const std::string& path, platform::Form&, const std::string&, int, int, bool& result) override {
    m_host.log += "options " + path + "\n";
    if (m_host.inOptionsDialog) m_host.inOptionsDialog();
    result = true;
    FLO_Saved.raise();
  }
  void Save() override { m_host.log += "options saved\n"; }

  FakeHost& m_host;
  platform::Document m_document;
};

struct Log : OfHost<tarnsift::ActivityLog> {
  using OfHost::OfHost;
  void Attach(const Ref<Object>& object) override {
    m_host.log += object ? "log attached to an object\n" : "log attached\n";
  }
  bool Visible() override { return m_host.logVisible; }
  void setVisible(bool visible) override { m_host.logVisible = visible; }
  bool Minimized() override { return m_host.logMinimized; }
  void setMinimized(bool minimized) override { m_host.logMinimized = minimized; }
  void Write(const std::string& line) override { m_host.activity += line + "\n"; }
};

struct Reports : OfHost<tarnsift::ReportWriter> {
  using OfHost::OfHost;
  void setOutputFolder(const std::string& path) override {
    m_host.log += "reports to " + backslashed(path.substr(m_host.base.path().size())) + "\n";
  }
  void BeginReport(const std::string& format, const std::string& title, const std::string& styleSheet) override {
    m_host.report += "BeginReport " + format + "|" + title + "|" + styleSheet + "\n";
  }
  void BeginRecord() override { m_host.report += "{"; }
  void Field(const std::string& key, const Value& value) override {
    m_host.report += " " + key + "=" + value.asText() + ";";
  }
  void EndRecord() override { m_host.report += " }\n"; }
  void EndReport(const std::string& text) override { m_host.report += "EndReport '" + text + "'\n"; }
  void Show(platform::Form& owner) override { m_host.report += "Show for " + owner.Name() + "\n"; }
};

// Keeps carriage returns, as a plain reader does.
struct LineBox : tarnsift::BarelineBox {
  void LoadFile(const std::string& path) override {
    m_lines = platform::splitAt(platform::readText(platform::nativePath(path)), '\n');
    if (m_lines.back().empty()) m_lines.pop_back();
  }
  std::size_t LineCount() override { return m_lines.size(); }
  std::string Line(std::size_t number) override { return m_lines.at(number - 1); }

  std::vector<std::string> m_lines;
};

struct Sizes : OfHost<tarnsift::SizeClassDialog> {
  using OfHost::OfHost;
  bool Edit(Object* owner, const std::string& caption, std::int32_t& s, std::int32_t& m, std::int32_t& l) override {
    const auto& form = dynamic_cast<platform::Form&>(*owner);
    m_host.log += "sizes of " + caption + " for " + form.Name() + " " + std::to_string(s) + " " + std::to_string(m) +
                  " " + std::to_string(l) + (form.MousePointer == platform::kPointerDefault ? "\n" : " (busy)\n");
    if (m_host.newLimits)
      std::tie(s, m, l) = std::tuple((*m_host.newLimits)[0], (*m_host.newLimits)[1], (*m_host.newLimits)[2]);
    return m_host.confirmSizes;
  }
};

struct Names : OfHost<tarnsift::ProjectFactory> {
  using OfHost::OfHost;
  std::string AskName(Object&) override {
    m_host.log += "ask name\n";
    return m_host.newProject;
  }
};

struct Factory : OfHost<tarnsift::HostFactory> {
  using OfHost::OfHost;
  Ref<tarnsift::KVWorkSpace> createWorkspace() override { return m_host.workspace = new Workspace(m_host); }
  Ref<tarnsift::KVSource> createSource() override { return m_host.source = new Source(m_host); }
  Ref<tarnsift::Splitter> createSplitter() override { return m_host.splitter = new PaneTree(m_host); }
  Ref<tarnsift::ReportWriter> createReportWriter() override { return new Reports(m_host); }
  Ref<tarnsift::BarelineBox> createBarelineBox() override { return new LineBox; }
  Ref<tarnsift::SizeClassDialog> createSizeClassDialog() override { return new Sizes(m_host); }
};

struct FakeFrontend : Object {
  explicit FakeFrontend(FakeHost& host) : m_host(host), m_global(new Options(host, host.globalOptions)) {}
  Value Invoke(std::string_view member, std::span<Value> arguments) override {
    if (m_host.failingMembers.contains(std::string(member))) throw platform::Error(std::string(member) + " failed");
    if (member == "ProjectObject") return folder(m_host.projectName);
    if (member == "GetOrvaneName") {
      switch (arguments[0].asInteger()) {
      case 1:
        return m_host.path("Product");
      case 4:
        return m_host.base.path();
      case 6:
        return "Orvane";
      default:
        return m_host.projectName;
      }
    }
    if (member == "ProjectOptions") {
      if (!m_options) m_options = new Options(m_host, m_host.options);
      return m_options;
    }
    if (member == "CreateProject") {
      m_host.log += "create " + arguments[0].asText() + "\n";
      if (m_host.createsProjects) m_host.projects.push_back(arguments[0].asText());
      return m_host.createsProjects;
    }
    if (member == "GlobalOptions") return m_global;
    if (member == "Log") return Ref<Object>(new Log(m_host));
    if (member == "Initiate" || member == "Terminate") {
      m_host.attached = member == "Initiate";
      m_host.log +=
          std::string(member) + (m_host.attached ? " " + arguments[0].as<platform::Form>()->Name() : "") + "\n";
      return {};
    }
    return Object::Invoke(member, arguments);
  }

  FakeHost& m_host;
  Ref<Options> m_options;
  Ref<Options> m_global;
};

struct Paths : OfHost<tarnsift::ProductPaths> {
  using OfHost::OfHost;
  std::string ResourceFile(const std::string& fileName) override { return m_host.path("Product/" + fileName); }
  std::string HelpFile() override { return "tarnsift.help"; }
};

struct Strings : tarnsift::ProductStrings {
  std::string Text(const std::string& key) override { return key == "Tarnsift.Name" ? "Tarnsift" : "The Product"; }
  std::string Picture(const std::string& key) override { return "picture " + key; }
  std::string Format(const std::string& text, const std::vector<std::string>& values) override {
    return platform::fillTemplate(text, values);
  }
  void ShowAbout(const std::string& title) override { platform::screen().messageBox("about " + title, 0, title); }
  void ApplyToForm(platform::Form&) override {}
};

struct Captions : tarnsift::CaptionText {
  std::string EscapeText(const std::string& text) override { return platform::replaceAll(text, "'", "&apos;"); }
  std::string Format(const std::string& text, const std::vector<std::string>& values) override {
    return platform::fillTemplate(text, values);
  }
};

struct Probe : tarnsift::FileProbe {
  bool FileExists(const std::string& path, bool) override { return platform::fileExists(platform::nativePath(path)); }
  bool FolderExists(const std::string& path) override { return platform::folderExists(platform::nativePath(path)); }
  std::pair<std::string, std::string> SplitPath(const std::string& path) override {
    const auto at = path.rfind('\\');
    return {path.substr(0, at), path.substr(at + 1)};
  }
};

struct Settings : OfHost<tarnsift::SettingsStore> {
  using OfHost::OfHost;
  std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                         const std::string& whenMissing) override {
    const auto found = m_host.settings.find(application + "|" + section + "|" + key);
    return found == m_host.settings.end() ? whenMissing : found->second;
  }
  void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                   const std::string& value) override {
    m_host.settings[application + "|" + section + "|" + key] = value;
  }
};

struct Maths : tarnsift::MathTools {
  std::int64_t NonNegative(std::int64_t value) override { return std::max<std::int64_t>(value, 0); }
  double Max(double a, double b) override { return std::max(a, b); }
};

struct Comments : OfHost<tarnsift::CommentDialog> {
  using OfHost::OfHost;
  bool Ask(std::string& result, const std::string& prompt, const std::string& title, const std::string& text, int,
           const std::string& helpFile, int helpContext) override {
    m_host.commentAsked.push_back(prompt + "|" + title + "|" + text + "|" + helpFile + "|" +
                                  std::to_string(helpContext));
    if (m_host.newComment) result = *m_host.newComment;
    return m_host.newComment.has_value();
  }
};

struct Sorter : OfHost<tarnsift::ListViewSorter> {
  using OfHost::OfHost;
  void SortBy(platform::ListView& list, std::optional<std::size_t> column) override {
    m_host.log += "sort " + list.Name() + " " + std::to_string(list.Index()) +
                  (column ? " by " + std::to_string(*column) : "") + "\n";
    list.sortBy(column);
  }
};

} // namespace

Ref<Object> registerFakeObjects(FakeHost& host) {
  using platform::classes::registerObject;
  registerObject("RepositoryAccess", Ref<Object>(new Access(host)));
  registerObject("ProgramStore", Ref<Object>(new Stores(host)));
  registerObject("ProductPaths", Ref<Object>(new Paths(host)));
  registerObject("ProductStrings", Ref<Object>(new Strings));
  registerObject("CaptionText", Ref<Object>(new Captions));
  registerObject("FileProbe", Ref<Object>(new Probe));
  registerObject("SettingsStore", Ref<Object>(new Settings(host)));
  registerObject("ListViewSorter", Ref<Object>(new Sorter(host)));
  registerObject("MathTools", Ref<Object>(new Maths));
  registerObject("CommentDialog", Ref<Object>(new Comments(host)));
  registerObject("ProjectFactory", Ref<Object>(new Names(host)));
  registerObject("HostFactory", Ref<Object>(new Factory(host)));
  return new FakeFrontend(host);
}

void unregisterFakeObjects() {
  for (const char* name :
       {"RepositoryAccess", "ProgramStore", "ProductPaths", "ProductStrings", "CaptionText", "FileProbe",
        "SettingsStore", "ListViewSorter", "MathTools", "CommentDialog", "ProjectFactory", "HostFactory"})
    platform::classes::unregisterObject(name);
}

} // namespace tarnsift_test
