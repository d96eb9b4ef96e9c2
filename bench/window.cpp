// How long the analyst waits in the real window, on a platform without a display: loading a large program, choosing a
// dataname, reading and filtering a large report, painting a long source.
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <QElapsedTimer>
#include <QLineEdit>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <fmt/format.h>

#include "cobol/shading.hpp"
#include "desktop/application.hpp"
#include "desktop/list_widget.hpp"
#include "desktop/main_window.hpp"
#include "desktop/report/report_window.hpp"
#include "desktop/session.hpp"
#include "desktop/source/text_area.hpp"
#include "orvane/projects.hpp"
#include "orvane/settings.hpp"
#include "orvane/sources.hpp"
#include "orvane/verification.hpp"
#include "platform/files/files.hpp"

namespace {

constexpr int kLoaded = 30'000;     ///< names of the large program
constexpr int kConstructs = 10'000; ///< of the program in which names are chosen
constexpr int kReportRows = 100'000;
constexpr int kSourceLines = 100'000;

// A program of that many items in groups of ten; each is moved to the next one.
void writeProgram(const std::string& path, const std::string& name, int items) {
  std::ofstream out(path);
  out << "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. " << name
      << ".\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n";
  for (int i = 0; i < items; ++i)
    out << (i % 10 == 0 ? fmt::format("       01  GROUP-{:05}.\n", i)
                        : fmt::format("           05  ACCT-{:05} PIC X(8).\n", i));
  out << "       PROCEDURE DIVISION.\n       MAIN-PARA.\n";
  for (int i = 1; i + 2 < items; i += 10)
    out << fmt::format("           MOVE ACCT-{:05} TO ACCT-{:05}.\n", i, i + 1);
  out << "           GOBACK.\n";
}

// The longest time for which the loop did not come round.
class Heartbeat {
 public:
  Heartbeat() {
    m_timer.setInterval(1);
    QObject::connect(&m_timer, &QTimer::timeout, [this] { beat(); });
    m_since.start();
    m_timer.start();
  }
  double longest() {
    beat();
    return m_longest;
  }

