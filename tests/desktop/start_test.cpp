#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "desktop/main_window.hpp"
#include "desktop/session.hpp"
#include "desktop/start/analyse_dialog.hpp"
#include "desktop/start/desk.hpp"
#include "desktop/start/run_dialog.hpp"
#include "desktop/start/start_window.hpp"
#include "orvane/portfolio.hpp"
#include "orvane/settings.hpp"

namespace {

const std::string kBank = TARNSIFT_SOURCE_DIR "/samples/bank";

template<typename W>
W& in(QWidget& parent, const char* name) {
  W* found = parent.findChild<W*>(QString::fromLatin1(name));
  if (!found) throw platform::Error(std::string("no widget ") + name);
  return *found;
}

void press(QWidget& parent, const char* name) {
  QTest::mouseClick(&in<QPushButton>(parent, name), Qt::LeftButton);
}

/// The analyst in front of dialogs that hold the test: what is done in each, by its name, once.
class Analyst : public QObject {
 public:
  void at(const char* dialog, std::function<void(QWidget&)> step) { m_steps[dialog] = std::move(step); }
  Analyst() { startTimer(5); }
  bool done() const { return m_steps.empty(); }

 protected:
  void timerEvent(QTimerEvent*) override {
    QWidget* shown = QApplication::activeModalWidget();
    if (!shown || !shown->isVisible()) return;
    const auto found = m_steps.find(shown->objectName().toStdString());
    if (found == m_steps.end()) return;
    const auto step = std::move(found->second);
    m_steps.erase(found);
    step(*shown);
  }

 private:
  std::map<std::string, std::function<void(QWidget&)>> m_steps;
};

class StartTest : public ::testing::Test {
 protected:
  StartTest() : m_settings(new orvane::MemorySettings), m_desk(m_settings) {}

  QListWidget& recents() { return in<QListWidget>(page(), "startRecent"); }
  desktop::StartWindow& page() { return *m_desk.start(); }
  QString notice() { return in<QLabel>(page(), "startNotice").text(); }
  /// Names on the page, those that are gone with an exclamation mark.
  std::string names() {
    std::string all;
    for (int row = 0; row < recents().count(); ++row) {
      const auto* item = recents().item(row);
      all += (row ? " " : "") + item->text().toStdString() + (item->data(Qt::UserRole + 1).toBool() ? "!" : "");
    }
    return all;
  }
  bool windowCame() {
    return QTest::qWaitFor([&] { return m_desk.session() && m_desk.session()->window() && !page().isVisible(); },
                           20000);
  }
  int programs() {
    return m_desk.session()->window()->findChild<QTreeView*>(QStringLiteral("lvPrograms"))->model()->rowCount();
  }
  bool closedToThePage() {
    m_desk.session()->window()->close();
    return QTest::qWaitFor([&] { return !m_desk.session() && page().isVisible(); }, 5000);
  }

  platform::TemporaryFolder m_folder;
  platform::Ref<orvane::MemorySettings> m_settings;
  desktop::Desk m_desk;
  Analyst m_analyst;
};

} // namespace

TEST_F(StartTest, ListsWhatWasOpenAndOpensItAgain) {
  orvane::Portfolio portfolio;
  portfolio.add({kBank + "/cobol"}, {kBank + "/copy"});
  portfolio.verify();
  desktop::rememberProject({m_folder.file("gone one"), "old\tname"}, *m_settings);
  desktop::rememberProject({portfolio.base().path(), "P"}, *m_settings);
  m_desk.showStart();
  ASSERT_TRUE(QTest::qWaitFor([&] { return names() == "P old\tname!"; }, 2000)) << names();
  recents().setCurrentRow(1);
  EXPECT_FALSE(in<QPushButton>(page(), "startOpen").isEnabled());
  QTest::keyClick(&recents(), Qt::Key_Delete);
  EXPECT_EQ(names(), "P");
  EXPECT_EQ(desktop::recentProjects(*m_settings).size(), 1U);
  recents().setFocus();
  QTest::keyClick(&recents(), Qt::Key_Return);
  ASSERT_TRUE(windowCame());
  EXPECT_EQ(programs(), 16);
  EXPECT_TRUE(closedToThePage());
}

