#include "tarnsift/fake_host.hpp"

#include <sstream>

#include "platform/dao/dao.hpp"
#include "platform/runtime/application.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/session/engine.hpp"

namespace tarnsift_test {

namespace {

constexpr const char* kOptions = R"(<OPTIONS><CASE ID="Tarnsift">
  <BOOL NAME="ApplySelected" VALUE="false"/>
  <TEXT NAME="DefaultSearchName" VALUE="Names:CUST*"/>
  <GROUP NAME="Search"><BOOL NAME="OverrideStatus" VALUE="false"/><BOOL NAME="RefreshLists" VALUE="false"/></GROUP>
  <GROUP NAME="SynonymSearch"><BOOL NAME="OverrideStatus" VALUE="false"/></GROUP>
  <GROUP NAME="Synonyms">
    <BOOL NAME="HighAffinity" VALUE="true"><LIST NAME="HighAffinityRels">
      <CASE NAME="Move" CHECKED="true"/><CASE NAME="Compare" CHECKED="false"/></LIST></BOOL>
    <BOOL NAME="LowAffinity" VALUE="false"><LIST NAME="LowAffinityRels"><CASE NAME="Call" CHECKED="true"/></LIST></BOOL>
    <BOOL NAME="Redefines" VALUE="false"><BOOL NAME="ViewAllRedefines" VALUE="false"/></BOOL>
  </GROUP>
  <GROUP NAME="AffectedCodeReport"><NUMBER NAME="NeighbourhoodSize" VALUE="1"/><BOOL NAME="ShowUnused" VALUE="false"/></GROUP>
</CASE></OPTIONS>)";

constexpr const char* kGlobalOptions =
    R"(<OPTIONS><CASE ID="Kelvane"><LIST NAME="Components"><CASE NAME="KVSource" CAPTION="COBOL source"/></LIST></CASE></OPTIONS>)";

constexpr std::string_view kListLetters = "WAC";

Value statusOf(const std::string& letter) {
  const auto at = kListLetters.find(letter);
  return at == std::string_view::npos ? Value() : Value(static_cast<std::int64_t>(at));
}

std::string lineOf(char list, const std::string& key, const std::string& name, const std::string& comment) {
  return std::string("  ") + list + " " + key + " " + name + (comment.empty() ? "" : ": " + comment) + "\n";
}

} // namespace

FakeHost::FakeHost(std::string project) : projectName(std::move(project)), projects{projectName} {
  platform::setScreen(&screen);
  options = platform::Document::loadText(kOptions);
  globalOptions = platform::Document::loadText(kGlobalOptions);
  for (const char* folder : {"Projects", "Analysis", "Product", "Sources"})
    platform::createFolder(path(folder));
  platform::createFolder(path("Projects/" + projectName));
  writeFile("Product/AffectedCodeRM.xsl",
            "<style no='$$Line No.$$' at='$$Report generated at$$' again='$$Line No.$$'/>");
  m_frontend = registerFakeObjects(*this);
}

FakeHost::~FakeHost() {
  if (tarnsift::windowExists() && window().Loaded()) {
    window().setEnabled(true);
    EXPECT_TRUE(platform::ignoring([this] { window().unload(); }));
  }
  EXPECT_EQ(storesOpen, 0) << "an analysis store was not closed";
  unregisterFakeObjects();
  platform::setScreen(nullptr);
  platform::dbEngine().settle();
}

void FakeHost::add(const Program& program) {
  addWithColumns(program, projectName + "_Status", projectName + "_Classification");
}

void FakeHost::addWithColumns(const Program& program, const std::string& status, const std::string& classification) {
  using platform::ColumnKind;
  programs.push_back(program);
  writeFile("Analysis/" + program.id + ".kva", "");
  platform::DatabaseBuilder builder(path("Analysis/" + program.id + ".mdb"));
  platform::Database& database = builder.database();
  database.createTable("Constructs", {{"KVID", ColumnKind::key},
                                      {"Name", ColumnKind::text},
                                      {"Offset", ColumnKind::integer},
                                      {"Size", ColumnKind::integer},
                                      {status, ColumnKind::integer},
                                      {classification, ColumnKind::text}});
  database.createTable("Relationships",
                       {{"KVID1", ColumnKind::key}, {"KVID2", ColumnKind::key}, {"RelID", ColumnKind::key}});
  {
    platform::Insertion rows(database, "Constructs", {"KVID", "Name", "Offset", "Size", status, classification});
    std::istringstream lines(program.constructs);
    std::string key, name, list, comment;
    for (int offset = 0, size = 0; lines >> key >> name >> offset >> size >> list;) {
      std::getline(lines, comment);
      comment = platform::trimmed(comment);
      rows.row(key, name, offset, size, statusOf(list), comment.empty() ? Value() : Value(comment));
    }
    platform::Insertion relations(database, "Relationships", {"KVID1", "RelID", "KVID2"});
    std::istringstream pairs(program.relations);
    for (std::string from, kind, to; pairs >> from >> kind >> to;)
      relations.row(from, kind, to);
  }
  database.Execute("create index ID on Constructs(KVID)");
  builder.finish();
}

void FakeHost::writeFile(const std::string& relativePath, const std::string& text) {
  platform::WriteFileAtomically(path(relativePath), text);
}

void FakeHost::setOption(const std::string& xpath, const std::string& value, const char* attribute) {
  options.selectSingleNode(xpath).setAttribute(attribute, value);
}

