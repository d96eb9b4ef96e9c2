#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "orvane/report_file.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/wildcard.hpp"
#include "platform/xml/xml.hpp"

using namespace orvane;

namespace {

const char* const kNames =
    "<LCRecordFormat><Program CAPTION=\"Program\"/><Dataname CAPTION=\"Dataname\"/><Comment CAPTION=\"Bemerkung\"/>"
    "<File CAPTION=\"File [Ln,Col]\"/></LCRecordFormat>";
const char* const kCode = "<LCRecordFormat><ProgramName RAW=\"no\"/><Source RAW=\"no\"/><LineNo/></LCRecordFormat>";

void fill(RecordFile& records, const std::vector<ReportRecord>& rows) {
  for (const auto& row : rows)
    records.append(row);
}

const std::vector<ReportRecord> kNameRows = {{"P", "=A1", "say \"hi\", now", "src\\P.cbl [000042,000008]"},
                                             {"P", "B", std::string("bell\x07<&>'"), ""},
                                             {"Q", "\xE6\x97\xA5", "", "dir [x]\\Q.cbl [1234567,000001]"}};
const std::vector<ReportRecord> kCodeRows = {
    {"<b style=\"font-size: 12pt\">A&amp;B</b> &nbsp;[    src\\a.cbl]", "", ""},
    {"", "  a &lt; b", "000004"},
    {"", "<b>  &amp;lt; &rsquo;c&rsquo;</b>", "000005"},
    {"", "...", ""},
    {" &nbsp;[    copy\\x.cpy]", "", ""},
    {"", "<b></b>", "000009"}};

} // namespace

TEST(ReportTables, CsvKeepsTextsTextsAndCutsThePlace) {
  RecordFile records;
  fill(records, kNameRows);
  std::ostringstream out;
  writeCsv(out, readRecordFormat(kNames), records);
  EXPECT_EQ(out.str(), "Program,Dataname,Bemerkung,File,Line,Column\r\n"
                       "P,'=A1,\"say \"\"hi\"\", now\",src\\P.cbl,42,8\r\n"
                       "P,B,bell\x07<&>',,,\r\n"
                       "Q,\xE6\x97\xA5,,dir [x]\\Q.cbl,1234567,1\r\n");
}

TEST(ReportTables, JsonHasUntranslatedKeysAndNumbers) {
  RecordFile records;
  fill(records, kNameRows);
  std::ostringstream out;
  writeJson(out, readRecordFormat(kNames), records);
  EXPECT_EQ(out.str(), "{\"program\":\"P\",\"dataname\":\"=A1\",\"comment\":\"say \\\"hi\\\", "
                       "now\",\"file\":\"src\\\\P.cbl\",\"line\":42,\"column\":8}\n"
                       "{\"program\":\"P\",\"dataname\":\"B\",\"comment\":\"bell\\u0007<&>'\",\"file\":\"\",\"line\":"
                       "null,\"column\":null}\n"
                       "{\"program\":\"Q\",\"dataname\":\"\xE6\x97\xA5\",\"comment\":\"\",\"file\":\"dir "
                       "[x]\\\\Q.cbl\",\"line\":1234567,\"column\":1}\n");
}

TEST(ReportTables, AffectedCodeIsOneRowASourceLine) {
  RecordFile records;
  fill(records, kCodeRows);
  std::ostringstream out;
  writeCsv(out, readRecordFormat(kCode), records);
  EXPECT_EQ(out.str(), "Program,File,Line,Text,Marked\r\n"
                       "A&B,src\\a.cbl,4,  a < b,false\r\n"
                       "A&B,src\\a.cbl,5,  &lt; 'c',true\r\n"
                       "A&B,copy\\x.cpy,9,,true\r\n");
}

TEST(ReportHtml, EscapesValuesOnceAndHandsFinishedHtmlOn) {
  RecordFile records;
  fill(records, kNameRows);
  std::ostringstream out;
  writeHtml(out, "Names & <all>", readRecordFormat(kNames), "", records);
  const std::string html = out.str();
  EXPECT_NE(html.find("<h1>Names &amp; &lt;all&gt;</h1>"), std::string::npos);
  EXPECT_NE(html.find("<td class=\"Comment\">bell\xE2\x90\x87&lt;&amp;&gt;'</td>"), std::string::npos) << html;
  EXPECT_LT(html.rfind("</tr>"), html.find("</tbody>")) << "the rows stand inside the table";

  RecordFile code;
  fill(code, kCodeRows);
  std::ostringstream page;
  const std::string style =
      platform::readText(std::string(TARNSIFT_SOURCE_DIR) + "/src/orvane/resources/AffectedCodeRM.xsl");
  writeHtml(page, "Affected Code", readRecordFormat(kCode), style, code);
  const std::string text = page.str();
  EXPECT_NE(text.find("<b style=\"font-size: 12pt\">A&amp;B</b> &nbsp;[    src\\a.cbl]</td>"), std::string::npos)
      << text;
  EXPECT_NE(text.find("<td class=\"no\">000005</td><td class=\"code\"><b>  &amp;lt; &rsquo;c&rsquo;</b></td>"),
            std::string::npos);
  EXPECT_NE(text.find("<td class=\"gap\">...</td>"), std::string::npos);
}

TEST(ReportHtml, WritesManyRecordsInBatchesWithoutLoss) {
  RecordFile records;
  for (int i = 0; i < 1001; ++i)
    records.append({"P", "N" + std::to_string(i), "", ""});
  std::ostringstream out;
  writeHtml(out, "T", readRecordFormat(kNames), "", records);
  const std::string html = out.str();
  std::size_t rows = 0;
  for (auto at = html.find("<td class=\"Dataname\">"); at != std::string::npos;
       at = html.find("<td class=\"Dataname\">", at + 1))
    ++rows;
  EXPECT_EQ(rows, 1001U);
  EXPECT_THROW(writeHtml(out, "T", readRecordFormat(kNames), "<xsl:stylesheet", records), platform::XmlError);
}

TEST(ReportFileWriter, KeepsOnlyTheProgramsAskedForAlsoBehindHeads) {
  const platform::TemporaryFolder folder;
  const auto settings = std::make_shared<ReportSettings>();
  settings->targets = {{ReportFormat::json, folder.file("out.json")}};
  settings->programPattern = "b*";
  platform::Ref<ReportFile> writer(new ReportFile(settings));
  writer->BeginReport(kCode, "Affected Code", "");
  for (const char* program : {"A1", "B2"}) {
    writer->BeginRecord();
    writer->Field("ProgramName", "<b style=\"font-size: 12pt\">" + std::string(program) + "</b> &nbsp;[    x.cbl]");
    writer->EndRecord();
    writer->BeginRecord();
    writer->Field("LineNo", "000001");
    writer->Field("Source", "line");
    writer->EndRecord();
  }
  writer->EndReport("");
  EXPECT_EQ(platform::readText(folder.file("out.json")),
            "{\"program\":\"B2\",\"file\":\"x.cbl\",\"line\":1,\"text\":\"line\",\"marked\":false}\n");
}
