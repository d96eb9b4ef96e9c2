#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>

#include "desktop/dialogs/size_picture.hpp"
#include "desktop/workbench.hpp"
#include "orvane/projects.hpp"

namespace {

template<typename W>
W& in(QWidget& dialog, const char* name) {
  W* found = dialog.findChild<W*>(QString::fromLatin1(name));
  if (!found) throw platform::Error(std::string("the dialog has no ") + name);
  return *found;
}

void press(QWidget& dialog, const char* button) {
  QTest::mouseClick(&in<QPushButton>(dialog, button), Qt::LeftButton);
}

// In the middle of the window that it belongs to.
bool centred(const QWidget& dialog, const QWidget& window) {
  constexpr int kFrame = 40;
  const QPoint off = dialog.geometry().center() - window.geometry().center();
  return std::abs(off.x()) <= kFrame && std::abs(off.y()) <= kFrame;
}

std::string commentOf(desktop::ListWidget& list, int row) {
  return list.model()->index(row, list.model()->columnCount() - 1).data().toString().toStdString();
}

} // namespace

TEST_F(WorkbenchTest, AsksForCommentsAndOffersTheOnesBefore) {
  open();
  filter("Names:*ACCT*", 0);
  window().focusPane("Lists");
  key(working(), Qt::Key_Home);
  int help = 0;
  m_session->screen().onHelp = [&](const std::string&, int, int context) { help = context; };
  next([&](QWidget& dialog) {
    EXPECT_TRUE(centred(dialog, window()));
    auto& edit = in<QPlainTextEdit>(dialog, "comment");
    EXPECT_TRUE(edit.hasFocus());
    QTest::keyClick(&edit, Qt::Key_F1);
    QTest::keyClicks(&edit, QStringLiteral("first"));
    QTest::keyClick(&edit, Qt::Key_Return);
    QTest::keyClicks(&edit, QStringLiteral("second"));
    EXPECT_FALSE(dialog.findChild<QComboBox*>()) << "no comment before this one";
    QTest::keyClick(&edit, Qt::Key_Return, Qt::ControlModifier);
  });
  action("mnuComment").trigger();
  ASSERT_TRUE(nextCame());
  EXPECT_EQ(help, 2400170);
  EXPECT_EQ(commentOf(working(), 0), "first\nsecond");
  key(working(), Qt::Key_Down);
  const std::string before = commentOf(working(), 1);
  next([&](QWidget& dialog) {
    auto& recent = in<QComboBox>(dialog, "recent");
    EXPECT_EQ(recent.itemText(0).toStdString(), "first second");
    recent.setFocus();
    QTest::keyClick(&recent, Qt::Key_Down);
    EXPECT_EQ(in<QPlainTextEdit>(dialog, "comment").toPlainText().toStdString(), "first\nsecond");
    QTest::keyClick(&recent, Qt::Key_Escape);
  });
  action("mnuComment").trigger();
  ASSERT_TRUE(nextCame());
  EXPECT_EQ(commentOf(working(), 1), before) << "given up";
}

