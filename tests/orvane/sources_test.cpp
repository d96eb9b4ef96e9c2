#include "orvane/portfolio.hpp"

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

namespace orvane {

namespace {

namespace fs = std::filesystem;

TEST(Sources, takesCandidatesButNoCopybooks) {
  Portfolio portfolio;
  fs::create_directories(portfolio.sources() + "/batch/.git");
  for (const char* name : {"A.cbl", "b.CoB", "c.cobol", "d.PCO", "e.sqb", "NOEXT", "batch/f.cbl", "notes.txt", "x.cpy",
                           "copy/C1.cbl", "copy/C2", "batch/.git/HEAD", ".hidden.cbl"})
    portfolio.write(name, program("X", ""));
  EXPECT_THAT(portfolio.add().added, UnorderedElementsAre("A", "B", "C", "D", "E", "NOEXT", "F"));
  const SourcesFound again = portfolio.add();
  EXPECT_THAT(again.added, IsEmpty());
  EXPECT_EQ(again.known, 7U);
  EXPECT_EQ(portfolio.names(kProgramType), portfolio.names());
  EXPECT_THAT(analysisStrings(portfolio.options(), "SourcePaths"), ElementsAre("Sources\\src"));
  EXPECT_THAT(analysisStrings(portfolio.options(), "CopybookFolders"), ElementsAre("Sources\\src\\copy"));
}

TEST(Sources, takesAFileThatIsNamedWhateverItsName) {
  Portfolio portfolio;
  portfolio.write("main.txt", program("MAIN", ""));
  portfolio.write("other.cbl", program("OTHER", ""));
  EXPECT_THAT(portfolio.add({portfolio.sources() + "/main.txt"}, {}).added, ElementsAre("MAIN"));
  EXPECT_EQ(portfolio.outcome(), "1 written, 0 unchanged") << "its neighbours are not looked for";
  EXPECT_THAT([&] { portfolio.add({portfolio.sources() + "/nothing"}, {}); },
              testing::ThrowsMessage<platform::Error>(HasSubstr("nothing: is not there")));
}

TEST(Sources, takesCopybooksAndProgramsOfOneFolder) {
  Portfolio portfolio;
  portfolio.write("a.cbl", program("A", "           COPY CUST.\n"));
  portfolio.write("CUST", "       01 CUST PIC X.\n");
  EXPECT_THAT(portfolio.add({portfolio.sources()}, {portfolio.sources()}).added, ElementsAre("A"));
  EXPECT_THAT(portfolio.verify().missingCopybooks, IsEmpty());
}

TEST(Sources, givesEachProgramOfAProjectANameOfItsOwn) {
  Portfolio portfolio;
  for (const char* folder : {"x", "y", "y/z"})
    fs::create_directories(portfolio.sources() + "/" + folder);
  for (const char* name : {"x/pay.cbl", "x/pay.cob", "y/PAY.cbl", "y/z/pay.cbl"})
    portfolio.write(name, program("PAY", ""));
  EXPECT_THAT(portfolio.add().added, ElementsAre("PAY", "PAY.COB", "PAY.CBL", "Z.PAY.CBL"));
}

TEST(Sources, sharesAProgramBetweenProjectsWithItsAnalysis) {
  Portfolio portfolio;
  portfolio.write("pay.cbl", program("PAY", ""));
  portfolio.add();
  portfolio.verify();
  const auto second = createProject(portfolio.base(), portfolio.repository(), "Q");
  const platform::Ref<OptionDocument> options(new OptionDocument(optionFile(portfolio.base().projectFolder("Q"))));
  EXPECT_THAT(addSources(portfolio.base(), portfolio.repository(), second, *options, {portfolio.sources()},
                         {portfolio.sources() + "/copy"})
                  .added,
              ElementsAre("PAY"));
  EXPECT_TRUE(portfolio.repository().findByAttribute(kSourceType, "Name", "PAY")->IsMemberOf(second->Id()));
  EXPECT_EQ(verifyProject(portfolio.base(), portfolio.repository(), "Q").unchanged, 1U);
}

// A project that is derived from another reads the shared programs in the same way, or their analysis would change.
TEST(Sources, aDerivedProjectFindsTheSharedProgramsUnchanged) {
  Portfolio portfolio;
  portfolio.write("pay.cbl", program("PAY", "           COPY CUST.\n"));
  portfolio.write("copy/CUST.cpy", "       01 CUST PIC X.\n");
  portfolio.add();
  portfolio.setOption("dialect", "gnu");
  portfolio.verify();
  const platform::Ref<OptionDocument> origin(new OptionDocument(optionFile(portfolio.base().projectFolder("P"))));
  origin->overrideForSession("//BOOL[@NAME='ApplySelected']", "false");
  const auto derived = createProject(portfolio.base(), portfolio.repository(), "Q", origin.get());
  const platform::Ref<OptionDocument> options(new OptionDocument(optionFile(portfolio.base().projectFolder("Q"))));
  EXPECT_TRUE(options->Document().selectSingleNode("//BOOL[@NAME='ApplySelected'][@VALUE='true']"))
      << "what holds for a session only is not handed on";
  EXPECT_THAT(analysisStrings(options->Document(), "SourcePaths"), IsEmpty());
  portfolio.repository().findByAttribute(kSourceType, "Name", "PAY")->AddRelation(kBelongsTo, derived);
  for (const char* type : {kSourceType, kProgramType})
    EXPECT_EQ(portfolio.repository().SelectObjects(type, derived->Id(), "")->Count(), 1U) << type;
  EXPECT_EQ(verifyProject(portfolio.base(), portfolio.repository(), "Q").unchanged, 1U);
}

TEST(Sources, copiesWhenAsked) {
  Portfolio portfolio;
  portfolio.write("a.cbl", program("A", "           COPY CUST.\n"));
  portfolio.write("copy/CUST.cpy", "       01 CUST PIC X.\n");
  portfolio.add({portfolio.sources()}, {portfolio.sources() + "/copy"}, TakeSources::copy);
  fs::remove_all(portfolio.sources());
  const VerifyResult result = portfolio.verify();
  EXPECT_EQ(result.written, 1U);
  EXPECT_THAT(result.missingCopybooks, IsEmpty());
}

TEST(Sources, worksWhereTheBaseFolderLiesAmongTheSources) {
  Portfolio portfolio;
  const std::string root = portfolio.base().path();
  std::ofstream(root + "/a.cbl") << program("A", "");
  std::ofstream(root + "/Output/report") << "no source";
  EXPECT_THAT(portfolio.add({root}, {}).added, ElementsAre("A"));
  EXPECT_EQ(portfolio.outcome(), "1 written, 0 unchanged");
  EXPECT_THAT(portfolio.add({fs::path(root).parent_path().string()}, {}).added, IsEmpty())
      << "nothing of the base folder from outside";
}

TEST(Sources, aSourceFolderThatIsGoneStopsNothingElse) {
  Portfolio portfolio;
  portfolio.write("a.cbl", program("A", ""));
  portfolio.add();
  portfolio.verify();
  fs::rename(portfolio.sources(), portfolio.sources() + "-away");
  const VerifyResult away = portfolio.verify();
  EXPECT_THAT(away.problems, ElementsAre(HasSubstr("Sources/src")));
  EXPECT_EQ(away.failed.size(), 1U);
  fs::rename(portfolio.sources() + "-away", portfolio.sources());
  EXPECT_EQ(portfolio.outcome(), "0 written, 1 unchanged");
  EXPECT_EQ(portfolio.attribute("A", "DataRelations"), "1");
}

} // namespace
} // namespace orvane
