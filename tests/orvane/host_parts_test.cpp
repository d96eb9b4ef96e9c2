#include <filesystem>
#include <fstream>

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "cobol/analyse.hpp"
#include "orvane/program_store.hpp"
#include "orvane/projects.hpp"
#include "orvane/repository_file.hpp"
#include "orvane/settings.hpp"
#include "orvane/splitter.hpp"
#include "orvane/store_format.hpp"
#include "platform/files/files.hpp"

using platform::Value;

class RepositoryTest : public ::testing::Test {
 protected:
  platform::TemporaryFolder m_folder;
  orvane::BaseFolder m_base = orvane::BaseFolder::create(m_folder.file("base"));
  platform::Ref<orvane::RepositoryFile> m_repository{new orvane::RepositoryFile(m_base.repositoryFile())};
};

TEST_F(RepositoryTest, ObjectsHaveAttributesMembersAndAnOrder) {
  const auto project = orvane::createProject(m_base, *m_repository, "p");
  const auto second = m_repository->createObject(orvane::kSourceType, "beta");
  const auto first = m_repository->createObject(orvane::kSourceType, "Alpha");
  second->AddRelation("BelongsTo", project);
  second->AddRelation("belongsto", project);
  first->AddRelation("BelongsTo", project);
  first->BeginUpdate();
  first->SetAttribute("DataRelations", true);
  EXPECT_TRUE(first->Attribute("datarelations").isNull()) << "nothing is set before the commit";
  first->CommitUpdate();
  const auto again = m_repository->ObjectById(first->Id());
  EXPECT_TRUE(again->Attribute("DATARELATIONS").asBool());
  EXPECT_TRUE(again->Attribute("never set").isNull());
  std::string names;
  const auto members = m_repository->SelectObjects("cobol", project->Id(), "NAME");
  EXPECT_EQ(members->Count(), 2U) << "joined twice is joined once";
  for (; !members->AtEnd(); members->MoveNext())
    names += members->Current()->DisplayName() + " ";
  EXPECT_EQ(names, "Alpha beta ");
  EXPECT_TRUE(second->IsMemberOf(project->Id()));
  EXPECT_FALSE(second->IsMemberOf(first->Id()));
  EXPECT_EQ(m_repository->FindByName("FOLDER", "P", 0)->Id(), project->Id());
  EXPECT_THROW(m_repository->FindByName("FOLDER", "q", 0), platform::KeyError);
  EXPECT_FALSE(m_repository->ObjectById("4711"));
  const auto schema = m_repository->Schema();
  std::string programTypes;
  for (const auto& type : schema->ObjectTypes())
    if (type->Flags() & schema->TypeFlags("PROGRAMCODE")) programTypes += type->Name();
  EXPECT_EQ(programTypes, "COBOL") << "the logical program has no program flag";
}

TEST_F(RepositoryTest, ProjectNamesThatCannotBeAreRefusedAndNothingIsMade) {
  orvane::createProject(m_base, *m_repository, "a.b [x]");
  orvane::createProject(m_base, *m_repository, std::string(48, 'n') + "1");
  for (const std::string& name :
       {std::string(""), std::string("  "), std::string("a/b"), std::string("a\\b"), std::string(".."),
        std::string("A.B [X]"), std::string(48, 'n') + "2", std::string(300, 'x'), std::string("a\nb"),
        std::string("it's"), std::string("\"x\"")})
    EXPECT_THROW(orvane::createProject(m_base, *m_repository, name), platform::Error) << name;
  EXPECT_EQ(orvane::projectNames(*m_repository).size(), 2U);
  EXPECT_NO_THROW(orvane::createProject(m_base, *m_repository, "\xE9\x8A\x80\xE8\xA1\x8C & Co!"));
}

TEST_F(RepositoryTest, FoldersAreLinkedOnceUnderFreeNames) {
  platform::createFolders(m_folder.file("one/src"));
  platform::createFolders(m_folder.file("two/src"));
  const std::string first = m_base.linkFolder(m_folder.file("one/src"));
  EXPECT_EQ(m_base.linkFolder(m_folder.file("one/src")), first);
  EXPECT_EQ(m_base.relative(first).value(), "Sources\\src");
  EXPECT_EQ(m_base.relative(m_base.linkFolder(m_folder.file("two/src"))).value(), "Sources\\src-2");
  EXPECT_THROW(m_base.linkFolder(m_folder.file("three")), platform::FileError);
}

