#include "desktop/options/option_dialog.hpp"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <functional>
#include <gtest/gtest.h>

namespace {

using desktop::OptionDialog;

constexpr const char* kComponent = "//CASE[@ID='Own']";
// Of older and newer versions: elements and attributes that nothing here knows.
constexpr const char* kDocument = R"(<OPTIONS MADE="1998">
<CASE ID="Own" NAME="Own" CAPTION="Own" COLOUR="red">
<BOOL NAME="Outer" VALUE="true" SINCE="3">
<BOOL NAME="Inner" VALUE="false"><NUMBER NAME="Deep" VALUE="7" UNIT="mm"/><HINT>of its own</HINT></BOOL></BOOL>
<DIAL NAME="Silent" LOW="1" HIGH="9"><MARK AT="3"/></DIAL>
<DIAL NAME="Level" VALUE="3" HIGH="9"><MARK AT="3"/></DIAL>
<NUMBER NAME="Vast" VALUE="70000"/>
<TEXT NAME="Mode" VALUE="none of them" VALUES="a|b"/>
<STRINGS NAME="Names"><STRING VALUE="one" CHECKED="true" BY="me"/><STRING VALUE=" wide " CHECKED="false"><WHY>x</WHY>
</STRING><STRING VALUE=""/><ORDER BY="name"/></STRINGS>
<LIST NAME="Kind" TYPE="data" DISPLAY="combo" VALUE="B">
<CASE NAME="A"><TEXT NAME="Where" VALUE="here"/></CASE>
<CASE NAME="B"><LIST NAME="Way" DISPLAY="combo" VALUE="Y"><CASE NAME="X"/><CASE NAME="Y">
<BOOL NAME="Deepest" VALUE="false"/></CASE></LIST></CASE></LIST>
<LIST NAME="Columns" TYPE="data"><CASE NAME="Size" CHECKED="false" WIDE="7"/><CASE NAME="Level" CHECKED="true"/></LIST>
<!-- a remark --><GROUP NAME="Empty" LATER="yes"/></CASE>
<CASE NAME="NoComponent" WITHOUT="id"><BOOL NAME="Outer" VALUE="true"/></CASE></OPTIONS>)";

template<typename W>
W& named(OptionDialog& dialog, const char* name) {
  for (W* widget : dialog.findChildren<W*>())
    if (widget->accessibleName() == QLatin1String(name)) return *widget;
  throw std::runtime_error(std::string("no editor of ") + name);
}

QCheckBox& box(OptionDialog& dialog, const char* caption) {
  for (QCheckBox* widget : dialog.findChildren<QCheckBox*>())
    if (widget->text() == QLatin1String(caption)) return *widget;
  throw std::runtime_error(std::string("no switch ") + caption);
}

// The list of a page that has no caption of its own.
QListWidget& listWith(OptionDialog& dialog, const char* entry) {
  for (QListWidget* list : dialog.findChildren<QListWidget*>())
    if (!list->findItems(QLatin1String(entry), Qt::MatchExactly).isEmpty() &&
        list->item(0)->flags().testFlag(Qt::ItemIsUserCheckable))
      return *list;
  throw std::runtime_error(std::string("no list with ") + entry);
}

struct Edit {
  const char* what;
  std::function<void(OptionDialog&)> by;
  std::string from;
  std::string to;
};

} // namespace

