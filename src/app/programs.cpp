#include <iostream>

#include "app/reading.hpp"
#include "app/text_table.hpp"

namespace app {

namespace {

struct Row {
  orvane::ProgramFacts facts;
  std::array<std::int64_t, 3> lists{};
  std::int64_t datanames = 0;
  std::int64_t usages = 0;
};

Row rowOf(const orvane::ProgramFacts& facts, const std::string& project) {
  Row row{facts, {}, 0, 0};
  if (!facts.verified) return row;
  try {
    const orvane::StoreData data = orvane::readStore(facts.analysisFile);
    row.datanames = static_cast<std::int64_t>(data.constructs.size());
    for (const auto& construct : data.constructs)
      row.usages += construct.usages;
    row.lists = orvane::countsOf(facts, project);
  } catch (const platform::Error& error) {
    row.facts.verified = false;
    row.facts.reason = error.what();
  }
  return row;
}

Json jsonOf(const Row& row, const std::string& project) {
  return {{"program", row.facts.name},
          {"project", project},
          {"id", row.facts.id},
          {"verified", row.facts.verified},
          {"reason", row.facts.verified ? Json(nullptr) : Json(row.facts.reason)},
          {"working", row.lists[0]},
          {"affected", row.lists[1]},
          {"clean", row.lists[2]},
          {"size", row.facts.size.empty() ? Json(nullptr) : Json(row.facts.size)},
          {"datanames", row.datanames},
          {"usages", row.usages},
          {"files", row.facts.files},
          {"lines", row.facts.lines}};
}

} // namespace

void addPrograms(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("programs", "Lists the programs of a project with the counts of their lists.");
  auto json = std::make_shared<bool>(false);
  auto pattern = std::make_shared<std::string>();
  command->add_option("--program", *pattern, "Only programs whose name matches")->type_name("GLOB");
  command->add_flag("--json", *json, "One JSON object a line");
  command->footer("Examples:\n  tarnsift programs\n  tarnsift programs --json --program 'CUST*'");
  command->callback([json, pattern, &context] {
    const Reading reading(context);
    TextTable table({{"Program"},
                     {"Working", true},
                     {"Affected", true},
                     {"Clean", true},
                     {"Size"},
                     {"Datanames", true},
                     {"Usages", true},
                     {"Files", true},
                     {"Lines", true},
                     {"Not verified because"}});
    for (const auto& facts : orvane::programsOf(reading.base, *reading.repository, reading.project, *pattern)) {
      const Row row = rowOf(facts, reading.project);
      if (*json) {
        printJson(jsonOf(row, reading.project));
        continue;
      }
      table.row({facts.name, std::to_string(row.lists[0]), std::to_string(row.lists[1]), std::to_string(row.lists[2]),
                 facts.size, std::to_string(row.datanames), std::to_string(row.usages), std::to_string(facts.files),
                 std::to_string(facts.lines), row.facts.verified ? "" : row.facts.reason});
    }
    if (!*json) table.print(std::cout);
  });
}

} // namespace app
