#include "tarnsift/fake_parts.hpp"

#include <array>
#include <sstream>

namespace tarnsift_test {

namespace {

using platform::Object;
using tarnsift::StoreConstruct;

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
    if (programOf(m_host, m_program)) m_store = openStore(m_host, m_program);
    return m_store;
  }
  void setCurrentObject(const Ref<StoreConstruct>& object) override { m_host.currentObject = keyOf(*object); }
  Ref<tarnsift::SourceFile> SourceFile() override {
    return m_host.sourceFile.empty() ? Ref<tarnsift::SourceFile>() : sourceFileAt(m_host.sourceFile);
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

struct Factory : OfHost<tarnsift::HostFactory> {
  using OfHost::OfHost;
  Ref<tarnsift::KVWorkSpace> createWorkspace() override { return m_host.workspace = new Workspace(m_host); }
  Ref<tarnsift::KVSource> createSource() override { return m_host.source = new Source(m_host); }
  Ref<tarnsift::Splitter> createSplitter() override { return m_host.splitter = new PaneTree(m_host); }
  Ref<tarnsift::ReportWriter> createReportWriter() override { return new Reports(m_host); }
  Ref<tarnsift::BarelineBox> createBarelineBox() override { return new LineBox; }
  Ref<tarnsift::SizeClassDialog> createSizeClassDialog() override { return new Sizes(m_host); }
};

} // namespace

Ref<tarnsift::HostFactory> makeHostFactory(FakeHost& host) {
  return new Factory(host);
}

} // namespace tarnsift_test
