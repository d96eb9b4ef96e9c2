#include <iostream>

#include <fmt/format.h>

#include "app/command_line.hpp"
#include "orvane/projects.hpp"
#include "orvane/sources.hpp"
#include "platform/runtime/text.hpp"

namespace app {

void addAdd(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("add", "Tells a project where its sources lie; makes the project when it is new.");
  struct Choice {
    std::vector<std::string> paths, copybooks;
    bool copy = false;
  };
  auto choice = std::make_shared<Choice>();
  command->add_option("PATH", choice->paths, "Folders or files of COBOL source")->check(CLI::ExistingPath);
  command->add_option("--copybooks", choice->copybooks, "Folders of copybooks, searched in this order")
      ->check(CLI::ExistingDirectory);
  command->add_flag("--copy", choice->copy,
                    "Copy the sources into the base folder instead of taking them where they lie");
  command->footer("Example:\n  tarnsift add --project accounts src/cobol --copybooks src/copy src/dclgen");
  command->callback([choice, &context] {
    if (choice->paths.empty() && choice->copybooks.empty()) throw UsageError("add needs a PATH or --copybooks");
    const orvane::BaseFolder base = context.base();
    const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
    const auto names = orvane::projectNames(*repository);
    const bool isNew =
        !context.projectOption.empty() && std::none_of(names.begin(), names.end(), [&](const auto& name) {
          return platform::equalsIgnoringCase(name, context.projectOption);
        });
    const std::string project =
        isNew ? orvane::createProject(base, *repository, context.projectOption)->Attribute("Name").asText()
              : projectOf(context, *repository);
    orvane::OptionDocument options(orvane::optionFile(base.projectFolder(project)));
    const auto found = orvane::addSources(base, *repository, repository->FindByName(orvane::kProjectType, project, 0),
                                          options, choice->paths, choice->copybooks,
                                          choice->copy ? orvane::TakeSources::copy : orvane::TakeSources::link);
    for (const auto& problem : found.problems)
      fmt::print(stderr, "tarnsift: {}\n", problem);
    fmt::print("project {}: {} new program(s), {} known; verify them with 'tarnsift verify'\n", project,
               found.added.size(), found.known);
  });
}

} // namespace app
