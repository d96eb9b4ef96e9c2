#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "orvane/report_file.hpp"
#include "orvane/zip_reader.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "platform/xml/xml.hpp"

using namespace orvane;

namespace {

const char* const kNames =
    "<LCRecordFormat><Program CAPTION=\"Program\"/><Dataname CAPTION=\"Dataname\"/><Comment CAPTION=\"Comment\"/>"
    "<File CAPTION=\"File [Ln,Col]\"/></LCRecordFormat>";
const char* const kCode = "<LCRecordFormat><ProgramName RAW=\"no\"/><Source RAW=\"no\"/><LineNo/></LCRecordFormat>";
const char* const kMetrics = "<LCRecordFormat><Program CAPTION=\"Program\"/><Declarations CAPTION=\"Declarations(%)\"/>"
                             "<Usages CAPTION=\"Usages(%)\"/></LCRecordFormat>";

// A workbook read back.
class Book {
 public:
  Book(const std::string& title, const char* format, const std::vector<ReportRecord>& rows,
       const SheetLimits& limits = {}) {
    RecordFile records;
    for (const auto& row : rows)
      records.append(row);
    std::ostringstream out;
    writeXlsx(out, title, readRecordFormat(format), records, limits);
    platform::WriteFileAtomically(m_folder.file("book.xlsx"), out.str());
  }

  std::string part(const std::string& name) const {
    std::string text;
    ZipReader(m_folder.file("book.xlsx")).read(name, [&](std::string_view piece) { text += piece; });
    return text;
  }
  // Without the namespaces, so that paths are short.
  platform::Document document(const std::string& name) const {
    std::string text = part(name);
    for (auto at = text.find(" xmlns"); at != std::string::npos; at = text.find(" xmlns"))
      text.erase(at, text.find('"', text.find('"', at) + 1) + 1 - at);
    return platform::Document::loadText(platform::replaceAll(text, "r:id", "id"));
  }
  std::string sheets() const {
    std::string names;
    for (const auto& sheet : document("xl/workbook.xml").selectNodes("//sheets/sheet"))
      names += sheet.getAttribute("name").asText() + "|";
    return names;
  }
  // A row a line: texts in quotes, flags with a question mark, percentages with their sign.
  std::string cells(int sheet) const {
    std::string text;
    const auto styles = document("xl/styles.xml").selectNodes("//cellXfs/xf");
    for (const auto& row : document("xl/worksheets/sheet" + std::to_string(sheet) + ".xml").selectNodes("//row")) {
      for (const auto& cell : row.children()) {
        const std::string type = cell.getAttribute("t").asText();
        const auto style = static_cast<std::size_t>(cell.getAttribute("s").asInteger());
        const bool percent = styles.at(style).getAttribute("numFmtId").asInteger() > 0;
        EXPECT_FALSE(cell.selectSingleNode("f")) << "a formula";
        text += cell.getAttribute("r").asText() + " ";
        text += type == "inlineStr" ? "'" + cell.text() + "'" : cell.text() + (type == "b" ? "?" : "");
        text += percent ? "% " : " ";
      }
      text += "\n";
    }
    return text;
  }

 private:
  platform::TemporaryFolder m_folder;
};

} // namespace

TEST(ReportXlsx, TextsStayTextsAndNumbersAreNumbers) {
  const Book book("Names: [all]/*?'", kNames,
                  {{"=1+1", "+A", "-B & <c> \x07", "@src\\P.cbl [000042,000008]"},
                   {"_x0041_", "  in front", "日本語 \xF0\x9F\x98\x80", "odd"}});
  EXPECT_EQ(book.cells(1), "A1 'Program' B1 'Dataname' C1 'Comment' D1 'File' E1 'Line' F1 'Column' \n"
                           "A2 '=1+1' B2 '+A' C2 '-B & <c> \xE2\x90\x87' D2 '@src\\P.cbl' E2 42 F2 8 \n"
                           "A3 '_x005F_x0041_' B3 '  in front' C3 '日本語 \xF0\x9F\x98\x80' D3 'odd' \n");
  EXPECT_EQ(book.sheets(), "Names   all|");
  const auto sheet = book.document("xl/worksheets/sheet1.xml");
  EXPECT_EQ(sheet.selectSingleNode("//pane").getAttribute("state").asText(), "frozen");
  EXPECT_EQ(sheet.selectSingleNode("//autoFilter").getAttribute("ref").asText(), "A1:F3");
  EXPECT_EQ(sheet.selectNodes("//cols/col").size(), 6U);
  const auto heading = sheet.selectSingleNode("//row[1]/c[1]").getAttribute("s").asInteger();
  const auto styles = book.document("xl/styles.xml");
  const auto font = styles.selectNodes("//cellXfs/xf").at(static_cast<std::size_t>(heading)).getAttribute("fontId");
  EXPECT_TRUE(styles.selectNodes("//fonts/font").at(static_cast<std::size_t>(font.asInteger())).selectSingleNode("b"));
}

