#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>

#include "desktop/search/search_dialog.hpp"
#include "desktop/workbench.hpp"

namespace {

QPushButton* button(QWidget& in, const char* caption) {
  for (auto* found : in.findChildren<QPushButton*>())
    if (found->text() == QString::fromUtf8(caption)) return found;
  throw platform::Error(std::string("no button ") + caption);
}

} // namespace

TEST_F(WorkbenchTest, ASearchIsPutTogetherTriedSavedAndApplied) {
  open();
  next([this](QWidget& shown) {
    auto& dialog = dynamic_cast<desktop::SearchDialog&>(shown);
    auto* tabs = dialog.findChild<QTabWidget*>();
    auto* like = tabs->currentWidget()->findChild<QLineEdit*>();
    EXPECT_FALSE(button(dialog, "Apply")->isEnabled()) << "nothing was asked for";
    QTest::keyClicks(like, QStringLiteral("*[acct*"));
    EXPECT_FALSE(button(dialog, "Apply")->isEnabled()) << "a pattern that is none";
    like->setText(QStringLiteral("*acct*"));
    EXPECT_EQ(dialog.findChild<QListWidget*>(QStringLiteral("searchMatches"))->count(), 3);
    tabs->setCurrentIndex(1);
    tabs->currentWidget()->findChildren<QComboBox*>().front()->setEditText(QStringLiteral("77"));
    EXPECT_EQ(dialog.criterion(), "Names:*acct* & Declaration:Level 77");
    EXPECT_EQ(dialog.findChild<QListWidget*>(QStringLiteral("searchMatches"))->count(), 0);
    tabs->currentWidget()->findChildren<QComboBox*>().front()->setEditText(QStringLiteral("1-49"));
    next([](QWidget& asked) {
      asked.findChild<QLineEdit*>()->setText(QStringLiteral("accounts"));
      QTest::keyClick(&asked, Qt::Key_Return);
    });
    QTest::mouseClick(button(dialog, "Save as…"), Qt::LeftButton);
    EXPECT_EQ(dialog.criterion(), "Saved:accounts");
    QTest::mouseClick(button(dialog, "Apply"), Qt::LeftButton);
  });
  action("mnuFileSearchTo0").trigger();
  EXPECT_TRUE(nextCame());
  EXPECT_EQ(counts("BKB020").back(), '0');
  EXPECT_NE(counts("BKB020"), "0 0 0");
  close();

  open(); // it is there again, with its parts to edit
  next([](QWidget& shown) {
    auto& dialog = dynamic_cast<desktop::SearchDialog&>(shown);
    EXPECT_EQ(dialog.criterion(), "Saved:accounts") << "what was searched last";
    QTest::mouseClick(button(dialog, "Edit"), Qt::LeftButton);
    EXPECT_EQ(dialog.criterion(), "Names:*acct* & Declaration:Level 1-49");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  action("mnuFileSearchTo1").trigger();
  EXPECT_TRUE(nextCame());
  EXPECT_EQ(counts("BKB010").substr(2), "0 0") << "given up: nothing is placed";
}