TEST(OptionDialog, WritesWhatWasChangedAndNothingElse) {
  const std::vector<Edit> edits = {
      {"nothing", [](OptionDialog&) {}, "", ""},
      {"a switch", [](OptionDialog& d) { box(d, "Outer").click(); }, R"(<BOOL NAME="Outer" VALUE="true" SINCE)",
       R"(<BOOL NAME="Outer" VALUE="false" SINCE)"},
      {"a nested switch", [](OptionDialog& d) { box(d, "Inner").click(); }, R"("Inner" VALUE="false")",
       R"("Inner" VALUE="true")"},
      {"there and back", [](OptionDialog& d) { box(d, "Inner").click(), box(d, "Inner").click(); }, "", ""},
      {"a number", [](OptionDialog& d) { named<QSpinBox>(d, "Deep").setValue(8); }, R"(VALUE="7")", R"(VALUE="8")"},
      {"a kind never seen",
       [](OptionDialog& d) {
         named<QLineEdit>(d, "Level").clear();
         named<QLineEdit>(d, "Level").insert(QStringLiteral("<5>"));
       },
       R"(VALUE="3" HIGH)", R"(VALUE="&lt;5&gt;" HIGH)"},
      {"one of several", [](OptionDialog& d) { named<QComboBox>(d, "Mode").setCurrentIndex(1); }, "none of them", "b"},
      {"a branch", [](OptionDialog& d) { named<QComboBox>(d, "Kind").setCurrentIndex(0); }, R"(VALUE="B")",
       R"(VALUE="A")"},
      {"in a branch of a branch", [](OptionDialog& d) { box(d, "Deepest").click(); }, R"("Deepest" VALUE="false")",
       R"("Deepest" VALUE="true")"},
      {"a tick", [](OptionDialog& d) { listWith(d, "Size").item(0)->setCheckState(Qt::Checked); },
       R"(CHECKED="false" WIDE)", R"(CHECKED="true" WIDE)"},
      {"a text of a list", [](OptionDialog& d) { listWith(d, "one").item(0)->setText(QStringLiteral("two ")); },
       R"(VALUE="one")", R"(VALUE="two")"},
      {"a tick of a text", [](OptionDialog& d) { listWith(d, "one").item(1)->setCheckState(Qt::Checked); },
       R"(" wide " CHECKED="false")", R"(" wide " CHECKED="true")"},
  };
  const std::string before = platform::Document::loadText(kDocument).text();
  for (const Edit& edit : edits) {
    platform::Document document = platform::Document::loadText(kDocument);
    std::string expected = before;
    ASSERT_NE(expected.find(edit.from), std::string::npos) << edit.what;
    expected.replace(expected.find(edit.from), edit.from.size(), edit.to);
    OptionDialog given(document, kComponent);
    edit.by(given);
    given.reject();
    EXPECT_EQ(document.text(), before) << edit.what << ", given up";
    OptionDialog dialog(document, kComponent);
    edit.by(dialog);
    dialog.accept();
    EXPECT_EQ(document.text(), expected) << edit.what;
  }
}

TEST(OptionDialog, TakesTextsOutAndInAndLeavesTheOthers) {
  platform::Document document = platform::Document::loadText(kDocument);
  OptionDialog dialog(document, kComponent);
  QListWidget& list = listWith(dialog, "one");
  ASSERT_EQ(list.count(), 3) << "what is no text is not shown";
  list.setCurrentRow(0);
  for (const char* button : {"Remove", "Add", "Add"})
    for (QPushButton* push : dialog.findChildren<QPushButton*>())
      if (push->text() == QLatin1String(button)) push->click();
  list.item(3)->setText(QStringLiteral("new")); // the other new one stays empty
  dialog.accept();
  EXPECT_EQ(document.selectSingleNode("//STRINGS").xml(),
            "<STRINGS NAME=\"Names\"><STRING VALUE=\" wide \" CHECKED=\"false\"><WHY>x</WHY></STRING>"
            "<STRING VALUE=\"\"/><ORDER BY=\"name\"/><STRING VALUE=\"new\" CHECKED=\"true\"/></STRINGS>");
}

TEST(OptionDialog, WhatDependsOnASwitchIsOffWithIt) {
  OptionDialog dialog(platform::Document::loadText(kDocument), kComponent);
  auto& deep = named<QSpinBox>(dialog, "Deep");
  const auto states = [&] {
    return std::to_string(box(dialog, "Inner").isEnabled()) + std::to_string(deep.isEnabled());
  };
  EXPECT_EQ(states(), "10");
  box(dialog, "Inner").click();
  EXPECT_EQ(states(), "11");
  box(dialog, "Outer").click();
  EXPECT_EQ(states(), "00");
  box(dialog, "Outer").click();
  EXPECT_EQ(states(), "11");
}

TEST(OptionDialog, HasNoPageWithoutAnythingOnIt) {
  OptionDialog dialog(platform::Document::loadText(kDocument), kComponent);
  QStringList pages;
  for (QListWidget* list : dialog.findChildren<QListWidget*>())
    if (list->accessibleName() == QLatin1String("Pages"))
      for (int i = 0; i < list->count(); ++i)
        pages << list->item(i)->text();
  EXPECT_EQ(pages.join(QLatin1Char(' ')).toStdString(), "Own Kind Columns");
  EXPECT_THROW(OptionDialog(platform::Document::loadText(kDocument), "//CASE[@ID='Other']"), platform::Error);
}
