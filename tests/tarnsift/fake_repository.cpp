#include "tarnsift/fake_parts.hpp"

#include <algorithm>

namespace tarnsift_test {

namespace {

constexpr std::int64_t kProgramCode = 4;

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
        found.push_back(projectFolder(name));
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
    return projectFolder(name);
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

} // namespace

Ref<tarnsift::RepositoryObject> projectFolder(const std::string& name) {
  return new Item(name, "FOLDER", {{"Name", name}}, {});
}

Ref<tarnsift::RepositoryAccess> makeRepositoryAccess(FakeHost& host) {
  return new Access(host);
}

} // namespace tarnsift_test
