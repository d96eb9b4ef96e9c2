#include <gtest/gtest.h>

#include <cstdlib>

#include "orvane/host.hpp"
#include "orvane/host_objects.hpp"
#include "orvane/options_upgrade.hpp"
#include "orvane/projects.hpp"
#include "platform/files/files.hpp"
#include "tarnsift/options/upgrade.hpp"

using orvane::OptionUpgrade;
using platform::Ref;

namespace {

// The older shape with a value of its own at every place that a session of that time had; the synonym search's switch
// stands ahead of the filter's.
constexpr const char* kOlder = R"(<OPTIONS><CASE ID="Tarnsift">
  <GROUP NAME="SynonymSearch"><BOOL NAME="OverrideStatus" VALUE="false"/></GROUP>
  <GROUP NAME="Synonyms">
    <BOOL NAME="HighAffinity" VALUE="false"><LIST NAME="HighAffinityRels"><CASE NAME="Move" CHECKED="false"/></LIST></BOOL>
    <BOOL NAME="LowAffinity" VALUE="true"><LIST NAME="LowAffinityRels"><CASE NAME="GroupMove" CHECKED="false"/></LIST></BOOL>
    <BOOL NAME="Redefines" VALUE="false"/></GROUP>
  <GROUP NAME="AffectedCodeReport"><NUMBER NAME="NeighbourhoodSize" VALUE="7"/><BOOL NAME="ShowUnused" VALUE="true"/></GROUP>
  <LIST NAME="Languages"><CASE NAME="COBOL"><LIST NAME="Columns"><CASE NAME="Picture" CHECKED="true"/></LIST></CASE></LIST>
  <GROUP NAME="PositiveFilters"><STRINGS NAME="NamePositive"><STRING VALUE="ACCT*"/></STRINGS></GROUP>
  <STRINGS NAME="NameNegative"><STRING VALUE="*-OLD"/></STRINGS>
  <BOOL NAME="ApplySelected" VALUE="false"/><BOOL NAME="OverrideStatus" VALUE="true"/>
  <BOOL NAME="ViewAllRedefines" VALUE="true"/><TEXT NAME="DefaultSearchName" VALUE="Names:ACCT*"/>
</CASE></OPTIONS>)";

// Where a session reads, from the root of the component's branch, and what it must find.
struct Read {
  const char* path;
  const char* value;
  const char* attribute = "VALUE";
};
constexpr const char* kFilters = "./LIST/CASE[@NAME='Filters']/LIST/CASE[@NAME='Patterns']";
constexpr Read kReads[] = {
    {"./BOOL[@NAME='ApplySelected']", "false"},
    {"./TEXT[@NAME='DefaultSearchName']", "Names:ACCT*"},
    {"//TEXT[@NAME='DefaultSearchName']", "Names:ACCT*"},
    {".//BOOL[@NAME='OverrideStatus']", "true"},
    {".//BOOL[@NAME='RefreshLists']", "false"},
    {".//GROUP[@NAME='SynonymSearch']/BOOL[@NAME='OverrideStatus']", "false"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='HighAffinity']", "false"},
    {"./GROUP[@NAME='Synonyms']/BOOL/LIST[@NAME='HighAffinityRels']/CASE[@NAME='Move']", "false", "CHECKED"},
    {"./GROUP[@NAME='Synonyms']/BOOL/LIST[@NAME='HighAffinityRels']/CASE[@NAME='Addition']", "true", "CHECKED"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='LowAffinity']", "true"},
    {"./GROUP[@NAME='Synonyms']/BOOL/LIST[@NAME='LowAffinityRels']/CASE[@NAME='GroupMove']", "false", "CHECKED"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='Redefines']", "false"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='Redefines']/BOOL[@NAME='ViewAllRedefines']", "true"},
    {"./GROUP[@NAME='AffectedCodeReport']/NUMBER[@NAME='NeighbourhoodSize']", "7"},
    {"./GROUP[@NAME='AffectedCodeReport']/BOOL[@NAME='ShowUnused']", "true"},
    {"./LIST[@NAME='Languages']/CASE[@NAME='COBOL']/LIST[@NAME='Columns']/CASE[@NAME='Picture']", "true", "CHECKED"},
};

