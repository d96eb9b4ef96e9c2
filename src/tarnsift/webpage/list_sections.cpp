#include "platform/runtime/string_table.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/reports/status_text.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/store/program_database.hpp"
#include "tarnsift/webpage/page.hpp"
#include "tarnsift/webpage/program_walk.hpp"

namespace tarnsift {

namespace {

using platform::LoadResString;

// A name that its analysis does not know has no place: its row stands, so that the program's figures lead to it, with
// these cells empty.
void addPlace(PageLines& lines, AnalysisStore& store, const std::string& kvid, SitemintGenerator& generator) {
  Ref<StoreConstruct> construct;
  platform::ignoring([&] { construct = store.ObjectById(kvid); });
  if (!construct) {
    lines.line("<td></td>");
    lines.line("<td align=\"right\"></td>");
    lines.line("<td align=\"right\"></td>");
    return;
  }
  const std::string file = construct->FileName();
  const std::string link = platform::replaceAll(generator.FilePageLink(file), "\\", "/");
  lines.line("<td><a href=\"../" + link + "\">" + file + "</a></td>");
  lines.line("<td align=\"right\">" + std::to_string(construct->Line()) + "</td>");
  lines.line("<td align=\"right\">" + std::to_string(construct->Column()) + "</td>");
}

void addProgram(PageLines& lines, RepositoryObject& program, AnalysisStore& store, int list, std::string& lastName,
                SitemintGenerator& generator) {
  const std::string name = program.Attribute("Name").asText();
  const std::string& status = globals().StatusColumn;
  const auto rows =
      store.Database()->OpenRecordset(std::string("select * from Constructs ") + "where " + status +
                                      (list == 0 ? " is not null " : "=" + std::to_string(list)) + " order by Name");
  for (; !rows->Eof(); rows->MoveNext()) {
    lines.line("<tr>");
    if (name != lastName) {
      lines.line("<a id=\"" + name + ":" + std::to_string(list) + "\">");
      lastName = name;
    }
    lines.line("<td>" + program.DisplayName() + "</td>");
    lines.line("<td>" + rows->Field("Name").asText() + "</td>");
    if (list == 0) lines.line("<td>" + statusText(rows->Field(status)) + "</td>");
    lines.line("<td>" + NullToText(rows->Field(globals().ClassificationColumn)) + "</td>");
    addPlace(lines, store, rows->Field("KVID").asText(), generator);
    lines.line("</tr>");
  }
}

void writeHead(PageFile& page, int list) {
  page.line(kTableHead);
  page.line("<tr>");
  const auto cell = [&](int id) { page.line("<th>" + LoadResString(id) + "</th>"); };
  cell(539);
  cell(547);
  if (list == 0) cell(548);
  for (const int id : {549, 550, 551, 552})
    cell(id);
  page.line("</tr>");
}

} // namespace

void writeList(PageFile& page, int list, SitemintGenerator& generator) {
  writeHead(page, list);
  std::string lastName;
  PageLines lines;
  eachProgramStore(
      "Name",
      [&](RepositoryObject& program, AnalysisStore& store) {
        lines = {};
        std::string last = lastName;
        addProgram(lines, program, store, list, last, generator);
        lastName = last;
      },
      [&] { page.lines(lines.text()); });
  page.line("</table>");
}

} // namespace tarnsift
