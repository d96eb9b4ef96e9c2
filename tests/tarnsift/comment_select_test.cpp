#include "platform/runtime/application.hpp"
#include "tarnsift/fake_host.hpp"

namespace tarnsift_test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EntryCommands : public ::testing::Test {
 protected:
  EntryCommands() {
    host.add({.id = "A",
              .constructs =
                  "k1 CUSTOMER 0 4 W one\n k2 CUST-OLD 4 4 W\n k3 ORDER 8 4 W\n k4 cust-low 12 4 W\n k5 AB 16 4 -\n",
              .relations = "k1 Move k2\n k1 Move k5\n"});
    host.run();
  }
  Value stored(const std::string& key, const char* column = "P_Classification") {
    return host.database("A")->OpenRecordset("select * from Constructs where KVID = '" + key + "'")->Field(column);
  }
  std::string marked(int list = 0) {
    std::string keys;
    const auto& entries = window.lvList[static_cast<std::size_t>(list)]->ListItems;
    for (std::size_t i = 1; i <= entries.Count(); ++i)
      if (entries.Item(i).Selected()) keys += entries.Item(i).Key() + " ";
    return keys;
  }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

TEST_F(EntryCommands, ACommentGoesToTheFocusedEntryAlone) {
  platform::App().HelpFile = "tarnsift.help";
  host.mark(0, {"k1", "k2", "k3"});
  host.newComment = "two  words ";
  host.choose("mnuComment");
  EXPECT_THAT(host.commentAsked,
              ElementsAre("Please, enter comment for CUSTOMER.\r\n(Whitespace for no description.)|Tarnsift|one|"
                          "tarnsift.help|2400170"));
  EXPECT_EQ(host.entries(), "  W k1 CUSTOMER: two  words \n  W k2 CUST-OLD\n  W k3 ORDER\n  W k4 cust-low\n");
  host.state();
  EXPECT_EQ(marked(), "k1 k2 k3 ");
}

struct Entered {
  std::optional<std::string> text;
  Value stored;
};

TEST_F(EntryCommands, WhatIsEnteredIsStoredUnchanged) {
  host.mark(0, {"k2"});
  for (const auto& [text, expected] :
       {Entered{{}, {}}, Entered{" ", " "}, Entered{{}, " "}, Entered{"it's", "it's"}, Entered{"", ""}}) {
    host.newComment = text;
    host.toolbar("Note");
    EXPECT_EQ(stored("k2"), expected);
    EXPECT_EQ(stored("k2").isNull(), expected.isNull());
    EXPECT_EQ(window.lvList[0]->ListItems.Item("k2").SubItems(1), expected.asText());
  }
}

TEST_F(EntryCommands, InTheSynonymsListTheNoteIsTheDefaultAndTheTabIsNotTouched) {
  host.mark(0, {"k1"});
  host.mark(3, {"k5"});
  host.newComment = "Move of CUSTOMER";
  host.choose("mnuComment");
  EXPECT_NE(host.commentAsked.at(0).find("AB.\r\n"), std::string::npos);
  EXPECT_NE(host.commentAsked.at(0).find("|Move of CUSTOMER|"), std::string::npos);
  EXPECT_EQ(stored("k5").asText(), "Move of CUSTOMER");
  EXPECT_TRUE(stored("k5", "P_Status").isNull());
  host.mark(3, {"k2"});
  host.newComment = "from here";
  host.choose("mnuComment");
  EXPECT_EQ(stored("k2").asText(), "from here");
  EXPECT_EQ(host.entries(), "  W k1 CUSTOMER: one\n  W k2 CUST-OLD\n  W k3 ORDER\n  W k4 cust-low\n");
  host.mark(0, {"k2"});
  host.press("F6");
  EXPECT_EQ(stored("k2").asText(), "") << "a move stores what the tab shows";
  host.state();
}

TEST_F(EntryCommands, ARowThatHasGoneIsToldAndNothingElseChanges) {
  host.mark(0, {"k2"});
  host.database("A")->Execute("delete from Constructs where KVID = 'k2'");
  host.newComment = "lost";
  host.choose("mnuComment");
  EXPECT_EQ(host.messages().size(), 1u);
  EXPECT_EQ(window.lvList[0]->ListItems.Item("k2").SubItems(1), "");
}

/// What the analyst does in the pattern dialog: types into the boxes, then presses a button; a second step may follow.
class Patterns : public EntryCommands {
 protected:
  void select(const std::string& positive, const std::string& negative, const char* button = "cmdOK") {
    host.screen.dialogs["frmSelect"] = [=, this](platform::Form& form) {
      startedWith = box(form, 0).Text() + "|" + box(form, 1).Text() + (ok(form).Enabled ? "|on" : "|off");
      box(form, 0).setText(positive);
      box(form, 1).setText(negative);
      couldAccept = ok(form).Enabled;
      if (button == std::string("frame")) {
        form.unload();
      } else {
        form.get<platform::CommandButton>(button).press();
      }
      stayedOpen = form.Visible();
      focus = form.ActiveControl;
      form.Hide();
    };
    host.choose("mnuSelect");
  }
  static platform::ComboBox& box(platform::Form& form, int index) {
    return form.get<platform::ComboBox>("cmbSelect", index);
  }
  static platform::CommandButton& ok(platform::Form& form) { return form.get<platform::CommandButton>("cmdOK"); }
  std::string startedWith;
  bool couldAccept = false;
  bool stayedOpen = false;
  platform::Control* focus = nullptr;
};

TEST_F(Patterns, MarkByNameAndUnmarkTheRest) {
  const struct {
    const char *positive, *negative, *marked;
  } kCases[] = {{"CUST*", "*-OLD", "k1 "},   {"cust*", "", "k1 k2 "}, {"", "CUST*", "k3 k4 "}, {"", "*", ""},
                {"*-*", "*[!A-Z]??", "k2 "}, {"NOBODY", "", ""},      {"?????", "", "k3 "}};
  for (const auto& [positive, negative, expected] : kCases) {
    host.mark(0, {"k2", "k3"});
    select(positive, negative);
    EXPECT_EQ(marked(), expected) << positive << " not " << negative;
    EXPECT_EQ(window.lvList[0]->SelectedItem()->Key(), "k2") << "the focus stays";
  }
  EXPECT_THAT(host.messages(), IsEmpty());
}

TEST_F(Patterns, LeavingWithoutAcceptingKeepsMarksAndText) {
  for (const char* way : {"cmdCancel", "frame"}) {
    host.mark(0, {"k3"});
    select("CUST*", "", way);
    EXPECT_FALSE(stayedOpen);
    EXPECT_EQ(marked(), "k3 ") << way;
  }
  select("ZZ", "", "cmdCancel");
  EXPECT_EQ(startedWith, "CUST*||on");
}

TEST_F(Patterns, WithBothBoxesEmptyThereIsNothingToAccept) {
  host.mark(0, {"k3"});
  select("", "");
  EXPECT_FALSE(couldAccept);
  EXPECT_EQ(marked(), "k3 ");
}

TEST_F(Patterns, AnInvalidPatternIsToldAndTheDialogStays) {
  host.mark(0, {"k3"});
  for (int failing = 0; failing < 2; ++failing) {
    select(failing ? "*" : "[A", failing ? "[Z-A]" : "");
    EXPECT_TRUE(stayedOpen);
    EXPECT_EQ(focus->Index(), failing);
    EXPECT_THAT(host.messages(), ElementsAre("16|Tarnsift|Invalid pattern."));
    EXPECT_EQ(marked(), "k3 ");
  }
  // Valid as typed; its range runs backwards in upper case.
  select("[Z-a]", "");
  EXPECT_EQ(host.messages().size(), 1u);
  EXPECT_EQ(marked(), "k3 ");
}

TEST_F(Patterns, AcceptedOnesMakeAHistoryOfOneSession) {
  host.mark(0, {"k3"});
  select("cust*", "x");
  select("ORDER", "");
  select("CUST*", "y");
  EXPECT_EQ(startedWith, "||off") << "both boxes are empty after an accepted use";
  platform::Form* dialog = nullptr;
  for (platform::Form* form : platform::loadedForms())
    if (form->Name() == "frmSelect") dialog = form;
  ASSERT_NE(dialog, nullptr);
  EXPECT_THAT(box(*dialog, 0).Items, ElementsAre("CUST*", "ORDER"));
  EXPECT_THAT(box(*dialog, 1).Items, ElementsAre("X", "Y"));
  host.close();
  EXPECT_FALSE(dialog->Loaded());
  EXPECT_THAT(box(*dialog, 0).Items, IsEmpty());
}

TEST_F(Patterns, SelectAllMarksTheListInFrontAndMovesNothing) {
  host.mark(0, {"k1"});
  host.press("Ctrl+A");
  EXPECT_EQ(marked(), "k1 k2 k3 k4 ");
  EXPECT_EQ(host.currentObject, "") << "the names are not in the analysis";
  host.mark(3, {"k2"});
  host.choose("mnuSelectAll");
  EXPECT_EQ(marked(3), "k2 k5 ");
  EXPECT_EQ(window.lvList[3]->SelectedItem()->Key(), "k2");
  host.press("F8");
  EXPECT_EQ(host.counts(), "A 3 0 2\n") << "a move from there places them all";
  host.state();
}

} // namespace
} // namespace tarnsift_test
