#include <gtest/gtest.h>

#include <sstream>

#include <fmt/format.h>

#include "orvane/report_file.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "platform/xml/xml.hpp"

using namespace orvane;

namespace {

const char* const kMetrics = "<LCRecordFormat><Program CAPTION=\"Program\"/><Declarations CAPTION=\"Declarations(%)\"/>"
                             "<Usages CAPTION=\"Usages(%)\"/></LCRecordFormat>";
const char* const kEffort =
    "<LCRecordFormat><Program CAPTION=\"Program\"/><Size CAPTION=\"Size\" GROUP=\"S,M,L,XL\"/>"
    "<Affected CAPTION=\"Affected\" TYPE=\"number\"/><Usages CAPTION=\"Usages\" TYPE=\"number\"/>"
    "<Share CAPTION=\"Share\" TYPE=\"percent\" OF=\"Affected/Usages\"/></LCRecordFormat>";
const std::vector<ReportRecord> kEffortRows = {{"P", "XL", "3", "8", "     37.5%"},
                                               {"Q", "", "0", "4", "      0.0%"},
                                               {"R", "S", "1", "3", "     33.3%"},
                                               {"S", "XL", "2", "0", "      0.0%"},
                                               {"T", "odd", "0", "1", "      0.0%"}};

// What stands behind the title and the time.
std::string bodyOf(const char* format, const std::vector<ReportRecord>& rows) {
  RecordFile records;
  for (const auto& row : rows)
    records.append(row);
  std::ostringstream out;
  writeHtml(out, "Metrics Report", readRecordFormat(format), "", records);
  const std::string page = out.str();
  const auto from = page.find("</p>", page.find("class=\"when\""));
  return page.substr(from + 4, page.find("</body>") - from - 4);
}

std::size_t countOf(const std::string& text, const std::string& part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
    ++count;
  return count;
}

// Whether every number of every path lies inside the picture.
void expectInside(const std::string& body) {
  const auto from = body.find("<svg");
  const std::string svg = body.substr(from, body.find("</svg>") + 6 - from);
  const auto picture = platform::Document::loadText(svg); // well formed whatever the names are
  const auto size = platform::splitAt(picture.documentElement().getAttribute("viewBox").asText(), ' ');
  const double width = std::stod(size[2]), height = std::stod(size[3]);
  for (const auto& path : picture.selectNodes("//path")) {
    double x = 0, y = 0;
    std::istringstream shape(path.getAttribute("d").asText());
    for (char step; shape >> step;) {
      double a = 0, b = 0;
      switch (step) {
      case 'M':
        shape >> x >> y;
        break;
      case 'H':
        shape >> x;
        break;
      case 'V':
        shape >> y;
        break;
      case 'h':
        shape >> a;
        x += a;
        break;
      case 'v':
        shape >> a;
        y += a;
        break;
      case 'l':
        shape >> a >> b;
        x += a;
        y += b;
        break;
      default:
        break;
      }
      ASSERT_TRUE(x >= 0 && x <= width && y >= 0 && y <= height) << path.getAttribute("d").asText();
    }
  }
}

} // namespace

TEST(ReportPicture, TheMetricsReportAsItWasSeenAndFoundGood) {
  const std::string page =
      bodyOf(kMetrics, {{"ACCOUNTS", "     12.5%", "      3.1%"},
                        {"<b>&\"'\x07", "      0.0%", "    150.0%"},
                        {"A-NAME-THAT-IS-LONGER-THAN-THIRTY-LETTERS", "      0.0%", "      0.0%"}});
  const std::string lines = platform::replaceAll(page, "><", ">\n<") + "\n"; // as the file has them
  EXPECT_EQ(lines, platform::readText(TARNSIFT_SOURCE_DIR "/tests/orvane/golden/metrics.html")) << lines;
  expectInside(page);
}

