#include "tarnsift/fake_host.hpp"
#include "tarnsift/session/captions.hpp"

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
  const std::vector<std::array<std::string, 3>> kCases = {
      {"tab", "ByName", "By name"},  {"criterion", "Level", "level number"}, {"tab", "Level", "Level"},
      {"criterion", "Bare", "Bare"}, {"criterion", "Empty", "Empty"},        {"criterion", "", ""},
      {"criterion", "it's", "it's"}, {"criterion", "CUST*", "CUST*"}};
  for (const auto& [kind, key, caption] : kCases)
    EXPECT_EQ(GetCaption(kind, key), caption) << kind << " " << key;
  EXPECT_THAT(host.messages(), ElementsAre());
}

} // namespace
} // namespace tarnsift_test
