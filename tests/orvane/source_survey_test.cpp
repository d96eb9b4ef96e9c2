#include "orvane/source_survey.hpp"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "orvane/portfolio.hpp"

namespace fs = std::filesystem;

namespace {

class SourceSurveyTest : public ::testing::Test {
 protected:
  void file(const std::string& name) {
    const fs::path path = m_folder.path() + "/" + name;
    fs::create_directories(path.parent_path());
    std::ofstream(path) << "x\n";
  }
  /// The proposed folders below the test's own one, with a blank between.
  std::string copybooks(const orvane::SourceSurvey& survey) const {
    std::string all;
    for (const std::string& folder : survey.copybookFolders)
      all += (all.empty() ? "" : " ") + folder.substr(fs::canonical(m_folder.path()).string().size() + 1);
    return all;
  }
  std::string at(const std::string& name) const { return m_folder.file(name); }
  platform::TemporaryFolder m_folder;
};

} // namespace

TEST_F(SourceSurveyTest, FindsProgramsAndCopybooksInAndBesideTheFolder) {
  for (const char* name : {"app/src/A.cbl", "app/src/deep/B.COB", "app/src/C", "app/src/notes.txt", "app/src/cpy/X.cbl",
                           "app/src/mixed/D.cbl", "app/src/mixed/Y.cpy", "app/records/Z.cpy", "app/docs/readme.txt",
                           "app/copy/W", "app/.git/V.cpy", "app/src/.svn/E.cbl"})
    file(name);
  const auto survey = orvane::surveySources({at("app/src")});
  EXPECT_EQ(copybooks(survey), "app/src/cpy app/copy app/records");
  EXPECT_EQ(orvane::programCount(survey, survey.copybookFolders), 4U) << "A, B, C and D";
  EXPECT_EQ(orvane::programCount(survey, {}), 5U) << "with cpy/X.cbl";
  EXPECT_EQ(orvane::programCount(survey, {at("app/src")}), 4U) << "among copybooks C is none";
  EXPECT_TRUE(survey.problems.empty());
}

TEST_F(SourceSurveyTest, CountsWhatAddingTakes) {
  orvane::Portfolio portfolio;
  for (const char* name : {"A.cbl", "B", "copy/C.cbl", "copy/D.cpy", "deep/E.pco"})
    fs::create_directories(fs::path(portfolio.sources() + "/" + name).parent_path()), portfolio.write(name, "x");
  file("single.txt");
  const std::vector<std::string> paths = {portfolio.sources(), portfolio.sources() + "/A.cbl", at("single.txt")};
  for (const std::vector<std::string>& copybookFolders :
       {std::vector<std::string>{}, {portfolio.sources() + "/copy"}, {portfolio.sources()}}) {
    orvane::Portfolio other;
    EXPECT_EQ(orvane::programCount(orvane::surveySources(paths), copybookFolders),
              other.add(paths, copybookFolders).added.size());
  }
}

TEST_F(SourceSurveyTest, TellsWhatIsNotThereAndSurvivesCircles) {
  file("src/A.cbl");
  fs::create_directory_symlink(at("src"), at("src/again"));
  const auto survey = orvane::surveySources({at("src"), at("nowhere")});
  EXPECT_EQ(orvane::programCount(survey, {}), 1U);
  ASSERT_EQ(survey.problems.size(), 1U);
  EXPECT_TRUE(survey.problems[0].starts_with(at("nowhere"))) << survey.problems[0];
  std::atomic<bool> cancel = true;
  EXPECT_TRUE(orvane::surveySources({at("src")}, &cancel).folders.empty());
}
