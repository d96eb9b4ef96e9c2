#include "desktop/application.hpp"

#include <fmt/format.h>

#include "desktop/icons.hpp"
#include "desktop/message_box.hpp"
#include "desktop/session.hpp"
#include "desktop/theme.hpp"
#include "desktop/window_place.hpp"
#include "orvane/projects.hpp"
#include "orvane/settings.hpp"
#include "platform/dao/dao.hpp"
#include "platform/runtime/application.hpp"

namespace desktop {

namespace {

void tell(const std::string& message) {
  showMessage(QApplication::activeWindow(), message, platform::kCritical, platform::App().Title);
}

// What is not named is taken from where the analyst stopped; a base folder named alone opens its last project.
Opening completed(const Opening& wanted, tarnsift::SettingsStore& settings) {
  Opening opening = wanted;
  const LastOpened last = lastOpened(settings);
  if (opening.base.empty()) {
    if (const auto nearest = orvane::BaseFolder::nearest("."))
      opening.base = *nearest;
    else
      opening.base = last.base;
  }
  if (opening.base.empty())
    throw platform::Error("no base folder here or above; make one with 'tarnsift init', or name it with -C DIR");
  opening.base = orvane::BaseFolder::open(opening.base).path();
  if (opening.project.empty() && opening.base == last.base) {
    const platform::Ref<orvane::RepositoryFile> repository(
        new orvane::RepositoryFile(orvane::BaseFolder::open(opening.base).repositoryFile()));
    const auto names = orvane::projectNames(*repository);
    if (std::find(names.begin(), names.end(), last.project) != names.end()) opening.project = last.project;
  }
  return opening;
}

int run(const Opening& wanted) {
  const tarnsift::Ref<tarnsift::SettingsStore> settings(new orvane::FileSettings(orvane::userSettingsFile()));
  const Opening opening = completed(wanted, *settings);
  Session session(orvane::BaseFolder::open(opening.base), opening.project, settings);
  session.onClosed = [] { QApplication::quit(); };
  try {
    session.start();
  } catch (const platform::Error& error) {
    if (!session.told()) throw;
    fmt::print(stderr, "tarnsift: {}\n", error.what());
    return 1;
  }
  saveLastOpened({opening.base, session.host().projectName()}, *settings);
  return session.host().hasWindow() ? QApplication::exec() : 0;
}

} // namespace

Application::Application(int& argc, char** argv, const std::string& themeChoice) : QApplication(argc, argv) {
  setApplicationName(QStringLiteral("tarnsift"));
  setApplicationDisplayName(QStringLiteral("Tarnsift"));
  setDesktopFileName(QStringLiteral("tarnsift"));
  setQuitOnLastWindowClosed(false);
  applyTheme(*this, themeChoice);
  setWindowIcon(icon("App"));
}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const std::exception& error) {
    tell(error.what());
    return false;
  }
}

int openWindow(const Opening& opening) {
  int status = 1;
  try {
    status = run(opening);
  } catch (const platform::Error& error) {
    fmt::print(stderr, "tarnsift: {}\n", error.what());
    tell(error.what());
  }
  platform::dbEngine().settle();
  return status;
}

} // namespace desktop
