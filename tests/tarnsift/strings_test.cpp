#include <cstdlib>
#include <regex>
#include <set>

#include "platform/runtime/string_table.hpp"
#include "tarnsift/fake_host.hpp"
#include "tarnsift/session/strings.hpp"
#include "tarnsift/workbench/commands.hpp"

namespace tarnsift_test {
namespace {

using platform::Language;
using platform::LoadResString;
using tarnsift::buttonEntries;
using tarnsift::menuEntries;
using ::testing::ElementsAre;

using Texts = std::map<int, std::string>;

Texts textsOf(std::span<const platform::StringEntry> entries) {
  Texts texts;
  int last = 0;
  for (const auto& entry : entries) {
    EXPECT_GT(entry.id, last) << "out of order or twice";
    last = entry.id;
    texts[entry.id] = entry.text;
  }
  return texts;
}

const std::map<std::string, Texts>& tables() {
  static const std::map<std::string, Texts> all = {{"en", textsOf(tarnsift::englishStrings())},
                                                   {"ja", textsOf(tarnsift::japaneseStrings())},
                                                   {"ko", textsOf(tarnsift::koreanStrings())}};
  return all;
}

std::string wordsOf(const std::string& text, const char* pattern) {
  std::multiset<std::string> found;
  const std::regex word(pattern);
  for (std::sregex_iterator at(text.begin(), text.end(), word), end; at != end; ++at)
    found.insert(at->str());
  std::string words;
  for (const auto& one : found)
    words += one + " ";
  return words;
}

// What a translation has to keep: placeholders, the access key, the dots, the colon, blanks at the ends.
std::string skeletonOf(const std::string& text) {
  const std::string plain = std::regex_replace(text, std::regex("\\(&[A-Z]\\)"), "");
  return wordsOf(text, "%[0-9]") + "|" + platform::upper(wordsOf(text, "&[A-Za-z]")) + "|" +
         wordsOf(plain, "^ +|\\.\\.\\.$|:$| +$");
}

TEST(Strings, TheThreeTablesSayTheSameThings) {
  const Texts& english = tables().at("en");
  for (const char* language : {"ja", "ko"}) {
    const Texts& texts = tables().at(language);
    for (const auto& [id, text] : english) {
      const auto translated = texts.find(id);
      if (translated == texts.end()) {
        ADD_FAILURE() << language << " lacks " << id;
        continue;
      }
      EXPECT_EQ(skeletonOf(translated->second), skeletonOf(text))
          << language << " " << id << ": " << translated->second;
      if (translated->second.find('&') != std::string::npos) {
        EXPECT_TRUE(std::regex_search(translated->second, std::regex("[^ ]\\(&[A-Z]\\)(\\.\\.\\.|:)?$")))
            << language << " " << id << ": " << translated->second;
      }
      if (text != "OK") {
        EXPECT_TRUE(
            std::any_of(translated->second.begin(), translated->second.end(), [](char c) { return (c & 0x80) != 0; }))
            << language << " " << id << " is not translated";
      }
    }
    EXPECT_EQ(texts.size(), english.size()) << language << " has texts of its own";
  }
}

TEST(Strings, NoMenuHasAnAccessKeyTwice) {
  for (const auto& [language, texts] : tables()) {
    std::map<std::string_view, std::string> keys; // by menu
    const auto add = [&](std::string_view menu, const std::string& text) {
      const auto mark = text.find('&');
      if (mark == std::string::npos) return;
      const std::string key = platform::upper(text.substr(mark + 1, 1));
      EXPECT_EQ(keys[menu].find(key), std::string::npos) << language << ": " << text << " in the menu '" << menu << "'";
      keys[menu] += key;
    };
    for (const auto& entry : menuEntries())
      if (entry.caption) add(entry.parent, texts.at(entry.caption));
    for (const auto& button : buttonEntries())
      for (const int id : button.dropDown)
        if (id) add(button.key, texts.at(id));
    EXPECT_EQ(keys[""].size(), 4U) << language;
    EXPECT_EQ(keys["mnuFile"].size(), 7U) << language;
  }
}

TEST(Strings, TheWindowOpensWithTheWordsOfEachLanguage) {
  const std::map<Language, std::string> expected = {
      {Language::English, "Name Affected &File Move To A&ffected Find Synonyms Tarnsift Help"},
      {Language::Japanese, "名前 影響あり ファイル(&F) 影響ありへ移動(&F) シノニムの検索 Tarnsift のヘルプ"},
      {Language::Korean, "이름 영향 있음 파일(&F) 영향 있음으로 이동(&F) 동의어 찾기 Tarnsift 도움말"}};
  for (const auto& [language, words] : expected) {
    platform::setLanguage(language);
    FakeHost host;
    host.run();
    auto& window = host.window();
    EXPECT_EQ(window.lvPrograms.ColumnHeaders.Item(1).Text + " " + window.lvPrograms.ColumnHeaders.Item(3).Text + " " +
                  window.menu("mnuFile").Caption + " " + window.menu("mnuMoveTo", 1).Caption + " " +
                  window.tbToolbar.Button("Synonyms").ToolTipText + " " + window.menu("mnuHelpWindow").Caption,
              words);
    for (const auto& entry : menuEntries())
      EXPECT_NE(window.menu(entry.name, entry.index).Caption, "") << entry.name;
    host.close();
  }
  platform::resetLanguage();
}

// Puts the variables back as they were.
class Locale : public ::testing::Test {
 protected:
  void SetUp() override {
    tarnsift::registerStrings();
    for (const char* name : kNames)
      if (const char* value = std::getenv(name)) m_before[name] = value;
    platform::resetLanguage();
  }
  void TearDown() override {
    platform::resetLanguage();
    for (const char* name : kNames)
      ::unsetenv(name);
    for (const auto& [name, value] : m_before)
      ::setenv(name.c_str(), value.c_str(), 1);
  }
  static std::string cancelIn(const std::map<std::string, std::string>& variables) {
    for (const char* name : kNames)
      ::unsetenv(name);
    for (const auto& [name, value] : variables)
      ::setenv(name.c_str(), value.c_str(), 1);
    return LoadResString(189);
  }

