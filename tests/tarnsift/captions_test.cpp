#include "platform/runtime/string_table.hpp"
#include "tarnsift/fake_host.hpp"
#include "tarnsift/session/captions.hpp"
#include "tarnsift/session/strings.hpp"

namespace tarnsift_test {
namespace {

using tarnsift::GetCaption;
using ::testing::ElementsAre;
using ::testing::StartsWith;

// One test, because the document stays for the rest of the process; the first of this program, so that none stands yet.
TEST(Captions, TheFileIsReadOnceItIsThereAndSound) {
  FakeHost host;
  EXPECT_EQ(GetCaption("tab", "ByName"), "ByName") << "no file";
  EXPECT_THAT(host.messages(), ElementsAre());

  host.writeFile("Product/KVSearch.xrc", "<search>\n<tab name='ByName'></search>");
  for (int lookUp = 0; lookUp < 2; ++lookUp) {
    EXPECT_EQ(GetCaption("tab", "ByName"), "ByName") << "damaged file";
    const auto messages = host.messages();
    ASSERT_THAT(messages, ElementsAre(StartsWith("16|KVSearch.xrc Error|Error: '"))) << "told at every look-up";
    EXPECT_NE(messages[0].find("\r\n' at line: 2, pos: "), std::string::npos) << messages[0];
  }

  host.writeFile("Product/KVSearch.xrc", kCaptionFile);
  EXPECT_EQ(GetCaption("tab", "ByName"), "By name");
  host.writeFile("Product/KVSearch.xrc", "<search><tab name='ByName' caption='changed'/></search>");
  const std::vector<std::array<std::string, 3>> kCases = {{"tab", "ByName", "By name"},          {"criterion", "Level", "level number"},
                                                          {"tab", "Level", "Level"},            {"criterion", "Bare", "Bare"},
                                                          {"criterion", "Empty", "Empty"},      {"criterion", "", ""},
                                                          {"criterion", "it's", "it's"},        {"criterion", "CUST*", "CUST*"}};
  for (const auto& [kind, key, caption] : kCases) EXPECT_EQ(GetCaption(kind, key), caption) << kind << " " << key;
  EXPECT_THAT(host.messages(), ElementsAre());
}

// Ids are looked up by number all over the component.
TEST(Captions, TheWindowTakesItsWordsFromTheStringTable) {
  FakeHost host;
  host.run();
  auto& window = host.window();
  std::string text;
  for (int i : {0, 1, 2, 3}) text += window.lvList[static_cast<std::size_t>(i)]->ColumnHeaders.Item(2).Text + " ";
  for (std::size_t i = 1; i <= 4; ++i) text += window.lvPrograms.ColumnHeaders.Item(i).Text + " ";
  for (const auto& tab : window.tsLists.Tabs) text += tab.Key + "=" + tab.Caption + " ";
  for (const auto& entry : window.tbToolbar.Button("Search").ButtonMenus) text += entry.Text + " ";
  for (const char* key : {"Filter", "Note", "Columns"}) text += window.tbToolbar.Button(key).ToolTipText + " ";
  for (int i : {0, 1, 2, 3}) text += window.menu("mnuFileSearchTo", i).Caption + " ";
  text += window.menu("mnuMoveTo", 2).Caption;
  EXPECT_EQ(text, "Comment Comment Comment Comment Name Working Affected Clean Working=&Working Accepted=&Affected Rejected=&Clean "
                  "to &Working to &Affected to &Clean &Delete Define Filter Comment... Columns... "
                  "To &Working To &Affected To &Clean &Delete Move To C&lean");
}

} // namespace
} // namespace tarnsift_test
