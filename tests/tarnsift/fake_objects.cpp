#include "tarnsift/fake_parts.hpp"

namespace tarnsift_test {

namespace {

using platform::Object;

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

struct Names : OfHost<tarnsift::ProjectFactory> {
  using OfHost::OfHost;
  std::string AskName(Object&) override {
    m_host.log += "ask name\n";
    return m_host.newProject;
  }
};

struct FakeFrontend : Object {
  explicit FakeFrontend(FakeHost& host) : m_host(host), m_global(new Options(host, host.globalOptions)) {}
  Value Invoke(std::string_view member, std::span<Value> arguments) override {
    if (m_host.failingMembers.contains(std::string(member))) throw platform::Error(std::string(member) + " failed");
    if (member == "ProjectObject") return projectFolder(m_host.projectName);
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
  registerObject("RepositoryAccess", makeRepositoryAccess(host));
  registerObject("ProgramStore", makeProgramStore(host));
  registerObject("ProductPaths", Ref<Object>(new Paths(host)));
  registerObject("ProductStrings", Ref<Object>(new Strings));
  registerObject("CaptionText", Ref<Object>(new Captions));
  registerObject("FileProbe", Ref<Object>(new Probe));
  registerObject("SettingsStore", Ref<Object>(new Settings(host)));
  registerObject("ListViewSorter", Ref<Object>(new Sorter(host)));
  registerObject("MathTools", Ref<Object>(new Maths));
  registerObject("CommentDialog", Ref<Object>(new Comments(host)));
  registerObject("ProjectFactory", Ref<Object>(new Names(host)));
  registerObject("HostFactory", makeHostFactory(host));
  return new FakeFrontend(host);
}

void unregisterFakeObjects() {
  for (const char* name :
       {"RepositoryAccess", "ProgramStore", "ProductPaths", "ProductStrings", "CaptionText", "FileProbe",
        "SettingsStore", "ListViewSorter", "MathTools", "CommentDialog", "ProjectFactory", "HostFactory"})
    platform::classes::unregisterObject(name);
}

} // namespace tarnsift_test
