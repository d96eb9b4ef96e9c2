#include "desktop/session.hpp"

#include "desktop/main_window.hpp"
#include "desktop/plain_source.hpp"

namespace desktop {

Session::Session(orvane::BaseFolder base, const std::string& project, tarnsift::Ref<tarnsift::SettingsStore> settings)
    : m_host(std::make_unique<orvane::Host>(std::move(base), project, m_screen, std::move(settings))) {
  m_host->onWindow = [this](platform::Form& form) {
    const HostViews views{.source = [](orvane::Host& host, QWidget* parent) { return new PlainSource(host, parent); },
                          .workspaceBar = {}};
    m_window = std::make_unique<MainWindow>(form, *m_host, m_screen, views);
    m_window->onLeft = [this] {
      if (onClosed) onClosed();
    };
    m_window->appear();
  };
  m_host->onWindowGone = [this] {
    if (m_window) m_window->leave();
  };
}

// The host closes a window that is still open, which needs its widgets.
Session::~Session() {
  m_host.reset();
  m_window.reset();
}

void Session::start() {
  m_host->start();
  if (m_window) m_window->open();
}

} // namespace desktop
