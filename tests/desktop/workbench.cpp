#include "desktop/workbench.hpp"

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <QWindow>

WorkbenchTest::WorkbenchTest() : m_settings(new orvane::MemorySettings) {
  const std::string bank = TARNSIFT_SOURCE_DIR "/samples/bank";
  m_portfolio.add({bank + "/cobol"}, {bank + "/copy"});
  m_portfolio.verify();
}

WorkbenchTest::~WorkbenchTest() {
  m_session.reset();
}

void WorkbenchTest::open() {
  m_session = std::make_unique<desktop::Session>(m_portfolio.base(), "P", m_settings);
  // Commands take all programs, not the selected ones.
  host().options().overrideForSession("//CASE[@ID='Tarnsift']/BOOL[@NAME='ApplySelected']", "false");
  m_session->start();
  window().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
}

void WorkbenchTest::close() {
  bool closed = false;
  m_session->onClosed = [&closed] { closed = true; };
  window().close();
  ASSERT_TRUE(QTest::qWaitFor([&] { return closed; }, 2000)) << "the window did not close";
  m_session.reset();
}

desktop::ListWidget& WorkbenchTest::list(const char* name) {
  for (QTreeView* view : window().findChildren<QTreeView*>(QString::fromLatin1(name)))
    if (auto* list = dynamic_cast<desktop::ListWidget*>(view)) return *list;
  throw platform::Error(std::string("no list ") + name);
}

std::string WorkbenchTest::picture(desktop::ListWidget& list) {
  std::string text;
  auto* model = dynamic_cast<desktop::ListModel*>(list.model());
  for (int row = 0; row < model->rowCount(); ++row) {
    const std::string name = model->index(row, 0).data().toString().toStdString();
    const bool focused = list.currentIndex().row() == row;
    text += (text.empty() ? "" : " ") + (focused ? "[" + name + "]" : name) + (model->row(row)->Selected() ? "*" : "");
  }
  return text;
}

std::string WorkbenchTest::counts(const std::string& program) {
  auto* model = programs().model();
  for (int row = 0; row < model->rowCount(); ++row)
    if (model->index(row, 0).data().toString().toStdString() == program) {
      QStringList cells;
      for (int column = 1; column < 4; ++column)
        cells << model->index(row, column).data().toString();
      return cells.join(QLatin1Char(' ')).toStdString();
    }
  return "no such program";
}

// Without a window manager nobody gives the window back its place when a dialog has gone.
void WorkbenchTest::bringToFront() {
  if (window().isActiveWindow()) return;
  window().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
}

void WorkbenchTest::key(QWidget& on, Qt::Key key, Qt::KeyboardModifiers modifiers) {
  bringToFront();
  QTest::keyClick(&on, key, modifiers);
  QCoreApplication::processEvents();
}

void WorkbenchTest::click(desktop::ListWidget& on, int row, Qt::KeyboardModifiers modifiers, Qt::MouseButton button) {
  bringToFront();
  const QPoint at = on.visualRect(on.model()->index(row, 0)).center();
  QTest::mouseClick(window().windowHandle(), button, modifiers, on.viewport()->mapTo(&window(), at));
  QCoreApplication::processEvents();
}

void WorkbenchTest::filter(const std::string& criterion, int target) {
  host().search().chooseCriterion = [criterion](const std::string&) { return criterion; };
  action(("mnuFileSearchTo" + std::to_string(target)).c_str()).trigger();
  QCoreApplication::processEvents();
}

// Looked for again and again until it is there; left open it would hold the test for ever.
void WorkbenchTest::next(const std::function<void(QWidget&)>& step) {
  m_nextCame = false;
  auto* timer = new QTimer(&window());
  timer->setInterval(5);
  QObject::connect(timer, &QTimer::timeout, timer, [this, timer, step] {
    QWidget* shown = QApplication::activePopupWidget();
    if (!shown) shown = QApplication::activeModalWidget();
    if (!shown || !shown->isVisible()) return;
    if (!QApplication::activePopupWidget() && !shown->isActiveWindow()) return; // its keys would go elsewhere
    timer->stop();
    timer->deleteLater();
    m_nextCame = true;
    step(*shown);
  });
  timer->start();
}
