#include <ctime>

#include <fmt/chrono.h>
#include <fmt/format.h>

#include "orvane/product.hpp"
#include "orvane/report_file.hpp"
#include "orvane/report_picture.hpp"
#include "orvane/report_texts.hpp"
#include "orvane/report_totals.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "platform/xml/xml.hpp"

namespace orvane {

namespace {

constexpr const char* kDefaultStyle = "Report.xsl";
constexpr const char* kRowsMark = "<!--rows-->";
constexpr std::size_t kBatch = 400;

const char* kindName(FieldKind kind) {
  return kind == FieldKind::number || kind == FieldKind::percent ? "number" : "text";
}

void appendCell(platform::Document& document, platform::Node& row, FieldKind kind, const std::string& text) {
  platform::Node cell = document.createElement("CELL");
  cell.setAttribute("KIND", kindName(kind));
  cell.setText(xmlText(text));
  row.appendChild(cell);
}

std::string figure(FieldKind kind, const platform::Value& value) {
  return kind == FieldKind::percent && !value.isNull() ? fmt::format("{:.1f}%", value.asDouble()) : value.asText();
}

// A row for the foot of the table, and a table of its own with a row a group.
void appendTotals(platform::Document& document, platform::Node& report, const std::vector<ReportColumn>& columns,
                  RecordFile& records) {
  const ReportTotals totals = totalsOf(columns, records);
  platform::Node foot = document.createElement("TOTAL");
  for (std::size_t i = 0, next = 0; i < columns.size(); ++i) {
    const bool summed = next < totals.columns.size() && totals.columns[next] == i;
    appendCell(document, foot, columns[i].kind,
               summed   ? figure(columns[i].kind, totals.total.values[next++])
               : i == 0 ? ownText("total")
                        : "");
  }
  report.appendChild(foot);
  platform::Node summary = document.createElement("SUMMARY");
  const std::string& group = columns[totals.groupColumn].caption;
  summary.setAttribute("CAPTION", ownText("totals"));
  platform::Node heads = document.createElement("HEADS");
  appendCell(document, heads, FieldKind::text, group);
  appendCell(document, heads, FieldKind::number, ownText("programs"));
  for (const std::size_t i : totals.columns)
    appendCell(document, heads, columns[i].kind, columns[i].caption);
  summary.appendChild(heads);
  const auto append = [&](const std::string& name, const ReportTotals::Row& row) {
    platform::Node line = document.createElement("ROW");
    appendCell(document, line, FieldKind::text, name);
    appendCell(document, line, FieldKind::number, std::to_string(row.programs));
    for (std::size_t i = 0; i < totals.columns.size(); ++i)
      appendCell(document, line, FieldKind::number, figure(columns[totals.columns[i]].kind, row.values[i]));
    summary.appendChild(line);
  };
  for (const ReportTotals::Row& row : totals.rows)
    append(row.group.empty() ? ownText("none") : row.group, row);
  append(ownText("total"), totals.total);
  report.appendChild(summary);
}

platform::Document reportFrame(const std::string& title, const std::vector<ReportColumn>& columns,
                               RecordFile& records) {
  platform::Document document;
  platform::Node report = document.createElement("REPORT");
  report.setAttribute("TITLE", xmlText(title));
  report.setAttribute("TIME", fmt::format("{:%Y-%m-%d %H:%M}", fmt::localtime(std::time(nullptr))));
  for (const ReportColumn& column : columns) {
    platform::Node element = document.createElement("COLUMN");
    element.setAttribute("KEY", column.key);
    element.setAttribute("CAPTION", column.caption);
    element.setAttribute("KIND", kindName(column.kind));
    report.appendChild(element);
  }
  if (const platform::Node picture = reportPicture(document, columns, records)) {
    platform::Node place = document.createElement("PICTURE");
    place.appendChild(picture);
    report.appendChild(place);
  }
  if (hasTotals(columns)) appendTotals(document, report, columns, records);
  document.setDocumentElement(report);
  return document;
}

void appendRecord(platform::Document& document, const std::vector<ReportColumn>& columns, const ReportRecord& record) {
  platform::Node row = document.createElement("RECORD");
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (record[i].empty() && columns[i].finishedHtml) continue;
    platform::Node field = document.createElement(columns[i].key);
    if (columns[i].finishedHtml) field.setAttribute("RAW", "no");
    if (columns[i].kind != FieldKind::text) field.setAttribute("KIND", kindName(columns[i].kind));
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
  const std::string frame = style.apply(reportFrame(title, columns, records));
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
