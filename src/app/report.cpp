#include <iostream>

#include "app/headless_session.hpp"
#include "platform/runtime/wildcard.hpp"

namespace app {

namespace {

struct Choice {
  std::string kind, format = "html", file, program;
};

int reportIndex(const std::string& kind) {
  if (kind == "affected") return 1;
  if (kind == "possible") return 2;
  if (kind == "clean") return 3;
  return 5;
}

orvane::ReportFormat formatOf(const std::string& format) {
  if (format == "csv") return orvane::ReportFormat::csv;
  if (format == "json") return orvane::ReportFormat::json;
  return orvane::ReportFormat::html;
}

} // namespace

void addReport(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("report", "Writes a report: the datanames of the lists, or the affected code.");
  auto choice = std::make_shared<Choice>();
  command->add_option("KIND", choice->kind, "affected, possible (all three lists), clean, or code")
      ->required()
      ->check(CLI::IsMember({"affected", "possible", "clean", "code"}));
  command->add_option("--format", choice->format, "html, csv or json")->check(CLI::IsMember({"html", "csv", "json"}));
  command
      ->add_option("-o,--output", choice->file,
                   "File to write, - for stdout (default: html into the base folder's Output, others to stdout)")
      ->type_name("FILE");
  command->add_option("--program", choice->program, "Keep only records of programs whose name matches")
      ->type_name("GLOB");
  command->footer(
      "In CSV a text that begins with = + - or @ has an apostrophe in front, so that no table program computes it.\n"
      "Examples:\n  tarnsift report code -o affected.html\n  tarnsift report possible --format csv > names.csv");
  command->callback([choice, &context] {
    platform::like("", choice->program);
    HeadlessSession session(context, "");
    orvane::ReportSettings& settings = session.host().reports();
    const auto format = formatOf(choice->format);
    const bool toStdout = choice->file == "-" || (choice->file.empty() && format != orvane::ReportFormat::html);
    settings.targets = {{format, toStdout ? "/dev/stdout" : choice->file}};
    settings.programPattern = choice->program;
    session.report(reportIndex(choice->kind));
    session.close();
    if (!toStdout)
      for (const auto& file : settings.written)
        std::cout << file << "\n";
  });
}

} // namespace app