void expectReads(const std::string& file, const std::string& what) {
  const Ref<orvane::OptionDocument> options(new orvane::OptionDocument(file));
  const platform::Node root = options->Document().selectSingleNode("//CASE[@ID='Tarnsift']");
  for (const Read& read : kReads) {
    const platform::Node node = root.selectSingleNode(read.path);
    ASSERT_TRUE(node) << what << ": " << read.path;
    EXPECT_EQ(node.getAttribute(read.attribute).asText(), read.value) << what << ": " << read.path;
  }
  for (const char* pattern : {"/GROUP//STRING[@VALUE='ACCT*']", "/STRINGS/STRING[@VALUE='*-OLD']"})
    EXPECT_TRUE(root.selectSingleNode(kFilters + std::string(pattern))) << what << pattern;
  for (const char* once : {"ApplySelected", "ViewAllRedefines", "ShowUnused", "PositiveFilters", "NameNegative"})
    EXPECT_EQ(root.selectNodes(".//*[@NAME='" + std::string(once) + "']").size(), 1U) << what << ": " << once;
}

class OptionsUpgrade : public ::testing::Test {
 protected:
  OptionsUpgrade()
      : base(orvane::BaseFolder::create(m_folder.file("base"))),
        repository(new orvane::RepositoryFile(base.repositoryFile())) {
    ::setenv("XDG_CONFIG_HOME", m_folder.file("config").c_str(), 1);
  }
  ~OptionsUpgrade() override {
    repository = {};
    platform::dbEngine().settle();
  }
  void project(const std::string& name, const std::string& text) {
    orvane::createProject(base, *repository, name);
    platform::WriteFileAtomically(file(name), text);
  }
  std::string file(const std::string& name) const { return orvane::optionFile(base.projectFolder(name)); }
  std::string text(const std::string& name) const { return platform::readText(file(name)); }
  /// A digit a project: 0 upgraded, 1 completed, 2 current, 3 missing, 4 left.
  std::string outcomes() {
    std::string all;
    reasons.clear();
    for (const OptionUpgrade& result : orvane::upgradeOptions(base, repository)) {
      all += std::to_string(static_cast<int>(result.outcome));
      if (!result.reason.empty()) reasons += result.project + ": " + result.reason + "\n";
    }
    return all;
  }

 private:
  platform::TemporaryFolder m_folder;

 protected:
  orvane::BaseFolder base;
  Ref<orvane::RepositoryFile> repository;
  std::string reasons;
};

TEST_F(OptionsUpgrade, OlderUpgradedAndNewDocumentsOpenWithTheSameValues) {
  project("older", kOlder);
  project("upgraded", kOlder);
  orvane::registerHostObjects(base, repository, {});
  platform::Ref<tarnsift::UprgadeOptions>(new tarnsift::UprgadeOptions)->Upgrade({});
  orvane::unregisterHostObjects();
  ASSERT_NE(text("upgraded"), kOlder);
  platform::WriteFileAtomically(file("older"), kOlder);
  project("new", "");
  auto model = orvane::optionTemplate();
  const platform::Node root = model.selectSingleNode("//CASE[@ID='Tarnsift']");
  for (const Read& read : kReads)
    root.selectSingleNode(read.path).setAttribute(read.attribute, read.value);
  for (const auto& [list, value] : {std::pair(std::string("/GROUP/STRINGS"), "ACCT*"), {"/STRINGS", "*-OLD"}})
    root.selectSingleNode(kFilters + list).appendChild(model.createElement("STRING")).setAttribute("VALUE", value);
  model.save(file("new"));

  for (const char* name : {"older", "upgraded", "new"})
    expectReads(file(name), name);
  EXPECT_EQ(outcomes(), "012");
  for (const char* name : {"older", "upgraded", "new"})
    expectReads(file(name), std::string(name) + " afterwards");
}

TEST_F(OptionsUpgrade, ReachesEveryProjectThatNothingKeepsItFrom) {
  const std::string damaged = "<OPTIONS><CASE";
  project("A", kOlder);
  project("B", orvane::optionTemplate().text());
  project("C", kOlder); // behind one that is up to date
  project("D", damaged);
  project("E", kOlder);
  project("F", kOlder); // open elsewhere
  project("G", kOlder);
  platform::removeAll(base.projectFolder("G"));
  {
    const orvane::FolderLock lock(orvane::projectLockFile(base, "F"), orvane::FolderLock::Mode::exclusive, "F");
    EXPECT_EQ(outcomes(), "0204043");
    EXPECT_EQ(text("F"), kOlder);
  }
  EXPECT_NE(reasons.find("D: " + file("D")), std::string::npos) << reasons;
  EXPECT_NE(reasons.find("F: project F is in use by process"), std::string::npos) << reasons;
  EXPECT_EQ(text("D"), damaged);
  for (const char* name : {"A", "C", "E"})
    expectReads(file(name), name);
  const std::string once = text("A") + text("B") + text("C") + text("E");
  EXPECT_EQ(outcomes(), "2224203");
  EXPECT_EQ(text("A") + text("B") + text("C") + text("E"), once);
}

} // namespace
