#include "desktop/session.hpp"

#include "desktop/dialogs/host_dialogs.hpp"
#include "desktop/help/help_desk.hpp"
#include "desktop/jump.hpp"
#include "desktop/main_window.hpp"
#include "desktop/options/option_dialog.hpp"
#include "desktop/report/report_window.hpp"
#include "desktop/search/search_dialog.hpp"
#include "desktop/source/source_view.hpp"
#include "desktop/source/workspace_bar.hpp"
#include "desktop/texts.hpp"
#include "desktop/twips.hpp"
#include "orvane/program_store.hpp"
#include "orvane/sources.hpp"

namespace desktop {

namespace {

constexpr const char* kFilterOptions = "//CASE[@ID='Tarnsift']/LIST/CASE[@NAME='Filters']";

} // namespace

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
  m_source = new SourceView(m_host->base(),
                            [this] { return orvane::readingOptions(m_host->base(), m_host->options().Document()); });
  m_source->attach(*m_host->workspace());
  return {.source = m_source, .workspaceBar = new WorkspaceBar(*m_source)};
}

void Session::addDialogs() {
  addHostDialogs(*m_host, m_screen, [this] { return m_window->commandInWork(); });
  m_host->options().dialog = [this](platform::Document& document, const std::string& path) {
    return editOptions(document, path);
  };
  m_host->search().chooseCriterion = [this](const std::string& start) { return chooseCriterion(start); };
  m_host->reports().show = [this](orvane::FinishedReport report) {
    const auto jump = [this](const ReportPlace& place) {
      if (!m_host->hasWindow() || !jumpTo(m_host->window(), *m_host, *m_source, place)) return;
      m_window->sync();
      m_window->raise();
      m_window->activateWindow();
    };
    (new ReportWindow(std::move(report), m_host->base().outputFolder(), jump, m_window.get()))->show();
  };
}

bool Session::editOptions(platform::Document& document, const std::string& path) {
  return OptionDialog(document, path, m_window.get()).exec() == QDialog::Accepted;
}

std::optional<std::string> Session::chooseCriterion(const std::string& start) {
  orvane::OptionDocument& options = m_host->options();
  const auto& programs = m_host->window().get<platform::ListView>("lvPrograms");
  const platform::ListItem* row = programs.ListItems.find(m_host->workspace()->CurrentProgram());
  tarnsift::Ref<tarnsift::AnalysisStore> store;
  platform::ignoring([&] { store = m_host->workspace()->AnalysisStore(); });
  const std::optional<std::size_t> scope = m_host->search().scopeSize();
  SearchDialog dialog({.options = options.Document(),
                       .saveOptions = [&] { options.Save(); },
                       .editFilter =
                           [&] {
                             platform::Document document = options.Document();
                             if (editOptions(document, kFilterOptions)) options.Save();
                           },
                       .program = [&]() -> const orvane::StoreData* {
                         const auto* analysis = dynamic_cast<const orvane::StoredAnalysis*>(store.get());
                         return analysis ? &analysis->data() : nullptr;
                       },
                       .programName = row ? text(row->Text) : QString(),
                       .scope = scope ? text(Text::SearchScopeSelected).arg(*scope).arg(programs.ListItems.Count())
                                      : text(Text::SearchScopeAll)},
                      start, m_window.get());
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.criterion();
}

// The host closes a window that is still open, which needs its widgets.
Session::~Session() {
  removeHostDialogs(*m_host);
  m_host.reset();
  m_window.reset();
}

void Session::start() {
  m_host->start();
  if (m_window) m_window->open();
}

} // namespace desktop