TEST_F(StartTest, AnalysesAFolderIntoAFilledWindow) {
  m_desk.showStart();
  EXPECT_TRUE(desktop::recentProjects(*m_settings).empty());
  const std::string base = m_folder.file("work/base");
  m_analyst.at("analyseDialog", [&](QWidget& shown) {
    auto& dialog = dynamic_cast<desktop::AnalyseDialog&>(shown);
    auto& go = in<QPushButton>(dialog, "analyseGo");
    EXPECT_FALSE(go.isEnabled());
    dialog.askFolder = [](QWidget*, const QString&) { return QString::fromStdString(kBank + "/cobol"); };
    press(dialog, "analyseAddFolder");
    ASSERT_TRUE(QTest::qWaitFor([&] { return go.isEnabled(); }, 2000));
    EXPECT_TRUE(in<QLabel>(dialog, "analyseFound").text().contains(QStringLiteral("16")));
    const auto* copybooks = in<QListWidget>(dialog, "analyseCopybooks").item(0);
    ASSERT_TRUE(copybooks) << "the folder beside the sources";
    EXPECT_EQ(copybooks->text().toStdString(), kBank + "/copy");
    EXPECT_EQ(copybooks->checkState(), Qt::Checked);
    EXPECT_EQ(in<QLineEdit>(dialog, "analyseName").text().toStdString(), "bank");
    auto& place = in<QLineEdit>(dialog, "analyseBase");
    place.selectAll();
    QTest::keyClicks(&place, QStringLiteral("relative"));
    EXPECT_FALSE(go.isEnabled());
    place.selectAll();
    QTest::keyClicks(&place, QString::fromStdString(base));
    QTest::keyClick(&place, Qt::Key_Return);
  });
  m_analyst.at("runDialog", [](QWidget& dialog) {
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return in<QPushButton>(dialog, "runOpen").isVisible() || !dialog.isVisible(); }, 20000));
    if (dialog.isVisible()) press(dialog, "runOpen");
  });
  press(page(), "startAnalyse");
  ASSERT_TRUE(windowCame()) << notice().toStdString();
  EXPECT_EQ(programs(), 16);
  EXPECT_EQ(desktop::recentProjects(*m_settings).front(), (desktop::RecentProject{base, "bank"}));
  EXPECT_TRUE(closedToThePage());
}

TEST_F(StartTest, TellsWhatIsWrongWithTheSources) {
  std::filesystem::create_directories(m_folder.file("src"));
  std::ofstream(m_folder.file("src/GOOD.cbl")) << orvane::program("GOOD", "       COPY NOTHERE.\n       01 A PIC X.\n");
  std::ofstream(m_folder.file("src/BAD.cbl")) << "no program\n";
  desktop::RunDialog dialog(
      {.base = m_folder.file("base"), .project = "P", .sources = {m_folder.file("src")}, .copybookFolders = {}},
      nullptr);
  dialog.show();
  auto& problems = in<QTreeWidget>(dialog, "runProblems");
  ASSERT_TRUE(QTest::qWaitFor([&] { return problems.isVisible(); }, 10000));
  ASSERT_EQ(problems.topLevelItemCount(), 2);
  EXPECT_EQ(problems.topLevelItem(0)->text(0).toStdString(), "BAD");
  EXPECT_TRUE(problems.topLevelItem(0)->text(1).contains(QStringLiteral("nothing in it says")));
  EXPECT_TRUE(problems.topLevelItem(1)->text(0).contains(QStringLiteral("NOTHERE")));
  EXPECT_EQ(QApplication::focusWidget(), &in<QPushButton>(dialog, "runOpen"));
}

TEST_F(StartTest, ACancelledRunGoesOnLater) {
  std::filesystem::create_directories(m_folder.file("src"));
  constexpr int kPrograms = 60;
  for (int i = 0; i < kPrograms; ++i)
    std::ofstream(m_folder.file("src/P" + std::to_string(100 + i) + ".cbl")) << orvane::program(
        "P" + std::to_string(100 + i), "       01 A PIC X.\n       01 B PIC X.\n", "           MOVE A TO B.\n");
  const std::string base = m_folder.file("base");
  desktop::AnalysisRequest request{
      .base = base, .project = "P", .sources = {m_folder.file("src")}, .copybookFolders = {}};
  {
    desktop::AnalysisJob job(request);
    ASSERT_TRUE(QTest::qWaitFor([&] { return job.state().done > 0; }, 10000));
    job.cancel();
    ASSERT_TRUE(QTest::qWaitFor([&] { return job.state().finished; }, 10000));
    EXPECT_EQ(job.state().error, "");
    EXPECT_EQ(job.state().result.programs, static_cast<std::size_t>(kPrograms));
  }
  m_desk.showStart().openBase(base);
  ASSERT_TRUE(windowCame()) << notice().toStdString();
  EXPECT_GT(programs(), 0);
  ASSERT_TRUE(closedToThePage());
  m_analyst.at("runDialog", [](QWidget&) {}); // nothing is wrong, so it ends by itself
  press(page(), "startVerify");
  ASSERT_TRUE(windowCame());
  EXPECT_EQ(programs(), kPrograms);
}

TEST_F(StartTest, OpensABaseFolderByItsProject) {
  orvane::Portfolio portfolio;
  portfolio.add({kBank + "/cobol"}, {kBank + "/copy"});
  portfolio.verify();
  orvane::createProject(portfolio.base(), portfolio.repository(), "A second one");
  m_desk.showStart();
  page().openBase(m_folder.path());
  EXPECT_TRUE(notice().contains(QString::fromStdString(m_folder.path()))) << "no base folder";
  m_analyst.at("chooseProject", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  page().openBase(portfolio.base().path());
  EXPECT_TRUE(m_analyst.done());
  EXPECT_FALSE(m_desk.session());
  m_analyst.at("chooseProject", [](QWidget& dialog) {
    auto* list = dialog.findChild<QListWidget*>();
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Return);
  });
  page().openBase(portfolio.base().path());
  ASSERT_TRUE(windowCame()) << notice().toStdString();
  EXPECT_EQ(m_desk.session()->host().projectName(), "P");
}
