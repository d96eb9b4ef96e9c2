#include <iostream>

#include <fmt/format.h>

#include "app/headless_session.hpp"
#include "app/text_table.hpp"
#include "orvane/criteria/criterion.hpp"

namespace app {

namespace {

struct FilterChoice {
  std::string criterion, like, unlike, to, program;
};

std::string criterionOf(const FilterChoice& choice) {
  if (!choice.criterion.empty() && (!choice.like.empty() || !choice.unlike.empty()))
    throw UsageError("give a criterion or patterns, not both");
  if (!choice.criterion.empty()) return choice.criterion;
  if (choice.like.empty()) throw UsageError("give a criterion, or a pattern with --like");
  return orvane::nameOfPatterns(choice.like, choice.unlike);
}

// Wrong criteria are wrong usage: they are refused before the session opens.
void checkCriterion(const std::string& criterion) {
  try {
    orvane::criterionNamed(criterion);
  } catch (const platform::Error& error) {
    throw UsageError(error.what());
  }
}

} // namespace

void addFilter(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("filter", "Places the datanames that match in a list, or takes them out of all.");
  auto choice = std::make_shared<FilterChoice>();
  command->add_option("CRITERION", choice->criterion, "Criterion by name, e.g. 'Declaration:Usage COMP-3'");
  command->add_option("--like", choice->like, "Names that match")->type_name("PATTERN");
  command->add_option("--unlike", choice->unlike, "But not names that match this")->type_name("PATTERN");
  command->add_option("--to", choice->to, "working, affected, clean or delete")->required()->type_name("LIST");
  command->add_option("--program", choice->program, "Only programs whose name matches")->type_name("GLOB");
  std::string kinds;
  for (const auto& kind : orvane::criterionKinds())
    kinds += "\n  " + std::string(kind.example);
  command->footer("Criteria, by example:" + kinds +
                  "\nExamples:\n  tarnsift filter --like '*ACCT*' --unlike '*-OLD' --to working\n  tarnsift filter "
                  "Use:Unused --to delete");
  command->callback([choice, &context] {
    const int target = listNamed(choice->to, true);
    const std::string criterion = criterionOf(*choice);
    checkCriterion(criterion);
    HeadlessSession session(context, choice->program);
    const auto before = session.counts();
    const std::string said = session.filter(criterion, target);
    if (!said.empty()) std::cout << said << "\n";
    printChange(before, session.counts());
    session.close();
  });
}

void addSynonyms(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("synonyms", "Adds the direct relatives of all names of a list to a list.");
  struct Choice {
    std::string in, to, program;
  };
  auto choice = std::make_shared<Choice>();
  command->add_option("--in", choice->in, "The list to start from: working, affected or clean")
      ->required()
      ->type_name("LIST");
  command->add_option("--to", choice->to, "The list that receives")->required()->type_name("LIST");
  command->add_option("--program", choice->program, "Only programs whose name matches")->type_name("GLOB");
  command->footer("Example:\n  tarnsift synonyms --in affected --to working");
  command->callback([choice, &context] {
    const int from = listNamed(choice->in);
    const int to = listNamed(choice->to);
    HeadlessSession session(context, choice->program);
    const auto before = session.counts();
    session.findSynonyms(from, to);
    printChange(before, session.counts());
    session.close();
  });
}

} // namespace app
