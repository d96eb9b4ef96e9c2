#include <gtest/gtest.h>

#include "cobol/analysis.hpp"
#include "orvane/columns.hpp"
#include "orvane/options.hpp"
#include "platform/files/files.hpp"

using orvane::OptionDocument;
using platform::Value;

namespace {

constexpr const char* kRoot = "//CASE[@ID='Tarnsift']";

platform::Node rootOf(const platform::Document& document) {
  return document.selectSingleNode(kRoot);
}

// Every place that a session reads, from the root of its branch, and the default there; "*": a list with children.
struct Place {
  const char* path;
  const char* value;
};
constexpr Place kPlaces[] = {
    {"./BOOL[@NAME='ApplySelected']", "true"},
    {"./TEXT[@NAME='DefaultSearchName']", ""},
    {"//TEXT[@NAME='DefaultSearchName']", ""},
    {".//BOOL[@NAME='OverrideStatus']", "false"},
    {".//BOOL[@NAME='RefreshLists']", "false"},
    {".//GROUP[@NAME='SynonymSearch']/BOOL[@NAME='OverrideStatus']", "false"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='HighAffinity']", "true"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='HighAffinity']/LIST[@NAME='HighAffinityRels']", "*"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='LowAffinity']", "false"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='LowAffinity']/LIST[@NAME='LowAffinityRels']", "*"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='Redefines']", "true"},
    {"./GROUP[@NAME='Synonyms']/BOOL[@NAME='Redefines']/BOOL[@NAME='ViewAllRedefines']", "false"},
    {"./GROUP[@NAME='AffectedCodeReport']/NUMBER[@NAME='NeighbourhoodSize']", "3"},
    {"./GROUP[@NAME='AffectedCodeReport']/BOOL[@NAME='ShowUnused']", "false"},
    {"./LIST[@NAME='Languages']/CASE[@NAME='COBOL']/LIST[@NAME='Columns']", "*"},
    {"./LIST[@NAME='Pages']", "Filters"},
    {"//CASE[@ID='Tarnsift']/LIST/CASE[@NAME='Filters']", ""},
    {"//CASE[@ID='Kelvane']/LIST[@NAME='Components']/CASE[@NAME='KVSource']", ""},
};

void expectPlaces(const platform::Document& document) {
  for (const Place& place : kPlaces) {
    const platform::Node node = rootOf(document).selectSingleNode(place.path);
    ASSERT_TRUE(node) << place.path;
    if (std::string(place.value) == "*")
      EXPECT_TRUE(node.firstChild()) << place.path;
    else
      EXPECT_EQ(node.getAttribute("VALUE").asText(), place.value) << place.path;
  }
}

} // namespace

TEST(OptionTemplate, HasEveryNodeThatASessionReadsWithItsDefault) {
  const platform::Document document = orvane::optionTemplate();
  expectPlaces(document);
  EXPECT_EQ(document.selectNodes("//TEXT[@NAME='DefaultSearchName']").size(), 1U) << "found through the whole document";
  const platform::Node first = rootOf(document).selectSingleNode(".//BOOL[@NAME='OverrideStatus']");
  EXPECT_EQ(first.parent().getAttribute("NAME"), Value("Search")) << "the filter's stands before the synonym search's";
  EXPECT_EQ(document.selectNodes("//LIST[@NAME='HighAffinityRels']/CASE").size() +
                document.selectNodes("//LIST[@NAME='LowAffinityRels']/CASE").size(),
            cobol::relationKinds().size());
  EXPECT_TRUE(document.selectSingleNode("//LIST[@NAME='HighAffinityRels']/CASE[@NAME='Move'][@CHECKED='true']"));
  EXPECT_TRUE(document.selectSingleNode("//LIST[@NAME='LowAffinityRels']/CASE[@NAME='GroupMove']"));
  EXPECT_EQ(document.selectNodes("//LIST[@NAME='Columns']/CASE").size(), orvane::analysisColumns().size());
  EXPECT_FALSE(document.selectSingleNode("//LIST[@NAME='Columns']/CASE[@NAME='Comment']"));
}

