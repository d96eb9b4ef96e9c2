#include "desktop/main_window.hpp"

#include <QApplication>
#include <QCloseEvent>
#include <QShortcut>
#include <QSplitter>
#include <QWindow>

#include "desktop/cool_bar.hpp"
#include "desktop/icons.hpp"
#include "desktop/input_gate.hpp"
#include "desktop/list_widget.hpp"
#include "desktop/log_panel.hpp"
#include "desktop/menus.hpp"
#include "desktop/pane_area.hpp"
#include "desktop/qt_screen.hpp"
#include "desktop/tab_strip.hpp"
#include "desktop/texts.hpp"
#include "desktop/twips.hpp"
#include "desktop/window_place.hpp"
#include "platform/runtime/application.hpp"

namespace desktop {

namespace {

constexpr double kSmallest = 3000; // twips, as the component has it
constexpr const char* kPanes[] = {"Programs", "Lists", "Synonyms", "Source"};
constexpr Text kHints[] = {Text::NoPrograms, Text::NoWorking, Text::NoAffected, Text::NoClean, Text::NoSynonyms};
constexpr int kSynonyms = 3;

QString withoutAccessKey(const std::string& caption) {
  return text(caption).remove(QLatin1Char('&'));
}

} // namespace

MainWindow::MainWindow(platform::Form& form, orvane::Host& host, QtScreen& screen, const HostViews& views)
    : m_form(form), m_host(host), m_screen(screen) {
  setObjectName(text(form.Name()));
  setMinimumSize(toPixels(kSmallest), toPixels(kSmallest));
  setWindowIcon(icon("App"));
  setContextMenuPolicy(Qt::NoContextMenu);
  m_menus = std::make_unique<Menus>(form, *menuBar());
  m_menus->afterEvent = [this] { sync(); };
  m_area = new PaneArea(host.panes(), this);
  auto* split = new QSplitter(Qt::Vertical, this);
  split->setChildrenCollapsible(false);
  split->addWidget(m_area);
  m_log = new LogPanel(tarnsift::Ref<orvane::Log>(&host.log()), split);
  split->addWidget(m_log);
  split->setStretchFactor(0, 1);
  constexpr int kMost = 10000, kLogHeight = 130;
  split->setSizes({kMost, kLogHeight});
  setCentralWidget(split);
  addBars();
  addLists();
  addHostViews(views);
  addShortcuts();
  m_gate = std::make_unique<InputGate>(form, *this);
  follow();
}

MainWindow::~MainWindow() = default;

const platform::MenuItem* MainWindow::commandInWork() const {
  return m_menus->inWork();
}

void MainWindow::addBars() {
  m_bar = new CoolBar(m_form.get<platform::CoolBar>("cbCoolBar"), m_form.get<platform::Toolbar>("tbToolbar"),
                      m_form.get<platform::ProgressBar>("pbProgress"), m_form, m_area);
  m_bar->toolBar().afterEvent = [this] { sync(); };
  m_area->onResized = [this] { tellSize(); };
  m_area->onActivate = [this](const std::string& key) { focusPane(key); };
  m_area->onHide = [this](const std::string& key) {
    if (m_form.Enabled()) m_form.get<platform::MenuItem>("mnuView" + key).choose();
    sync();
  };
}

void MainWindow::addLists() {
  const auto add = [this](platform::ListView& list, ListModel::Icons icons) {
    auto* widget = new ListWidget(list, icons, m_screen, m_area);
    widget->setHint(text(kHints[m_lists.size()]));
    widget->afterEvent = [this] { sync(); };
    m_lists.push_back(widget);
    connectWhile(list.Changed, m_lifetime, [this] { scheduleSync(); });
  };
  add(m_form.get<platform::ListView>("lvPrograms"), ListModel::Icons::none);
  m_tabs = new TabStripWidget(m_form.get<platform::TabStrip>("tsLists"), m_screen, m_area);
  m_tabs->afterEvent = [this] { sync(); };
  for (int i = 0; i <= kSynonyms; ++i)
    add(m_form.get<platform::ListView>("lvList", i),
        i == kSynonyms ? ListModel::Icons::status : ListModel::Icons::none);
}

void MainWindow::addHostViews(const HostViews& views) {
  views.workspaceBar->setParent(m_area);
  m_host.workspace()->Height = toTwips(views.workspaceBar->sizeHint().height());
  m_hostViews.push_back(new HostView(*m_host.workspace(), m_form, views.workspaceBar));
  QWidget* source = views.source;
  source->setParent(m_area);
  source->setObjectName(QStringLiteral("KVSource"));
  // A field of the view that has the focus keeps it.
  m_host.sourceViewer()->onSetFocus = [source] {
    if (!source->isAncestorOf(QApplication::focusWidget())) source->setFocus(Qt::OtherFocusReason);
  };
  m_hostViews.push_back(new HostView(*m_host.sourceViewer(), m_form, source));
  for (HostView* view : m_hostViews)
    view->afterEvent = [this] { sync(); };
}

void MainWindow::addShortcuts() {
  const auto on = [this](const QKeySequence& keys, auto action) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, [this, action] {
      if (m_form.Enabled()) action();
    });
  };
  for (int i = 0; i < 4; ++i)
    on(QKeySequence(Qt::ALT | static_cast<Qt::Key>(Qt::Key_1 + i)), [this, i] { focusPane(kPanes[i]); });
  constexpr auto kResize = Qt::ALT | Qt::SHIFT;
  on(QKeySequence(kResize | Qt::Key_Left), [this] { m_area->nudge(true, -1); });
  on(QKeySequence(kResize | Qt::Key_Right), [this] { m_area->nudge(true, 1); });
  on(QKeySequence(kResize | Qt::Key_Up), [this] { m_area->nudge(false, -1); });
  on(QKeySequence(kResize | Qt::Key_Down), [this] { m_area->nudge(false, 1); });
  on(QKeySequence(Qt::CTRL | Qt::Key_Tab), [this] { stepPane(1); });
  on(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), [this] { stepPane(-1); });
}

