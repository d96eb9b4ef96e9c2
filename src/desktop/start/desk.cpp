#include "desktop/start/desk.hpp"

#include <QApplication>
#include <QScreen>
#include <QTimer>

#include "desktop/help/help_desk.hpp"
#include "desktop/session.hpp"
#include "desktop/start/start_window.hpp"
#include "desktop/texts.hpp"
#include "desktop/twips.hpp"
#include "platform/runtime/error.hpp"

namespace desktop {

namespace {

class WaitCursor {
 public:
  WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
  ~WaitCursor() { QApplication::restoreOverrideCursor(); }
  WaitCursor(const WaitCursor&) = delete;
  WaitCursor& operator=(const WaitCursor&) = delete;
};

} // namespace

Desk::Desk(tarnsift::Ref<tarnsift::SettingsStore> settings) : m_settings(std::move(settings)) {}

Desk::~Desk() = default;

StartWindow& Desk::showStart(const std::string& notice) {
  if (!m_start) {
    m_start = std::make_unique<StartWindow>(m_settings);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    m_start->move(screen.center() - QPoint(m_start->width() / 2, m_start->height() / 2));
    m_start->onOpen = [this](const RecentProject& project) {
      QTimer::singleShot(0, this, [this, project] { openFromStart(project); }); // out of the page's own event
    };
    m_start->onHelp = [] { helpDesk().show(QStringLiteral("start")); };
    m_start->onClosed = [this] {
      if (!m_session) QApplication::quit();
    };
  }
  m_start->refresh();
  m_start->say(text(notice));
  m_start->show();
  m_start->raise();
  m_start->activateWindow();
  return *m_start;
}

bool Desk::open(const RecentProject& project) {
  const WaitCursor waiting;
  m_told = false;
  m_session = std::make_unique<Session>(orvane::BaseFolder::open(project.base), project.project, m_settings);
  m_session->onClosed = [this] { QTimer::singleShot(0, this, [this] { sessionClosed(); }); };
  try {
    m_session->start();
  } catch (...) {
    m_told = m_session->told();
    m_session.reset();
    throw;
  }
  rememberProject({m_session->host().base().path(), m_session->host().projectName()}, *m_settings);
  return m_session->host().hasWindow();
}

void Desk::openFromStart(const RecentProject& project) {
  if (m_session) return;
  m_start->setEnabled(false);
  m_start->say(text(Text::StartOpening).arg(text(project.project)));
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  std::string failure;
  try {
    if (open(project)) m_start->hide();
  } catch (const std::exception& error) {
    failure = error.what();
  }
  m_start->setEnabled(true);
  m_start->refresh();
  m_start->say(text(failure));
}

void Desk::sessionClosed() {
  m_session.reset();
  if (m_start)
    showStart();
  else
    QApplication::quit();
}

} // namespace desktop
