#include <gtest/gtest.h>

#include "tarnsift/fake_host.hpp"
#include "tarnsift/options/upgrade.hpp"

namespace tarnsift_test {
namespace {

constexpr const char* kOld = R"xml(<?xml version="1.0"?>
<OPTIONS><CASE ID="Tarnsift" NAME="T">
  <BOOL NAME="ViewAllRedefines" CAPTION="c" VALUE="true"/><BOOL NAME="ApplySelected" VALUE="false"/>
  <TEXT NAME="DefaultSearchName" VALUE="Names:A&amp;B"/>
  <STRINGS NAME="NameNegative" CAPTION="not"><STRING VALUE="*-OLD" CHECKED="false"/></STRINGS>
  <BOOL NAME="OverrideStatus" VALUE="true"/>
  <GROUP NAME="PositiveFilters" CAPTION="like"><STRINGS NAME="P"><STRING VALUE="ACCT*" CHECKED="true"/></STRINGS></GROUP>
  <GROUP NAME="Synonyms"><BOOL NAME="HighAffinity" VALUE="true"/></GROUP>
</CASE><CASE ID="Kelvane"/></OPTIONS>)xml";

constexpr const char* kNew = R"xml(<?xml version="1.0" encoding="UTF-8"?>
<OPTIONS>
  <CASE ID="Tarnsift" NAME="T">
    <TEXT NAME="DefaultSearchName" VALUE="Names:A&amp;B"/>
    <GROUP NAME="Synonyms">
      <BOOL NAME="HighAffinity" VALUE="true"/>
    </GROUP>
    <LIST NAME="Pages" CAPTION="" TYPE="select" DISPLAY="page" VALUE="Filters">
      <CASE NAME="Filters" CAPTION="Filters">
        <LIST NAME="FilterTypes" CAPTION="Search Filters" TYPE="data" DISPLAY="combo" VALUE="Patterns">
          <CASE NAME="Patterns" CAPTION="Patterns">
            <GROUP NAME="PositiveFilters" CAPTION="like">
              <STRINGS NAME="P">
                <STRING VALUE="ACCT*" CHECKED="true"/>
              </STRINGS>
            </GROUP>
            <STRINGS NAME="NameNegative" CAPTION="not">
              <STRING VALUE="*-OLD" CHECKED="false"/>
            </STRINGS>
          </CASE>
        </LIST>
      </CASE>
      <CASE NAME="Parameters" CAPTION="Parameters">
        <GROUP NAME="Search" CAPTION="Search">
          <BOOL NAME="ApplySelected" CAPTION="Apply to selected programs" VALUE="false"/>
          <BOOL NAME="OverrideStatus" CAPTION="Override status" VALUE="true"/>
          <BOOL NAME="RefreshLists" CAPTION="Refresh lists (for pattern filters only)" VALUE="false"/>
        </GROUP>
        <BOOL NAME="ViewAllRedefines" CAPTION="View all redefinitions in synonyms pane" VALUE="true"/>
        <BOOL NAME="ShowUnused" CAPTION="Show unused datanames in Affected Code Report" VALUE="false"/>
      </CASE>
    </LIST>
  </CASE>
  <CASE ID="Kelvane"/>
</OPTIONS>
)xml";

class OptionFiles : public ::testing::Test {
 protected:
  /// The projects of the repository in this order with these files; an empty text: no file.
  void projects(const std::vector<std::pair<std::string, std::string>>& files) {
    host.projects.clear();
    for (const auto& [name, text] : files) {
      host.projects.push_back(name);
      platform::createFolders(host.path("Projects/" + name));
      if (!text.empty()) host.writeFile(fileOf(name), text);
    }
  }
  static std::string fileOf(const std::string& name) { return "Projects/" + name + "/Options.Project.xml"; }
  std::string text(const std::string& name) { return platform::readText(host.path(fileOf(name))); }
  void run() {
    const Ref<platform::Object> object(new tarnsift::UprgadeOptions);
    Value dummy;
    EXPECT_EQ(object->Invoke("upgrade", {&dummy, 1}), Value(true));
  }
  static std::string without(const std::string& name) {
    auto document = platform::Document::loadText(kOld);
    const auto node = document.selectSingleNode("//*[@NAME='" + name + "']");
    node.parent().removeChild(node);
    return document.text();
  }
  FakeHost host; // without a session
};

TEST_F(OptionFiles, MovesTheOldNodesToThePagesAndKeepsTheRest) {
  projects({{"A", kOld}, {"B", kOld}});
  run();
  EXPECT_EQ(text("A"), kNew);
  EXPECT_EQ(text("B"), kNew);
  run();
  EXPECT_EQ(text("A"), kNew) << "a second run changes nothing";
}

TEST_F(OptionFiles, StopsAtTheFirstProjectThatItCannotOrNeedNotUpgrade) {
  std::vector<std::pair<std::string, std::string>> stops = {
      {"up to date", kNew}, {"missing", ""}, {"damaged", "<OPTIONS>"}, {"without root", "<OPTIONS/>"}};
  for (const char* name : {"PositiveFilters", "NameNegative", "ApplySelected", "OverrideStatus", "ViewAllRedefines"})
    stops.emplace_back(std::string("without ") + name, without(name));
  for (const auto& [what, content] : stops) {
    projects({{"first", kOld}, {what, content}, {"last", kOld}});
    run();
    EXPECT_EQ(text("first"), kNew) << what;
    if (!content.empty()) {
      EXPECT_EQ(text(what), content);
    }
    EXPECT_EQ(text("last"), kOld) << what;
  }
  projects({});
  run();
}

} // namespace
} // namespace tarnsift_test
