#include <ctime>

#include <fmt/chrono.h>
#include <fmt/format.h>

#include "orvane/product.hpp"
#include "orvane/report_file.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "platform/xml/xml.hpp"

namespace orvane {

namespace {

constexpr const char* kDefaultStyle = "Report.xsl";
constexpr const char* kRowsMark = "<!--rows-->";
constexpr std::size_t kBatch = 400;

// XML forbids most control characters; their pictures stand for them.
std::string xmlText(const std::string& text) {
  std::string valid = platform::toValidUtf8(text);
  std::string result;
  result.reserve(valid.size());
  for (const char c : valid) {
    const auto code = static_cast<unsigned char>(c);
    if (code < 0x20 && c != '\t' && c != '\n' && c != '\r')
      result += {'\xE2', '\x90', static_cast<char>(0x80 + code)};
    else
      result += c;
  }
  return result;
}

platform::Document reportFrame(const std::string& title, const std::vector<ReportColumn>& columns) {
  platform::Document document;
  platform::Node report = document.createElement("REPORT");
  report.setAttribute("TITLE", xmlText(title));
  report.setAttribute("TIME", fmt::format("{:%Y-%m-%d %H:%M}", fmt::localtime(std::time(nullptr))));
  for (const ReportColumn& column : columns) {
    platform::Node element = document.createElement("COLUMN");
    element.setAttribute("KEY", column.key);
    element.setAttribute("CAPTION", column.caption);
    report.appendChild(element);
  }
  document.setDocumentElement(report);
  return document;
}

void appendRecord(platform::Document& document, const std::vector<ReportColumn>& columns, const ReportRecord& record) {
  platform::Node row = document.createElement("RECORD");
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (record[i].empty() && columns[i].finishedHtml) continue;
    platform::Node field = document.createElement(columns[i].key);
    if (columns[i].finishedHtml) field.setAttribute("RAW", "no");
    field.setText(xmlText(record[i]));
    row.appendChild(field);
  }
  document.documentElement().appendChild(row);
}

} // namespace

void writeHtml(std::ostream& out, const std::string& title, const std::vector<ReportColumn>& columns,
               const std::string& styleSheet, RecordFile& records) {
  const platform::Stylesheet style(styleSheet.empty() ? platform::readText(productFolder() + "/" + kDefaultStyle)
                                                      : styleSheet);
  const std::string frame = style.apply(reportFrame(title, columns));
  const auto mark = frame.find(kRowsMark);
  if (mark == std::string::npos)
    throw platform::Error("the report's style sheet has no place for the rows (" + std::string(kRowsMark) + ")");
  out << std::string_view(frame).substr(0, mark);
  records.rewind();
  for (bool more = true; more;) {
    platform::Document batch;
    batch.setDocumentElement(batch.createElement("RECORDS"));
    std::size_t count = 0;
    while (count < kBatch) {
      const auto record = records.next();
      more = record.has_value();
      if (!more) break;
      appendRecord(batch, columns, *record);
      ++count;
    }
    if (count > 0) out << style.apply(batch);
  }
  out << std::string_view(frame).substr(mark + std::string_view(kRowsMark).size());
}

} // namespace orvane
