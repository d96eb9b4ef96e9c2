#include "cobol/analyse.hpp"

#include <filesystem>
#include <fstream>
#include <thread>

namespace cobol {
namespace {

const std::string kProgram = R"(       IDENTIFICATION DIVISION.
       PROGRAM-ID. PAY.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       COPY REC REPLACING ==:T:== BY ==IN==.
       COPY REC REPLACING ==:T:== BY ==OUT==.
       PROCEDURE DIVISION.
           MOVE IN-NAME TO OUT-NAME
           GOBACK.
)";
const std::map<std::string, std::string> kBooks = {{"REC", "       01 :T:-REC.\n          05 :T:-NAME PIC X(9).\n"}};

std::vector<std::string> linesOf(const Analysis& analysis) {
  std::vector<std::string> lines;
  const auto place = [](const Position& at) {
    return " <" + std::to_string(at.file) + "/" + std::to_string(at.line) + ":" + std::to_string(at.column) + ">";
  };
  for (const Construct& item : analysis.constructs)
    lines.push_back(item.kvid + " " + std::to_string(item.size) + place(item.declared));
  for (const Relationship& one : analysis.relationships) {
    lines.push_back(analysis.constructs[one.from].name + " " +
                    std::string(relationKinds()[static_cast<std::size_t>(one.kind)].name) + " " +
                    analysis.constructs[one.to].name + place(analysis.sitesOf(one).front()));
  }
  for (const Instance& use : analysis.instances) {
    if (use.isUsage())
      lines.push_back(analysis.constructs[use.construct].name + " " + static_cast<char>(use.access) + place(use.at));
  }
  for (const NamedPlace& named : analysis.places) {
    if (named.kindWord == "COPY") lines.push_back("COPY " + named.name + place(named.at));
  }
  return lines;
}

TEST(Analyse, StagesWorkTogether) {
  EXPECT_THAT(linesOf(analyse(kProgram, {}, kBooks)),
              ::testing::ElementsAre("PAY:IN-REC 9 <1/1:11>", "PAY:IN-REC.IN-NAME 9 <1/2:14>", "PAY:OUT-REC 9 <1/1:11>",
                                     "PAY:OUT-REC.OUT-NAME 9 <1/2:14>", "IN-NAME Move OUT-NAME <0/8:17>",
                                     "IN-NAME R <0/8:17>", "OUT-NAME W <0/8:28>", "COPY REC <0/5:13>",
                                     "COPY REC <0/6:13>"));
}

// Cut anywhere, a program still gives an analysis; so it does with any one word in another's place.
TEST(Analyse, DamagedTextGivesAnAnalysis) {
  std::string text = kProgram;
  for (std::size_t at = text.size(); at > 0; at -= std::min<std::size_t>(at, 3))
    analyse(text.substr(0, at), {}, kBooks);
  for (std::size_t at = 0; at + 1 < text.size(); ++at) {
    for (const char c : {'\'', '.', '=', '(', '\n', '\0'}) {
      std::string damaged = text;
      damaged[at] = c;
      EXPECT_FALSE(analyse(damaged, {}, kBooks).files.empty());
    }
  }
}

TEST(Analyse, RemarksPathsDeclaredTwiceAndUnreadBasisLines) {
  const Analysis analysis =
      analyse("       BASIS OLD\n       DELETE 000100\n       PROGRAM-ID. P.\n       DATA DIVISION.\n"
              "       WORKING-STORAGE SECTION.\n       01 A. 05 B PIC X. 05 B PIC X. 05 FILLER PIC X.\n"
              "       05 FILLER PIC X. 05 C PIC X.\n       01 C PIC X.\n",
              {}, {});
  std::string remarks;
  for (const Diagnostic& one : analysis.diagnostics)
    remarks += std::string(nameOf(one.code)) + ' ' + std::to_string(one.at.line) + ' ';
  EXPECT_EQ(remarks, "DirectiveUnknown 1 DirectiveUnknown 2 NameDuplicate 6 ");
}

TEST(Analyse, ThreadsShareALibrary) {
  const std::filesystem::path folder = std::filesystem::temp_directory_path() / "tarnsift_analyse_threads";
  std::filesystem::create_directories(folder);
  std::ofstream(folder / "pay.cbl") << kProgram;
  std::ofstream(folder / "rec.cpy") << kBooks.at("REC");
  {
    CopyLibrary library(std::vector<std::string>{folder.string()});
    std::vector<Analysis> results(4);
    std::vector<std::thread> threads;
    for (Analysis& result : results) {
      threads.emplace_back([&] {
        for (int i = 0; i < 20; ++i)
          result = analyse((folder / "pay.cbl").string(), {}, library);
      });
    }
    for (std::thread& thread : threads)
      thread.join();
    for (const Analysis& result : results)
      EXPECT_EQ(linesOf(result), linesOf(analyse(kProgram, {}, kBooks)));
  }
  std::filesystem::remove_all(folder);
}

} // namespace
} // namespace cobol
