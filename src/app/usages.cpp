#include <iostream>

#include "app/reading.hpp"
#include "app/text_table.hpp"
#include "platform/runtime/text.hpp"

namespace app {

namespace {

const char* accessWord(std::uint32_t access) {
  switch (static_cast<cobol::Access>(access)) {
  case cobol::Access::write:
    return "write";
  case cobol::Access::both:
    return "both";
  default:
    return "read";
  }
}

} // namespace

void addUsages(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("usages", "Lists where a dataname is used.");
  auto program = std::make_shared<std::string>();
  auto name = std::make_shared<std::string>();
  auto json = std::make_shared<bool>(false);
  command->add_option("--program", *program, "Only programs whose name matches (default: all)")->type_name("GLOB");
  command->add_option("NAME", *name, "The dataname")->required();
  command->add_flag("--json", *json, "One JSON object a line");
  command->footer("Examples:\n  tarnsift usages ACCT-NO\n  tarnsift usages --program 'PAY*' WS-DATE --json");
  command->callback([=, &context] {
    const Reading reading(context);
    TextTable table({{"Program"}, {"Name"}, {"Used at"}, {"Access"}, {"Statement"}});
    bool known = false;
    reading.eachProgram(*program, [&](const orvane::ProgramFacts& facts, const orvane::StoreData& data) {
      for (const auto& construct : data.constructs) {
        if (!platform::equalsIgnoringCase(data.text(construct.name), *name)) continue;
        known = true;
        for (std::uint32_t i = 0; i < construct.usages; ++i) {
          const orvane::InstanceRecord& usage = data.instances[construct.firstInstance + i];
          if (*json) {
            Json object = {{"program", facts.name},
                           {"kvid", std::string(data.text(construct.kvid))},
                           {"name", std::string(data.text(construct.name))}};
            putPlace(object, data, usage.place);
            object["access"] = accessWord(usage.access);
            printJson(object);
          } else {
            table.row({facts.name, std::string(data.text(construct.kvid)), shortPlace(data, usage.place),
                       accessWord(usage.access), std::string(data.text(usage.verb))});
          }
        }
      }
    });
    if (!known) throw platform::Error("no program has a dataname " + platform::upper(*name));
    if (!*json) table.print(std::cout);
  });
}

} // namespace app
