#include <iostream>

#include "app/effort.hpp"
#include "app/headless_session.hpp"
#include "platform/runtime/wildcard.hpp"

namespace app {

namespace {

struct Choice {
  std::string kind, format = "html", file, program;
};

// Entry of the report menu; the effort sheet is none.
int reportIndex(const std::string& kind) {
  if (kind == "affected") return 1;
  if (kind == "possible") return 2;
  if (kind == "clean") return 3;
  return kind == "code" ? 5 : 6;
}

orvane::ReportFormat formatOf(const std::string& format) {
  if (format == "csv") return orvane::ReportFormat::csv;
  if (format == "json") return orvane::ReportFormat::json;
  return format == "xlsx" ? orvane::ReportFormat::xlsx : orvane::ReportFormat::html;
}

// Pages and workbooks are files by themselves; the other formats go on to another program.
bool goesToStdout(const Choice& choice) {
  return choice.file == "-" || (choice.file.empty() && (choice.format == "csv" || choice.format == "json"));
}

void writeReport(const Context& context, const Choice& choice) {
  platform::like("", choice.program);
  const bool toStdout = goesToStdout(choice);
  const orvane::ReportSettings::Target target{formatOf(choice.format), toStdout ? "/dev/stdout" : choice.file};
  std::vector<std::string> written;
  if (choice.kind == "effort") {
    const auto settings = std::make_shared<orvane::ReportSettings>();
    settings->targets = {target};
    settings->programPattern = choice.program;
    writeEffort(context, settings);
    written = settings->written;
  } else {
    HeadlessSession session(context, "");
    orvane::ReportSettings& settings = session.host().reports();
    settings.targets = {target};
    settings.programPattern = choice.program;
    session.report(reportIndex(choice.kind));
    session.close();
    written = settings.written;
  }
  if (!toStdout)
    for (const auto& file : written)
      std::cout << file << "\n";
}

} // namespace

void addReport(CLI::App& app, Context& context) {
  auto* command =
      app.add_subcommand("report", "Writes a report: the datanames of the lists, the affected code, how much "
                                   "of each program the change touches.");
  auto choice = std::make_shared<Choice>();
  command
      ->add_option("KIND", choice->kind,
                   "affected, possible (all three lists), clean, code, metrics (shares by program), or effort (counts, "
                   "shares and change sizes by program)")
      ->required()
      ->check(CLI::IsMember({"affected", "possible", "clean", "code", "metrics", "effort"}));
  command->add_option("--format", choice->format, "html, csv, json or xlsx")
      ->check(CLI::IsMember({"html", "csv", "json", "xlsx"}));
  command
      ->add_option(
          "-o,--output", choice->file,
          "File to write, - for stdout (default: html and xlsx into the base folder's Output, others to stdout)")
      ->type_name("FILE");
  command->add_option("--program", choice->program, "Keep only records of programs whose name matches")
      ->type_name("GLOB");
  command->footer(
      "In CSV a text that begins with = + - or @ has an apostrophe in front, so that no table program computes it.\n"
      "Examples:\n  tarnsift report code -o affected.html\n  tarnsift report possible --format csv > names.csv\n"
      "  tarnsift report effort --format xlsx -o effort.xlsx");
  command->callback([choice, &context] { writeReport(context, *choice); });
}

} // namespace app
