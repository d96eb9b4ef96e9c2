#include <iostream>

#include <fmt/format.h>

#include "app/command_line.hpp"
#include "app/text_table.hpp"
#include "orvane/options_upgrade.hpp"

namespace app {

namespace {

const char* wordOf(orvane::OptionUpgrade::Outcome outcome) {
  using Outcome = orvane::OptionUpgrade::Outcome;
  switch (outcome) {
  case Outcome::upgraded:
    return "upgraded";
  case Outcome::completed:
    return "completed";
  case Outcome::current:
    return "up to date";
  case Outcome::missing:
    return "none, the defaults hold";
  case Outcome::left:
    return "left as it was";
  }
  return "";
}

} // namespace

void addUpgradeOptions(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("upgrade-options", "Brings the option documents of older projects up to date.");
  command->footer("Every project of the base folder is looked at; what was set stays set.\n"
                  "Example:\n  tarnsift upgrade-options");
  command->callback([&context] {
    const orvane::BaseFolder base = context.base();
    const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
    TextTable table({{"Project"}, {"Option document"}});
    std::size_t left = 0;
    for (const auto& result : orvane::upgradeOptions(base, repository)) {
      table.row({result.project, wordOf(result.outcome)});
      if (result.outcome != orvane::OptionUpgrade::Outcome::left) continue;
      fmt::print(stderr, "tarnsift: {}: left as it was: {}\n", result.project, result.reason);
      ++left;
    }
    table.print(std::cout);
    if (left > 0) throw platform::Error(fmt::format("{} project(s) were left as they were", left));
  });
}

} // namespace app
