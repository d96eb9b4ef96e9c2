#include <QAction>
#include <QApplication>
#include <QPushButton>
#include <QToolButton>

#include "desktop/pane_area.hpp"
#include "desktop/workbench.hpp"

TEST_F(WorkbenchTest, PanesHideAndComeBack) {
  open();
  filter("Names:*ACCT*", 0);
  auto& synonyms = list("lvList3");
  EXPECT_TRUE(synonyms.isVisible());
  action("mnuViewSynonyms").trigger();
  EXPECT_FALSE(synonyms.isVisible());
  EXPECT_FALSE(action("mnuViewSynonyms").isChecked());
  action("mnuViewSynonyms").trigger();
  EXPECT_TRUE(synonyms.isVisible());
  EXPECT_TRUE(action("mnuViewSynonyms").isChecked());
  QTest::mouseClick(&widget<QToolButton>("hideLists"), Qt::LeftButton);
  EXPECT_FALSE(working().isVisible());
  EXPECT_FALSE(widget<QTabBar>("tsLists").isVisible());
  EXPECT_FALSE(action("mnuViewLists").isChecked());
}

TEST_F(WorkbenchTest, PanesAreReachedByKeyAndShowWhichIsActive) {
  open();
  filter("Names:*ACCT*", 0);
  const auto active = [this] {
    for (const auto& frame : host().panes()->frames())
      if (frame.active) return frame.key;
    return std::string("none");
  };
  EXPECT_EQ(active(), "Programs");
  QTest::keyClick(&programs(), Qt::Key_2, Qt::AltModifier);
  EXPECT_EQ(active(), "Lists");
  EXPECT_EQ(QApplication::focusWidget(), &working());
  QTest::keyClick(&working(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(active(), "Synonyms");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_4, Qt::AltModifier);
  EXPECT_EQ(active(), "Source");
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
  EXPECT_EQ(active(), "Programs");
}

TEST_F(WorkbenchTest, EverythingThatTakesTheFocusHasAName) {
  open();
  action("mnuViewLog").trigger();
  for (const QWidget* one : window().findChildren<QWidget*>()) {
    if (!one->isVisible() || one->focusPolicy() == Qt::NoFocus) continue;
    const auto* button = qobject_cast<const QAbstractButton*>(one);
    EXPECT_FALSE(one->accessibleName().isEmpty() && (!button || button->text().isEmpty()))
        << one->metaObject()->className() << " " << one->objectName().toStdString();
  }
}

TEST_F(WorkbenchTest, ASashIsDragged) {
  open();
  auto& area = widget<QWidget>("paneArea");
  const int before = programs().width();
  const int right = programs().geometry().right() + 4;
  QTest::mousePress(&area, Qt::LeftButton, {}, QPoint(right, 200));
  QTest::mouseMove(&area, QPoint(right - 100, 200));
  QTest::mouseRelease(&area, Qt::LeftButton, {}, QPoint(right - 100, 200));
  EXPECT_NEAR(programs().width(), before - 100, 1);
  EXPECT_NEAR(working().geometry().left(), programs().geometry().right() + 7, 1) << "the neighbour follows";
  key(programs(), Qt::Key_Right, Qt::AltModifier | Qt::ShiftModifier);
  EXPECT_NEAR(programs().width(), before - 84, 1);
}

TEST_F(WorkbenchTest, AWindowTooSmallSnapsBack) {
  open();
  window().resize(100, 120);
  QCoreApplication::processEvents();
  EXPECT_EQ(window().size(), QSize(200, 200)) << "3000 twips";
  for (const char* name : {"lvPrograms", "lvList0", "lvList3"})
    EXPECT_GE(list(name).height(), 0);
  window().resize(1200, 800);
  QCoreApplication::processEvents();
  EXPECT_GT(programs().height(), 300);
}

TEST_F(WorkbenchTest, ABusyWindowNeitherClosesNorListens) {
  open();
  filter("Names:*ACCT*", 0);
  window().focusPane("Lists");
  key(working(), Qt::Key_Home);
  form().setEnabled(false);
  window().close();
  EXPECT_TRUE(window().isVisible()) << "refused without a message";
  const std::string before = picture(working());
  key(working(), Qt::Key_Down);
  key(working(), Qt::Key_F6);
  click(programs(), 3);
  EXPECT_EQ(picture(working()), before);
  EXPECT_EQ(counts("BKB010"), "3 0 0");
  form().setEnabled(true);
  EXPECT_EQ(QApplication::focusWidget(), &working());
  key(working(), Qt::Key_Down);
  EXPECT_NE(picture(working()), before) << "what was typed meanwhile is not made up for";
  close();
}

TEST_F(WorkbenchTest, PlaceAndLayoutOutlastTheWindow) {
  open();
  window().setGeometry(30, 40, 640, 480);
  action("mnuViewSource").trigger();
  QCoreApplication::processEvents();
  const QRect place = window().geometry();
  const QSize size = programs().size();
  close();
  open();
  EXPECT_EQ(window().geometry(), place);
  EXPECT_EQ(programs().size(), size);
  EXPECT_FALSE(action("mnuViewSource").isChecked());
  close();
}

TEST_F(WorkbenchTest, TheActivityLogFollowsItsMark) {
  open();
  auto& log = widget<QWidget>("activityLog");
  EXPECT_FALSE(log.isVisible());
  action("mnuViewLog").trigger();
  EXPECT_TRUE(log.isVisible());
  EXPECT_TRUE(action("mnuViewLog").isChecked());
  QTest::qWait(20);
  QTest::mouseClick(&widget<QToolButton>("minimizeLog"), Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_FALSE(log.isVisible());
  EXPECT_FALSE(action("mnuViewLog").isChecked());
  action("mnuViewLog").trigger();
  EXPECT_TRUE(log.isVisible()) << "no longer minimized";
  QTest::qWait(20);
  QTest::mouseClick(&widget<QToolButton>("closeLog"), Qt::LeftButton);
  QCoreApplication::processEvents();
  EXPECT_FALSE(action("mnuViewLog").isChecked());
}
