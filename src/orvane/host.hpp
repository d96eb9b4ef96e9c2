#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "orvane/activity_log.hpp"
#include "orvane/base_folder.hpp"
#include "orvane/lock.hpp"
#include "orvane/options.hpp"
#include "orvane/report_file.hpp"
#include "orvane/repository_file.hpp"
#include "orvane/search_service.hpp"
#include "orvane/splitter.hpp"
#include "orvane/workspace.hpp"
#include "platform/controls/screen.hpp"

namespace orvane {

/// The embedded host of one project: registers its global objects, starts the component's engine through its exported
/// entry points, and holds the window that the engine opens.
class Host {
 public:
  /// Opens a base folder and a project of it. `screen` shows what the component says; without `settings` they live in
  /// memory. Throws platform::Error in one line when either cannot be opened or another process holds it.
  Host(BaseFolder base, const std::string& projectName, platform::Screen& screen,
       tarnsift::Ref<tarnsift::SettingsStore> settings = {});
  ~Host();
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  /// Takes the project's lock until the window closes, creates Tarnsift.TarnsiftEngine and calls Run. Throws
  /// platform::Error with the component's message when no window came.
  void start();
  /// Takes the project's lock until this object goes, for work without a window.
  void hold() { lock(); }
  tarnsift::Ref<platform::Object> frontend() const { return m_frontend; }
  /// The component's main window; only after start().
  platform::Form& window() const { return *m_window; }
  /// Closes the window through its own close path. False when it refused.
  bool close();
  bool hasWindow() const { return m_window != nullptr; }
  /// Called when the component hands its window over, before it fills it: a screen makes the widgets here.
  std::function<void(platform::Form&)> onWindow;
  /// Called when the window has closed and only the component's last steps follow.
  std::function<void()> onWindowGone;

  /// The host's controls in the window that was opened last; nothing before.
  tarnsift::Ref<Workspace> workspace() const { return m_workspace; }
  tarnsift::Ref<SourceViewer> sourceViewer() const { return m_sourceViewer; }
  tarnsift::Ref<PaneTree> panes() const { return m_panes; }

  const BaseFolder& base() const { return m_base; }
  RepositoryFile& repository() { return *m_repository; }
  tarnsift::Ref<tarnsift::RepositoryObject> project() const { return m_project; }
  const std::string& projectName() const { return m_projectName; }
  OptionDocument& options() { return *m_options; }
  Log& log() { return *m_log; }
  SearchService& search() { return *m_search; }
  ReportSettings& reports() { return *m_reports; }

  /// The dialogs of a derived project: its name ("" when given up) and the limits of the change sizes. Without them the
  /// component's command is an error.
  std::function<std::string()> askProjectName;
  std::function<tarnsift::Ref<tarnsift::SizeClassDialog>()> makeSizeClassDialog;
  /// Shows what the product is; a message box with name and version without it.
  std::function<void(const std::string& title)> showAbout;

 private:
  friend class FrontendObject;
  void lock();
  void about(const std::string& title);
  void attach(const platform::Value& window); ///< Frontend.Initiate
  void detach();                              ///< Frontend.Terminate

  BaseFolder m_base;
  std::string m_projectName;
  tarnsift::Ref<RepositoryFile> m_repository;
  tarnsift::Ref<tarnsift::RepositoryObject> m_project;
  tarnsift::Ref<OptionDocument> m_options;
  tarnsift::Ref<Log> m_log;
  tarnsift::Ref<SearchService> m_search;
  std::shared_ptr<ReportSettings> m_reports;
  std::unique_ptr<FolderLock> m_baseLock;
  std::unique_ptr<FolderLock> m_projectLock;
  tarnsift::Ref<platform::Object> m_frontend;
  tarnsift::Ref<Workspace> m_workspace;
  tarnsift::Ref<SourceViewer> m_sourceViewer;
  tarnsift::Ref<PaneTree> m_panes;
  platform::Form* m_window = nullptr;
};

/// Files of a project's folder that the host keeps beside its options.
std::string projectLockFile(const BaseFolder& base, const std::string& project);
std::string baseLockFile(const BaseFolder& base);

} // namespace orvane
