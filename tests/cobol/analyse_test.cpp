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

TEST(Analyse, InstancesKnowWhereTheirNamesGoOn) {
  const Analysis analysis =
      analyse("       PROGRAM-ID. PAY.\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n"
              "       COPY REC REPLACING ==:T:== BY ==IN==.\n       01 LONG-\n      -    NAME PIC X(9).\n"
              "       PROCEDURE DIVISION.\n           MOVE IN-NAME TO LO\n      -    NG-NAME LONG-NAME.\n",
              {}, kBooks);
  std::string all;
  for (const Instance& use : analysis.instances) {
    all += analysis.constructs[use.construct].name + ' ' + static_cast<char>(use.access) + ' ' +
           std::to_string(use.at.line) + ':' + std::to_string(use.at.column) + '+' + std::to_string(use.at.length);
    for (const Position& at : analysis.further.of(use.further))
      all += ' ' + std::to_string(at.file) + '/' + std::to_string(at.line) + ':' + std::to_string(at.column) + '+' +
             std::to_string(at.length);
    all += '\n';
  }
  EXPECT_EQ(all, "IN-REC D 1:11+7 0/4:40+2\nIN-NAME D 2:14+8 0/4:40+2\nLONG-NAME D 5:11+5 0/6:12+4\n"
                 "IN-NAME R 8:17+7\nLONG-NAME W 8:28+2 0/9:12+7\nLONG-NAME W 9:20+9\n");
}

TEST(Analyse, OptionsAndConstantsOfDirectivesCount) {
  const auto itemsOf = [](const std::string& front, const std::string& items) {
    const Analysis analysis = analyse(
        front + "       PROGRAM-ID. P.\n       DATA DIVISION.\n       WORKING-STORAGE SECTION.\n" + items, {}, {});
    std::string all;
    for (const Construct& item : analysis.constructs)
      all += item.name + ' ' + std::to_string(item.size) + " <" + std::to_string(item.declared.line) + ':' +
             std::to_string(item.declared.column) + "> ";
    for (const Instance& use : analysis.instances)
      if (use.isUsage()) all += analysis.constructs[use.construct].name + " R ";
    return all;
  };
  EXPECT_EQ(itemsOf("CBL NOSEQ,LP(64)\n", "       01 A POINTER.\n"), "A 8 <5:11> ");
  EXPECT_EQ(itemsOf("      * why\n\n000010 PROCESS LP(32)\n", "       01 A POINTER.\n"), "A 4 <7:11> ");
  EXPECT_EQ(
      itemsOf("       >>DEFINE MANY AS 3\n      $SET CONSTANT WIDE(7)\n", "       01 A PIC X(WIDE) OCCURS MANY.\n"),
      "A 21 <6:11> MANY 0 <1:17> WIDE 0 <2:21> WIDE R MANY R ");
  // A name of the program is its own; one behind a condition that fails is none.
  EXPECT_EQ(itemsOf("       >>DEFINE A 3\n       >>IF B DEFINED\n       >>DEFINE C 1\n       >>END-IF\n",
                    "       01 A PIC X(2).\n"),
            "A 2 <8:11> ");
}

TEST(Analyse, RemarksAreCountedBeyondAThousand) {
  std::string text = "       PROGRAM-ID. P.\n       PROCEDURE DIVISION.\n";
  for (int i = 0; i < 1005; ++i)
    text += "           MOVE 1 TO A" + std::to_string(i) + ".\n";
  const Analysis analysis = analyse(text, {}, {});
  ASSERT_EQ(analysis.diagnostics.size(), 1001U);
  EXPECT_EQ(analysis.diagnostics.back().code, Code::Unresolved);
  EXPECT_EQ(analysis.diagnostics.back().text, "5 more of these are left out");
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
