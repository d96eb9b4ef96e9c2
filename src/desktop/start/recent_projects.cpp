#include "desktop/start/recent_projects.hpp"

#include <QStringList>
#include <QUrl>

#include "desktop/window_place.hpp"

namespace desktop {

namespace {

constexpr const char* kApplication = "Tarnsift";
constexpr const char* kSection = "Recent";
constexpr const char* kKey = "Projects";
constexpr std::size_t kMost = 12;

// One a line, base and project with a blank between; blanks and line ends in them are escaped.
QByteArray escaped(const std::string& part) {
  return QUrl::toPercentEncoding(QString::fromStdString(part), "/");
}

std::string plain(const QString& part) {
  return QUrl::fromPercentEncoding(part.toLatin1()).toStdString();
}

void save(const std::vector<RecentProject>& projects, tarnsift::SettingsStore& settings) {
  QByteArray lines;
  for (const RecentProject& one : projects)
    lines += escaped(one.base) + ' ' + escaped(one.project) + '\n';
  settings.SaveSetting(kApplication, kSection, kKey, lines.toStdString());
}

} // namespace

std::vector<RecentProject> recentProjects(tarnsift::SettingsStore& settings) {
  std::vector<RecentProject> projects;
  const QString lines = QString::fromStdString(settings.GetSetting(kApplication, kSection, kKey, ""));
  for (const QString& line : lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
    const QStringList parts = line.split(QLatin1Char(' '));
    if (parts.size() == 2 && projects.size() < kMost) projects.push_back({plain(parts[0]), plain(parts[1])});
  }
  return projects;
}

void rememberProject(const RecentProject& opened, tarnsift::SettingsStore& settings) {
  auto projects = recentProjects(settings);
  std::erase(projects, opened);
  projects.insert(projects.begin(), opened);
  if (projects.size() > kMost) projects.resize(kMost);
  save(projects, settings);
  saveLastOpened({opened.base, opened.project}, settings);
}

void forgetProject(const RecentProject& gone, tarnsift::SettingsStore& settings) {
  auto projects = recentProjects(settings);
  std::erase(projects, gone);
  save(projects, settings);
  const LastOpened last = lastOpened(settings);
  if (last.base == gone.base && last.project == gone.project) saveLastOpened({}, settings);
}

} // namespace desktop
