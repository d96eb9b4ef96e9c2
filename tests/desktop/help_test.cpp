#include <QLineEdit>
#include <QListWidget>
#include <QRegularExpression>
#include <QTextBrowser>

#include "desktop/help/help_desk.hpp"
#include "desktop/help/help_window.hpp"
#include "desktop/help/topics.hpp"
#include "desktop/workbench.hpp"
#include "orvane/product.hpp"
#include "tarnsift/workbench/commands.hpp"

using desktop::helpDesk;

namespace {

std::string page() {
  return helpDesk().window() ? helpDesk().window()->page().toStdString() : "none";
}

template<typename W>
W& part(const char* name) {
  return *helpDesk().window()->findChild<W*>(QString::fromLatin1(name));
}

std::string shownPages() {
  std::string all;
  auto& list = part<QListWidget>("helpPages");
  for (int row = 0; row < list.count(); ++row)
    all += (row ? "|" : "") + list.item(row)->text().toStdString();
  return all;
}

} // namespace

TEST(Help, EveryContextOfTheComponentHasAPage) {
  std::vector<int> contexts = {2400010, 2400170};
  for (const auto& entry : tarnsift::menuEntries())
    if (entry.helpContext) contexts.push_back(entry.helpContext);
  EXPECT_GT(contexts.size(), 5U);
  for (const int context : contexts) {
    EXPECT_NE(desktop::topicOf(context).toStdString(), "index") << context;
    EXPECT_TRUE(desktop::isTopic(desktop::topicOf(context))) << context;
  }
}

TEST(Help, EveryLinkLeadsToAPage) {
  static const QRegularExpression link(QStringLiteral("\\]\\(([^)]+)\\)"));
  EXPECT_GT(desktop::topics().size(), 15U);
  for (const desktop::Topic& topic : desktop::topics()) {
    EXPECT_FALSE(topic.title.isEmpty()) << topic.page.toStdString();
    for (auto matches = link.globalMatch(topic.text); matches.hasNext();) {
      QString target = matches.next().captured(1);
      EXPECT_TRUE(target.endsWith(QStringLiteral(".md"))) << target.toStdString();
      EXPECT_TRUE(desktop::isTopic(target.chopped(3))) << topic.page.toStdString() << ": " << target.toStdString();
    }
  }
  EXPECT_TRUE(platform::fileExists(orvane::productFolder() + "/guide/index.md"));
}

TEST(Help, SearchNarrowsThePagesAsItIsTyped) {
  helpDesk().show(11, 0);
  EXPECT_EQ(page(), "index");
  EXPECT_EQ(part<QListWidget>("helpPages").currentRow(), 0);
  EXPECT_EQ(helpDesk().window()->windowTitle().toStdString(), "Tarnsift user guide - Help");
  const auto& all = desktop::topics();
  EXPECT_EQ(part<QListWidget>("helpPages").count(), static_cast<int>(all.size()));
  QTest::keyClicks(&part<QLineEdit>("helpSearch"), QStringLiteral("synonyms"));
  EXPECT_TRUE(shownPages().starts_with("Synonyms|")) << "titles first: " << shownPages();
  QTest::keyClicks(&part<QLineEdit>("helpSearch"), QStringLiteral(" redefinitions bytes"));
  EXPECT_EQ(shownPages(), "Synonyms|Options");
  part<QListWidget>("helpPages").setCurrentRow(0);
  EXPECT_EQ(page(), "synonyms");
  EXPECT_FALSE(part<QTextBrowser>("helpText").extraSelections().isEmpty()) << "the words are marked";
  part<QTextBrowser>("helpText").backward();
  EXPECT_EQ(page(), "index");
  helpDesk().window()->close();
}

TEST_F(WorkbenchTest, HelpIsAboutWhereTheFocusIs) {
  open();
  filter("Names:*ACCT*", 0);
  key(programs(), Qt::Key_F1);
  EXPECT_EQ(page(), "panes");
  window().focusPane("Lists");
  key(working(), Qt::Key_F1);
  EXPECT_EQ(page(), "lists");
  key(list("lvList3"), Qt::Key_F1);
  EXPECT_EQ(page(), "synonyms");
  next([](QWidget& dialog) {
    QTest::keyClick(&dialog, Qt::Key_F1);
    EXPECT_EQ(page(), "synonyms");
    EXPECT_EQ(helpDesk().window()->parentWidget(), &dialog) << "else the dialog would keep all input";
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  action("mnuFileSynonyms").trigger();
  EXPECT_TRUE(nextCame());
  action("mnuHelpWindow").trigger();
  EXPECT_EQ(page(), "window");
  action("mnuHelpTopics").trigger();
  EXPECT_EQ(page(), "index");
  helpDesk().window()->close();
  close();
}