// Whatever changes in the models is shown at the next turn of the loop; what a long command reports, now and then.
void MainWindow::follow() {
  m_syncSoon.setSingleShot(true);
  connect(&m_syncSoon, &QTimer::timeout, this, [this] { sync(); });
  connectWhile(m_form.Changed, m_lifetime, [this] { scheduleSync(); });
  connectWhile(m_host.panes()->PanesArranged, m_lifetime, [this] { scheduleSync(); });
  connectWhile(m_host.panes()->Changed, m_lifetime, [this] { scheduleSync(); });
  connectWhile(m_form.get<platform::CoolBar>("cbCoolBar").Changed, m_lifetime, [this] { scheduleSync(); });
  connectWhile(m_form.get<platform::ProgressBar>("pbProgress").Changed, m_lifetime, [this] { pump(); });
  m_log->onShown = [this] {
    m_form.Invoke("DisplayLog", {});
    scheduleSync();
  };
  m_screen.setMainWidget(this);
  m_screen.onSync = [this] { sync(); };
  m_screen.onPopup = [this](platform::MenuItem& menu, double x, double y) { popup(menu, x, y); };
}

void MainWindow::scheduleSync() {
  if (!m_left && !m_syncSoon.isActive()) m_syncSoon.start(0);
}

// Lets the screen follow a long command without slowing it down.
void MainWindow::pump() {
  constexpr qint64 kBetween = 50; // milliseconds
  if (m_pumping || m_left || (m_lastPump.isValid() && m_lastPump.elapsed() < kBetween)) return;
  m_pumping = true;
  m_screen.pendingEvents();
  m_pumping = false;
  m_lastPump.start();
}

void MainWindow::sync() {
  if (m_left) return;
  m_syncSoon.stop();
  setWindowTitle(text(m_form.Caption).trimmed());
  if (m_form.MousePointer == platform::kPointerHourglass)
    setCursor(Qt::WaitCursor);
  else
    unsetCursor();
  m_menus->sync();
  const auto& bar = m_form.get<platform::CoolBar>("cbCoolBar");
  m_bar->setGeometry(0, 0, m_area->width(), toPixels(bar.Height));
  m_bar->sync();
  m_tabs->sync();
  for (ListWidget* list : m_lists)
    list->sync();
  nameLists();
  m_area->sync();
}

// The panes come only after the window has appeared.
tarnsift::SplitterPane* MainWindow::pane(const std::string& key) const {
  tarnsift::SplitterPane* found = nullptr;
  platform::ignoring([&] { found = &m_host.panes()->Panes(key); });
  return found;
}