TEST(OptionMerge, AddsWhatIsMissingAndKeepsValuesAndStrangers) {
  auto document = platform::Document::loadText(
      "<OPTIONS><CASE ID='Tarnsift'><BOOL NAME='ApplySelected' VALUE='false'/><BOOL NAME='FromTomorrow' VALUE='yes'/>"
      "<GROUP NAME='Synonyms'><BOOL NAME='HighAffinity' VALUE='false'><LIST NAME='HighAffinityRels'><CASE NAME='Move' "
      "CHECKED='false'/>"
      "<CASE NAME='Gone' CHECKED='true'/></LIST></BOOL></GROUP></CASE><CASE ID='Other'><TEXT NAME='Kept' "
      "VALUE='1'/></CASE></OPTIONS>");
  orvane::mergeOntoTemplate(document);
  const auto value = [&](const std::string& path, const char* attribute = "VALUE") {
    const platform::Node node = document.selectSingleNode(path);
    return node ? node.getAttribute(attribute).asText() : "missing";
  };
  EXPECT_EQ(value("//BOOL[@NAME='ApplySelected']"), "false");
  EXPECT_EQ(value("//BOOL[@NAME='FromTomorrow']"), "yes");
  EXPECT_EQ(value("//BOOL[@NAME='HighAffinity']"), "false");
  EXPECT_EQ(value("//LIST[@NAME='HighAffinityRels']/CASE[@NAME='Move']", "CHECKED"), "false");
  EXPECT_EQ(value("//LIST[@NAME='HighAffinityRels']/CASE[@NAME='Gone']", "CHECKED"), "true");
  EXPECT_EQ(value("//LIST[@NAME='HighAffinityRels']/CASE[@NAME='Addition']", "CHECKED"), "true");
  EXPECT_EQ(value("//CASE[@ID='Other']/TEXT"), "1");
  EXPECT_EQ(rootOf(document).selectSingleNode(".//BOOL[@NAME='OverrideStatus']").parent().getAttribute("NAME"),
            Value("Search"));
  const std::string once = document.text();
  orvane::mergeOntoTemplate(document);
  EXPECT_EQ(document.text(), once) << "a second merge changes nothing";
}

TEST(OptionMerge, BringsValuesOfEarlierDocumentsToTheirPlace) {
  // As it was before the pages, and as the upgrade leaves it.
  auto earliest = platform::Document::loadText(
      "<OPTIONS><CASE ID='Tarnsift'><GROUP NAME='PositiveFilters'><STRINGS NAME='P'><STRING "
      "VALUE='ACCT*'/></STRINGS></GROUP>"
      "<STRINGS NAME='NameNegative'><STRING VALUE='*OLD'/></STRINGS><BOOL NAME='ApplySelected' VALUE='false'/>"
      "<BOOL NAME='OverrideStatus' VALUE='true'/><BOOL NAME='ViewAllRedefines' VALUE='true'/></CASE></OPTIONS>");
  auto upgraded = platform::Document::loadText(
      "<OPTIONS><CASE ID='Tarnsift'><LIST NAME='Pages'><CASE NAME='Filters'><LIST NAME='FilterTypes'><CASE "
      "NAME='Patterns'>"
      "<GROUP NAME='PositiveFilters'><STRINGS NAME='P'><STRING VALUE='ACCT*'/></STRINGS></GROUP><STRINGS "
      "NAME='NameNegative'>"
      "<STRING VALUE='*OLD'/></STRINGS></CASE></LIST></CASE><CASE NAME='Parameters'><GROUP NAME='Search'>"
      "<BOOL NAME='ApplySelected' VALUE='false'/><BOOL NAME='OverrideStatus' VALUE='true'/><BOOL NAME='RefreshLists' "
      "VALUE='false'/></GROUP>"
      "<BOOL NAME='ViewAllRedefines' VALUE='true'/><BOOL NAME='ShowUnused' "
      "VALUE='true'/></CASE></LIST></CASE></OPTIONS>");
  for (auto* document : {&earliest, &upgraded}) {
    orvane::mergeOntoTemplate(*document);
    const platform::Node root = rootOf(*document);
    const auto on = [&](const char* path) { return root.selectSingleNode(path).getAttribute("VALUE").asText(); };
    EXPECT_EQ(on("./BOOL[@NAME='ApplySelected']"), "false");
    EXPECT_EQ(on(".//BOOL[@NAME='OverrideStatus']"), "true");
    EXPECT_EQ(on(".//GROUP[@NAME='SynonymSearch']/BOOL[@NAME='OverrideStatus']"), "false");
    EXPECT_EQ(on("./GROUP[@NAME='Synonyms']/BOOL[@NAME='Redefines']/BOOL[@NAME='ViewAllRedefines']"), "true");
    EXPECT_TRUE(
        root.selectSingleNode("./LIST/CASE[@NAME='Filters']//GROUP[@NAME='PositiveFilters']//STRING[@VALUE='ACCT*']"));
    EXPECT_TRUE(
        root.selectSingleNode("./LIST/CASE[@NAME='Filters']//STRINGS[@NAME='NameNegative']/STRING[@VALUE='*OLD']"));
  }
  EXPECT_EQ(rootOf(upgraded)
                .selectSingleNode("./GROUP[@NAME='AffectedCodeReport']/BOOL[@NAME='ShowUnused']")
                .getAttribute("VALUE"),
            Value("true"));
}

