#include "desktop/session.hpp"

#include "desktop/help/help_desk.hpp"
#include "desktop/main_window.hpp"
#include "desktop/options/option_dialog.hpp"
#include "desktop/report/report_window.hpp"
#include "desktop/source/source_view.hpp"
#include "desktop/source/workspace_bar.hpp"
#include "orvane/sources.hpp"

namespace desktop {

Session::Session(orvane::BaseFolder base, const std::string& project, tarnsift::Ref<tarnsift::SettingsStore> settings)
    : m_host(std::make_unique<orvane::Host>(std::move(base), project, m_screen, std::move(settings))) {
  m_screen.onHelp = [](const std::string&, int command, int context) { helpDesk().show(command, context); };
  m_host->onWindow = [this](platform::Form& form) {
    m_window = std::make_unique<MainWindow>(form, *m_host, m_screen, sourceViews());
    addDialogs();
    m_window->onLeft = [this] {
      if (onClosed) onClosed();
    };
    m_window->appear();
  };
  m_host->onWindowGone = [this] {
    if (m_window) m_window->leave();
  };
}

// The view comes first, the bar above it drives it.
HostViews Session::sourceViews() {
  auto* view = new SourceView(m_host->base(),
                              [this] { return orvane::readingOptions(m_host->base(), m_host->options().Document()); });
  view->attach(*m_host->workspace());
  const auto placed = [](QWidget* widget, QWidget* parent) {
    widget->setParent(parent);
    return widget;
  };
  return {.source = [view, placed](orvane::Host&, QWidget* parent) { return placed(view, parent); },
          .workspaceBar = [view](orvane::Host&, QWidget* parent) { return new WorkspaceBar(*view, parent); }};
}

void Session::addDialogs() {
  m_host->options().dialog = [this](platform::Document& document, const std::string& path) {
    return OptionDialog(document, path, m_window.get()).exec() == QDialog::Accepted;
  };
  m_host->reports().show = [this](orvane::FinishedReport report) {
    (new ReportWindow(std::move(report), m_host->base().outputFolder(), {}, m_window.get()))->show();
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
