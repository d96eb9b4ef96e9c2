#include "orvane/repository_file.hpp"

#include <functional>
#include <map>
#include <unordered_map>

#include <fmt/format.h>

#include "orvane/object_cursor.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

using platform::Ref;
using platform::Value;
using tarnsift::RepositoryObject;
using tarnsift::RepositoryType;

constexpr std::int64_t kProgramCode = 1;

struct TypeFacts {
  const char* name;
  const char* displayName;
  std::int64_t flags;
  const char* storeClass;
  std::vector<std::string> attributes;
};

const std::vector<TypeFacts>& typeFacts() {
  static const std::vector<TypeFacts> facts = {
      {kProjectType, "Project", 0, "", {"Name"}},
      {kSourceType,
       "COBOL programs",
       kProgramCode,
       "Kelvane.COBOL",
       {"Name", "Source", "Kelvane", "DataRelations", "Modified", "Fingerprint", "Reason", "Files", "Lines",
        "ChangeMagnitude"}},
      {kProgramType, "Programs", 0, "Kelvane.COBOL", {"Name", "SID"}},
  };
  return facts;
}

const TypeFacts& factsOf(const std::string& type) {
  for (const TypeFacts& facts : typeFacts())
    if (platform::equalsIgnoringCase(facts.name, type)) return facts;
  throw platform::KeyError("the repository has no type '" + type + "'");
}

class Type final : public RepositoryType {
 public:
  explicit Type(const TypeFacts& facts) : m_facts(facts) {}
  std::string Name() override { return m_facts.name; }
  std::int64_t Flags() override { return m_facts.flags; }
  std::string DisplayName() override { return m_facts.displayName; }
  std::string StoreClass() override { return m_facts.storeClass; }
  bool AttributeDefinition(const std::string& name) override {
    return std::any_of(m_facts.attributes.begin(), m_facts.attributes.end(),
                       [&](const std::string& known) { return platform::equalsIgnoringCase(known, name); });
  }

 private:
  const TypeFacts& m_facts;
};

class Schema_ final : public tarnsift::RepositorySchema {
 public:
  std::vector<Ref<RepositoryType>> ObjectTypes() override {
    std::vector<Ref<RepositoryType>> types;
    for (const TypeFacts& facts : typeFacts())
      types.emplace_back(new Type(facts));
    return types;
  }
  std::int64_t TypeFlags(const std::string& name) override {
    return platform::equalsIgnoringCase(name, "PROGRAMCODE") ? kProgramCode : 0;
  }
};

using Attributes = std::unordered_map<std::string, Value, platform::IgnoringCaseHash, platform::IgnoringCaseEqual>;

} // namespace

struct RepositoryFile::Data {
  std::string path;
  std::shared_ptr<platform::Database> database;
};

namespace {

class StoredObject final : public RepositoryObject {
 public:
  StoredObject(std::shared_ptr<RepositoryFile::Data> data, std::int64_t id, std::string type, Attributes attributes)
      : m_data(std::move(data)), m_id(id), m_type(std::move(type)), m_attributes(std::move(attributes)) {}

  std::string Id() override { return std::to_string(m_id); }
  Ref<RepositoryType> Type() override { return new orvane::Type(factsOf(m_type)); }
  std::string DisplayName() override { return Attribute("Name").asText(); }
  Value Attribute(const std::string& name) override {
    const auto found = m_attributes.find(name);
    return found == m_attributes.end() ? Value() : found->second;
  }
  bool IsMemberOf(const std::string& folderId) override {
    return !m_data->database
                ->OpenRecordset("select id from Relations where source = ? and relation = ? and target = ?",
                                {m_id, kBelongsTo, Value(folderId).asInteger()})
                ->Eof();
  }
  void AddRelation(const std::string& relation, const Ref<RepositoryObject>& object) override {
    if (!object) throw platform::Error("an object cannot be joined to nothing");
    const Value target = Value(object->Id()).asInteger();
    platform::Savepoint whole(*m_data->database);
    m_data->database->Execute("insert or ignore into Relations (source, relation, target) values (?, ?, ?)",
                              {m_id, relation, target});
    // The logical program goes where its source goes.
    if (m_type == kSourceType && platform::equalsIgnoringCase(relation, kBelongsTo))
      m_data->database->Execute(
          "insert or ignore into Relations (source, relation, target) select O.id, ?, ? from Objects O join Attributes "
          "A on A.object = O.id where O.type = ? and A.name = 'SID' and A.value = ?",
          {kBelongsTo, target, kProgramType, Id()});
    whole.commit();
  }
  void BeginUpdate() override { m_pending.clear(); }
  void SetAttribute(const std::string& name, const Value& value) override { m_pending[name] = value; }
  void CommitUpdate() override {
    platform::Savepoint whole(*m_data->database);
    for (const auto& [name, value] : m_pending) {
      if (value.isNull())
        m_data->database->Execute("delete from Attributes where object = ? and name = ?", {m_id, name});
      else // an equal value leaves row and indexes alone
        m_data->database->Execute(
            "insert into Attributes (object, name, value) values (?, ?, ?) on conflict (object, name) do update "
            "set value = excluded.value where value is not excluded.value",
            {m_id, name, value});
    }
    whole.commit();
    for (auto& [name, value] : m_pending)
      m_attributes[name] = value;
    m_pending.clear();
  }

