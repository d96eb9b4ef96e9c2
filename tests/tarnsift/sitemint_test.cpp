#include "tarnsift/webpage/sitemint_add_on.hpp"

#include "platform/runtime/text.hpp"
#include "tarnsift/fake_host.hpp"
#include "tarnsift/session/sitemint_generator.hpp"
#include "tarnsift/store/program_database.hpp"

namespace tarnsift_test {
namespace {

/// A page generator that writes down what it is asked.
struct Generator : tarnsift::SitemintGenerator {
  std::string OutputFolder() override { return folder; }
  std::string PageHeading(const std::string& caption) override { return "<h1>" + caption + "</h1>"; }
  std::string FilePageLink(const std::string& file) override {
    return "Pages\\" + platform::replaceAll(file, "\\", "\\of ") + ".html";
  }
  Value Invoke(std::string_view member, std::span<Value> arguments) override {
    calls += std::string(member);
    for (const Value& argument : arguments)
      calls += " " + argument.asText();
    calls += "\n";
    if (member == "StartStep") globalsSeen = static_cast<bool>(tarnsift::globals().Frontend);
    return {};
  }
  std::string folder;
  std::string calls;
  bool globalsSeen = false;
};

class Sitemint : public ::testing::Test {
 protected:
  Sitemint() {
    platform::createFolder(host.path("Site"));
    generator->folder = host.path("Site");
  }
  Value run() {
    platform::Document document;
    platform::Node element = document.createElement("PAGE");
    element.setAttribute("NAME", "Own");
    element.setAttribute("CAPTION", "Its caption");
    const Ref<platform::Object> addOn(new tarnsift::SitemintAddOn);
    Value arguments[] = {host.frontend(), generator, platform::makeObject<tarnsift::OptionElement>(element)};
    return addOn->Invoke("Run", arguments);
  }
  std::string page() { return platform::readText(host.path("Site/Own/Main.htm")); }
  /// The rows of a section's table, 0 the metrics, a line each: the cells, "^id" for an anchor in front of them.
  std::string rows(int section) {
    std::vector<std::string> lines = platform::splitAt(platform::replaceAll(page(), "\r\n", "\n"), '\n');
    std::string text;
    int table = -1;
    for (const std::string& line : lines) {
      if (line.starts_with("<table")) ++table;
      if (table != section || line == "</table>" || line.starts_with("<table") || line.starts_with("<th") ||
          line.starts_with("<p ") || line == "<tr>")
        continue;
      if (line == "<br>") break;
      if (line == "</tr>") {
        if (!text.empty() && !text.ends_with('\n')) text += "\n";
      } else if (line.starts_with("<a id=\"")) {
        text += "^" + line.substr(7, line.size() - 9);
      } else {
        text += "|" + line.substr(line.find('>') + 1, line.rfind("</td>") - line.find('>') - 1);
      }
    }
    return text;
  }
  FakeHost host;
  Ref<Generator> generator{new Generator};
};

const std::string kHead = "<html>\r\n<head>\r\n<link href=\"../Decor.css\" rel=\"stylesheet\" type=\"text/css\">\r\n"
                          "</head>\r\n<body>\r\n\r\n<h1>Its caption</h1>\r\n";
const std::string kTable = "<table border=\"0\" class=\"flat\" width=\"100%\" >\r\n<tr>\r\n";
const std::string kFigureHead =
    "<th rowspan=\"2\">Program</th>\r\n<th rowspan=\"2\">Total Declarations Count</th>\r\n"
    "<th colspan=\"3\">Affected</th>\r\n<th rowspan=\"2\">Possible Declarations Count</th>\r\n"
    "<th rowspan=\"2\">Clean Declarations Count</th>\r\n</tr>\r\n<tr>\r\n<th>Declarations Count</th>\r\n"
    "<th>Declarations(%)</th>\r\n<th>Usages(%)</th>\r\n</tr>\r\n";
const std::string kPlaceHead = "<th>Comment</th>\r\n<th>File</th>\r\n<th>Ln</th>\r\n<th>Col</th>\r\n</tr>\r\n";
const std::string kNamesHead = "<th>Program</th>\r\n<th>Dataname</th>\r\n";

// Eight declarations, two affected: 25.0%; they are used three times, of sixteen usages: 18.8%, halves away from zero.
TEST_F(Sitemint, ThePageByteForByte) {
  host.add({.id = "A",
            .constructs = "k1 ZULU 0 4 W\n k2 MIKE 4 6 A <b>&\n k3 ALFA 4 6 A\n k4 NONE 4 6 -\n k5 N5 0 1 -\n"
                          "k6 N6 0 1 -\n k7 N7 0 1 -\n k8 N8 0 1 -\n",
            .places = {{"k1", {"Src\\A.cbl:42:8"}},
                       {"k2", {"Src\\A.cbl:1234567:12", "Src\\A.cbl:1:1", "Src\\A.cbl:2:1"}},
                       {"k3", {"Copy\\Z&1.cpy:3:1000000", "Src\\A.cbl:9:1"}}},
            .variableUsages = 16,
            .displayName = "A <the first>"});
  EXPECT_EQ(run(), Value(0));
  const std::string small = "<p align=\"center\"><small>";
  const std::string metrics = "<a href=\"#Metrics Report\"> Metrics Report</a>";
  const std::string possible = "<a href=\"#PossibleDatanames\"> Possible Datanames</a>";
  const std::string affected = "<a href=\"#AffectedDatanames\"> Affected Datanames</a>";
  const std::string clean = "<a href=\"#CleanDatanames\"> Clean Datanames</a>";
  const auto current = [](const std::string& name, const std::string& title) {
    return "</small><a id=\"" + name + "\"><big><b>" + title + "</b></big><small>";
  };
  const std::string dot = " &#149 ";
  const std::string end = "</small></p>\r\n";
  const std::string zulu = "<td>A <the first></td>\r\n<td>ZULU</td>\r\n";
  const std::string mike = "<td>A <the first></td>\r\n<td>MIKE</td>\r\n";
  const std::string alfa = "<td>A <the first></td>\r\n<td>ALFA</td>\r\n";
  const auto place = [](const std::string& file, const std::string& line, const std::string& column) {
    return "<td><a href=\"../Pages/" + platform::replaceAll(file, "\\", "/of ") + ".html\">" + file +
           "</a></td>\r\n<td align=\"right\">" + line + "</td>\r\n<td align=\"right\">" + column + "</td>\r\n</tr>\r\n";
  };
  const std::string atZulu = place("Src\\A.cbl", "42", "8");
  const std::string atMike = place("Src\\A.cbl", "1234567", "12");
  const std::string atAlfa = place("Copy\\Z&1.cpy", "3", "1000000");
  EXPECT_EQ(page(),
            kHead +                                                                                           //
                small + current("Metrics Report", "Metrics Report") + dot + possible + dot + affected + dot + //
                clean + end + kTable + kFigureHead +
                "<tr>\r\n<td>A <the first></td>\r\n<td align=\"right\">8</td>\r\n"
                "<td align=\"right\"><a href=\"#A:1\">2</a></td>\r\n<td align=\"right\">     25.0%</td>\r\n"
                "<td align=\"right\">     18.8%</td>\r\n<td align=\"right\"><a href=\"#A:0\">1</a></td>\r\n"
                "<td align=\"right\">0</td>\r\n</tr>\r\n</table>\r\n" +
                small + metrics + dot + current("PossibleDatanames", "Possible Datanames") + dot + affected + dot +
                clean + end + kTable + kNamesHead + "<th>Status</th>\r\n" + kPlaceHead + "<tr>\r\n<a id=\"A:0\">\r\n" +
                alfa + "<td>Affected</td>\r\n<td></td>\r\n" + atAlfa + "<tr>\r\n" + mike +
                "<td>Affected</td>\r\n<td><b>&</td>\r\n" + atMike + "<tr>\r\n" + zulu +
                "<td>Working</td>\r\n<td></td>\r\n" + atZulu + "</table>\r\n" + //
                small + metrics + dot + possible + dot + current("AffectedDatanames", "Affected Datanames") + dot +
                clean + end + kTable + kNamesHead + kPlaceHead + "<tr>\r\n<a id=\"A:1\">\r\n" + alfa + "<td></td>\r\n" +
                atAlfa + "<tr>\r\n" + mike + "<td><b>&</td>\r\n" + atMike + "</table>\r\n" + //
                small + metrics + dot + possible + dot + affected + dot + current("CleanDatanames", "Clean Datanames") +
                end + kTable + kNamesHead + kPlaceHead + "</table>\r\n" + "<br>\r\n" + small + metrics + dot +
                possible + dot + affected + dot + clean + end);
}

TEST_F(Sitemint, TheProgressCallsAndTheGlobalsOfARunWithoutAWindow) {
  host.add({.id = "A", .constructs = "k1 ONE 0 4 W\n", .places = {{"k1", {"A.cbl:1:1"}}}});
  run();
  EXPECT_EQ(generator->calls, "StartProgress Creating Ripplemark page 4\n"
                              "StartStep Metrics Report\nFinishStep 1\nStartStep Possible Datanames\nFinishStep 1\n"
                              "StartStep Affected Datanames\nFinishStep 1\nStartStep Clean Datanames\nFinishStep 1\n"
                              "FinishProgress\n");
  EXPECT_TRUE(generator->globalsSeen);
  const tarnsift::Globals& globals = tarnsift::globals();
  EXPECT_FALSE(globals.Frontend || globals.ProjectObject || globals.OptionsRoot);
  EXPECT_EQ(globals.ProjectName + " " + globals.StatusColumn + globals.ClassificationColumn,
            "P [P_Status][P_Classification]");
  EXPECT_FALSE(host.attached) << "no window was opened";
}

TEST_F(Sitemint, AProgramHasOneAnchorInEachListThatItIsInAndNoLinkForAZero) {
  host.add(
      {.id = "A", .constructs = "k1 Y 0 1 C\n k2 X 0 1 C last\n", .places = {{"k1", {"A:1:2"}}, {"k2", {"A:3:4"}}}});
  host.add({.id = "B", .constructs = "k1 Z 0 1 A\n", .places = {{"k1", {"B:5:6", "B:7:1"}}}}); // no usage in the store
  host.add({.id = "EMPTY", .constructs = ""});
  run();
  EXPECT_EQ(rows(0), "|A|2|0|      0.0%|      0.0%|0|<a href=\"#A:2\">2</a>\n"
                     "|B|1|<a href=\"#B:1\">1</a>|    100.0%|      0.0%|0|0\n"
                     "|EMPTY|0|0|      0.0%|      0.0%|0|0\n");
  EXPECT_EQ(rows(1), "^A:0|A|X|Clean|last|<a href=\"../Pages/A.html\">A</a>|3|4\n"
                     "|A|Y|Clean||<a href=\"../Pages/A.html\">A</a>|1|2\n"
                     "^B:0|B|Z|Affected||<a href=\"../Pages/B.html\">B</a>|5|6\n");
  EXPECT_EQ(rows(2), "^B:1|B|Z||<a href=\"../Pages/B.html\">B</a>|5|6\n");
  EXPECT_EQ(rows(3), "^A:2|A|X|last|<a href=\"../Pages/A.html\">A</a>|3|4\n"
                     "|A|Y||<a href=\"../Pages/A.html\">A</a>|1|2\n");
}

TEST_F(Sitemint, ProgramsThatAreNotVerifiedOrCannotBeReadHaveNoRowAnywhere) {
  for (const char* id : {"NOFILE", "NODATA", "BROKEN", "NODB", "GOOD"})
    host.add({.id = id, .constructs = "k1 ONE 0 1 W\n", .places = {{"k1", {"S:1:1"}}}});
  platform::removeAll(host.path("Analysis/NOFILE.kva"));
  host.programs[1].dataRelations = false;
  host.brokenStores = {"BROKEN"};
  platform::removeAll(host.path("Analysis/NODB.mdb"));
  host.writeFile("Analysis/NODB.mdb", std::string(8192, 'x'));
  host.add({.id = "OTHER", .constructs = "", .projects = {"Q"}});
  run();
  EXPECT_EQ(rows(0), "|GOOD|1|0|      0.0%|      0.0%|<a href=\"#GOOD:0\">1</a>|0\n");
  EXPECT_EQ(rows(1), "^GOOD:0|GOOD|ONE|Working||<a href=\"../Pages/S.html\">S</a>|1|1\n");
  EXPECT_EQ(host.messages(), std::vector<std::string>{});
}

TEST_F(Sitemint, ANameOutsideTheAnalysisKeepsItsRowWithoutAPlace) {
  host.add({.id = "A",
            .constructs = "k1 GONE 0 1 A why\n k2 HERE 0 1 A\n",
            .places = {{"k2", {"S:1:1", "S:2:2"}}},
            .variableUsages = 4});
  run();
  EXPECT_EQ(rows(0), "|A|2|<a href=\"#A:1\">2</a>|    100.0%|     25.0%|0|0\n");
  EXPECT_EQ(rows(2), "^A:1|A|GONE|why|||\n|A|HERE||<a href=\"../Pages/S.html\">S</a>|1|1\n");
}

TEST_F(Sitemint, AStatusThatIsNoListCountsInTheTotalOnly) {
  host.add(
      {.id = "A", .constructs = "k1 ONE 0 1 W\n k2 TWO 0 1 -\n", .places = {{"k1", {"S:1:1"}}, {"k2", {"S:2:1"}}}});
  host.database("A")->Execute("update Constructs set P_Status = 7 where KVID = 'k2'");
  run();
  EXPECT_EQ(rows(0), "|A|2|0|      0.0%|      0.0%|<a href=\"#A:0\">1</a>|0\n");
  EXPECT_NE(rows(1).find("|TWO|Working|"), std::string::npos) << "every other value reads Working";
}

TEST_F(Sitemint, AProjectWithoutProgramsHasAllFourSections) {
  run();
  for (int section = 0; section < 4; ++section)
    EXPECT_EQ(rows(section), "");
  std::size_t tables = 0;
  for (std::size_t at = 0; (at = page().find("</table>", at)) != std::string::npos; ++at)
    ++tables;
  EXPECT_EQ(tables, 4U);
}

TEST_F(Sitemint, OldPagesAreReplacedAndOldColumnsBroughtUpToDate) {
  host.writeFile("Analysis/keep", "");
  platform::createFolder(host.path("Site/Own"));
  host.writeFile("Site/Own/Main.htm", std::string(100000, 'x'));
  host.addWithColumns({.id = "A", .constructs = "k1 ONE 0 1 -\n", .places = {{"k1", {"S:1:1"}}}}, "GONE_Status",
                      "GONE_Classification");
  run();
  EXPECT_EQ(rows(0), "|A|1|0|      0.0%|      0.0%|0|0\n");
  EXPECT_LT(page().size(), 10000U);
  EXPECT_TRUE(host.database("A")->hasField("Constructs", "P_Status"));
  EXPECT_FALSE(host.database("A")->hasField("Constructs", "GONE_Status"));
}

TEST_F(Sitemint, APageThatCannotBeWrittenIsOneErrorAndLeavesNoGlobals) {
  generator->folder = host.path("Nowhere");
  try {
    run();
    FAIL();
  } catch (const platform::FileError& error) {
    EXPECT_EQ(error.path(), host.path("Nowhere/Own/Main.htm"));
  }
  EXPECT_FALSE(tarnsift::globals().Frontend);
  host.writeFile("Site/Own", "a file where the folder goes");
  generator->folder = host.path("Site");
  EXPECT_THROW(run(), platform::FileError);
}

} // namespace
} // namespace tarnsift_test
