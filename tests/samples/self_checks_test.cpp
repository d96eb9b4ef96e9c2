#include <cctype>
#include <fstream>
#include <set>
#include <thread>

#include "cobol/source.hpp"
#include "samples/portfolio.hpp"

namespace samples {
namespace {

using ::testing::IsEmpty;

std::string upper(std::string text) {
  for (char& c : text)
    c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// REPLACING leaves `:TAG:-NAME` on the page where the name is XX-NAME: what follows the tag must be the name's end.
bool standsFor(const std::string& text, const std::string& name) {
  const std::size_t tagEnd = text.starts_with(':') ? text.find(':', 1) : std::string::npos;
  if (tagEnd == std::string::npos) return text == name;
  const std::string rest = text.substr(tagEnd + 1);
  return name.size() > rest.size() && name.ends_with(rest);
}

class Program : public ::testing::TestWithParam<std::string> {};

TEST_P(Program, HasNoFaultsAndIsUnderstood) {
  const cobol::Analysis analysis = analysed(GetParam());
  EXPECT_THAT(faultsOf(analysis), IsEmpty());
  EXPECT_EQ(analysis.statementsUnderstood, analysis.statements);
  EXPECT_GT(analysis.statements, 20u);
  for (const cobol::Construct& item : analysis.constructs)
    EXPECT_NE(item.kind, cobol::Kind::undeclared) << item.kvid;
  // The system's own copybooks are no part of the portfolio.
  for (const cobol::Diagnostic& diagnostic : analysis.diagnostics) {
    EXPECT_EQ(diagnostic.code, cobol::Code::CopyMissing) << diagnostic.text;
    EXPECT_EQ(diagnostic.severity, cobol::Severity::information) << diagnostic.text;
    EXPECT_THAT(diagnostic.text, ::testing::ContainsRegex("SQLCA|DFHAID"));
  }
}

TEST_P(Program, TextAtEveryPositionIsTheName) {
  const cobol::Analysis analysis = analysed(GetParam());
  std::vector<std::vector<std::string>> pages;
  for (const cobol::SourceFile& file : analysis.files)
    pages.push_back(cobol::readLines(file.path, {}));
  std::size_t named = 0;
  for (const cobol::Instance& use : analysis.instances) {
    if (use.access == cobol::Access::implied) continue;
    const cobol::Construct& item = analysis.constructs[use.construct];
    const std::string& line = pages.at(use.at.file).at(use.at.line - 1);
    ASSERT_LE(use.at.column - 1 + use.at.length, line.size()) << item.kvid;
    const std::string text = upper(line.substr(use.at.column - 1, use.at.length));
    EXPECT_TRUE(standsFor(text, item.name)) << item.kvid << " at " << use.at.line << ": " << text;
    ++named;
  }
  EXPECT_GT(named, 60u);
}

TEST_P(Program, TwiceIsTheSame) {
  EXPECT_EQ(linesOf(analysed(GetParam())), linesOf(analysed(GetParam())));
}

TEST_P(Program, CutAnywhereGivesAnAnalysis) {
  const std::string text = textOf(bankFolder() / "cobol" / GetParam());
  const auto copybooks = copybookTexts();
  for (std::size_t length = 0; length < text.size(); length += 1024) {
    const cobol::Analysis analysis = cobol::analyse(text.substr(0, length), {}, copybooks);
    EXPECT_THAT(faultsOf(analysis), IsEmpty()) << "cut to " << length;
  }
}

TEST_P(Program, WithoutACopybookStillGivesAnAnalysis) {
  const std::string text = textOf(bankFolder() / "cobol" / GetParam());
  const auto copybooks = copybookTexts();
  std::set<std::string> used;
  for (const cobol::CopyUse& copy : cobol::analyse(text, {}, copybooks).copies)
    used.insert(copy.name);
  for (const auto& [name, content] : copybooks) {
    auto rest = copybooks;
    rest.erase(name);
    const cobol::Analysis analysis = cobol::analyse(text, {}, rest);
    EXPECT_THAT(faultsOf(analysis), IsEmpty()) << "without " << name;
    const auto missesIt = [&name = name](const cobol::Diagnostic& diagnostic) {
      return diagnostic.code == cobol::Code::CopyMissing && diagnostic.text.find(name) != std::string::npos;
    };
    EXPECT_EQ(std::any_of(analysis.diagnostics.begin(), analysis.diagnostics.end(), missesIt), used.count(name) > 0)
        << "without " << name;
  }
}

INSTANTIATE_TEST_SUITE_P(Bank, Program, ::testing::ValuesIn(programNames()),
                         [](const auto& given) { return given.param.substr(0, given.param.find('.')); });

TEST(Portfolio, ThreadsShareALibrary) {
  const std::vector<std::string> programs = programNames();
  std::vector<std::vector<std::string>> expected;
  for (const std::string& program : programs)
    expected.push_back(linesOf(analysed(program)));

  cobol::CopyLibrary library(std::vector<std::string>{(bankFolder() / "copy").string()});
  std::vector<std::vector<std::vector<std::string>>> results(4);
  std::vector<std::thread> threads;
  for (std::size_t n = 0; n < results.size(); ++n) {
    threads.emplace_back([&, n] {
      results[n].resize(programs.size());
      for (std::size_t i = 0; i < programs.size(); ++i) {
        const std::size_t mine = (i + n * 4) % programs.size(); // each begins elsewhere
        const std::string path = (bankFolder() / "cobol" / programs[mine]).string();
        results[n][mine] = linesOf(cobol::analyse(path, {}, library));
      }
    });
  }
  for (std::thread& thread : threads)
    thread.join();
  for (const auto& result : results) {
    for (std::size_t i = 0; i < programs.size(); ++i)
      EXPECT_EQ(result[i], expected[i]) << programs[i];
  }
}

TEST(Portfolio, ACommentLineChangesNoKey) {
  const std::filesystem::path copy = std::filesystem::temp_directory_path() / "tarnsift_samples_comment";
  std::filesystem::remove_all(copy);
  std::filesystem::copy(bankFolder(), copy, std::filesystem::copy_options::recursive);
  for (const auto& entry : std::filesystem::recursive_directory_iterator(copy)) {
    if (entry.is_regular_file()) std::ofstream(entry.path(), std::ios::app) << "      *> ONE MORE REMARK\n";
  }
  const auto keysOf = [](const cobol::Analysis& analysis) {
    std::vector<std::string> keys;
    for (const cobol::Construct& item : analysis.constructs)
      keys.push_back(item.kvid);
    return keys;
  };
  for (const std::string& program : programNames()) {
    const cobol::Analysis changed = analysed(copy, program);
    const cobol::Analysis original = analysed(program);
    EXPECT_EQ(keysOf(changed), keysOf(original)) << program;
    EXPECT_EQ(changed.files.front().lines, original.files.front().lines + 1) << program;
  }
  std::filesystem::remove_all(copy);
}

// Which programs meet in a file or in a parameter; the same table stands in samples/README.md.
TEST(Portfolio, ProgramsMeetInFilesAndCalls) {
  std::map<std::string, std::set<std::string>> slots;
  for (const std::string& program : programNames()) {
    const cobol::Analysis analysis = analysed(program);
    for (const cobol::Construct& item : analysis.constructs) {
      if (item.kind == cobol::Kind::callSlot || item.kind == cobol::Kind::fileSlot)
        slots[item.name].insert(program.substr(0, program.find('.')));
    }
  }
  const std::map<std::string, std::set<std::string>> expected = {
      {"ACCTMST", {"BKB020", "BKB030", "BKB040", "BKB050", "BKB080", "BKF900", "BKO110", "BKO120"}},
      {"CUSTMST", {"BKB040", "BKB060", "BKO110", "BKO120"}},
      {"TRANDAY", {"BKB010", "BKB020"}},
      {"TRANHIST", {"BKB020", "BKF900"}},
      {"DORMANT", {"BKB060", "BKB070"}},
      {"BKMAP1", {"BKO100", "BKO110", "BKO120"}},
      {"BKS100(1)", {"BKB010", "BKO100", "BKS100"}},
      {"BKS110(1)", {"BKB020", "BKS110"}},
      {"BKS120(1)", {"BKB030", "BKS110", "BKS120"}},
      {"BKS120(4)", {"BKB030", "BKS110", "BKS120"}},
      {"BKS121(2)", {"BKS110", "BKS120"}},
      {"BKB052(1)", {"BKB050"}},
      {"BKO110(CA)", {"BKO100", "BKO110"}},
      {"BKO120(CA)", {"BKO100", "BKO120"}},
      {"BKO150(CA)", {"BKO110", "BKO150"}},
  };
  for (const auto& [slot, programs] : expected)
    EXPECT_EQ(slots[slot], programs) << slot;
}

} // namespace
} // namespace samples
