#include "platform/runtime/text.hpp"
#include "tarnsift/fake_host.hpp"

namespace tarnsift_test {
namespace {

using platform::joined;

constexpr const char* kLanguages = R"(<OPTIONS><CASE ID="Tarnsift"><BOOL NAME="ApplySelected" VALUE="false"/>
  <TEXT NAME="DefaultSearchName" VALUE=""/>
  <GROUP NAME="Synonyms"><BOOL NAME="HighAffinity" VALUE="true"><LIST NAME="HighAffinityRels">
    <CASE NAME="Move" CHECKED="true"/></LIST></BOOL></GROUP>
  <LIST NAME="Languages">
    <CASE NAME="COBOL"><LIST NAME="Columns"><CASE NAME="Level" CHECKED="true"/><CASE NAME="Picture" CHECKED="true"/>
      <CASE NAME="Usage" CHECKED="false"/></LIST></CASE>
    <CASE NAME="PLI"><LIST NAME="Columns"><CASE NAME="Attributes" CHECKED="true"/></LIST></CASE>
  </LIST></CASE></OPTIONS>)";

class Columns : public ::testing::Test {
 protected:
  Columns() {
    host.options = platform::Document::loadText(kLanguages);
    host.columnTypes["Level"] = "Integer";
    host.columnTexts = {{"k1.Level", "5"}, {"k2.Level", "77"}, {"k1.Picture", "9(4)"}, {"k3.Level", "1"}};
    const std::map<std::string, std::vector<std::string>> places = {
        {"k1", {"f:1:1"}}, {"k2", {"f:2:1"}}, {"k3", {"f:3:1"}}};
    const char* constructs = "k1 CUST 0 4 W one\n k2 NAME 4 4 W\n k3 ZIP 8 4 -\n k4 LOST 12 4 W four\n";
    for (const auto& [id, language] : {std::pair("A", "COBOL"), {"B", "COBOL"}, {"C", "PLI"}, {"D", "ASM"}})
      host.add(
          {.id = id, .constructs = constructs, .relations = "k1 Move k3\n", .places = places, .language = language});
    host.run();
  }
  std::string headers(int list = 0) {
    std::vector<std::string> texts;
    const auto& all = window.lvList[static_cast<std::size_t>(list)]->ColumnHeaders;
    for (std::size_t i = 1; i <= all.Count(); ++i)
      texts.push_back(all.Item(i).Text);
    return joined(texts, "|");
  }
  std::string row(const std::string& key, int list = 0) {
    const auto& view = *window.lvList[static_cast<std::size_t>(list)];
    const auto* entry = view.ListItems.find(key);
    if (!entry) return "none";
    std::vector<std::string> texts;
    for (std::size_t i = 1; i < view.ColumnHeaders.Count(); ++i)
      texts.push_back(entry->SubItems(i));
    return joined(texts, "|");
  }
  void tick(const std::string& column, const char* checked) {
    host.setOption("//CASE[@NAME='" + column + "']", checked, "CHECKED");
  }
  bool commandsOn() { return window.menu("mnuViewColumns").Enabled && window.tbToolbar.Button("Columns").Enabled; }
  FakeHost host;
  tarnsift::frmMain& window = host.window();
};

TEST_F(Columns, StandBetweenTheNameAndTheCommentInAllFourLists) {
  for (int list = 0; list < 4; ++list) {
    const std::string all = headers(list);
    EXPECT_EQ(all.substr(all.find('|')).substr(0, 15), "|Level|Picture|") << list;
    EXPECT_EQ(window.lvList[static_cast<std::size_t>(list)]->ColumnHeaders.IndexOf("Comment"), 4u);
  }
  EXPECT_EQ(row("k1"), "         5|9(4)|one") << "numbers are padded, texts are not";
  EXPECT_EQ(row("k4"), "||four") << "a name that the analysis does not know has empty ones";
  EXPECT_EQ(row("k3", 3), "         1|Picture|Move of CUST");
}

TEST_F(Columns, FollowMovesAndSortByValue) {
  host.mark(0, {"k1", "k2"});
  host.press("F6");
  EXPECT_EQ(row("k1", 1), "         5|9(4)|one");
  EXPECT_EQ(row("k2", 1), "        77|Picture|");
  window.lvList[1]->ColumnClick.raise(2);
  EXPECT_EQ(window.lvList[1]->ListItems.Item(1).Key(), "k1");
  host.state();
}

struct Language {
  const char *program, *columns;
  bool on;
};

TEST_F(Columns, FollowTheLanguageOfTheProgram) {
  for (const auto& [program, columns, on] : {Language{"B", "|Level|Picture|", true},
                                             {"C", "|Attributes|", true},
                                             {"D", "|", false},
                                             {"A", "|Level|Picture|", true}}) {
    host.click(program);
    const std::string all = headers();
    EXPECT_EQ(all.substr(all.find('|'), all.rfind('|') - all.find('|') + 1), columns) << program;
    EXPECT_EQ(commandsOn(), on);
    EXPECT_EQ(row("k1").substr(row("k1").rfind('|') + 1), "one");
    host.state();
  }
}

TEST_F(Columns, ASecondProgramOfTheLanguageKeepsTheHeaders) {
  window.lvList[0]->ColumnHeaders.Item(2).Width = 700; // as the analyst drew it
  host.click("B");
  EXPECT_EQ(window.lvList[0]->ColumnHeaders.Item(2).Width, 700);
}

TEST_F(Columns, AChangedChoiceRebuildsHeadersAndEntries) {
  tick("Level", "false");
  tick("Usage", "true");
  host.database("A")->Execute("update Constructs set P_Classification = 'new' where KVID = 'k1'");
  host.choose("mnuViewColumns");
  EXPECT_NE(headers().find("|Picture|Usage|"), std::string::npos);
  EXPECT_EQ(row("k1"), "9(4)|Usage|new");
  EXPECT_EQ(row("k4"), "||four") << "nothing of the old columns stays behind";
  EXPECT_EQ(row("k3", 3), "Picture|Usage|Move of CUST");
  tick("Picture", "false");
  tick("Usage", "false");
  host.choose("mnuViewColumns");
  EXPECT_EQ(row("k1"), "new");
  EXPECT_TRUE(commandsOn()) << "so that one can be ticked again";
  tick("Usage", "true");
  host.choose("mnuViewColumns");
  EXPECT_EQ(row("k2"), "Usage|");
}

TEST_F(Columns, AChangeOfOrderAloneKeepsTheHeaders) {
  platform::Node list = host.options.selectSingleNode("//CASE[@NAME='COBOL']/LIST[@NAME='Columns']");
  platform::Node level = list.firstChild();
  list.removeChild(level);
  list.appendChild(level);
  host.choose("mnuViewOptions");
  EXPECT_NE(headers().find("|Level|Picture|"), std::string::npos);
  host.mark(0, {"k1"});
  host.press("F8");
  EXPECT_EQ(row("k1", 2), "         5|9(4)|one") << "each text stands under its header";
}

// The rows of a hidden pane would stand in the old columns, and a move from there would take one for the comment.
TEST_F(Columns, AHiddenSynonymsPaneIsEmptiedByAChange) {
  host.mark(3, {"k3"});
  host.choose("mnuViewSynonyms");
  tick("Level", "false");
  host.choose("mnuViewOptions");
  EXPECT_EQ(row("k3", 3), "none");
  EXPECT_FALSE(window.menu("mnuMoveTo", 0).Enabled);
}

TEST_F(Columns, TheDialogsOpenWhereTheyBelong) {
  host.takeLog();
  host.choose("mnuViewColumns");
  host.toolbar("Columns");
  host.toolbar("Options");
  host.toolbar("Filter");
  const std::string languages = "options //CASE[@ID='Tarnsift']/LIST[@NAME='Languages']";
  EXPECT_EQ(host.takeLog(), languages + "/CASE[@NAME='COBOL']\n" + languages +
                                "/CASE[@NAME='COBOL']\noptions .//CASE[@ID='Tarnsift']\n"
                                "options //CASE[@ID='Tarnsift']/LIST/CASE[@NAME='Filters']\n");
}

// Without a program on the screen there is no language to open on.
TEST(ColumnsWithoutProgram, ShowAllLanguages) {
  FakeHost host;
  host.options = platform::Document::loadText(kLanguages);
  host.run();
  EXPECT_FALSE(host.window().menu("mnuViewColumns").Enabled);
  host.window().menu("mnuViewColumns").Enabled = true;
  host.takeLog();
  host.choose("mnuViewColumns");
  EXPECT_EQ(host.takeLog(), "options //CASE[@ID='Tarnsift']/LIST[@NAME='Languages']\n");
  EXPECT_FALSE(host.window().menu("mnuViewColumns").Enabled) << "saving the dialog sets it anew";
}

} // namespace
} // namespace tarnsift_test