 private:
  static constexpr const char* kNames[] = {"LC_ALL", "LC_MESSAGES", "LANG"};
  std::map<std::string, std::string> m_before;
};

TEST_F(Locale, ChoosesTheLanguage) {
  EXPECT_EQ(cancelIn({{"LC_ALL", "ja_JP.UTF-8"}, {"LANG", "ko_KR.UTF-8"}}), "キャンセル");
  EXPECT_EQ(cancelIn({{"LC_MESSAGES", "ko"}, {"LANG", "ja_JP.UTF-8"}}), "취소");
  EXPECT_EQ(cancelIn({{"LC_ALL", ""}, {"LANG", "ja_JP.eucJP"}}), "キャンセル") << "an empty variable counts as none";
  EXPECT_EQ(cancelIn({{"LC_ALL", "C"}, {"LANG", "ja_JP.UTF-8"}}), "Cancel");
  EXPECT_EQ(cancelIn({{"LANG", "de_DE.UTF-8"}}), "Cancel");
  EXPECT_EQ(cancelIn({}), "Cancel");
}

TEST_F(Locale, GivesWayToAChoice) {
  platform::setLanguage(Language::Korean);
  EXPECT_EQ(cancelIn({{"LC_ALL", "ja_JP.UTF-8"}}), "취소");
  platform::setLanguage(Language::English);
  EXPECT_EQ(LoadResString(189), "Cancel");
  platform::resetLanguage();
  EXPECT_EQ(LoadResString(189), "キャンセル");
}

} // namespace
} // namespace tarnsift_test