namespace {

std::string picture(orvane::PaneTree& tree) {
  std::string text;
  for (const char* key : {"Programs", "Lists", "Synonyms", "Source"}) {
    auto& pane = tree.Panes(key);
    if (!pane.Visible()) {
      text += std::string(key) + " hidden\n";
      continue;
    }
    text += std::string(key) + " " + std::to_string(static_cast<int>(pane.Left())) + "," +
            std::to_string(static_cast<int>(pane.Top())) + " " + std::to_string(static_cast<int>(pane.Width())) + "x" +
            std::to_string(static_cast<int>(pane.Height())) + "\n";
  }
  return text;
}

void build(orvane::PaneTree& tree) {
  tree.RootPane().Split(2, 2, 6000, "", "Source");
  tree.RootPane().Child(1).Split(1, 2, 5000, "Programs", "");
  tree.RootPane().Child(1).Child(2).Split(2, 2, 4000, "Lists", "Synonyms");
  tree.Arrange(0, 420, 10000, 9000);
}

} // namespace

TEST(PaneTree, CutsHidesAndRestores) {
  orvane::PaneTree tree;
  int arranged = 0;
  tree.PanesArranged.connect([&] { ++arranged; });
  build(tree);
  EXPECT_EQ(
      picture(tree),
      "Programs 0,705 5000x5715\nLists 5060,705 4940x3715\nSynonyms 5060,4765 4940x1655\nSource 0,6765 10000x2655\n");
  tree.Panes("Synonyms").setVisible(false);
  EXPECT_EQ(arranged, 2);
  EXPECT_FLOAT_EQ(tree.Panes("Lists").Height(), 5715) << "a hidden pane leaves its place";
  const std::string layout = tree.SaveLayout();
  orvane::PaneTree other;
  other.LoadLayout(layout);
  other.Arrange(0, 420, 10000, 9000);
  EXPECT_EQ(picture(other), picture(tree));
  tree.Arrange(0, 0, 100, 50); // smaller than a sash and a caption: no negative size
  for (const char* key : {"Programs", "Lists", "Source"})
    EXPECT_GE(tree.Panes(key).Height(), 0);
}

TEST(PaneTree, RefusesALayoutThatIsNotOneAndStaysAsItWas) {
  orvane::PaneTree tree;
  build(tree);
  const std::string before = tree.SaveLayout();
  for (const std::string& layout :
       {std::string(""), std::string("nonsense"), std::string("(1 5000 Programs+ Source+)"), std::string("(9 1 A+ B+)"),
        before.substr(0, before.size() - 1), std::string(100000, '(')}) {
    EXPECT_THROW(tree.LoadLayout(layout), platform::Error) << layout.substr(0, 40);
    EXPECT_EQ(tree.SaveLayout(), before);
  }
}

TEST(PaneTree, OnePaneIsActive) {
  orvane::PaneTree tree;
  build(tree);
  std::string activated;
  tree.PaneActivated.connect([&](tarnsift::SplitterPane& pane) { activated += pane.Key() + " "; });
  tree.Panes("Lists").Activate();
  tree.Panes("lists").Activate();
  tree.Panes("Source").Activate();
  EXPECT_EQ(activated, "Lists Source ");
  EXPECT_FALSE(tree.Panes("Lists").IsActive());
}

TEST(PaneTree, KeepsTheSharesOfItsCutsInAnotherSize) {
  orvane::PaneTree tree;
  build(tree);
  tree.Arrange(0, 420, 20060, 18000); // programs had 5000 of 9940 beside the sash
  EXPECT_NEAR(tree.Panes("Programs").Width(), 5000.0 / 9940 * 20000, 1);
  tree.Arrange(0, 420, 10, 10);
  tree.Arrange(0, 420, 10000, 9000);
  EXPECT_NEAR(tree.Panes("Programs").Width(), 5000, 1) << "also when there was no room between";
}

namespace {

std::string sashes(orvane::PaneTree& tree) {
  std::string text;
  for (const orvane::Sash& sash : tree.sashes())
    text += fmt::format("{}{:.0f},{:.0f} {:.0f}x{:.0f}", text.empty() ? "" : "; ", sash.at.left, sash.at.top,
                        sash.at.width, sash.at.height);
  return text;
}

} // namespace

TEST(PaneTree, SashesAreDraggedAsFarAsThePanesAllow) {
  orvane::PaneTree tree;
  tree.setMeasures({.sash = 100, .caption = 300, .smallest = 600});
  build(tree);
  EXPECT_EQ(sashes(tree), "0,6420 10000x100; 5000,420 100x6000; 5100,4420 4900x100");
  int arranged = 0;
  tree.PanesArranged.connect([&] { ++arranged; });
  tree.moveSash(1, 3000);
  EXPECT_FLOAT_EQ(tree.Panes("Programs").Width(), 3000);
  EXPECT_FLOAT_EQ(tree.Panes("Lists").Left(), 3100);
  tree.moveSash(1, -50);
  EXPECT_FLOAT_EQ(tree.Panes("Programs").Width(), 600) << "a pane keeps something to hold";
  tree.moveSash(0, 500); // above it stand two panes over each other with their captions and a sash
  EXPECT_EQ(sashes(tree), "0,2320 10000x100; 600,420 100x1900; 700,1320 9300x100");
  tree.moveSash(7, 0);
  EXPECT_EQ(arranged, 3);
  tree.Panes("Programs").setVisible(false);
  EXPECT_EQ(tree.sashes().size(), 2u) << "beside a hidden pane there is nothing to drag";
  EXPECT_EQ(tree.frames().size(), 3u);
}

