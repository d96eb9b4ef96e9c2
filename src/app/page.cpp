#include <iostream>

#include <fmt/format.h>

#include "app/command_line.hpp"
#include "app/progress_line.hpp"
#include "orvane/site/site.hpp"

namespace app {

namespace {

constexpr std::size_t kMostTold = 20;

template<typename Items, typename Text>
void tellSome(const Items& items, Text&& text) {
  for (std::size_t i = 0; i < std::min(items.size(), kMostTold); ++i)
    fmt::print(stderr, "tarnsift: {}\n", text(items[i]));
  if (items.size() > kMostTold) fmt::print(stderr, "tarnsift: and {} more, see the index\n", items.size() - kMostTold);
}

void writePages(const Context& context, const std::string& folder) {
  const orvane::BaseFolder base = context.base();
  std::string project;
  {
    const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
    project = projectOf(context, *repository);
  }
  platform::HeadlessScreen screen;
  ProgressLine progress;
  orvane::Host host(base, project, screen);
  const auto result = orvane::writeSite(
      host, folder.empty() ? orvane::defaultSiteFolder(base, project) : folder,
      [&](const std::string& text, std::size_t done, std::size_t total) { progress.show(text, done, total); });
  progress.clear();
  tellSome(result.leftOut, [](const auto& gone) { return gone.program + ": left out: " + gone.reason; });
  tellSome(result.changed, [](const std::string& path) { return path + ": has changed since its verification"; });
  fmt::print("{} programs, {} source pages\n{}\n", result.programs, result.sourcePages, result.index);
}

} // namespace

void addPage(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand(
      "page", "Writes a project as web pages: its sources with links, the metrics, and the datanames of the lists.");
  auto folder = std::make_shared<std::string>();
  command->add_option("-o,--output", *folder, "Folder for the pages (default: in the base folder's Output)")
      ->type_name("DIR");
  command->footer("Example:\n  tarnsift page --project accounts -o /var/www/accounts");
  command->callback([folder, &context] { writePages(context, *folder); });
}

} // namespace app
