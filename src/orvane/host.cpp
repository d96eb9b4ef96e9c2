#include "orvane/host.hpp"

#include <fmt/format.h>

#include "orvane/host_objects.hpp"
#include "orvane/product.hpp"
#include "orvane/program_store.hpp"
#include "orvane/projects.hpp"
#include "orvane/settings.hpp"
#include "platform/files/files.hpp"
#include "tarnsift/store/found_items.hpp"

namespace orvane {

using platform::Object;
using platform::Ref;
using platform::Value;

std::string projectLockFile(const BaseFolder& base, const std::string& project) {
  return base.projectFolder(project) + "/.lock";
}
std::string baseLockFile(const BaseFolder& base) {
  return base.path() + "/.lock";
}

namespace {

// Stands while a window or a writing command is at work; found at a start, the session before ended without its close.
std::string sessionMark(const BaseFolder& base, const std::string& project) {
  return base.projectFolder(project) + "/.open";
}

// A dialog that the screen has set.
template<typename Dialog>
auto show(const Dialog& dialog) {
  if (!dialog) throw platform::Error("there is no screen to ask for the new project on");
  return dialog();
}

// Projects without an analyser of their own share the product's options: the title of the source pane.
Ref<OptionDocument> globalOptions() {
  return new OptionDocument("");
}

} // namespace

/// The host application object, called by member name.
class FrontendObject : public Object {
 public:
  explicit FrontendObject(Host& host) : m_host(host), m_global(globalOptions()) {}

  Value Invoke(std::string_view member, std::span<Value> arguments) override {
    const auto is = [&](std::string_view name) { return platform::equalsIgnoringCase(member, name); };
    if (is("ProjectObject")) return m_host.m_project;
    if (is("GetOrvaneName")) return name(arguments.empty() ? 0 : arguments[0].asInteger());
    if (is("ProjectOptions")) return m_host.m_options;
    if (is("GlobalOptions")) return m_global;
    if (is("Log")) return m_host.m_log;
    if (is("Initiate")) return m_host.attach(arguments[0]), Value();
    if (is("Terminate")) return m_host.detach(), Value();
    if (is("CreateProject")) return createProjectNamed(arguments[0].asText());
    return Object::Invoke(member, arguments);
  }

 private:
  std::string name(std::int64_t code) {
    switch (code) {
    case 1:
      return productFolder();
    case 4:
      return m_host.m_base.path();
    case 6:
      return kProductName;
    case 7:
      return m_host.m_projectName;
    default:
      throw platform::KeyError(fmt::format("the host has no name {}", code));
    }
  }
  bool createProjectNamed(const std::string& name) {
    try {
      createProject(m_host.m_base, *m_host.m_repository, name, m_host.m_options.get());
      return true;
    } catch (const platform::Error& error) {
      m_host.m_log->Write(error.what());
      return false;
    }
  }
  Host& m_host;
  Ref<OptionDocument> m_global;
};

Host::Host(BaseFolder base, const std::string& projectName, platform::Screen& screen,
           Ref<tarnsift::SettingsStore> settings)
    : m_base(std::move(base)), m_repository(new RepositoryFile(m_base.repositoryFile())), m_log(new Log),
      m_reports(std::make_shared<ReportSettings>()) {
  platform::setScreen(&screen);
  m_projectName = chooseProject(*m_repository, projectName);
  m_project = m_repository->FindByName(kProjectType, m_projectName, 0);
  m_options = new OptionDocument(optionFile(m_base.projectFolder(m_projectName)));
  m_search = new SearchService(m_base, m_repository, m_project);
  m_search->projectOptions = [options = m_options] { return options->Document(); };
  m_search->onProblem = [log = m_log](const std::string& line) { log->Write(line); };
  m_reports->outputFolder = m_base.outputFolder();
  m_reports->projectName = m_projectName;
  registerHostObjects(m_base, m_repository,
                      {.workspace = [this] { return m_workspace = new Workspace(m_base, m_search); },
                       .source = [this] { return m_sourceViewer = new SourceViewer; },
                       .splitter = [this] { return m_panes = new PaneTree; },
                       .reportWriter = [this] { return Ref<tarnsift::ReportWriter>(new ReportFile(m_reports)); },
                       .sizeClassDialog = [this] { return show(makeSizeClassDialog); },
                       .askProjectName = [this] { return show(askProjectName); },
                       .showAbout = [this](const std::string& title) { about(title); }});
  platform::classes::registerObject("ProgramStore", new ProgramStores(m_base));
  platform::classes::registerObject("SettingsStore",
                                    settings ? settings : Ref<tarnsift::SettingsStore>(new MemorySettings));
  m_frontend = new FrontendObject(*this);
}

Host::~Host() {
  if (m_window) platform::ignoring([this] { close(); });
  unregisterHostObjects();
  platform::dbEngine().settle();
}

void Host::start() {
  lock();
  const Ref<Object> engine = createFromComponent("Tarnsift.TarnsiftEngine");
  Value arguments[] = {m_frontend, "", Value()};
  engine->Invoke("Run", arguments);
  if (!m_window) throw platform::Error(fmt::format("{}: the window could not be opened", m_projectName));
}

bool Host::close() {
  if (!m_window) return true;
  return m_window->unload();
}

void Host::about(const std::string& title) {
  if (showAbout) return showAbout(title);
  platform::screen().messageBox(title + " " + TARNSIFT_VERSION, platform::kInformation, title);
}

void Host::lock() {
  m_baseLock =
      std::make_unique<FolderLock>(baseLockFile(m_base), FolderLock::Mode::shared, "the base folder " + m_base.path());
  m_projectLock = std::make_unique<FolderLock>(projectLockFile(m_base, m_projectName), FolderLock::Mode::exclusive,
                                               "project " + m_projectName);
}

void Host::attach(const Value& window) {
  const std::string mark = sessionMark(m_base, m_projectName);
  if (platform::fileExists(mark)) {
    m_log->Write("the session before ended without its close; all counts are made anew");
    platform::removeAll(m_base.native(tarnsift::foundItemsFolder(m_projectName) + "\\FoundItems.txt"));
  }
  platform::WriteFileAtomically(mark, "");
  m_window = window.as<platform::Form>().get();
  if (onWindow) onWindow(*m_window);
}

void Host::detach() {
  m_window = nullptr;
  if (onWindowGone) onWindowGone();
  platform::removeAll(sessionMark(m_base, m_projectName));
  m_projectLock.reset();
  m_baseLock.reset();
}

} // namespace orvane
