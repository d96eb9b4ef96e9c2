#include <iostream>

#include <fmt/format.h>

#include "app/command_line.hpp"
#include "app/progress_line.hpp"
#include "app/verifying.hpp"
#include "orvane/options.hpp"

namespace app {

namespace {

constexpr std::size_t kFailuresShown = 20;

void setOptions(const orvane::BaseFolder& base, const std::string& project, const std::vector<std::string>& settings) {
  if (settings.empty()) return;
  orvane::OptionDocument options(orvane::optionFile(base.projectFolder(project)));
  platform::Document document = options.Document();
  for (const auto& setting : settings) {
    const auto equals = setting.find('=');
    if (equals == std::string::npos) throw UsageError(fmt::format("--set takes key=value, not '{}'", setting));
    try {
      orvane::setAnalyserOption(document, setting.substr(0, equals), setting.substr(equals + 1));
    } catch (const platform::Error& error) {
      throw UsageError(error.what());
    }
  }
  options.Save();
}

} // namespace

orvane::VerifyResult verifyAndTell(const orvane::BaseFolder& base, orvane::RepositoryFile& repository,
                                   const std::string& project, int jobs, bool force) {
  orvane::VerifyResult result;
  {
    ProgressLine progress;
    orvane::VerifySettings settings;
    settings.jobs = static_cast<unsigned>(jobs);
    settings.force = force;
    settings.progress = [&](const orvane::VerifyProgress& step) {
      progress.show("verifying " + step.program, step.done, step.total);
    };
    result = orvane::verifyProject(base, repository, project, settings);
  }
  for (const auto& problem : result.problems)
    fmt::print(stderr, "tarnsift: {}\n", problem);
  std::size_t shown = 0;
  for (const auto& failure : result.failed) {
    if (++shown > kFailuresShown) break;
    fmt::print(stderr, "tarnsift: {}: not verified: {}\n", failure.program, failure.reason);
  }
  if (result.failed.size() > kFailuresShown)
    fmt::print(stderr, "tarnsift: and {} more; 'tarnsift programs' lists them\n",
               result.failed.size() - kFailuresShown);
  fmt::print("verified {}, unchanged {}, not verified {}; {} lines, {} datanames, {} relationships\n", result.written,
             result.unchanged, result.failed.size(), result.lines, result.constructs, result.relationships);
  if (!result.missingCopybooks.empty()) {
    std::string names;
    for (const auto& [name, uses] : result.missingCopybooks)
      names += (names.empty() ? "" : " ") + name;
    fmt::print("copybooks not found: {}\n", names);
  }
  if (!result.diagnostics.empty()) {
    std::string counts;
    for (const auto& [code, count] : result.diagnostics)
      counts += fmt::format("{}{} {}", counts.empty() ? "" : ", ", code, count);
    fmt::print("warnings and errors: {}; 'tarnsift diagnostics' lists them\n", counts);
  }
  if (result.decisions != orvane::CarryCounts())
    fmt::print("decisions carried {}, moved {}, archived {}, restored {}{}\n", result.decisions.carried,
               result.decisions.moved, result.decisions.archived, result.decisions.restored,
               result.decisions.archived > 0 ? "; 'tarnsift carried' lists what has no place" : "");
  return result;
}

void addVerify(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("verify", "Analyses the programs of a project that are new or changed.");
  struct Choice {
    int jobs = 0;
    bool force = false;
    std::vector<std::string> settings;
    std::string dialect;
  };
  auto choice = std::make_shared<Choice>();
  command->add_option("--jobs", choice->jobs, "Programs analysed at a time (default: one a core)")
      ->check(CLI::Range(1, 256));
  command->add_flag("--force", choice->force, "Analyse unchanged programs as well");
  command->add_option("--set", choice->settings, "Sets an option of the analyser for this project, e.g. dialect=gnu")
      ->type_name("KEY=VALUE");
  command->add_option("--dialect", choice->dialect, "Short for --set dialect=…")
      ->check(CLI::IsMember({"ibm", "gnu", "mf"}));
  command->footer(
      "Programs that cannot be analysed stay out with the reason; the exit status is 1 only when none is verified.\n"
      "Examples:\n  tarnsift verify\n  tarnsift verify --project accounts --jobs 4 --set format=free");
  command->callback([choice, &context] {
    const orvane::BaseFolder base = context.base();
    const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
    const std::string project = projectOf(context, *repository);
    if (!choice->dialect.empty()) choice->settings.push_back("dialect=" + choice->dialect);
    setOptions(base, project, choice->settings);
    const auto result = verifyAndTell(base, *repository, project, choice->jobs, choice->force);
    if (result.written + result.unchanged == 0) throw platform::Error("no program is verified in project " + project);
  });
}

} // namespace app
