#include <fstream>
#include <sstream>

#include <QLineEdit>
#include <QPrinter>
#include <QTableView>

#include "desktop/report/print_table.hpp"
#include "desktop/report/report_window.hpp"
#include "desktop/workbench.hpp"

namespace {

class ReportWindowTest : public WorkbenchTest {
 protected:
  // An entry of the report menu; the window that it opens.
  desktop::ReportWindow& report(int index) {
    action(("mnuFileReportType" + std::to_string(index)).c_str()).trigger();
    QCoreApplication::processEvents();
    desktop::ReportWindow* last = nullptr;
    for (auto* shown : window().findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
      if (auto* found = dynamic_cast<desktop::ReportWindow*>(shown)) last = found;
    if (!last) throw platform::Error("no report window");
    QTest::qWait(20);
    return *last;
  }
};

} // namespace

TEST_F(ReportWindowTest, FiltersSortsAndLeadsBackToTheDataname) {
  open();
  filter("Names:*ACCT*", 1);
  desktop::ReportWindow& shown = report(1);
  const int all = shown.model().rowCount();
  ASSERT_GT(all, 30);
  auto* edit = shown.findChild<QLineEdit*>();
  EXPECT_TRUE(edit->hasFocus());
  QTest::keyClicks(edit, QStringLiteral("bkb030 highest"));
  ASSERT_EQ(shown.model().rowCount(), 1);
  auto* table = shown.findChild<QTableView*>();
  QTest::keyClick(edit, Qt::Key_Down);
  QTest::keyClick(table, Qt::Key_Return);
  QCoreApplication::processEvents();
  EXPECT_EQ(host().workspace()->CurrentProgram(), form().get<platform::ListView>("lvPrograms").SelectedItem()->Key());
  EXPECT_EQ(form().get<platform::ListView>("lvPrograms").SelectedItem()->Text, "BKB030");
  ASSERT_TRUE(form().get<platform::ListView>("lvList", 1).SelectedItem());
  EXPECT_EQ(form().get<platform::ListView>("lvList", 1).SelectedItem()->Text, "WS-HIGHEST-ACCT");
  EXPECT_TRUE(affected().isVisible()) << "the tab with the dataname is in front";
  edit->clear();
  EXPECT_EQ(shown.model().rowCount(), all);
  table->sortByColumn(1, Qt::DescendingOrder);
  EXPECT_GE(shown.model().index(0, 1).data().toString(), shown.model().index(all - 1, 1).data().toString());
}

TEST_F(ReportWindowTest, AffectedCodeLeadsToItsLineAndExportsWhatTheCommandWrites) {
  open();
  filter("Names:*ACCT*", 1);
  desktop::ReportWindow& shown = report(5);
  int marked = -1;
  for (int row = 0; row < shown.model().rowCount() && marked < 0; ++row)
    if (shown.placeOf(row).program == "BKB020" && shown.placeOf(row).line > 0) marked = row;
  ASSERT_GE(marked, 0);
  auto* table = shown.findChild<QTableView*>();
  table->selectRow(marked);
  Q_EMIT table->activated(shown.model().index(marked, 0));
  QTest::qWait(5);
  EXPECT_EQ(form().get<platform::ListView>("lvPrograms").SelectedItem()->Text, "BKB020");
  EXPECT_EQ(host().workspace()->SourceFile()->Path(), shown.placeOf(marked).file);

  const std::string path = m_portfolio.base().path() + "/out.csv";
  shown.findChild<QLineEdit*>()->setText(QStringLiteral("nothing has this"));
  shown.exportTo(orvane::ReportFormat::csv, QString::fromStdString(path));
  std::ifstream file(path);
  std::stringstream text;
  text << file.rdbuf();
  EXPECT_EQ(static_cast<int>(std::count(std::istreambuf_iterator<char>(text), {}, '\n')),
            static_cast<int>(shown.model().rows().read()) + 1)
      << "all rows, whatever the filter";
}

TEST_F(ReportWindowTest, PrintsEveryRowOnPagesWithTheirHeadings) {
  open();
  filter("Names:*", 1);
  desktop::ReportWindow& shown = report(1);
  const std::string path = m_portfolio.base().path() + "/out.pdf";
  const auto print = [&] {
    QPrinter printer(QPrinter::ScreenResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(QString::fromStdString(path));
    desktop::printTable(printer, shown.model(), QStringLiteral("Affected"), {1, 2, 2, 3, 1, 1});
  };
  const auto pages = [&] {
    std::ifstream file(path, std::ios::binary);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    int count = 0;
    for (std::size_t at = text.find("/Type /Page\n"); at != text.npos; at = text.find("/Type /Page\n", at + 1))
      ++count;
    return count;
  };
  print();
  const int all = pages();
  EXPECT_GT(all, shown.model().rowCount() / 100) << "a page holds no hundred rows";
  EXPECT_LT(all, shown.model().rowCount() / 10) << "nor less than ten";
  shown.findChild<QLineEdit*>()->setText(QStringLiteral("bkb030"));
  print();
  EXPECT_LT(pages(), all) << "what is filtered is printed";
}
