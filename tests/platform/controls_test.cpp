#include <gtest/gtest.h>

#include "platform/controls/form.hpp"
#include "platform/controls/screen.hpp"

using namespace platform;

namespace {

// The rows as one text: "*" marks the focused row, "+" a selected one.
std::string picture(ListView& list) {
  std::string text;
  for (std::size_t i = 1; i <= list.ListItems.Count(); ++i) {
    const ListItem& item = list.ListItems.Item(i);
    text += (i > 1 ? " " : "") + item.Text + (&item == list.SelectedItem() ? "*" : "") + (item.Selected() ? "+" : "");
    EXPECT_EQ(item.Index(), i);
    EXPECT_EQ(list.ListItems.find(item.Key()), &item);
  }
  return text;
}

void fill(ListView& list, const std::string& letters) {
  for (const char letter : letters)
    list.ListItems.Add(std::string("K") + letter, std::string(1, letter));
}

} // namespace

TEST(ListView, FocusGoesToTheRowNowAtThePlaceThenToTheLastThenToNone) {
  ListView list("lv", 0);
  fill(list, "ABC");
  list.setSelectedItem(&list.ListItems.Item("kb"));
  EXPECT_EQ(picture(list), "A B*+ C");
  list.ListItems.Remove("KB");
  EXPECT_EQ(picture(list), "A C*");
  list.ListItems.Remove(2);
  EXPECT_EQ(picture(list), "A*");
  list.ListItems.Remove(1);
  EXPECT_EQ(picture(list), "");
  EXPECT_EQ(list.SelectedItem(), nullptr);
}

TEST(ListView, ABatchGivesTheSameRowsAsSingleSteps) {
  for (const bool batched : {false, true}) {
    ListView list("lv", 0);
    fill(list, "ABCDEFGH");
    list.sortBy(1, true);
    {
      std::optional<ListView::Batch> batch;
      if (batched) batch.emplace(list);
      for (std::size_t i = list.ListItems.Count(); i >= 1; --i) {
        const std::string text = list.ListItems.Item(i).Text;
        if (text == "B" || text == "E" || text == "H") list.ListItems.Remove(i);
      }
      list.ListItems.Remove("KA");
      EXPECT_EQ(list.ListItems.Item(1).Text, "G");
      EXPECT_EQ(list.ListItems.Count(), 4U);
      list.ListItems.Add("KE", "e");
      EXPECT_THROW(list.ListItems.Add("ke", "again"), KeyError);
      EXPECT_EQ(list.ListItems.Item("KC").Index(), batched ? 4U : 5U);
    }
    EXPECT_EQ(picture(list), "G F e D C") << (batched ? "batched" : "single");
  }
}

TEST(ListView, RemovalByPositionAndByKeyMixInABatch) {
  ListView list("lv", 0);
  fill(list, "ABCDE");
  {
    const ListView::Batch batch(list);
    list.ListItems.Remove(2);
    list.ListItems.Remove("KD");
    EXPECT_EQ(list.ListItems.Item(3).Text, "E");
    list.ListItems.Remove("KA");
  }
  EXPECT_EQ(picture(list), "C E");
}

TEST(ListView, SortsStablyWithoutCaseBySubColumnAndKeepsSortedOnAdd) {
  ListView list("lv", 0);
  for (const auto& [key, text, count] :
       {std::tuple("1", "b", "         9"), {"2", "A", "        12"}, {"3", "c", "         9"}})
    list.ListItems.Add(key, text).setSubItems(2, count);
  list.sortBy(3);
  EXPECT_EQ(picture(list), "b c A") << "padded counts sort by value, equal ones keep their order";
  list.sortBy(1);
  list.ListItems.Add("4", "B");
  EXPECT_EQ(picture(list), "A b B c");
  EXPECT_EQ(list.ListItems.Item("2").SubItems(1), "") << "a sub-column never written is empty";
}

TEST(Form, CloseCanBeRefusedAtBothSteps) {
  Form form("frm");
  std::string said;
  bool refuseQuery = true;
  bool refuseUnload = true;
  form.QueryUnload.connect([&](bool& cancel) { said += "q", cancel = refuseQuery; });
  form.Unload.connect([&](bool& cancel) { said += "u", cancel = refuseUnload; });
  form.Show();
  EXPECT_FALSE(form.unload());
  refuseQuery = false;
  EXPECT_FALSE(form.unload());
  refuseUnload = false;
  EXPECT_TRUE(form.unload());
  EXPECT_EQ(said, "qququ");
  EXPECT_FALSE(form.Loaded());
}

TEST(Controls, DisabledEntriesCannotBeReached) {
  Form form("frm");
  auto& menu = form.add<MenuItem>("mnuFile");
  auto& entry = form.add<MenuItem>("mnuFileClose");
  entry.ParentMenu = &menu;
  int clicks = 0;
  entry.Click.connect([&] { ++clicks; });
  entry.choose();
  menu.Enabled = false;
  entry.choose();
  menu.Enabled = true;
  entry.Enabled = false;
  entry.choose();
  EXPECT_EQ(clicks, 1);
  auto& bar = form.add<ProgressBar>("pb");
  bar.Max = 2;
  bar.setValue(2);
  EXPECT_THROW(bar.setValue(3), Error);
  EXPECT_EQ(bar.Value(), 2);
  auto& first = form.add<OptionButton>("opt", 0);
  auto& second = form.add<OptionButton>("opt", 1);
  first.choose();
  second.choose();
  EXPECT_FALSE(first.Value());
}

TEST(HeadlessScreen, AQuestionWithoutAnAnswerIsAnError) {
  HeadlessScreen headless;
  EXPECT_EQ(headless.messageBox("said", kInformation, "t"), Answer::Ok);
  EXPECT_THROW(headless.messageBox("asked?", kOkCancel, "t"), Error);
  headless.answers = {Answer::Cancel};
  EXPECT_EQ(headless.messageBox("asked?", kOkCancel, "t"), Answer::Cancel);
  Form dialog("frmX");
  EXPECT_THROW(headless.runModal(dialog, nullptr), Error);
  EXPECT_EQ(headless.messages.size(), 3U);
}