TEST(Settings, LastForTheUserAndForgiveADamagedFile) {
  const platform::TemporaryFolder folder;
  const std::string file = folder.file("new/tarnsift/settings.json");
  {
    orvane::FileSettings first(file), second(file);
    EXPECT_EQ(first.GetSetting("Tarnsift", "Settings", "MainSplitter", "none"), "none");
    first.SaveSetting("Tarnsift", "Settings", "MainSplitter", "(1 \"2\"\\n)");
    second.SaveSetting("Tarnsift", "Window", "Left", "12");
  }
  orvane::FileSettings again(file);
  EXPECT_EQ(again.GetSetting("Tarnsift", "Settings", "MainSplitter", ""), "(1 \"2\"\\n)")
      << "two windows share the file";
  EXPECT_EQ(again.GetSetting("Tarnsift", "Window", "Left", ""), "12");
  for (const char* damage : {"", "{", "[1]", R"({"Tarnsift": 7})", R"({"Tarnsift": {"Window": {"Left": 12}}})"}) {
    std::ofstream(file, std::ios::trunc) << damage;
    EXPECT_EQ(orvane::FileSettings(file).GetSetting("Tarnsift", "Window", "Left", "default"), "default") << damage;
  }
  orvane::FileSettings nowhere("/proc/nothing/settings.json");
  nowhere.SaveSetting("Tarnsift", "Window", "Left", "3");
  EXPECT_EQ(nowhere.GetSetting("Tarnsift", "Window", "Left", ""), "3") << "what cannot be kept holds for this run";
}

TEST(StoreFormat, RefusesDamageAnywhere) {
  cobol::Analysis analysis;
  analysis.files.push_back({});
  cobol::Construct construct;
  construct.kvid = "P:A";
  construct.name = "A";
  analysis.constructs = {construct};
  analysis.instances.push_back({.further = analysis.further.add({{0, 2, 12, 3}}), .at = {0, 1, 65, 2}});
  const std::string bytes =
      orvane::storeBytes(orvane::packAnalysis(analysis, 7, [](const std::string& path) { return path; }));
  EXPECT_EQ(orvane::readStoreBytes(bytes, "x").find("P:A"), 0);
  EXPECT_EQ(orvane::readStoreBytes(bytes, "x").find("P:B"), -1);
  for (std::size_t cut = 0; cut < bytes.size(); cut += 13)
    EXPECT_THROW(orvane::readStoreBytes(bytes.substr(0, cut), "x"), platform::FileError);
  for (std::size_t at = 0; at < bytes.size(); at += 7) {
    std::string wrong = bytes;
    wrong[at] = static_cast<char>(wrong[at] ^ 0x55);
    EXPECT_THROW(orvane::readStoreBytes(wrong, "x"), platform::FileError) << at;
  }
}

// A share of usages is at most the whole because both count the same instances.
TEST(StoreFormat, UsagesOfAllConstructsAreThoseOfTheProgram) {
  const std::filesystem::path bank = std::filesystem::path(TARNSIFT_SOURCE_DIR) / "samples" / "bank";
  cobol::CopyLibrary library({(bank / "copy").string()});
  for (const auto& source : std::filesystem::directory_iterator(bank / "cobol")) {
    SCOPED_TRACE(source.path().string());
    const cobol::Analysis analysis = cobol::analyse(source.path().string(), {}, library);
    orvane::StoredAnalysis store("x", orvane::packAnalysis(analysis, 1, [](const std::string& path) { return path; }));
    std::map<std::string_view, std::size_t> wanted;
    for (const cobol::Instance& use : analysis.instances)
      wanted[analysis.constructs[use.construct].kvid] += use.isUsage() ? 1 : 0;
    std::size_t sum = 0;
    for (const cobol::Construct& item : analysis.constructs) {
      const std::size_t count = store.ObjectById(std::string(item.kvid))->Related("Instances")->Count();
      EXPECT_EQ(count, wanted[item.kvid]) << item.kvid;
      const bool hasNone =
          item.kind == cobol::Kind::filler || item.kind == cobol::Kind::callSlot || item.kind == cobol::Kind::fileSlot;
      EXPECT_FALSE(hasNone && count > 0) << item.kvid;
      sum += count;
    }
    const auto all = store.SelectByKind("", "VAR");
    EXPECT_EQ(all->Count(), sum);
    std::size_t walked = 0;
    for (; !all->AtEnd(); all->MoveNext())
      ++walked;
    EXPECT_EQ(walked, sum);
    EXPECT_GT(sum, 0U);
  }
}
