#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QMenu>
#include <QPushButton>
#include <QToolButton>

#include "desktop/workbench.hpp"

namespace {

void press(QWidget& dialog, const char* button) {
  QTest::mouseClick(dialog.findChild<QPushButton*>(QString::fromLatin1(button)), Qt::LeftButton);
}

} // namespace

TEST_F(WorkbenchTest, OpensWithItsProgramsAndTheFirstOneChosen) {
  open();
  EXPECT_EQ(programs().model()->rowCount(), 16);
  EXPECT_EQ(window().windowTitle().toStdString(), "Tarnsift - Orvane (P)");
  EXPECT_TRUE(picture(programs()).starts_with("[BKB010]*")) << picture(programs());
  EXPECT_EQ(QApplication::focusWidget(), &programs());
  EXPECT_EQ(programs().accessibleName().toStdString(), "Programs - 16 item(s)");
  for (const char* name : {"mnuMoveTo0", "mnuDelete", "mnuSelectAll"})
    EXPECT_FALSE(action(name).isEnabled()) << name << " with the focus on the programs";
  EXPECT_TRUE(action("mnuViewPrograms").isChecked());
  close();
}

TEST_F(WorkbenchTest, FiltersAndSortsNamesIntoTheLists) {
  open();
  filter("Names:*ACCT*", 0);
  EXPECT_EQ(counts("BKB010"), "3 0 0");
  key(programs(), Qt::Key_Down);
  EXPECT_EQ(counts("BKB020"), "6 0 0");
  ASSERT_EQ(working().model()->rowCount(), 6);
  window().focusPane("Lists");
  EXPECT_EQ(QApplication::focusWidget(), &working());
  key(working(), Qt::Key_Home);
  key(working(), Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_FALSE(action("mnuMoveTo0").isEnabled());
  key(working(), Qt::Key_F5); // off in its own list: nothing happens
  EXPECT_EQ(counts("BKB020"), "6 0 0");
  key(working(), Qt::Key_F6);
  EXPECT_EQ(counts("BKB020"), "4 2 0");
  key(working(), Qt::Key_F8);
  EXPECT_EQ(counts("BKB020"), "3 2 1");
  EXPECT_EQ(affected().model()->rowCount(), 2);
  auto& tabs = widget<QTabBar>("tsLists");
  tabs.setCurrentIndex(1);
  EXPECT_TRUE(affected().isVisible());
  EXPECT_FALSE(working().isVisible());
  EXPECT_EQ(QApplication::focusWidget(), &affected());
  key(affected(), Qt::Key_F5);
  EXPECT_EQ(counts("BKB020"), "4 1 1");
}

TEST_F(WorkbenchTest, ASelectionIsMadeByKeysAndMouseAndShownWhenACommandMakesIt) {
  open();
  filter("Names:*ACCT*", 0);
  click(programs(), 2); // BKB030: three names
  auto& list = working();
  click(list, 0);
  EXPECT_EQ(picture(list), "[IA-ACCT-NO]* IA-ACCT-PARTS WS-HIGHEST-ACCT");
  click(list, 2, Qt::ControlModifier);
  EXPECT_EQ(picture(list), "IA-ACCT-NO* IA-ACCT-PARTS [WS-HIGHEST-ACCT]*");
  click(list, 2, Qt::ControlModifier);
  EXPECT_EQ(picture(list), "IA-ACCT-NO* IA-ACCT-PARTS [WS-HIGHEST-ACCT]");
  click(list, 1, Qt::ShiftModifier);
  EXPECT_EQ(picture(list), "IA-ACCT-NO [IA-ACCT-PARTS]* WS-HIGHEST-ACCT*");
  key(list, Qt::Key_Home, Qt::ControlModifier);
  EXPECT_EQ(picture(list), "[IA-ACCT-NO] IA-ACCT-PARTS* WS-HIGHEST-ACCT*");
  key(list, Qt::Key_Space, Qt::ControlModifier);
  EXPECT_EQ(picture(list), "[IA-ACCT-NO]* IA-ACCT-PARTS* WS-HIGHEST-ACCT*");
  QTest::keyClicks(&list, QStringLiteral("ws"));
  EXPECT_EQ(picture(list), "IA-ACCT-NO IA-ACCT-PARTS [WS-HIGHEST-ACCT]*");
  key(list, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(picture(list), "IA-ACCT-NO* IA-ACCT-PARTS* [WS-HIGHEST-ACCT]*");
  QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(10, list.viewport()->height() - 5));
  EXPECT_EQ(picture(list), "IA-ACCT-NO IA-ACCT-PARTS [WS-HIGHEST-ACCT]") << "a click beside the rows unmarks";
}

TEST_F(WorkbenchTest, DeletesAfterAQuestion) {
  open();
  filter("Names:*ACCT*", 0);
  window().focusPane("Lists");
  key(working(), Qt::Key_Home);
  next([](QWidget& box) { press(box, "cancel"); });
  key(working(), Qt::Key_Delete);
  EXPECT_TRUE(nextCame());
  EXPECT_EQ(counts("BKB010"), "3 0 0");
  next([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Return); });
  key(working(), Qt::Key_Delete);
  EXPECT_EQ(counts("BKB010"), "2 0 0");
  key(working(), Qt::Key_Down);
  EXPECT_EQ(QApplication::focusWidget(), &working()) << "the list in use keeps the focus";
}

