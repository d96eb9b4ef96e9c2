#include "desktop/application.hpp"

#include <QLibraryInfo>
#include <QTimer>
#include <QTranslator>
#include <fmt/format.h>

#include "desktop/help/help_desk.hpp"
#include "desktop/icons.hpp"
#include "desktop/message_box.hpp"
#include "desktop/start/desk.hpp"
#include "desktop/start/start_window.hpp"
#include "desktop/theme.hpp"
#include "desktop/window_place.hpp"
#include "orvane/projects.hpp"
#include "orvane/settings.hpp"
#include "platform/dao/dao.hpp"
#include "platform/runtime/application.hpp"
#include "platform/runtime/string_table.hpp"

namespace desktop {

namespace {

void tell(const std::string& message) {
  showMessage(QApplication::activeWindow(), message, platform::kCritical, platform::App().Title);
}

std::vector<std::string> projectsOf(const std::string& base) {
  const platform::Ref<orvane::RepositoryFile> repository(
      new orvane::RepositoryFile(orvane::BaseFolder::open(base).repositoryFile()));
  return orvane::projectNames(*repository);
}

// What is not named is taken from where the analyst stopped; a base folder named alone opens its last project. No base
// folder when there is none yet.
RecentProject completed(const Opening& wanted, tarnsift::SettingsStore& settings) {
  RecentProject opening{wanted.base, wanted.project};
  const LastOpened last = lastOpened(settings);
  if (opening.base.empty()) opening.base = orvane::BaseFolder::nearest(".").value_or(last.base);
  if (opening.base.empty()) return opening;
  opening.base = orvane::BaseFolder::open(opening.base).path();
  if (opening.project.empty() && opening.base == last.base) {
    const auto names = projectsOf(opening.base);
    if (std::find(names.begin(), names.end(), last.project) != names.end()) opening.project = last.project;
  }
  return opening;
}

// What was named must open; else the start page helps on.
int run(const Opening& wanted) {
  Desk desk(tarnsift::Ref<tarnsift::SettingsStore>(new orvane::FileSettings(orvane::userSettingsFile())));
  const bool isNamed = !wanted.base.empty() || !wanted.project.empty();
  try {
    const RecentProject opening = wanted.start ? RecentProject() : completed(wanted, desk.settings());
    if (opening.base.empty() && isNamed)
      throw platform::Error("no base folder here or above; make one with 'tarnsift init', or name it with -C DIR");
    if (opening.base.empty()) {
      desk.showStart();
    } else if (opening.project.empty() && projectsOf(opening.base).size() != 1) {
      StartWindow& page = desk.showStart();
      QTimer::singleShot(0, &page, [&page, base = opening.base] { page.openBase(base); });
    } else if (!desk.open(opening)) {
      return 0;
    }
  } catch (const platform::Error& error) {
    if (isNamed && !desk.told()) throw;
    fmt::print(stderr, "tarnsift: {}\n", error.what());
    if (isNamed) return 1;
    desk.showStart(error.what());
  }
  return QApplication::exec();
}

// The toolkit's own dialogs; where its translations are not installed they are English.
void translateToolkit() {
  if (platform::language() == platform::Language::English) return;
  const bool isJapanese = platform::language() == platform::Language::Japanese;
  auto* translator = new QTranslator(qApp);
  if (translator->load(isJapanese ? QStringLiteral("qtbase_ja") : QStringLiteral("qtbase_ko"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
    QCoreApplication::installTranslator(translator);
}

} // namespace

Application::Application(int& argc, char** argv, const std::string& themeChoice) : QApplication(argc, argv) {
  setApplicationName(QStringLiteral("tarnsift"));
  setDesktopFileName(QStringLiteral("tarnsift"));
  setQuitOnLastWindowClosed(false);
  translateToolkit();
  applyTheme(*this, themeChoice);
  setWindowIcon(icon("App"));
  helpDesk(); // listens for F1
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