TEST(ReportXlsx, PercentagesAndFlags) {
  const Book metrics("Metrics", kMetrics, {{"P", "     33.3%", "    150.0%"}, {"Q", "      0.0%", ""}});
  EXPECT_EQ(metrics.cells(1), "A1 'Program' B1 'Declarations(%)' C1 'Usages(%)' \nA2 'P' B2 0.333% C2 1.5% \n"
                              "A3 'Q' B3 0% \n");
  const Book code("Affected Code", kCode,
                  {{"<b style=\"font-size: 12pt\">A&amp;B</b> &nbsp;[    src\\a.cbl]", "", ""},
                   {"", "  a &lt; b", "000004"},
                   {"", "<b>=c</b>", "000005"},
                   {"", "...", ""}});
  EXPECT_EQ(code.cells(1), "A1 'Program' B1 'File' C1 'Line' D1 'Text' E1 'Marked' \n"
                           "A2 'A&B' B2 'src\\a.cbl' C2 4 D2 '  a < b' E2 0? \n"
                           "A3 'A&B' B3 'src\\a.cbl' C3 5 D3 '=c' E3 1? \n");
}

TEST(ReportXlsx, GoesOnInAFurtherSheetAtTheRowLimit) {
  std::vector<ReportRecord> rows;
  for (int i = 0; i < 5; ++i)
    rows.push_back({"P" + std::to_string(i), "", ""});
  const Book book("Metrics of a portfolio with a long name", kMetrics, rows, {.rows = 3});
  EXPECT_EQ(book.sheets(), "Metrics of a portfolio with a l|Metrics of a portfolio with (2)|"
                           "Metrics of a portfolio with (3)|");
  const std::string head = "A1 'Program' B1 'Declarations(%)' C1 'Usages(%)' \n";
  EXPECT_EQ(book.cells(1), head + "A2 'P0' \nA3 'P1' \n");
  EXPECT_EQ(book.cells(2), head + "A2 'P2' \nA3 'P3' \n");
  EXPECT_EQ(book.cells(3), head + "A2 'P4' \n");
  EXPECT_EQ(book.document("xl/worksheets/sheet3.xml").selectSingleNode("//autoFilter").getAttribute("ref").asText(),
            "A1:C2");
  const Book none("Metrics", kMetrics, {}, {.rows = 3});
  EXPECT_EQ(none.cells(1), head);
}

TEST(ReportXlsx, CutsACellAtItsLimitWithAMark) {
  const std::string smile = "\xF0\x9F\x98\x80"; // two units
  const Book book("M", kMetrics, {{"12345678", "", ""}, {"123456789", "", ""}, {"123" + smile + smile + smile, "", ""}},
                  {.characters = 8});
  EXPECT_EQ(book.cells(1), "A1 'Program' B1 'Decl […]' C1 'Usag […]' \nA2 '12345678' \nA3 '1234 […]' \n"
                           "A4 '123 […]' \n");
  const Book whole("M", kMetrics, {{std::string(32767, 'x'), "", ""}, {std::string(40000, 'y'), "", ""}});
  EXPECT_NE(whole.part("xl/worksheets/sheet1.xml").find(">" + std::string(32767, 'x') + "<"), std::string::npos);
  EXPECT_NE(whole.part("xl/worksheets/sheet1.xml").find(">" + std::string(32763, 'y') + " […]<"), std::string::npos);
}

TEST(ReportXlsx, TotalsAreASheetOfTheirOwn) {
  const Book book("Effort",
                  "<LCRecordFormat><Program CAPTION=\"Program\"/><Size CAPTION=\"Size\" GROUP=\"S,M,L,XL\"/>"
                  "<Affected CAPTION=\"Affected\" TYPE=\"number\"/><Usages CAPTION=\"Usages\" TYPE=\"number\"/>"
                  "<Share CAPTION=\"Share\" TYPE=\"percent\" OF=\"Affected/Usages\"/></LCRecordFormat>",
                  {{"P", "XL", "3", "8", "     37.5%"}, {"Q", "", "1", "8", "     12.5%"}});
  EXPECT_EQ(book.sheets(), "Effort|Totals|");
  EXPECT_EQ(book.cells(2), "A1 'Size' B1 'Programs' C1 'Affected' D1 'Usages' E1 'Share' \n"
                           "A2 'XL' B2 1 C2 3 D2 8 E2 0.375% \nA3 '(none)' B3 1 C3 1 D3 8 E3 0.125% \n"
                           "A4 'Total' B4 2 C4 4 D4 16 E4 0.25% \n");
}

TEST(ZipReader, RefusesWhatIsNoWholeArchive) {
  RecordFile records;
  records.append({"P", "", ""});
  std::ostringstream out;
  writeXlsx(out, "M", readRecordFormat(kMetrics), records);
  const platform::TemporaryFolder folder;
  const std::string file = folder.file("book.xlsx");
  const auto readAll = [&](const std::string& bytes) {
    platform::WriteFileAtomically(file, bytes);
    const ZipReader archive(file);
    for (const auto& name : archive.names())
      archive.read(name, [](std::string_view) {});
  };
  const std::string whole = out.str();
  EXPECT_NO_THROW(readAll(whole));
  EXPECT_THROW(readAll(""), platform::FileError);
  EXPECT_THROW(readAll(whole.substr(0, whole.size() / 2)), platform::FileError);
  EXPECT_THROW(ZipReader(file + "2"), platform::FileError);
  // A flipped byte inside a part is seen; head fields that a reader does not need may differ.
  const std::size_t sheet = whole.find("xl/worksheets/sheet1.xml") + std::string("xl/worksheets/sheet1.xml").size();
  for (std::size_t at = sheet + 20; at < sheet + 120; at += 10) {
    std::string bytes = whole;
    bytes[at] = static_cast<char>(bytes[at] ^ 0x55);
    EXPECT_THROW(readAll(bytes), platform::FileError) << at - sheet;
  }
}