TEST(OptionDocument, SavesWhatIsTheAnalystsAndNotWhatIsTheCommands) {
  const platform::TemporaryFolder folder;
  const std::string file = folder.file("Options.Project.xml");
  {
    platform::Ref<OptionDocument> options(new OptionDocument(file));
    options->overrideForSession("//BOOL[@NAME='ApplySelected']", "false");
    EXPECT_TRUE(options->Document().selectSingleNode("//BOOL[@NAME='ApplySelected'][@VALUE='false']"));
    options->Document()
        .selectSingleNode("//TEXT[@NAME='DefaultSearchName']")
        .setAttribute("VALUE", "Names:\xE6\x97\xA5 & <b>");
    options->Save();
    EXPECT_TRUE(options->Document().selectSingleNode("//BOOL[@NAME='ApplySelected'][@VALUE='false']"))
        << "still so in this session";
  }
  platform::Ref<OptionDocument> again(new OptionDocument(file));
  EXPECT_TRUE(again->Document().selectSingleNode("//BOOL[@NAME='ApplySelected'][@VALUE='true']"));
  EXPECT_EQ(again->Document().selectSingleNode("//TEXT[@NAME='DefaultSearchName']").getAttribute("VALUE"),
            Value("Names:\xE6\x97\xA5 & <b>"));
  platform::WriteFileAtomically(file, "<OPTIONS><CASE");
  try {
    OptionDocument damaged(file);
    FAIL() << "a damaged document was read";
  } catch (const platform::Error& error) {
    EXPECT_NE(std::string(error.what()).find(file), std::string::npos) << error.what();
  }
}

TEST(AnalyserOptions, AreReadAndRefusedByName) {
  auto document = orvane::optionTemplate();
  EXPECT_EQ(orvane::analyserOptions(document).dialect, cobol::Dialect::ibm);
  orvane::setAnalyserOption(document, "DIALECT", "GNU");
  orvane::setAnalyserOption(document, "format", "free");
  orvane::setAnalyserOption(document, "allBranches", "true");
  orvane::setAnalysisStrings(document, "CopybookFolders", {"a\\b", "c"});
  const cobol::Options options = orvane::analyserOptions(document);
  EXPECT_EQ(options.dialect, cobol::Dialect::gnu);
  EXPECT_EQ(options.sync, cobol::SyncRule::natural) << "the dialect brings its rules";
  EXPECT_EQ(options.format, cobol::FormatChoice::free);
  EXPECT_TRUE(options.allBranches);
  EXPECT_EQ(options.copybookFolders, (std::vector<std::string>{"a\\b", "c"}));
  EXPECT_THROW(orvane::setAnalyserOption(document, "format", "loose"), platform::Error);
  EXPECT_THROW(orvane::setAnalyserOption(document, "colour", "red"), platform::Error);
}