long FakeHost::run() {
  tarnsift::TarnsiftEngine* engine = new tarnsift::TarnsiftEngine;
  const Ref<platform::Object> kept(engine);
  return engine->Run(m_frontend, "any", Value());
}

bool FakeHost::close() {
  return window().unload();
}

void FakeHost::click(const std::string& program) {
  window().lvPrograms.selectAll(false);
  window().lvPrograms.setSelectedItem(&window().lvPrograms.ListItems.Item(program));
  window().lvPrograms.MouseUp.raise(platform::kLeftButton, platform::kNoShift, 0, 0);
}

void FakeHost::press(const std::string& shortcut) {
  for (const auto& control : window().controls())
    if (auto* item = dynamic_cast<platform::MenuItem*>(control.get()); item && item->Shortcut == shortcut)
      return item->choose();
  ADD_FAILURE() << "no command has the key " << shortcut;
}

void FakeHost::mark(int list, const std::vector<std::string>& keys) {
  platform::ListView& view = *window().lvList[static_cast<std::size_t>(list)];
  if (list < 3)
    window().tsLists.select(static_cast<std::size_t>(list) + 1);
  else
    view.SetFocus();
  view.selectAll(false);
  for (const auto& key : keys)
    view.ListItems.Item(key).setSelected(true);
  view.setSelectedItem(keys.empty() ? nullptr : &view.ListItems.Item(keys.front()));
  view.MouseUp.raise(platform::kLeftButton, platform::kNoShift, 0, 0);
}

std::string FakeHost::synonyms() {
  std::string text;
  const platform::ListView& view = *window().lvList[3];
  const std::size_t comment = view.ColumnHeaders.IndexOf("Comment") - 1;
  for (std::size_t i = 1; i <= view.ListItems.Count(); ++i) {
    const platform::ListItem& row = view.ListItems.Item(i);
    text +=
        "[" + std::to_string(row.SmallIcon) + "] " + row.Key() + " " + row.Text + ": " + row.SubItems(comment) + "\n";
  }
  return text;
}

std::string FakeHost::rowsOf(const std::string& program) {
  const std::string& status = tarnsift::globals().StatusColumn;
  const std::string& classification = tarnsift::globals().ClassificationColumn;
  const auto rows = database(program)->OpenRecordset("select * from Constructs where " + status +
                                                     " is not null order by " + status + ", KVID");
  std::string text;
  for (; !rows->Eof(); rows->MoveNext())
    text += lineOf(kListLetters.at(static_cast<std::size_t>(rows->Field(status).asInteger())),
                   rows->Field("KVID").asText(), rows->Field("Name").asText(), rows->Field(classification).asText());
  return text;
}

std::string FakeHost::entries() {
  std::string text;
  for (std::size_t list = 0; list < 3; ++list) {
    const platform::ListView& view = *window().lvList[list];
    const std::size_t comment = view.ColumnHeaders.IndexOf("Comment") - 1;
    for (std::size_t i = 1; i <= view.ListItems.Count(); ++i) {
      const platform::ListItem& entry = view.ListItems.Item(i);
      text += lineOf(kListLetters[list], entry.Key(), entry.Text, entry.SubItems(comment));
    }
  }
  return text;
}

std::string FakeHost::counts() {
  std::string text;
  const platform::ListView& view = window().lvPrograms;
  for (std::size_t i = 1; i <= view.ListItems.Count(); ++i) {
    const platform::ListItem& row = view.ListItems.Item(i);
    text += row.Text;
    for (std::size_t list = 1; list <= 3; ++list)
      text += " " + std::string(platform::trimmed(row.SubItems(list)));
    text += "\n";
  }
  return text;
}

// Rows are compared with entries in the order of their keys, whatever order the list has.
std::string FakeHost::state() {
  std::string text;
  std::string counted;
  for (std::size_t i = 1; i <= window().lvPrograms.ListItems.Count(); ++i) {
    const platform::ListItem& row = window().lvPrograms.ListItems.Item(i);
    const std::string rows = rowsOf(row.Key());
    std::string line = row.Text;
    for (const char letter : {'W', 'A', 'C'}) {
      std::size_t count = 0;
      for (std::size_t at = 0; (at = rows.find(std::string("  ") + letter + " ", at)) != std::string::npos; ++at)
        ++count;
      line += " " + std::to_string(count);
    }
    counted += line + "\n";
    text += line + "\n" + rows;
    if (row.Key() != window().LoadedProgram) continue;
    std::vector<std::string> shown = platform::splitAt(entries(), '\n');
    std::sort(shown.begin(), shown.end());
    std::vector<std::string> stored = platform::splitAt(rows, '\n');
    std::sort(stored.begin(), stored.end());
    EXPECT_EQ(shown, stored) << "the lists of " << row.Key() << " do not show its database";
  }
  EXPECT_EQ(counts(), counted) << "the counts do not show the databases";
  return text;
}

std::vector<std::string> FakeHost::messages() {
  std::vector<std::string> lines;
  for (const auto& message : std::exchange(screen.messages, {}))
    lines.push_back(std::to_string(message.style) + "|" + message.title + "|" + message.text);
  return lines;
}

std::shared_ptr<platform::Database> FakeHost::database(const std::string& program) {
  return platform::dbEngine().OpenDatabase(path("Analysis/" + program + ".mdb"));
}

} // namespace tarnsift_test
