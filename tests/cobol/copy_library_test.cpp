#include "cobol/copy_library.hpp"

#include <filesystem>
#include <fstream>

#include "cobol/source.hpp"
#include "cobol/source_text.hpp"

namespace cobol {
namespace {

namespace fs = std::filesystem;

class CopyFiles : public ::testing::Test {
 protected:
  CopyFiles() {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    m_folder = fs::temp_directory_path() / ("tarnsift_copy_" + std::string(test->name()));
    fs::remove_all(m_folder);
  }
  ~CopyFiles() override { fs::remove_all(m_folder); }

  std::string path(const std::string& name) const { return (m_folder / name).string(); }
  void write(const std::string& name, const std::string& text) const {
    fs::create_directories((m_folder / name).parent_path());
    std::ofstream(m_folder / name, std::ios::binary) << text;
  }
  fs::path m_folder;
};

TEST_F(CopyFiles, AreFoundInTheOrderOfTheFolders) {
  for (const char* name : {"one/Rec.cpy", "one/both", "two/BOTH.CPY", "two/lib/rec.cbl", "two/case", "two/CASE",
                           "src/near.inc", "src/sub/deep.cpy"})
    write(name, "");
  CopyLibrary library({path("two"), path("one"), path("none")});
  const std::string program = path("src/prog.cbl");
  const std::vector<std::tuple<std::string, std::string, std::string>> cases = {
      {"REC", "", "one/Rec.cpy"},
      {"rec", "LIB", "two/lib/rec.cbl"},
      {"REC", "OTHER", "one/Rec.cpy"},
      {"REC", "one", "one/Rec.cpy"},
      {"BOTH", "", "two/BOTH.CPY"},
      {"both.cpy", "", "two/BOTH.CPY"},
      {"case", "", "two/case"},
      {"NEAR", "", "src/near.inc"},
      {"Sub/Deep.cpy", "", "src/sub/deep.cpy"},
      {"C:\\far\\rec.cpy", "", "one/Rec.cpy"},
      {"SUB", "", ""},
      {"gone", "", ""},
      {"", "", ""},
  };
  for (const auto& [name, folder, found] : cases) {
    EXPECT_EQ(library.find(name, folder, program).value_or(""), found.empty() ? "" : path(found))
        << name << " of " << folder;
  }
}

TEST_F(CopyFiles, ThatDifferInCaseOnlyAreRemarkedUnlessOneIsExact) {
  write("main.cbl", "       COPY REC.\n       COPY 'Part'.\n");
  for (const char* name : {"books/Rec.cpy", "books/rec.CPY", "books/Part", "books/PART"})
    write(name, "");
  CopyLibrary library({path("books")});
  Diagnostics diagnostics;
  const TokenStream stream = readTokens(path("main.cbl"), {}, library, diagnostics);
  ASSERT_EQ(stream.files.size(), 3u);
  EXPECT_EQ(stream.files[1].path, path("books/Rec.cpy"));
  EXPECT_EQ(stream.files[2].path, path("books/Part"));
  ASSERT_EQ(diagnostics.count(Code::Ambiguous), 1u);
  EXPECT_THAT(diagnostics.all().back().text, ::testing::HasSubstr("rec.CPY"));
}

TEST_F(CopyFiles, AreListedOnceWithTheirFacts) {
  write("main.cbl", "       COPY REC.\n       COPY REC.\n       COPY NONE OF L.");
  write("books/rec.cpy", "       01 A.\n");
  CopyLibrary library({path("books")});
  Diagnostics diagnostics;
  const TokenStream stream = readTokens(path("main.cbl"), {}, library, diagnostics);
  ASSERT_EQ(stream.files.size(), 2u);
  EXPECT_EQ(stream.files[0].lines, 3u);
  EXPECT_EQ(stream.files[1].path, path("books/rec.cpy"));
  EXPECT_EQ(stream.files[1].size, 13u);
  EXPECT_EQ(stream.files[1].hash, contentHash("       01 A.\n"));
  ASSERT_EQ(stream.copies.size(), 3u);
  EXPECT_EQ(stream.copies[1].file, 1);
  EXPECT_EQ(stream.copies[2].file, -1);
  EXPECT_EQ(stream.copies[2].library, "L");
  EXPECT_EQ(stream.tokens.size(), 7u);
}

TEST_F(CopyFiles, UnreadableSourceGivesAnEmptyStream) {
  CopyLibrary library(std::vector<std::string>{});
  Diagnostics diagnostics;
  const TokenStream stream = readTokens(path("nothing.cbl"), {}, library, diagnostics);
  EXPECT_EQ(stream.tokens.size(), 1u);
  EXPECT_EQ(stream.files.size(), 1u);
  EXPECT_EQ(diagnostics.count(Code::SourceUnreadable), 1u);
  std::string error;
  EXPECT_TRUE(readLines(path("nothing.cbl"), {}, &error).empty());
  EXPECT_THAT(error, ::testing::HasSubstr("nothing.cbl"));
}

TEST_F(CopyFiles, LinesAreNumberedAsTheTokensAre) {
  write("mixed.cbl", "       A\r\n\r       B\n\n       C \xFC");
  CopyLibrary library(std::vector<std::string>{});
  Diagnostics diagnostics;
  const TokenStream stream = readTokens(path("mixed.cbl"), {}, library, diagnostics);
  const std::vector<std::string> lines = readLines(path("mixed.cbl"), {});
  EXPECT_THAT(lines, ::testing::ElementsAre("       A", "", "       B", "", "       C ü"));
  EXPECT_EQ(stream.files[0].lines, lines.size());
  EXPECT_EQ(stream.tokens[2].line, 5u);
}

} // namespace
} // namespace cobol
