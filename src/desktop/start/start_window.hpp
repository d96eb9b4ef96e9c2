#pragma once

#include <QWidget>
#include <functional>
#include <memory>

#include "desktop/start/analysis_job.hpp"
#include "desktop/start/recent_projects.hpp"

class QLabel;
class QListWidget;
class QPushButton;

namespace desktop {

/// The page where work begins: projects that were open, a base folder to open, sources to analyse.
class StartWindow final : public QWidget {
 public:
  explicit StartWindow(tarnsift::Ref<tarnsift::SettingsStore> settings);

  /// Opens a project in the workbench.
  std::function<void(const RecentProject&)> onOpen;
  std::function<void()> onHelp;
  /// The page was closed.
  std::function<void()> onClosed;
  /// The system's dialog for folders; "" when given up.
  std::function<QString(QWidget* parent, const QString& title)> askFolder;

  /// Reads the recent projects anew.
  void refresh();
  /// A sentence over the list, until the next command; "" takes it away.
  void say(const QString& sentence);
  /// Opens a base folder: the project in it, or the one that the analyst chooses of several.
  void openBase(const std::string& folder);
  /// Asks for sources and analyses them.
  void analyse(const QStringList& sources = {});

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  QWidget* actions();
  QWidget* recents();
  void lookWhatIsGone();
  void follow();
  std::optional<RecentProject> chosen() const;
  void openChosen();
  void verifyChosen();
  void removeChosen();
  void run(AnalysisRequest request);
  std::string chooseProject(const std::vector<std::string>& names);

  tarnsift::Ref<tarnsift::SettingsStore> m_settings;
  std::vector<RecentProject> m_projects;
  QLabel* m_notice = nullptr;
  QListWidget* m_list = nullptr;
  QPushButton* m_open = nullptr;
  QPushButton* m_verify = nullptr;
  QPushButton* m_remove = nullptr;
};

} // namespace desktop
