#include <array>

#include "platform/runtime/string_table.hpp"
#include "tarnsift/reports/program_metrics.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/webpage/page.hpp"
#include "tarnsift/webpage/program_walk.hpp"

namespace tarnsift {

namespace {

using platform::LoadResString;

struct Figures {
  ProgramMetrics metrics;
  std::array<std::int32_t, 3> counts{}; ///< Working, Affected, Clean
};

// A status that is none of the three lists counts in the total only, like Null.
Figures figuresOf(AnalysisStore& store) {
  Figures figures;
  const std::string& status = globals().StatusColumn;
  const auto rows = store.Database()->OpenRecordset("select Count(*) as cnt, " + status + " " +
                                                    " from Constructs group by " + status);
  for (; !rows->Eof(); rows->MoveNext()) {
    const auto count = static_cast<std::int32_t>(rows->Field("cnt").asInteger());
    figures.metrics.declarations += count;
    const Value list = rows->Field(status);
    if (!list.isNull() && list.asInteger() >= kWorking && list.asInteger() <= kRejected)
      figures.counts[static_cast<std::size_t>(list.asInteger())] = count;
  }
  figures.metrics.affected = figures.counts[kAccepted];
  figures.metrics.affectedUsages = usagesOfAffected(store, status);
  figures.metrics.usages = static_cast<std::int32_t>(store.SelectByKind("", "VAR")->Count());
  return figures;
}

std::string numberCell(const std::string& text) {
  return "<td align=\"right\">" + text + "</td>";
}

// A list without names of the program has no row to link to.
std::string linkCell(const std::string& program, std::int32_t count, int list) {
  if (count == 0) return numberCell("0");
  return numberCell("<a href=\"#" + program + ":" + std::to_string(list) + "\">" + std::to_string(count) + "</a>");
}

void addRow(PageLines& lines, RepositoryObject& program, const Figures& figures) {
  const std::string name = program.Attribute("Name").asText();
  lines.line("<tr>");
  lines.line("<td>" + program.DisplayName() + "</td>");
  lines.line(numberCell(std::to_string(figures.metrics.declarations)));
  lines.line(linkCell(name, figures.counts[kAccepted], kAccepted));
  lines.line(numberCell(shareText(figures.metrics.declarationShare())));
  lines.line(numberCell(shareText(figures.metrics.usageShare())));
  lines.line(linkCell(name, figures.counts[kWorking], kWorking));
  lines.line(linkCell(name, figures.counts[kRejected], kRejected));
  lines.line("</tr>");
}

void writeHead(PageFile& page) {
  page.line(kTableHead);
  page.line("<tr>");
  page.line("<th rowspan=\"2\">" + LoadResString(539) + "</th>");
  page.line("<th rowspan=\"2\">" + LoadResString(540) + "</th>");
  page.line("<th colspan=\"3\">" + LoadResString(541) + "</th>");
  page.line("<th rowspan=\"2\">" + LoadResString(542) + "</th>");
  page.line("<th rowspan=\"2\">" + LoadResString(543) + "</th>");
  page.line("</tr>");
  page.line("<tr>");
  page.line("<th>" + LoadResString(544) + "</th>");
  page.line("<th>" + LoadResString(545) + "</th>");
  page.line("<th>" + LoadResString(546) + "</th>");
  page.line("</tr>");
}

} // namespace

void writeMetrics(PageFile& page) {
  writeHead(page);
  PageLines lines;
  eachProgramStore(
      "NAME",
      [&](RepositoryObject& program, AnalysisStore& store) {
        lines = {};
        UpgradeProgramDatabase(*store.Database(), program.Id());
        addRow(lines, program, figuresOf(store));
      },
      [&] { page.lines(lines.text()); });
  page.line("</table>");
}

} // namespace tarnsift
