#include <algorithm>
#include <ctime>
#include <iostream>

#include <fmt/chrono.h>

#include "app/reading.hpp"
#include "app/text_table.hpp"
#include "orvane/carry_over.hpp"
#include "orvane/host.hpp"
#include "orvane/lock.hpp"
#include "platform/runtime/text.hpp"
#include "platform/runtime/wildcard.hpp"
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
          {"proposed", textOrNull(decision.proposed)},
          {"when", timeText(decision.since)}};
}

void listCarried(const Context& context, const std::string& program, bool json) {
  const Reading reading(context);
  TextTable table({{"Program"}, {"Name"}, {"List"}, {"Comment"}, {"Project"}, {"Since"}, {"Key"}, {"Proposed"}});
  for (const auto& facts : orvane::programsOf(reading.base, *reading.repository, reading.project, program)) {
    if (!facts.verified) continue;
    for (const auto& decision : orvane::archivedDecisions(tarnsift::DatabasePath(facts.analysisFile))) {
      if (json)
        printJson(jsonOf(facts.name, decision));
      else
        table.row({facts.name, decision.name, statusWord(decision.status), decision.comment, decision.project,
                   timeText(decision.since), decision.kvid, decision.proposed});
    }
  }
  if (json) return;
  if (table.empty())
    std::cout << "nothing was left behind\n";
  else
    table.print(std::cout);
}

/// Names by pattern, keys as they stand; no word chooses all.
bool isChosen(const std::vector<std::string>& words, const orvane::ArchivedDecision& decision) {
  if (words.empty()) return true;
  return std::any_of(words.begin(), words.end(), [&](const std::string& word) {
    return platform::equalsIgnoringCase(word, decision.kvid) ||
           platform::like(platform::upper(decision.name), platform::upper(word));
  });
}

void acceptCarried(const Context& context, const std::string& program, const std::vector<std::string>& words) {
  const Reading reading(context);
  const orvane::FolderLock baseLock(orvane::baseLockFile(reading.base), orvane::FolderLock::Mode::shared,
                                    "the base folder " + reading.base.path());
  const orvane::FolderLock projectLock(orvane::projectLockFile(reading.base, reading.project),
                                       orvane::FolderLock::Mode::exclusive, "project " + reading.project);
  const std::string stem = tarnsift::EscapeColumnName(reading.project);
  std::size_t taken = 0;
  std::size_t refused = 0;
  for (const auto& facts : orvane::programsOf(reading.base, *reading.repository, reading.project, program)) {
    if (!facts.verified) continue;
    const auto done =
        orvane::acceptProposals(tarnsift::DatabasePath(facts.analysisFile), stem,
                                [&](const orvane::ArchivedDecision& decision) { return isChosen(words, decision); });
    for (const auto& [decision, wasTaken] : done) {
      ++(wasTaken ? taken : refused);
      if (!wasTaken)
        fmt::print(stderr, "tarnsift: {}: {} was decided on its own; what was decided on {} stays in the archive\n",
                   facts.name, decision.proposed, decision.kvid);
    }
  }
  platform::dbEngine().settle();
  if (taken == 0 && refused > 0) throw platform::Error("nothing was accepted");
  if (taken == 0 && !words.empty()) throw platform::Error("no proposal of this project matches");
  fmt::print("accepted {} decision(s)\n", taken);
}

} // namespace

void addCarried(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand(
      "carried", "Lists the decisions that verification could not carry to a changed source: their names are gone.");
  auto program = std::make_shared<std::string>();
  auto json = std::make_shared<bool>(false);
  auto accepted = std::make_shared<std::vector<std::string>>();
  command->add_option("--program", *program, "Only programs whose name matches")->type_name("GLOB");
  auto* jsonFlag = command->add_flag("--json", *json, "One JSON object a line");
  auto* accept = command
                     ->add_option("--accept", *accepted,
                                  "Gives the decisions to the names proposed: all, or those of the names or keys given")
                     ->type_name("[PATTERN|KEY…]")
                     ->expected(0, -1)
                     ->excludes(jsonFlag);
  command->footer("They are kept and come back when their name does. Where a name seems to be renamed, the new one is\n"
                  "proposed; one that has a status or comment of its own keeps it.\n"
                  "Examples:\n  tarnsift carried\n  tarnsift carried --program 'CUST*' --json\n"
                  "  tarnsift carried --accept 'WS-*'");
  command->callback([=, &context] {
    if (accept->count() == 0) {
      listCarried(context, *program, *json);
      return;
    }
    std::erase(*accepted, std::string());
    acceptCarried(context, *program, *accepted);
  });
}

} // namespace app