 private:
  void beat() {
    m_longest = std::max(m_longest, static_cast<double>(m_since.nsecsElapsed()) / 1e6);
    m_since.restart();
  }
  QTimer m_timer;
  QElapsedTimer m_since;
  double m_longest = 0;
};

double milliseconds(const QElapsedTimer& timer) {
  return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void tell(const std::string& what, double took, double aim) {
  fmt::print("{:<64} {:>9.1f} ms  {}\n", what, took, aim > 0 ? fmt::format("aim {:.0f} ms", aim) : "");
}

void measureLists() {
  const platform::TemporaryFolder folder;
  const std::string sources = folder.file("src");
  std::filesystem::create_directories(sources);
  writeProgram(sources + "/LARGE.cbl", "LARGE", kLoaded + kLoaded / 9);
  writeProgram(sources + "/MIDDLE.cbl", "MIDDLE", kConstructs);
  const orvane::BaseFolder base = orvane::BaseFolder::create(folder.file("base"));
  const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
  const auto project = orvane::createProject(base, *repository, "P");
  const platform::Ref<orvane::OptionDocument> options(
      new orvane::OptionDocument(orvane::optionFile(base.projectFolder("P"))));
  orvane::addSources(base, *repository, project, *options, {sources}, {});
  orvane::verifyProject(base, *repository, "P", {.jobs = 2});

  desktop::Session session(base, "P", new orvane::MemorySettings);
  session.host().options().overrideForSession("//CASE[@ID='Tarnsift']/BOOL[@NAME='ApplySelected']", "false");
  session.start();
  session.host().search().chooseCriterion = [](const std::string&) { return "Names:ACCT*"; };
  platform::Form& form = session.host().window();
  QElapsedTimer timer;
  timer.start();
  form.get<platform::MenuItem>("mnuFileSearchTo", 0).choose();
  tell(fmt::format("filter places {} names", kLoaded + kConstructs * 9 / 10), milliseconds(timer), 0);
  const auto choose = [&](const char* list, int index, std::size_t row) {
    auto& view = form.get<platform::ListView>(list, index);
    view.selectAll(false);
    view.setSelectedItem(&view.ListItems.Item(row));
    timer.restart();
    view.KeyUp.raise(platform::kKeyReturn, platform::kNoShift);
    QCoreApplication::processEvents();
    return milliseconds(timer);
  };
  auto& programs = form.get<platform::ListView>("lvPrograms");
  const std::size_t large = programs.ListItems.Item(1).Text == "LARGE" ? 1 : 2;
  choose("lvPrograms", -1, 3 - large);
  {
    Heartbeat heart;
    const double whole = choose("lvPrograms", -1, large);
    tell(fmt::format("load of {} names", form.get<platform::ListView>("lvList", 0).ListItems.Count()), whole, 0);
    tell("  longest time without an answer in it", heart.longest(), 100);
  }
  choose("lvPrograms", -1, 3 - large);
  double worst = 0;
  for (std::size_t row : {2u, 1000u, 4000u, 8000u})
    worst = std::max(worst, choose("lvList", 0, row));
  tell(fmt::format("dataname chosen, synonyms and source shown ({} constructs)", kConstructs), worst, 50);
  session.host().close();
}

void measureReport() {
  orvane::FinishedReport report;
  report.title = "Possible Datanames";
  report.columns = orvane::readRecordFormat("<F><Program CAPTION=\"Program\"/><Dataname CAPTION=\"Dataname\"/>"
                                            "<Status CAPTION=\"Status\"/><Comment CAPTION=\"Comment\"/></F>");
  report.records = std::make_shared<orvane::RecordFile>();
  for (int i = 0; i < kReportRows; ++i)
    report.records->append({fmt::format("PROG{:04}", i / 100), fmt::format("WS-ACCT-{:06}", i), "Affected",
                            "matches 'Names:*ACCT*' search criteria"});
  QElapsedTimer timer;
  timer.start();
  auto* window = new desktop::ReportWindow(std::move(report), "", {});
  window->show();
  (void)QTest::qWaitForWindowExposed(window);
  tell(fmt::format("report of {} rows: first rows", kReportRows), milliseconds(timer), 200);
  while (window->model().rows().read() < static_cast<std::size_t>(kReportRows))
    QCoreApplication::processEvents();
  tell("  all rows", milliseconds(timer), 0);
  double worst = 0;
  auto* edit = window->findChild<QLineEdit*>();
  for (const char letter : std::string_view("acct-09")) {
    timer.restart();
    QTest::keyClick(edit, letter);
    QCoreApplication::processEvents();
    worst = std::max(worst, milliseconds(timer));
  }
  tell("  a keystroke in its filter", worst, 100);
  edit->clear();
  timer.restart();
  window->findChild<QTableView*>()->sortByColumn(1, Qt::DescendingOrder);
  QCoreApplication::processEvents();
  tell("  sorted by a column", milliseconds(timer), 0);
  window->close();
}

void measureSource() {
  std::string text;
  for (int i = 0; i < kSourceLines; ++i)
    text += fmt::format("{:06}     MOVE WS-ACCT-{:06} TO WS-OTHER-{:06} *> line\n", i % 1000000, i, i);
  QElapsedTimer timer;
  timer.start();
  cobol::ShadedText shaded = cobol::shade(text, cobol::Format::fixed);
  tell(fmt::format("source of {} lines shaded", kSourceLines), milliseconds(timer), 0);
  desktop::TextArea area;
  area.resize(1000, 800);
  area.setText(std::move(shaded));
  area.show();
  (void)QTest::qWaitForWindowExposed(&area);
  double worst = 0;
  for (int step = 0; step < 50; ++step) {
    timer.restart();
    area.verticalScrollBar()->setValue(step * area.verticalScrollBar()->maximum() / 50);
    QCoreApplication::processEvents();
    worst = std::max(worst, milliseconds(timer));
  }
  tell("  a page of it painted", worst, 16);
}

} // namespace

int main(int argc, char** argv) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 0);
  desktop::Application application(argc, argv, "light");
  measureLists();
  measureReport();
  measureSource();
}
