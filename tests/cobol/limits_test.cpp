// Hostile and huge texts: each is analysed or refused with a clear remark, in bounded time and memory. Every case runs
// in a process of its own.
#include <iconv.h>
#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <functional>

#include "cobol/analyse.hpp"

namespace cobol {
namespace {

using Books = std::map<std::string, std::string>;

constexpr unsigned kSeconds = 120;
constexpr rlim_t kBytes = rlim_t{3} << 30;

std::string repeated(std::string_view text, std::size_t times) {
  std::string all;
  all.reserve(text.size() * times);
  for (std::size_t i = 0; i < times; ++i)
    all += text;
  return all;
}

/// One text for each number up to `times`, with the number for every `%`.
std::string numbered(std::string_view text, std::size_t times) {
  std::string all;
  for (std::size_t i = 0; i < times; ++i) {
    for (const char c : text)
      all += c == '%' ? std::to_string(i) : std::string(1, c);
  }
  return all;
}

/// In free form, with the items A and N.
std::string program(std::string_view data, std::string_view procedure) {
  std::string text = ">>SOURCE FREE\nIDENTIFICATION DIVISION.\nPROGRAM-ID. P.\nDATA DIVISION.\n"
                     "WORKING-STORAGE SECTION.\n01 A PIC X(5).\n01 N PIC 9(4).\n";
  return text.append(data).append("PROCEDURE DIVISION.\n").append(procedure);
}

/// `items usages` and how many remarks there are of each kind: `2 4 CopyCycle:1`.
std::string summary(const Analysis& analysis) {
  std::size_t usages = 0;
  for (const Instance& use : analysis.instances)
    usages += use.isUsage();
  std::map<std::string, std::size_t> remarks;
  for (const Diagnostic& one : analysis.diagnostics)
    ++remarks[std::string(nameOf(one.code))];
  std::string text = analysis.isCobol ? "" : "no program ";
  text += std::to_string(analysis.constructs.size()) + ' ' + std::to_string(usages);
  for (const auto& [code, count] : remarks)
    text += ' ' + code + ':' + std::to_string(count);
  return text;
}

/// Runs `work` with little memory and time and expects it to say nothing.
void expectInBounds(const std::string& name, const std::function<std::string()>& work) {
  const auto run = [&] {
    alarm(kSeconds);
#if !defined(__SANITIZE_ADDRESS__)
    const rlimit most{kBytes, kBytes};
    setrlimit(RLIMIT_AS, &most);
#endif
    const std::string fault = work();
    std::fputs(fault.c_str(), stderr);
    _exit(fault.empty() ? 0 : 1);
  };
  EXPECT_EXIT(run(), ::testing::ExitedWithCode(0), "") << name;
}

void expectSummary(const std::string& name, std::string_view text, std::string_view wanted, const Books& books = {},
                   const Options& options = {}) {
  expectInBounds(name, [&] {
    const std::string found = summary(analyse(text, options, books));
    return found == wanted ? std::string() : "found " + found + ", wanted " + std::string(wanted);
  });
}

TEST(Limits, NestingCostsMemoryOnly) {
  constexpr std::size_t kDeep = 100'000;
  const auto nested = [](std::string_view open, std::string_view inside, std::string_view close) {
    return program("", repeated(open, kDeep).append(inside).append(repeated(close, kDeep)).append(".\n"));
  };
  const std::string between = repeated("(\n", kDeep) + "N" + repeated(")\n", kDeep);
  expectSummary("expression", program("", "COMPUTE N = " + between + ".\n"), "2 2");
  expectSummary("condition", program("", "IF " + between + " = 1 MOVE A TO A.\n"), "2 3");
  expectSummary("never closed", program("", "COMPUTE N = " + repeated("(\n", kDeep) + "N.\nMOVE A TO A.\n"), "2 4");
  expectSummary("subscripts", program("", "MOVE N " + repeated("(N\n", kDeep) + repeated(")\n", kDeep) + " TO N.\n"),
                "2 100002");
  expectSummary("IF", nested("IF N = 1\n", "MOVE A TO A\n", "END-IF\n"), "2 100002");
  expectSummary("ELSE", nested("IF N = 1 CONTINUE ELSE\n", "MOVE A TO A\n", ""), "2 100002");
  expectSummary("EVALUATE", nested("EVALUATE N WHEN 1\n", "MOVE A TO A\n", "END-EVALUATE\n"), "2 100002");
  expectSummary("PERFORM", nested("PERFORM UNTIL N = 1\n", "MOVE A TO A\n", "END-PERFORM\n"), "2 100002");
  expectSummary("NOT", program("", "IF " + repeated("NOT\n", kDeep) + "N = 1 MOVE A TO A.\n"), "2 3");
  expectSummary("branches", program("", "MOVE A TO A.\n" + repeated(">>IF A DEFINED\n", kDeep) + "MOVE A TO A.\n"),
                "2 2");
}

TEST(Limits, GroupsAsDeepAsLevelsAndTypesAllow) {
  std::string levels = "01 G1.\n";
  for (int level = 2; level < 49; ++level)
    levels += std::to_string(level) + " G" + std::to_string(level) + ".\n";
  expectSummary("levels", program(levels + "49 L PIC X.\n", "MOVE G1 TO A. MOVE L OF G1 TO A.\n"), "51 4");
  std::string types = "01 T0 TYPEDEF.\n05 L PIC X.\n";
  for (int i = 1; i < 600; ++i)
    types +=
        "01 T" + std::to_string(i) + " TYPEDEF.\n05 U" + std::to_string(i) + " TYPE T" + std::to_string(i - 1) + ".\n";
  expectSummary("types", program(types, "MOVE L OF T599 TO A.\n"), "180902 2");
  std::string doubling = "01 T0 TYPEDEF.\n05 L PIC X.\n"; // each type holds the one before twice
  for (int i = 1; i < 64; ++i) {
    const std::string inner = " TYPE T" + std::to_string(i - 1) + ".\n";
    doubling += "01 T" + std::to_string(i) + " TYPEDEF.\n05 U" + inner + "05 V" + inner;
  }
  expectSummary("types twice", program(doubling, "MOVE A TO A.\n"), "393339 2 BudgetSpent:94 PictureMissing:94");
  std::string ends;
  for (int i = 3000; i-- > 0;)
    ends += "END PROGRAM P" + std::to_string(i) + ".\n";
  const std::string starts = numbered(
      "PROGRAM-ID. P%. DATA DIVISION. WORKING-STORAGE SECTION. 01 A PIC X. PROCEDURE DIVISION. MOVE A TO A.\n", 3000);
  expectSummary("programs", ">>SOURCE FREE\n" + starts + ends, "3000 6000");
}

TEST(Limits, CopybooksEnd) {
  const auto chain = [](int depth) {
    Books books;
    for (int i = 0; i < depth; ++i)
      books["C" + std::to_string(i)] = i + 1 < depth ? "COPY C" + std::to_string(i + 1) + ".\n" : "01 DEEP PIC X.\n";
    return books;
  };
  expectSummary("50 deep", program("COPY C0.\n", "MOVE DEEP TO A.\n"), "3 2", chain(50));
  expectSummary("70 deep", program("COPY C0.\n", "MOVE A TO A.\n"), "2 2 CopyDepth:1", chain(70));
  expectSummary("itself", program("COPY C.\n", "MOVE X TO A.\n"), "3 2 CopyCycle:1", {{"C", "01 X PIC X.\nCOPY C.\n"}});
  expectSummary("each other", program("COPY C.\n", "MOVE X TO A.\n"), "3 2 CopyCycle:1",
                {{"C", "COPY D.\n"}, {"D", "01 X PIC X.\nCOPY C.\n"}});

  // Each copies the next one twice: without a limit they are read for ever, though there is no word in them.
  Books twice;
  Books doubled;
  for (int i = 0; i < 60; ++i) {
    const std::string next = std::to_string(i + 1);
    twice["C" + std::to_string(i)] = "COPY C" + next + ".\nCOPY C" + next + ".\n";
    doubled["C" + std::to_string(i)] = "COPY C" + next + " REPLACING ==A== BY ==A A==.\n";
  }
  twice["C60"] = "*> nothing\n";
  doubled["C60"] = "MOVE A TO N.\n";
  expectSummary("twice", program("", "MOVE A TO A.\nCOPY C0.\n"), "2 2 BudgetSpent:1", twice);
  Options few;
  few.wordLimit = 1'000'000;
  expectSummary("doubled", program("", "MOVE A TO N.\nCOPY C0.\n"), "2 999970 BudgetSpent:1 StatementUnknown:1",
                doubled, few);
  const std::string longer = "REPLACE ==A== BY ==" + repeated("A ", 10'000) + "==.\n";
  expectSummary("longer", program("", longer + repeated("MOVE A TO N.\n", 10'000)),
                "2 1000099 BudgetSpent:1 StatementUnknown:100", {}, few);
}

TEST(Limits, LongTexts) {
  expectSummary("lines", program("", repeated("MOVE A TO N.\n", 500'000)), "2 1000000");
  expectSummary("items", program(numbered("01 REC%.\n05 ITEM% PIC X(8).\n", 100'000), "MOVE REC7 TO A.\n"), "200002 2");
  expectSummary("one record", program("01 R.\n" + numbered("05 ITEM% PIC X(8).\n", 200'000), "MOVE R TO A.\n"),
                "200003 2");
  expectSummary("equal names", program("01 R.\n" + repeated("05 ITEM PIC X(8).\n", 50'000), "MOVE ITEM TO A.\n"),
                "50003 257 Ambiguous:1 NameDuplicate:1001");
  expectSummary("long line", program("", "MOVE A TO A" + std::string(11'000'000, ' ') + "MOVE A TO A.\nMOVE N TO N.\n"),
                "2 4 LineTooLong:1");
  expectSummary("full line", program("", repeated("MOVE A TO A ", 870'000) + ".\n"), "2 1740000");
  expectSummary("operands", program("", "MOVE N TO" + repeated(" A\n", 100'000) + ".\n"), "2 100001");
  expectSummary("arguments", program("", "CALL 'X' USING" + repeated(" A\n", 100'000) + ".\n"), "100002 100000");
}

TEST(Limits, LongWords) {
  const std::string name(1000, 'X');
  expectSummary("name", program("01 " + name + " PIC X.\n", "MOVE " + name + " TO A.\n"), "3 2");
  const std::string longest(65'536, 'Y');
  expectSummary("longest name", program("01 " + longest + " PIC X.\n", "MOVE " + longest + " TO A.\n"), "3 2");
  expectSummary("longer name", program("", "MOVE " + longest + "Y TO A.\n"), "3 2 LineTooLong:1 Unresolved:1");
  expectSummary("literal", program("", "MOVE '" + std::string(200'000, 'Y') + "' TO A.\nMOVE N TO A.\n"), "2 3");
  expectSummary("picture", program("01 B PIC " + std::string(200'000, 'X') + ".\n", "MOVE B TO A.\n"),
                "3 2 LineTooLong:1");
  expectSummary("sizes", program("01 B PIC X(2147483647).\n01 C PIC X(2147483648).\n", "MOVE B TO A.\n"),
                "4 2 PictureBad:1");
}

std::string converted(std::string text, const char* codePage) {
  const iconv_t converter = iconv_open(codePage, "UTF-8");
  std::string out(text.size() * 4, '\0');
  char* from = text.data();
  char* to = out.data();
  std::size_t fromLeft = text.size();
  std::size_t toLeft = out.size();
  iconv(converter, &from, &fromLeft, &to, &toLeft);
  iconv_close(converter);
  out.resize(out.size() - toLeft);
  return out;
}

std::string withLineEnds(std::string_view text, std::string_view end) {
  std::string out;
  for (const char c : text)
    out += c == '\n' ? std::string(end) : std::string(1, c);
  return out;
}

TEST(Limits, TheSameTextInEveryClothing) {
  std::string text = "       IDENTIFICATION DIVISION.\n       PROGRAM-ID. P.\n       DATA DIVISION.\n"
                     "       WORKING-STORAGE SECTION.\n       01  A                PIC X(5).\n"
                     "       01  B                PIC X(5) VALUE 'ABC'.\n       PROCEDURE DIVISION.\n"
                     "           MOVE A TO B.\n";
  const std::map<std::string, std::string> clothings = {
      {"CRLF", withLineEnds(text, "\r\n")},
      {"lone CR", withLineEnds(text, "\r")},
      {"no final line end", text.substr(0, text.size() - 1)},
      {"NULs behind", text + std::string(1000, '\0')},
      {"UTF-8 mark", "\xEF\xBB\xBF" + text},
      {"UTF-16 low byte first", "\xFF\xFE" + converted(text, "UTF-16LE")},
      {"UTF-16 high byte first", "\xFE\xFF" + converted(text, "UTF-16BE")},
      {"EBCDIC", converted(text, "IBM037")},
  };
  const auto placesOf = [](const Analysis& analysis) {
    std::vector<std::string> places;
    for (const Instance& use : analysis.instances) {
      places.push_back(analysis.constructs[use.construct].kvid + ' ' + static_cast<char>(use.access) + ' ' +
                       std::to_string(use.at.line) + ':' + std::to_string(use.at.column));
    }
    return places;
  };
  const std::vector<std::string> wanted = placesOf(analyse(text, {}, {}));
  EXPECT_EQ(wanted.back(), "P:B W 8:22");
  for (const auto& [name, bytes] : clothings)
    EXPECT_EQ(placesOf(analyse(bytes, {}, {})), wanted) << name;
}

TEST(Limits, NothingAndRubbish) {
  expectSummary("empty", "", "no program 0 0");
  expectSummary("NULs", std::string(1 << 20, '\0'), "no program 0 0");
  expectSummary("NULs between", program(std::string_view("01 B\0PIC X.\n", 13), "MOVE B TO A.\n"), "3 2");
  expectSummary("half a UTF-16 character", std::string("\xFF\xFE") + "A", "no program 0 0");
  expectSummary("no line end", std::string(20 << 20, 'A'), "no program 0 0");
  expectSummary("open literal", program("", "MOVE A TO A. DISPLAY 'never closed"), "2 2 LiteralOpen:1");
  expectSummary("open literal in EXEC", program("", "EXEC SQL SELECT 'X\n" + repeated("FROM T\n", 100'000)),
                "2 0 ExecOpen:1 LiteralOpen:1");
  expectSummary("open pseudo-text", program("", "COPY C REPLACING ==A BY B.\nMOVE A TO A.\n"),
                "2 3 PeriodMissing:1 StatementUnknown:1", {{"C", ""}});
  std::string noise;
  for (std::uint32_t state = 1; noise.size() < (4u << 20); state = state * 1664525 + 1013904223)
    noise += static_cast<char>(state >> 24);
  expectInBounds("noise", [&] { return analyse(noise, {}, {}).files.empty() ? "no file" : std::string(); });
}

// Reading the name of a reference without declaration took time by the square of its qualifiers.
TEST(Limits, QualifiersTakeLinearTime) {
  const auto secondsFor = [](std::size_t qualifiers) {
    const std::string text = program("", "MOVE N" + repeated(" OF A\n", qualifiers) + " TO N.\n");
    const auto start = std::chrono::steady_clock::now();
    analyse(text, {}, {});
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  };
  secondsFor(1000);
  EXPECT_LT(secondsFor(80'000), 12 * std::max(secondsFor(20'000), 0.005));
}

} // namespace
} // namespace cobol