void MainWindow::nameLists() {
  const auto name = [](QWidget* widget, const QString& text) {
    if (widget->accessibleName() != text) widget->setAccessibleName(text);
  };
  const auto byPane = [&](QWidget* widget, const char* key) {
    if (auto* named = pane(key)) name(widget, text(named->Caption()));
  };
  const auto& tabs = m_form.get<platform::TabStrip>("tsLists").Tabs;
  for (std::size_t i = 0; i < tabs.size(); ++i)
    name(m_lists[i + 1], withoutAccessKey(tabs[i].Caption));
  byPane(m_lists[0], "Programs");
  byPane(m_lists[kSynonyms + 1], "Synonyms");
  byPane(m_tabs, "Lists");
  byPane(m_hostViews.back()->widget(), "Source");
}

void MainWindow::appear() {
  restorePlace(*this, tarnsift::theSettingsStore());
  m_form.Show();
  setWindowTitle(text(m_form.Caption).trimmed());
  show();
  QElapsedTimer waited;
  waited.start();
  constexpr qint64 kLongest = 1000; // milliseconds
  while (!(windowHandle() && windowHandle()->isExposed()) && waited.elapsed() < kLongest)
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  tellSize();
}

void MainWindow::open() {
  m_open = true;
  m_gate->setOpen(true);
  sync();
}

void MainWindow::leave() {
  if (m_left) return;
  savePlace(*this, tarnsift::theSettingsStore());
  m_left = true;
  m_syncSoon.stop();
  m_host.sourceViewer()->onSetFocus = {};
  m_screen.setMainWidget(nullptr);
  m_screen.onSync = {};
  m_screen.onPopup = {};
  hide();
  QTimer::singleShot(0, this, [this] {
    if (onLeft) onLeft();
  });
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (m_left || !m_open) return;
  try {
    m_form.unload();
  } catch (const platform::Error& error) {
    m_screen.messageBox(error.what(), platform::kCritical, platform::App().Title);
  }
  sync();
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange && !m_left && m_area) tellSize();
}

void MainWindow::tellSize() {
  if (m_left) return;
  m_form.Minimized = isMinimized();
  m_form.Width = toTwips(width());
  m_form.Height = toTwips(height());
  m_form.ScaleWidth = toTwips(m_area->width());
  m_form.ScaleHeight = toTwips(m_area->height());
  m_form.get<platform::CoolBar>("cbCoolBar").Width = m_form.ScaleWidth;
  m_form.Resize.raise();
  const QSize wanted(toPixels(m_form.Width), toPixels(m_form.Height));
  if (!m_form.Minimized && wanted != size()) resize(wanted);
  scheduleSync();
}

void MainWindow::popup(platform::MenuItem& item, double x, double y) {
  QMenu* menu = m_menus->menuOf(item);
  if (!menu) return;
  QPoint at = QCursor::pos();
  if (x >= 0)
    at = m_area->mapToGlobal(QPoint(toPixels(x), toPixels(y)));
  else if (auto* list = dynamic_cast<ListWidget*>(QApplication::focusWidget()); list && m_gate->byKey())
    at = list->menuPlace();
  menu->exec(at);
}

void MainWindow::focusPane(const std::string& key) {
  auto* wanted = pane(key);
  if (!wanted || !wanted->Visible() || !m_form.Enabled()) return;
  if (key == "Programs") m_lists[0]->setFocus(Qt::ShortcutFocusReason);
  if (key == "Synonyms") m_lists[kSynonyms + 1]->setFocus(Qt::ShortcutFocusReason);
  if (key == "Source") m_hostViews.back()->widget()->setFocus(Qt::ShortcutFocusReason);
  if (key == "Lists") {
    ListWidget* front = m_lists[m_form.get<platform::TabStrip>("tsLists").SelectedItem()];
    if (front->model()->rowCount() > 0)
      front->setFocus(Qt::ShortcutFocusReason);
    else
      m_tabs->setFocus(Qt::ShortcutFocusReason);
  }
}

void MainWindow::stepPane(int by) {
  constexpr int kCount = 4;
  int now = 0;
  for (int i = 0; i < kCount; ++i)
    if (auto* one = pane(kPanes[i]); one && one->IsActive()) now = i;
  for (int step = 1; step < kCount; ++step) {
    const char* next = kPanes[(now + by * step + kCount * kCount) % kCount];
    if (auto* one = pane(next); one && one->Visible()) return focusPane(next);
  }
}

} // namespace desktop
