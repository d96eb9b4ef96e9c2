#include <ctime>
#include <iostream>

#include <fmt/chrono.h>

#include "app/reading.hpp"
#include "app/text_table.hpp"
#include "orvane/carry_over.hpp"
#include "tarnsift/store/program_database.hpp"

namespace app {

namespace {

constexpr std::int64_t kMicroseconds = 1000000;

// Universal time, to the second.
std::string timeText(std::int64_t microseconds) {
  return fmt::format("{:%Y-%m-%dT%H:%M:%SZ}", fmt::gmtime(static_cast<std::time_t>(microseconds / kMicroseconds)));
}

Json textOrNull(const std::string& text) {
  return text.empty() ? Json(nullptr) : Json(text);
}

Json jsonOf(const std::string& program, const orvane::ArchivedDecision& decision) {
  return {{"program", program},
          {"kvid", decision.kvid},
          {"name", decision.name},
          {"project", textOrNull(decision.project)},
          {"status", textOrNull(statusWord(decision.status))},
          {"comment", textOrNull(decision.comment)},
          {"when", timeText(decision.since)}};
}

} // namespace

void addCarried(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand(
      "carried", "Lists the decisions that verification could not carry to a changed source: their names are gone.");
  auto program = std::make_shared<std::string>();
  auto json = std::make_shared<bool>(false);
  command->add_option("--program", *program, "Only programs whose name matches")->type_name("GLOB");
  command->add_flag("--json", *json, "One JSON object a line");
  command->footer("They are kept and come back when their name does.\n"
                  "Examples:\n  tarnsift carried\n  tarnsift carried --program 'CUST*' --json");
  command->callback([=, &context] {
    const Reading reading(context);
    TextTable table({{"Program"}, {"Name"}, {"List"}, {"Comment"}, {"Project"}, {"Since"}, {"Key"}});
    for (const auto& facts : orvane::programsOf(reading.base, *reading.repository, reading.project, *program)) {
      if (!facts.verified) continue;
      for (const auto& decision : orvane::archivedDecisions(tarnsift::DatabasePath(facts.analysisFile))) {
        if (*json)
          printJson(jsonOf(facts.name, decision));
        else
          table.row({facts.name, decision.name, statusWord(decision.status), decision.comment, decision.project,
                     timeText(decision.since), decision.kvid});
      }
    }
    if (*json) return;
    if (table.empty())
      std::cout << "nothing was left behind\n";
    else
      table.print(std::cout);
  });
}

} // namespace app
