#include <sstream>

#include "samples/portfolio.hpp"

namespace samples {
namespace {

// What a facts file lists, as the analyser gives it today: lines marked `owed` are true but not said, lines marked
// `surplus` are said but not true. Both stand in the file until the analyser is better; then the test fails.
std::vector<std::string> wantedFacts(const std::string& program) {
  std::istringstream text(textOf(std::filesystem::path(TARNSIFT_SOURCE_DIR) / "tests/samples" / (program + ".facts")));
  std::vector<std::string> facts;
  for (std::string line; std::getline(text, line);) {
    if (line.empty() || line.front() == '#' || line.starts_with("owed ")) continue;
    facts.push_back(line.starts_with("surplus ") ? line.substr(std::string("surplus ").size()) : line);
  }
  std::sort(facts.begin(), facts.end());
  return facts;
}

std::vector<std::string> foundFacts(const std::string& program) {
  const cobol::Analysis analysis = analysed(program + ".cbl");
  std::vector<std::string> facts;
  for (const cobol::Instance& use : analysis.instances) {
    if (!use.isUsage()) continue;
    std::string place = std::to_string(use.at.line) + ":" + std::to_string(use.at.column);
    if (use.at.file != 0) // in a copybook, which is named
      place = std::filesystem::path(analysis.files[use.at.file].path).stem().string() + " " + place;
    facts.push_back("USAGE " + analysis.constructs[use.construct].name + " " + static_cast<char>(use.access) + " " +
                    place);
  }
  for (const cobol::Relationship& relation : analysis.relationships) {
    facts.push_back(std::string(cobol::relationKinds()[static_cast<std::size_t>(relation.kind)].name) + " " +
                    analysis.constructs[relation.from].name + " -> " + analysis.constructs[relation.to].name);
  }
  std::sort(facts.begin(), facts.end());
  return facts;
}

class Facts : public ::testing::TestWithParam<std::string> {};

// The files list all that a careful reader finds, so that a usage missed and one too many both show.
TEST_P(Facts, AgreeWithTheReader) {
  const std::vector<std::string> wanted = wantedFacts(GetParam());
  const std::vector<std::string> found = foundFacts(GetParam());
  std::vector<std::string> missed;
  std::vector<std::string> tooMany;
  std::set_difference(wanted.begin(), wanted.end(), found.begin(), found.end(), std::back_inserter(missed));
  std::set_difference(found.begin(), found.end(), wanted.begin(), wanted.end(), std::back_inserter(tooMany));
  EXPECT_THAT(missed, ::testing::IsEmpty());
  EXPECT_THAT(tooMany, ::testing::IsEmpty());
  EXPECT_FALSE(wanted.empty());
}

INSTANTIATE_TEST_SUITE_P(Bank, Facts, ::testing::Values("BKB020", "BKB060", "BKB070", "BKO150", "BKS100"),
                         [](const auto& given) { return given.param; });

} // namespace
} // namespace samples
