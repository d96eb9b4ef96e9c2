#include <iostream>

#include "app/command_line.hpp"

namespace app {

void addInit(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("init", "Makes a base folder: the place for projects, analyses and reports.");
  auto folder = std::make_shared<std::string>();
  command->add_option("DIR", *folder, "Where (default: the current folder)");
  command->footer("Example:\n  tarnsift init ~/bank");
  command->callback([folder, &context] {
    const std::string where = !folder->empty() ? *folder : !context.baseOption.empty() ? context.baseOption : ".";
    std::cout << "base folder " << orvane::BaseFolder::create(where).path() << "\n";
  });
}

} // namespace app