TEST(ReportPicture, ManyProgramsAreASkylineAndTheLargestAsBars) {
  std::vector<ReportRecord> rows;
  for (int i = 0; i < 2000; ++i)
    rows.push_back({fmt::format("P{:04}", i), fmt::format("{:.1f}%", i % 7 / 10.0), fmt::format("{:.1f}%", i / 10.0)});
  const std::string body = bodyOf(kMetrics, rows);
  EXPECT_EQ(countOf(body, "class=\"name\""), 40U);
  EXPECT_LT(body.find(">P1999<"), body.find(">P1998<"));
  EXPECT_EQ(countOf(body, "<tr>"), 2001U) << "the table has all of them";
  const std::string picture = body.substr(0, body.find("</svg>"));
  EXPECT_LT(picture.size(), 40000U) << "however many programs there are";
  EXPECT_EQ(picture.find(">P1959<"), std::string::npos);
  EXPECT_NE(picture.find("1999 of 2000 programs above 0.0%"), std::string::npos);
  expectInside(body);
}

TEST(ReportPicture, AReportWithoutSharesOrWithoutProgramsHasNone) {
  EXPECT_EQ(bodyOf(kMetrics, {}).find("<svg"), std::string::npos);
  EXPECT_EQ(bodyOf(kEffort, kEffortRows).find("<svg"), std::string::npos);
}

TEST(ReportTotals, StandUnderTheTableAndByGroupInTheOrderOfTheFormat) {
  const std::string body = bodyOf(kEffort, kEffortRows);
  const auto row = [](const std::vector<std::string>& cells) {
    std::string text = "<tr><td>" + cells[0] + "</td>";
    for (std::size_t i = 1; i < cells.size(); ++i)
      text += "<td class=\"number\">" + cells[i] + "</td>";
    return text + "</tr>";
  };
  EXPECT_NE(body.find("<tbody>" + row({"S", "1", "1", "3", "33.3%"}) + row({"XL", "2", "5", "8", "62.5%"}) +
                      row({"odd", "1", "0", "1", "0.0%"}) + row({"(none)", "1", "0", "4", "0.0%"}) +
                      row({"Total", "5", "6", "16", "37.5%"}) + "</tbody>"),
            std::string::npos)
      << body;
  EXPECT_NE(body.find("<tfoot><tr><td>Total</td><td></td><td class=\"number\">6</td><td class=\"number\">16</td>"
                      "<td class=\"number\">37.5%</td></tr></tfoot>"),
            std::string::npos)
      << body;
}

TEST(ReportTotals, AreTheLastObjectInJsonAndLeaveCsvToItsRows) {
  RecordFile records;
  for (const auto& row : kEffortRows)
    records.append(row);
  std::ostringstream json, csv;
  writeJson(json, readRecordFormat(kEffort), records);
  writeCsv(csv, readRecordFormat(kEffort), records);
  EXPECT_NE(json.str().find("{\"program\":\"P\",\"size\":\"XL\",\"affected\":3,\"usages\":8,\"share\":37.5}\n"),
            std::string::npos)
      << json.str();
  EXPECT_TRUE(json.str().ends_with("{\"summary\":{\"S\":{\"programs\":1,\"affected\":1,\"usages\":3,\"share\":33.3},"
                                   "\"XL\":{\"programs\":2,\"affected\":5,\"usages\":8,\"share\":62.5},"
                                   "\"odd\":{\"programs\":1,\"affected\":0,\"usages\":1,\"share\":0.0},"
                                   "\"none\":{\"programs\":1,\"affected\":0,\"usages\":4,\"share\":0.0},"
                                   "\"total\":{\"programs\":5,\"affected\":6,\"usages\":16,\"share\":37.5}}}\n"))
      << json.str();
  EXPECT_EQ(csv.str(), "Program,Size,Affected,Usages,Share\r\nP,XL,3,8,37.5\r\nQ,,0,4,0.0\r\nR,S,1,3,33.3\r\n"
                       "S,XL,2,0,0.0\r\nT,odd,0,1,0.0\r\n");
}