TEST_F(WorkbenchTest, FiltersFromTheButtonAndItsArrow) {
  open();
  host().search().chooseCriterion = [](const std::string&) { return "Names:*ACCT*"; };
  auto& button = widget<QToolButton>("Search");
  next([](QWidget& menu) { QTest::keyClick(&menu, Qt::Key_Escape); });
  QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, 8));
  ASSERT_TRUE(nextCame());
  EXPECT_EQ(counts("BKB010"), "0 0 0") << "given up";
  QPoint at;
  next([&](QWidget& menu) {
    at = menu.pos();
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Down);
    QTest::keyClick(&menu, Qt::Key_Return);
  });
  QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(8, 8));
  EXPECT_EQ(counts("BKB010"), "0 3 0");
  EXPECT_EQ(at.x(), button.mapToGlobal(QPoint(0, 0)).x()) << "under its button";
  const auto& arrow = widget<QMenu>("SearchMenu");
  ASSERT_EQ(arrow.actions().size(), 4);
  arrow.actions()[3]->trigger();
  EXPECT_EQ(counts("BKB010"), "0 0 0") << "the fourth entry deletes what was found";
}

TEST_F(WorkbenchTest, PopsTheEditMenuUpByMouseAndByKey) {
  open();
  filter("Names:*ACCT*", 0);
  next([](QWidget& menu) {
    EXPECT_EQ(menu.objectName().toStdString(), "mnuEdit");
    QTest::keyClick(&menu, Qt::Key_Escape);
  });
  click(working(), 1, Qt::NoModifier, Qt::RightButton);
  EXPECT_TRUE(nextCame());
  EXPECT_TRUE(picture(working()).find("]*") != std::string::npos) << "the row under the pointer is marked";
  next([](QWidget& menu) { QTest::keyClick(&menu, Qt::Key_L); }); // Move To C&lean
  key(working(), Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(nextCame());
  EXPECT_EQ(counts("BKB010"), "2 0 1");
}

TEST_F(WorkbenchTest, AsksForPatternsAndForLists) {
  open();
  filter("Names:*ACCT*", 0);
  click(programs(), 2);
  window().focusPane("Lists");
  next([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName().toStdString(), "frmSelect");
    auto* button = dialog.findChild<QPushButton*>(QStringLiteral("cmdOK"));
    EXPECT_FALSE(button->isEnabled()) << "nothing typed yet";
    QTest::keyClicks(dialog.findChild<QComboBox*>(QStringLiteral("cmbSelect0")), QStringLiteral("ia*"));
    EXPECT_TRUE(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
  });
  action("mnuSelect").trigger();
  EXPECT_TRUE(nextCame());
  EXPECT_TRUE(picture(working()).find("IA-ACCT-PARTS]*") != std::string::npos ||
              picture(working()).find("IA-ACCT-PARTS*") != std::string::npos)
      << picture(working());
  EXPECT_TRUE(picture(working()).ends_with("WS-HIGHEST-ACCT")) << picture(working());
  const std::string before = counts("BKB030");
  next([](QWidget& dialog) {
    EXPECT_EQ(dialog.objectName().toStdString(), "frmFindSynonyms");
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  action("mnuFileSynonyms").trigger();
  EXPECT_TRUE(nextCame());
  EXPECT_EQ(counts("BKB030"), before);
}
