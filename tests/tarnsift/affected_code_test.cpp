#include "tarnsift/fake_host.hpp"

#include "platform/runtime/text.hpp"
#include "tarnsift/reports/escape_html.hpp"

namespace tarnsift_test {
namespace {

constexpr const char* kNeighbourhood = "//NUMBER[@NAME='NeighbourhoodSize']";
constexpr const char* kShowUnused = "//BOOL[@NAME='ShowUnused']";

std::string linesUpTo(int last) {
  std::string text;
  for (int line = 1; line <= last; ++line)
    text += "line " + std::to_string(line) + "\n";
  return text;
}

/// The records of a report in short: heads as they are, `5` a plain line, `*5` a bold one, `...` a gap.
std::string shortForm(const std::string& report) {
  std::string text;
  for (const std::string& line : platform::splitAt(report, '\n')) {
    if (!line.starts_with("{")) continue;
    const auto number = line.find("LineNo=");
    if (number != std::string::npos)
      text += (line.starts_with("{ Source=<b>") ? "*" : "") + std::to_string(std::stoi(line.substr(number + 7))) + " ";
    else
      text += line.substr(line.find('=') + 1, line.rfind(';') - line.find('=') - 1) + " ";
  }
  return text;
}

class AffectedCode : public ::testing::Test {
 protected:
  /// The report over one program A with one file x.txt of so many lines, where k1 is declared and used as said.
  std::string report(int lines, const std::string& neighbourhood, std::vector<std::string> places,
                     const char* showUnused = "false") {
    FakeHost host;
    host.writeFile("x.txt", linesUpTo(lines));
    host.add({.id = "A", .constructs = "k1 N 0 4 A\n", .places = {{"k1", std::move(places)}}, .files = {"x.txt"}});
    host.setOption(kNeighbourhood, neighbourhood);
    host.setOption(kShowUnused, showUnused);
    host.run();
    host.choose("mnuFileReportType", 5);
    EXPECT_THAT(host.messages(), ::testing::ElementsAre());
    return shortForm(host.report);
  }
};

TEST_F(AffectedCode, TheCallsLineByLine) {
  FakeHost host;
  host.writeFile("x.txt", "one\ntwo\nthree\n  a < b & 'c' \"d\"\r\nMOVE X\r\nsix\n");
  host.add(
      {.id = "A&B", .constructs = "k1 N 0 4 A\n", .places = {{"k1", {"other:1:1", "x.txt:4:1"}}}, .files = {"x.txt"}});
  host.run();
  host.choose("mnuFileReportType", 5);
  EXPECT_EQ(host.report, "BeginReport <LCRecordFormat><ProgramName RAW=\"no\"/><Source "
                         "RAW=\"no\"/><LineNo/></LCRecordFormat>|Affected Code|"
                         "<style no='Line No.' at='Report generated at' again='Line No.'/>\n"
                         "{ ProgramName=<b style=\"font-size: 12pt\">A&amp;B</b> &nbsp;[    x.txt]; }\n"
                         "{ Source=three; LineNo=000003; }\n"
                         "{ Source=<b>  a &lt; b &amp; &rsquo;c&rsquo; &quot;d&quot;</b>; LineNo=000004; }\n"
                         "{ Source=MOVE X; LineNo=000005; }\n"
                         "{ Source=...; }\n"
                         "EndReport ''\nShow for frmMain\n");
}

TEST_F(AffectedCode, EachUsageStandsInItsNeighbourhood) {
  const std::string head = "<b style=\"font-size: 12pt\">A</b> &nbsp;[    x.txt] ";
  struct {
    const char* promise;
    int lines;
    const char* neighbourhood;
    std::vector<std::string> places;
    std::string expected;
  } const kCases[] = {
      {"two runs and what is hidden behind each",
       12,
       "1",
       {"y:1:1", "x.txt:5:1", "x.txt:9:1"},
       head + "4 *5 6 ... 8 *9 10 ... "},
      {"no context", 6, "0", {"y:1:1", "x.txt:2:1", "x.txt:3:1", "x.txt:5:1"}, head + "*2 *3 ... *5 ... "},
      {"the first line", 12, "3", {"y:1:1", "x.txt:1:1"}, head + "*1 2 3 4 ... "},
      {"the last line", 12, "3", {"y:1:1", "x.txt:12:1"}, head + "9 10 11 *12 "},
      {"usages in each other's context, in any order",
       9,
       "2",
       {"y:1:1", "x.txt:5:1", "x.txt:4:9", "x.txt:5:20"},
       head + "2 3 *4 *5 6 7 ... "},
      {"touching neighbourhoods are one run",
       20,
       "3",
       {"y:1:1", "x.txt:17:1", "x.txt:10:1"},
       head + "7 8 9 *10 11 12 13 14 15 16 *17 18 19 20 "},
      {"one hidden line is a gap",
       21,
       "3",
       {"y:1:1", "x.txt:10:1", "x.txt:18:1"},
       head + "7 8 9 *10 11 12 13 ... 15 16 17 *18 19 20 21 "},
      {"the declaration counts with its usages", 12, "0", {"x.txt:3:1", "x.txt:9:1"}, head + "*3 ... *9 ... "},
      {"line 0 marks what follows it", 12, "2", {"y:1:1", "x.txt:0:0"}, head + "1 2 ... "},
      {"a line just behind the end", 12, "3", {"y:1:1", "x.txt:13:1"}, head + "10 11 12 "},
      {"a line out of reach", 12, "3", {"y:1:1", "x.txt:16:1", "x.txt:99:1"}, ""},
      {"an empty file", 0, "3", {"y:1:1", "x.txt:1:1"}, ""},
      {"no usage", 12, "1", {"x.txt:5:1"}, ""},
  };
  for (const auto& c : kCases)
    EXPECT_EQ(report(c.lines, c.neighbourhood, c.places), c.expected) << c.promise;
  EXPECT_EQ(report(12, "1", {"x.txt:5:1"}, "true"), head + "4 *5 6 ... ") << "an unused name, when the option shows it";
}

TEST_F(AffectedCode, FilesAndProgramsHaveTheirHeads) {
  FakeHost host;
  for (const char* file : {"a.cbl", "b.cpy", "c.cpy"})
    host.writeFile(file, linesUpTo(3));
  const std::vector<std::string> files = {"b.cpy", "c.cpy", "a.cbl"};
  host.add({.id = "A",
            .constructs = "k1 N 0 4 A\n k2 M 0 4 A\n k3 W 0 4 W\n k4 GONE 0 4 A\n",
            .places = {{"k1", {"b.cpy:1:1", "a.cbl:3:1"}}, {"k2", {"a.cbl:1:1"}}, {"k3", {"c.cpy:1:1", "c.cpy:2:2"}}},
            .files = files});
  host.add({.id = "B", .constructs = "k1 N 0 4 W\n", .places = {{"k1", {"a.cbl:1:1", "a.cbl:2:1"}}}, .files = files});
  host.add({.id = "C", .constructs = "k9 LOST 0 4 A\n", .files = files});
  host.add({.id = "D", .constructs = "k1 N 0 4 A\n", .places = {{"k1", {"b.cpy:1:1", "c.cpy:2:1"}}}, .files = files});
  host.setOption(kNeighbourhood, "0");
  host.run();
  host.takeLog();
  host.choose("mnuFileReportType", 5);
  EXPECT_EQ(shortForm(host.report),
            "<b style=\"font-size: 12pt\">A</b> &nbsp;[    b.cpy] *1 ...  &nbsp;[    a.cbl] *3 "
            "<b style=\"font-size: 12pt\">D</b> &nbsp;[    b.cpy] *1 ...  &nbsp;[    c.cpy] *2 ... ");
  EXPECT_EQ(host.log.find("store B"), std::string::npos) << "no Affected names, no opening";
}

TEST_F(AffectedCode, ASourceThatCannotBeReadCostsItsFileOnly) {
  FakeHost host;
  host.writeFile("b.cpy", linesUpTo(3));
  host.add({.id = "A",
            .constructs = "k1 N 0 4 A\n",
            .places = {{"k1", {"gone.cbl:1:1", "b.cpy:2:1"}}},
            .files = {"gone.cbl", "b.cpy"}});
  host.setOption(kNeighbourhood, "0");
  host.run();
  host.choose("mnuFileReportType", 5);
  EXPECT_EQ(shortForm(host.report), "<b style=\"font-size: 12pt\">A</b> &nbsp;[    b.cpy] *2 ... ");
  EXPECT_TRUE(host.report.ends_with("EndReport ''\nShow for frmMain\n"));
  EXPECT_TRUE(host.activity.starts_with("A: not whole in the report: ")) << host.activity;
}

TEST_F(AffectedCode, WithoutItsStyleFileThereIsNoHalfReport) {
  FakeHost host;
  platform::removeAll(host.path("Product/AffectedCodeRM.xsl"));
  host.run();
  host.messages();
  host.choose("mnuFileReportType", 5);
  EXPECT_EQ(host.report, "");
  EXPECT_EQ(host.messages().size(), 1u);
  EXPECT_TRUE(host.window().Enabled() && !host.window().pbProgress.Visible());
}

TEST(EscapeHtml, ReplacesInOrder) {
  EXPECT_EQ(tarnsift::EscapeHtml("&lt;<>\"'&"), "&amp;lt;&lt;&gt;&quot;&rsquo;&amp;");
}

} // namespace
} // namespace tarnsift_test