TEST_F(WorkbenchTest, DerivesAProjectAndSizesItsPrograms) {
  open();
  filter("Names:*ACCT*", 1);
  std::string told;
  next([&](QWidget& name) {
    EXPECT_TRUE(centred(name, window()));
    auto& field = in<QLineEdit>(name, "name");
    auto& ok = in<QPushButton>(name, "ok");
    const auto type = [&](const char* text) {
      field.selectAll();
      QTest::keyClicks(&field, QString::fromLatin1(text));
      QTest::keyClick(&field, Qt::Key_Return);
      return in<QLabel>(name, "reason").text().toStdString() + (ok.isEnabled() ? "|on" : "|off");
    };
    EXPECT_FALSE(ok.isEnabled());
    EXPECT_EQ(type("p"), "There is a project P already.|off") << "names are the same in any case";
    EXPECT_EQ(type("a/b"), "The name must do for a folder: no / or \\ in it.|off");
    EXPECT_EQ(type("'a'"), "A project name has no quotes.|off");
    EXPECT_EQ(type("  "), "|off");
    EXPECT_TRUE(name.isVisible());
    next([&](QWidget& sizes) {
      auto& picture = in<desktop::SizePicture>(sizes, "sizePicture");
      for (int i = 0; i < 3; ++i)
        told += std::to_string(in<QSpinBox>(sizes, ("limit" + std::to_string(i)).c_str()).value()) + " ";
      // The line of M is drawn down on that of S, and not beyond it.
      QTest::mousePress(&picture, Qt::LeftButton, {}, picture.lineAt(1));
      QTest::mouseMove(&picture, QPoint(2, 10));
      QTest::mouseRelease(&picture, Qt::LeftButton, {}, QPoint(2, 10));
      picture.setFocus();
      QTest::keyClick(&picture, Qt::Key_Right);
      told += picture.accessibleDescription().toStdString();
      auto& large = in<QSpinBox>(sizes, "limit2");
      large.setValue(1);
      EXPECT_FALSE(in<QPushButton>(sizes, "ok").isEnabled()) << "L below M";
      EXPECT_FALSE(in<QLabel>(sizes, "reason").text().isEmpty());
      large.setValue(6);
      press(sizes, "ok");
    });
    field.selectAll();
    QTest::keyClicks(&field, QStringLiteral(" Part "));
    QTest::keyClick(&field, Qt::Key_Return);
  });
  action("mnuFileCreateFrom1").trigger();
  ASSERT_TRUE(nextCame());
  EXPECT_EQ(told, "2 4 7 S: 2 programs, M: 2 programs, L: 8 programs, XL: 1 program");
  std::map<std::string, int> sizes;
  auto& repository = host().repository();
  const auto part = repository.FindByName("FOLDER", "Part", 0);
  ASSERT_TRUE(part);
  const auto& rows = form().get<platform::ListView>("lvPrograms").ListItems;
  for (std::size_t i = 1; i <= rows.Count(); ++i) {
    const platform::Value size = repository.ObjectById(rows.Item(i).Key())->Attribute("ChangeMagnitude");
    ++sizes[size.isNull() ? "" : size.asText()];
  }
  EXPECT_EQ(sizes, (std::map<std::string, int>{{"", 3}, {"S", 2}, {"M", 2}, {"L", 6}, {"XL", 3}}));
}

TEST_F(WorkbenchTest, TellsWhenThereIsNothingToDeriveFrom) {
  open();
  next([&](QWidget& box) {
    EXPECT_EQ(box.objectName().toStdString(), "messageBox");
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  action("mnuFileCreateFrom2").trigger();
  EXPECT_TRUE(nextCame());
}

TEST_F(WorkbenchTest, ShowsWhatItIs) {
  open();
  next([&](QWidget& box) {
    EXPECT_EQ(box.objectName().toStdString(), "aboutBox");
    EXPECT_TRUE(centred(box, window()));
    EXPECT_TRUE(in<QLabel>(box, "version").text().contains(QStringLiteral("0.1")));
    QTest::keyClick(&box, Qt::Key_Return);
  });
  action("mnuHelpAbout").trigger();
  EXPECT_TRUE(nextCame());
}

TEST_F(WorkbenchTest, ChoosesColumnsAndOptions) {
  open();
  filter("Names:*ACCT*", 0);
  const int before = working().model()->columnCount();
  next([](QWidget& dialog) {
    QListWidget* ticks = nullptr;
    for (QListWidget* list : dialog.findChildren<QListWidget*>())
      if (list->isVisible()) ticks = list;
    ASSERT_TRUE(ticks);
    ticks->setFocus();
    QTest::keyClick(ticks, Qt::Key_Home);
    QTest::keyClick(ticks, Qt::Key_Space);
    press(dialog, "ok");
  });
  action("mnuViewColumns").trigger();
  ASSERT_TRUE(nextCame());
  EXPECT_NE(working().model()->columnCount(), before);
  next([](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  action("mnuViewOptions").trigger();
  EXPECT_TRUE(nextCame());
}
