#include <filesystem>
#include <iostream>
#include <set>

#include <fmt/format.h>

#include "app/headless_session.hpp"
#include "app/text_table.hpp"
#include "app/verifying.hpp"
#include "app/widening.hpp"
#include "orvane/criteria/criterion.hpp"
#include "orvane/program_facts.hpp"
#include "orvane/projects.hpp"
#include "orvane/sources.hpp"
#include "platform/runtime/formats.hpp"
#include "platform/runtime/wildcard.hpp"
#include "tarnsift/reports/change_size.hpp"
#include "tarnsift/store/program_database.hpp"

namespace app {

namespace {

constexpr int kAffected = 1;
constexpr int kAffectedCode = 5;
constexpr const char* kOwnBase = "tarnsift-base"; // made where the command runs when there is no base folder

constexpr std::size_t kOriginsShown = 2;

struct Choice {
  std::vector<std::string> sources, copybooks;
  std::string like, unlike, depth = "all", report;
  int jobs = 0;
  bool withinPrograms = false;
};

// Rounds of the synonym search; nothing for "all".
std::optional<int> roundsOf(const std::string& depth) {
  if (depth == "all") return std::nullopt;
  try {
    const std::int64_t rounds = platform::Value(depth).asInteger();
    if (rounds >= 0 && rounds <= 1000000) return static_cast<int>(rounds);
  } catch (const platform::Error&) {
    // told below
  }
  throw UsageError(fmt::format("--depth takes a number of rounds or all, not '{}'", depth));
}

orvane::BaseFolder baseFor(const Context& context) {
  if (!context.baseOption.empty()) return orvane::BaseFolder::create(context.baseOption);
  if (const auto found = orvane::BaseFolder::nearest(".")) return orvane::BaseFolder::open(*found);
  return orvane::BaseFolder::create(kOwnBase);
}

// Without a name the project is called after the first source.
std::string projectFor(const Context& context, const Choice& choice, const orvane::BaseFolder& base,
                       orvane::RepositoryFile& repository) {
  std::string name = context.projectOption;
  if (name.empty()) {
    namespace fs = std::filesystem;
    fs::path first = fs::weakly_canonical(choice.sources.front());
    if (fs::is_regular_file(first)) first = first.parent_path();
    name = first.filename().string();
    std::erase_if(name, [](char c) { return c == '\'' || c == '"'; }); // no project has quotes
  }
  for (const auto& known : orvane::projectNames(repository))
    if (platform::equalsIgnoringCase(known, name)) return known;
  return orvane::createProject(base, repository, name)->Attribute("Name").asText();
}

struct Reach {
  std::string program;
  std::int64_t datanames = 0, affected = 0, affectedUsages = 0, usages = 0;
  bool byNames = false;
  std::set<std::string> origins; ///< calls and files that it was reached by, as comments tell them
  float share() const {
    return usages == 0 ? 0 : static_cast<float>(static_cast<double>(affectedUsages) / static_cast<double>(usages));
  }
};

Reach reachOf(const orvane::ProgramFacts& facts, const std::string& project) {
  Reach reach;
  reach.program = facts.name;
  const orvane::StoreData data = orvane::readStore(facts.analysisFile);
  reach.datanames = static_cast<std::int64_t>(data.constructs.size());
  for (const auto& construct : data.constructs)
    reach.usages += construct.usages;
  for (const auto& [kvid, decision] : orvane::decisionsOf(facts, project)) {
    if (decision.status != kAffected) continue;
    ++reach.affected;
    reach.byNames = reach.byNames || decision.comment.find("Names:") != std::string::npos;
    if (std::string origin = orvane::originIn(decision.comment); !origin.empty())
      reach.origins.insert(std::move(origin));
    if (const int construct = data.find(kvid); construct >= 0)
      reach.affectedUsages += data.constructs[static_cast<std::size_t>(construct)].usages;
  }
  return reach;
}

// How a program was reached: by names of its own, else over calls and files from other programs.
std::string reachedBy(const Reach& reach) {
  if (reach.byNames) return "names";
  std::string text;
  std::size_t count = 0;
  for (const std::string& origin : reach.origins) {
    if (origin.ends_with(" " + reach.program) || ++count > kOriginsShown) continue;
    text += (text.empty() ? "" : ", ") + origin;
  }
  return count > kOriginsShown ? fmt::format("{} and {} more", text, count - kOriginsShown) : text;
}

void printReach(const std::vector<Reach>& all) {
  std::vector<std::int64_t> counts;
  for (const Reach& reach : all)
    counts.push_back(reach.affected);
  const tarnsift::SizeLimits limits = tarnsift::proposeSizeLimits(counts);
  TextTable table({{"Program"},
                   {"Datanames", true},
                   {"Affected", true},
                   {"Affected usages", true},
                   {"Usages(%)", true},
                   {"Size"},
                   {"Reached by"}});
  Reach total;
  std::size_t reached = 0;
  for (const Reach& reach : all) {
    total.datanames += reach.datanames;
    total.affected += reach.affected;
    total.affectedUsages += reach.affectedUsages;
    total.usages += reach.usages;
    if (reach.affected == 0) continue;
    ++reached;
    table.row({reach.program, std::to_string(reach.datanames), std::to_string(reach.affected),
               std::to_string(reach.affectedUsages), platform::formatPercent(reach.share()),
               std::string(tarnsift::changeSize(reach.affected, limits)), reachedBy(reach)});
  }
  table.row({fmt::format("{} of {} programs", reached, all.size()), std::to_string(total.datanames),
             std::to_string(total.affected), std::to_string(total.affectedUsages),
             platform::formatPercent(total.share()), "", ""});
  table.print(std::cout, 1);
}

void runImpact(const Context& context, const Choice& choice) {
  const auto rounds = roundsOf(choice.depth);
  const std::string criterion = orvane::nameOfPatterns(choice.like, choice.unlike);
  orvane::criterionNamed(criterion);
  const orvane::BaseFolder base = baseFor(context);
  std::string project;
  {
    platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
    project = projectFor(context, choice, base, *repository);
    orvane::OptionDocument options(orvane::optionFile(base.projectFolder(project)));
    const auto found = orvane::addSources(base, *repository, repository->FindByName(orvane::kProjectType, project, 0),
                                          options, choice.sources, choice.copybooks);
    for (const auto& problem : found.problems)
      fmt::print(stderr, "tarnsift: {}\n", problem);
    verifyAndTell(base, *repository, project, choice.jobs, false);
  }
  HeadlessSession session(base, project, "*");
  session.filter(criterion, kAffected);
  const int done =
      Widening(session, project, criterion, choice.withinPrograms ? Borders::closed : Borders::open).run(rounds);
  session.host().reports().targets = {{orvane::ReportFormat::html, choice.report}};
  session.report(kAffectedCode);
  const std::string report = session.host().reports().written.back();
  session.close();

  const platform::Ref<orvane::RepositoryFile> repository(new orvane::RepositoryFile(base.repositoryFile()));
  std::vector<Reach> all;
  for (const auto& facts : orvane::programsOf(base, *repository, project, ""))
    if (facts.verified) all.push_back(reachOf(facts, project));
  printReach(all);
  fmt::print("names like {}{}, widened by {} round(s) of synonyms\nreport: {}\n", choice.like,
             choice.unlike.empty() ? "" : " but not " + choice.unlike, done, report);
}

} // namespace

void addImpact(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand(
      "impact", "The whole job in one step: reads the sources, places the names that match in Affected, widens "
                "them by synonyms, and over calls and files into other programs, until nothing "
                "changes, and writes the affected code report.");
  auto choice = std::make_shared<Choice>();
  command->add_option("SOURCE", choice->sources, "Folders or files of COBOL source")
      ->required()
      ->check(CLI::ExistingPath);
  command
      ->add_option("--like", choice->like, "Names to start from: * any run, ? one character, # one digit, [..] a set")
      ->required()
      ->type_name("PATTERN");
  command->add_option("--unlike", choice->unlike, "But not names that match this")->type_name("PATTERN");
  command->add_option("--depth", choice->depth, "Rounds of the synonym search, or all")->type_name("N|all");
  command->add_flag("--within-programs", choice->withinPrograms,
                    "Stop at calls and files instead of going on in the other programs");
  command->add_option("--copybooks", choice->copybooks, "Folders of copybooks, searched in this order")
      ->check(CLI::ExistingDirectory);
  command->add_option("--jobs", choice->jobs, "Programs analysed at a time (default: one a core)")
      ->check(CLI::Range(1, 256));
  command->add_option("-o,--output", choice->report, "The report (default: in the base folder's Output)")
      ->type_name("REPORT.html");
  command->footer(
      "The base folder is the one named, else the nearest one above, else tarnsift-base here; project and analyses are "
      "reused.\n"
      "Example:\n  tarnsift impact src/cobol --copybooks src/copy --like '*ACCT*' --unlike '*-OLD' -o affected.html");
  command->callback([choice, &context] { runImpact(context, *choice); });
}

} // namespace app
