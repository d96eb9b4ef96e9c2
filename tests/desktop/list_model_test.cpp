#include "desktop/list_model.hpp"

#include <QAbstractItemModelTester>
#include <gtest/gtest.h>

#include "desktop/list_widget.hpp"
#include "desktop/qt_screen.hpp"
#include "platform/controls/form.hpp"

using desktop::ListModel;

TEST(ListModel, KeepsTheRulesOfModelsWhileRowsComeGoAndSort) {
  platform::ListView list("lvList", 0);
  list.ColumnHeaders.Add({"", "Name", 1500});
  list.ColumnHeaders.Add({"Comment", "Comment", {}});
  ListModel model(list, ListModel::Icons::status, nullptr);
  QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
  const auto cells = [&] {
    std::string text;
    for (int row = 0; row < model.rowCount(); ++row)
      for (int column = 0; column < model.columnCount(); ++column)
        text +=
            model.index(row, column).data().toString().toStdString() + (column + 1 < model.columnCount() ? "|" : "\n");
    return text;
  };
  list.ListItems.Add("k1", "ZETA").setSubItems(1, "last");
  list.ListItems.Add("k2", "ALPHA", 2);
  EXPECT_EQ(cells(), "") << "told at a refresh, not before";
  EXPECT_TRUE(model.refresh());
  EXPECT_EQ(cells(), "ZETA|last\nALPHA|\n");
  EXPECT_FALSE(model.refresh());
  list.sortBy(1);
  list.ColumnHeaders.Insert(2, {"Size", "Size", {}});
  list.ListItems.Item("k2").setSubItems(1, "     12");
  list.ListItems.Item("k1").setSubItems(1, "");
  EXPECT_TRUE(model.refresh());
  EXPECT_EQ(cells(), "ALPHA|12|\nZETA||\n") << "padded numbers lose their blanks on the screen";
  EXPECT_TRUE(model.index(0, 1).data(Qt::TextAlignmentRole).value<Qt::Alignment>() & Qt::AlignRight);
  EXPECT_FALSE(model.index(0, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
  list.ListItems.Clear();
  EXPECT_FALSE(model.index(1, 0).data().isValid()) << "a row that went before the refresh";
  EXPECT_TRUE(model.refresh());
  EXPECT_EQ(model.rowCount(), 0);
}

TEST(ListWidget, HoldsAHundredThousandRows) {
  desktop::QtScreen screen;
  platform::setScreen(&screen);
  platform::Form form("frmMain");
  auto& list = form.add<platform::ListView>("lvList", 0);
  list.ColumnHeaders.Add({"", "Name", 1500});
  list.Move(0, 0, 6000, 6000);
  QWidget parent;
  desktop::ListWidget widget(list, ListModel::Icons::none, screen, &parent);
  parent.show();
  {
    platform::ListView::Batch batch(list);
    for (int i = 0; i < 100000; ++i)
      list.ListItems.Add(std::to_string(i), "NAME-" + std::to_string(i)).setSelected(i % 2 == 0);
  }
  list.setSelectedItem(&list.ListItems.Item(99999));
  widget.sync();
  EXPECT_EQ(widget.model()->rowCount(), 100000);
  EXPECT_EQ(widget.currentIndex().row(), 99998);
  EXPECT_TRUE(widget.viewport()->rect().intersects(widget.visualRect(widget.currentIndex())));
}