 private:
  std::shared_ptr<RepositoryFile::Data> m_data;
  std::int64_t m_id;
  std::string m_type;
  Attributes m_attributes;
  std::map<std::string, Value> m_pending;
};

// Objects with all their attributes in one query; `condition` is over the table O.
std::vector<Ref<RepositoryObject>> readObjects(const std::shared_ptr<RepositoryFile::Data>& data,
                                               const std::string& condition, const std::vector<Value>& parameters) {
  const auto rows = data->database->OpenRecordset("select O.id as id, O.type as type, A.name as name, A.value as value "
                                                  "from Objects O left join Attributes A on A.object = O.id where " +
                                                      condition + " order by O.id",
                                                  parameters);
  std::vector<Ref<RepositoryObject>> objects;
  std::int64_t id = 0;
  std::string type;
  Attributes attributes;
  const auto close = [&] {
    if (id != 0) objects.emplace_back(new StoredObject(data, id, type, std::move(attributes)));
    attributes = {};
  };
  for (; !rows->Eof(); rows->MoveNext()) {
    if (const std::int64_t next = rows->Field("id").asInteger(); next != id) {
      close();
      id = next;
      type = rows->Field("type").asText();
    }
    if (const Value name = rows->Field("name"); !name.isNull()) attributes[name.asText()] = rows->Field("value");
  }
  close();
  return objects;
}

} // namespace

void createRepositoryFile(const std::string& path) {
  if (platform::fileExists(path)) return;
  platform::DatabaseBuilder builder(path);
  platform::Database& database = builder.database();
  database.Execute("create table Objects (id integer primary key autoincrement, type text collate nocase not null)");
  database.Execute("create table Attributes (object integer not null, name text collate nocase not null, value, "
                   "primary key (object, name)) without rowid");
  database.Execute("create table Relations (id integer primary key, source integer not null, relation text collate "
                   "nocase not null, target integer not null, "
                   "unique (source, relation, target))");
  database.Execute("create index byTarget on Relations (target)");
  database.Execute("create index byValue on Attributes (name, value collate nocase)");
  database.Execute("create index byType on Objects (type)");
  builder.finish();
}

RepositoryFile::RepositoryFile(const std::string& path) : m_data(std::make_shared<Data>()) {
  m_data->path = path;
  m_data->database = platform::dbEngine().OpenDatabase(path);
}

RepositoryFile::~RepositoryFile() = default;

Ref<tarnsift::RepositorySchema> RepositoryFile::Schema() {
  return new Schema_;
}

Ref<tarnsift::RepositoryCursor> RepositoryFile::SelectObjects(const std::string& type, const std::string& parentId,
                                                              const std::string& order) {
  auto objects =
      parentId.empty()
          ? readObjects(m_data, "O.type = ?", {type})
          : readObjects(m_data,
                        "O.type = ? and O.id in (select source from Relations where relation = ? and target = ?)",
                        {type, kBelongsTo, Value(parentId).asInteger()});
  if (!order.empty())
    std::stable_sort(objects.begin(), objects.end(), [&](const auto& a, const auto& b) {
      return platform::upper(a->Attribute(order).asText()) < platform::upper(b->Attribute(order).asText());
    });
  return new ObjectCursor(std::move(objects));
}

Ref<RepositoryObject> RepositoryFile::ObjectById(const std::string& id) {
  const auto objects = readObjects(m_data, "O.id = ?", {Value(id).asInteger()});
  return objects.empty() ? nullptr : objects.front();
}

Ref<RepositoryObject> RepositoryFile::FindByName(const std::string& type, const std::string& name, int) {
  if (auto found = findByAttribute(type, "Name", name)) return found;
  throw platform::KeyError(fmt::format("the repository has no {} '{}'", type, name));
}

std::string RepositoryFile::FilePath() {
  return m_data->path;
}

Ref<RepositoryObject> RepositoryFile::createObject(const std::string& type, const std::string& name) {
  platform::Savepoint whole(*m_data->database);
  m_data->database->Execute("insert into Objects (type) values (?)", {factsOf(type).name});
  const std::int64_t id = m_data->database->OpenRecordset("select max(id) as id from Objects")->Field("id").asInteger();
  m_data->database->Execute("insert into Attributes (object, name, value) values (?, 'Name', ?)", {id, name});
  whole.commit();
  return ObjectById(std::to_string(id));
}

void RepositoryFile::removeObject(const std::string& id) {
  platform::Savepoint whole(*m_data->database);
  const Value number = Value(id).asInteger();
  m_data->database->Execute("delete from Relations where source = ? or target = ?", {number, number});
  m_data->database->Execute("delete from Attributes where object = ?", {number});
  m_data->database->Execute("delete from Objects where id = ?", {number});
  whole.commit();
}

Ref<RepositoryObject> RepositoryFile::findByAttribute(const std::string& type, const std::string& attribute,
                                                      const std::string& value) {
  const auto objects = readObjects(
      m_data, "O.type = ? and O.id in (select object from Attributes where name = ? and value = ? collate nocase)",
      {type, attribute, value});
  return objects.empty() ? nullptr : objects.front();
}

void RepositoryFile::together(const std::function<void()>& work) {
  platform::Savepoint whole(*m_data->database);
  work();
  whole.commit();
}

} // namespace orvane
