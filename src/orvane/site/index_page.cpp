#include "orvane/site/index_page.hpp"

#include <fmt/format.h>

#include "orvane/site/html.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

constexpr const char* kListNames[] = {"Working", "Affected", "Clean"};

// A count that leads to the program's rows on the add-on's page.
std::string countCell(const SiteProgram& program, std::size_t list, const std::string& addOnPage) {
  if (program.lists[list] == 0) return "<td class=\"r\">0</td>";
  return fmt::format("<td class=\"r\"><a href=\"{}#{}:{}\">{}</a></td>", addOnPage, urlText(program.facts.name), list,
                     program.lists[list]);
}

void writePrograms(platform::WholeFile& out, const std::vector<SiteProgram>& programs, const SiteFiles& files,
                   const std::string& addOnPage) {
  out.write("<h2>Programs</h2>\n<div class=\"wide\"><table class=\"list\">\n<tr><th>Program</th><th>Type</th>");
  for (const char* name : kListNames)
    out.write(fmt::format("<th class=\"r\">{}</th>", name));
  out.write("<th class=\"r\">Datanames</th><th class=\"r\">Usages</th><th class=\"r\">Copybooks</th>"
            "<th class=\"r\">Lines</th><th>Source</th></tr>\n");
  for (const SiteProgram& program : programs) {
    const std::string page = files.at(program.file).page;
    out.write(fmt::format("<tr><td><a href=\"{}\">{}</a></td><td>{}</td>", page, htmlText(program.facts.name),
                          htmlText(program.type)));
    if (program.leftOut)
      out.write("<td colspan=\"7\" class=\"faint\">left out, see below</td>");
    else
      out.write(fmt::format("{}{}{}<td class=\"r\">{}</td><td class=\"r\">{}</td><td class=\"r\">{}</td>"
                            "<td class=\"r\">{}</td>",
                            countCell(program, 0, addOnPage), countCell(program, 1, addOnPage),
                            countCell(program, 2, addOnPage), program.datanames, program.usages,
                            program.facts.files > 0 ? program.facts.files - 1 : 0, program.facts.lines));
    out.write(fmt::format("<td class=\"path\">{}</td></tr>\n", htmlText(program.facts.source)));
  }
  out.write("</table></div>\n");
}

void writeCopybooks(platform::WholeFile& out, const SiteFiles& files) {
  std::vector<const SiteFile*> copybooks;
  for (int i = 0; i < static_cast<int>(files.size()); ++i)
    if (files.at(i).program < 0 && !files.at(i).copiedBy.empty()) copybooks.push_back(&files.at(i));
  if (copybooks.empty()) return;
  std::sort(copybooks.begin(), copybooks.end(), [](const SiteFile* a, const SiteFile* b) { return a->path < b->path; });
  out.write("<h2>Copybooks</h2>\n<div class=\"wide\"><table class=\"list\">\n<tr><th>Copybook</th>"
            "<th class=\"r\">Programs</th><th class=\"r\">Lines</th><th>Source</th></tr>\n");
  for (const SiteFile* file : copybooks)
    out.write(fmt::format("<tr><td><a href=\"{}\">{}</a></td><td class=\"r\">{}</td><td class=\"r\">{}</td>"
                          "<td class=\"path\">{}</td></tr>\n",
                          file->page, htmlText(file->path.substr(file->path.find_last_of("\\/") + 1)),
                          file->copiedBy.size(), file->lines, htmlText(file->path)));
  out.write("</table></div>\n");
}

void writeLeftOut(platform::WholeFile& out, const std::vector<SiteProgram>& programs, const SiteFiles& files) {
  if (std::none_of(programs.begin(), programs.end(), [](const SiteProgram& p) { return p.leftOut; })) return;
  out.write(
      "<h2>Left out</h2>\n<p class=\"warning\">These programs stand in no list of the metrics page; their sources "
      "are shown without links.</p>\n<ul>\n");
  for (const SiteProgram& program : programs)
    if (program.leftOut)
      out.write(fmt::format("<li><a href=\"{}\">{}</a>: {}</li>\n", files.at(program.file).page,
                            htmlText(program.facts.name), htmlText(program.facts.reason)));
  out.write("</ul>\n");
}

void writeChanged(platform::WholeFile& out, const SiteFiles& files) {
  std::string rows;
  for (int i = 0; i < static_cast<int>(files.size()); ++i)
    if (const SiteFile& file = files.at(i); file.changed)
      rows += fmt::format("<li><a href=\"{}\">{}</a></li>\n", file.page, htmlText(file.path));
  if (rows.empty()) return;
  out.write("<h2>Changed since the verification</h2>\n<p class=\"warning\">Places and figures are those of the older "
            "text. Verify the project and make the pages again.</p>\n<ul>\n" +
            rows + "</ul>\n");
}

} // namespace

void writeIndexPage(const std::string& folder, const std::string& project, const std::vector<SiteProgram>& programs,
                    const SiteFiles& files, const std::string& addOnPage) {
  platform::WholeFile out(folder + "/index.html");
  out.write(pageHead(project, "Decor.css"));
  out.write(pageHeading(project, project, "") + "\n");
  std::array<std::int64_t, 3> lists{};
  std::int64_t lines = 0;
  for (const SiteProgram& program : programs) {
    for (std::size_t list = 0; list < 3; ++list)
      lists[list] += program.lists[list];
    lines += program.facts.lines;
  }
  out.write(fmt::format("<p>{} programs, {} lines. Working {}, Affected {}, Clean {}: "
                        "<a href=\"{}\">metrics and datanames</a>.</p>\n",
                        programs.size(), lines, lists[0], lists[1], lists[2], addOnPage));
  writePrograms(out, programs, files, addOnPage);
  writeCopybooks(out, files);
  writeLeftOut(out, programs, files);
  writeChanged(out, files);
  out.write("</body>\n</html>\n");
  out.finish();
}

} // namespace orvane
