#include <iostream>

#include "app/reading.hpp"
#include "app/text_table.hpp"
#include "cobol/analysis.hpp"
#include "platform/runtime/text.hpp"

namespace app {

namespace {

Json jsonOf(const std::string& program, const orvane::StoreData& data, const orvane::RelationRecord& relation) {
  const auto& from = data.constructs[relation.from];
  const auto& to = data.constructs[relation.to];
  Json sites = Json::array();
  for (std::uint32_t i = 0; i < relation.sites; ++i) {
    Json site = Json::object();
    putPlace(site, data, data.sites[relation.firstSite + i]);
    sites.push_back(std::move(site));
  }
  return {{"program", program},
          {"from", std::string(data.text(from.kvid))},
          {"to", std::string(data.text(to.kvid))},
          {"from_name", std::string(data.text(from.name))},
          {"to_name", std::string(data.text(to.name))},
          {"kind", std::string(cobol::relationKinds().at(relation.kind).name)},
          {"sites", std::move(sites)}};
}

} // namespace

void addRelations(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("relations", "Lists the relationships between datanames, or those of one.");
  auto program = std::make_shared<std::string>();
  auto name = std::make_shared<std::string>();
  auto json = std::make_shared<bool>(false);
  command->add_option("--program", *program, "Only programs whose name matches (default: all)")->type_name("GLOB");
  command->add_option("NAME", *name, "Only relationships of this dataname");
  command->add_flag("--json", *json, "One JSON object a line");
  command->footer("Examples:\n  tarnsift relations ACCT-NO\n  tarnsift relations --program CUSTUPD --json");
  command->callback([=, &context] {
    const Reading reading(context);
    TextTable table({{"Program"}, {"From"}, {"Kind"}, {"To"}, {"Sites", true}, {"First at"}});
    reading.eachProgram(*program, [&](const orvane::ProgramFacts& facts, const orvane::StoreData& data) {
      const auto wanted = [&](std::uint32_t end) {
        return name->empty() || platform::equalsIgnoringCase(data.text(data.constructs[end].name), *name);
      };
      for (const auto& relation : data.relations) {
        if (!wanted(relation.from) && !wanted(relation.to)) continue;
        if (*json) {
          printJson(jsonOf(facts.name, data, relation));
          continue;
        }
        table.row({facts.name, std::string(data.text(data.constructs[relation.from].name)),
                   std::string(cobol::relationKinds().at(relation.kind).name),
                   std::string(data.text(data.constructs[relation.to].name)), std::to_string(relation.sites),
                   relation.sites ? shortPlace(data, data.sites[relation.firstSite]) : ""});
      }
    });
    if (!*json) table.print(std::cout);
  });
}

} // namespace app
