#include <charconv>
#include <iostream>
#include <limits>

#include <fmt/format.h>

#include "app/headless_session.hpp"
#include "app/reading.hpp"
#include "app/text_table.hpp"
#include "orvane/projects.hpp"
#include "platform/runtime/text.hpp"

namespace app {

namespace {

struct Choice {
  std::string list, name, limits;
  bool json = false;
};

std::int32_t limitOf(const std::string& text) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || number < 0)
    throw UsageError(fmt::format("'{}' is no limit; --limits takes three numbers from 0 to {}, like 5,20,50", text,
                                 std::numeric_limits<std::int32_t>::max()));
  return number;
}

std::optional<tarnsift::SizeLimits> limitsOf(const std::string& text) {
  if (text.empty()) return std::nullopt;
  const auto parts = platform::splitAt(text, ',');
  if (parts.size() != 3) throw UsageError(fmt::format("--limits takes three numbers like 5,20,50, not '{}'", text));
  const tarnsift::SizeLimits limits{limitOf(parts[0]), limitOf(parts[1]), limitOf(parts[2])};
  if (limits.s > limits.m || limits.m > limits.l) throw UsageError(fmt::format("the limits {} do not ascend", text));
  return limits;
}

std::string nameOf(const std::string& text) {
  const std::string name(platform::trimmed(text));
  try {
    orvane::checkProjectName(name);
  } catch (const platform::Error& error) {
    throw UsageError(error.what());
  }
  return name;
}

void print(const std::string& project, const tarnsift::SizeLimits& limits,
           const std::map<std::string, std::int64_t>& programs, bool json) {
  TextTable table({{"Size"}, {"Below", true}, {"Programs", true}});
  for (const auto& [size, below] : {std::pair<std::string, std::optional<std::int32_t>>{"S", limits.s},
                                    {"M", limits.m},
                                    {"L", limits.l},
                                    {"XL", std::nullopt}}) {
    const auto found = programs.find(size);
    const std::int64_t count = found == programs.end() ? 0 : found->second;
    if (json)
      printJson(
          {{"project", project}, {"size", size}, {"below", below ? Json(*below) : Json(nullptr)}, {"programs", count}});
    else
      table.row({size, below ? std::to_string(*below) : "", std::to_string(count)});
  }
  if (!json) table.print(std::cout);
}

void run(const Context& context, const Choice& choice) {
  const int list = listNamed(choice.list);
  const auto given = limitsOf(choice.limits);
  const std::string name = nameOf(choice.name);
  HeadlessSession session(context, "");
  orvane::checkNameIsFree(session.host().repository(), name);
  const tarnsift::SizeLimits limits = session.derive(list, name, given);
  std::map<std::string, std::int64_t> programs;
  for (const ListCounts& program : session.counts())
    if (program.counts.at(static_cast<std::size_t>(list)) != 0)
      ++programs[session.host().repository().ObjectById(program.key)->Attribute("ChangeMagnitude").asText()];
  session.close();
  print(name, limits, programs, choice.json);
}

} // namespace

void addDerive(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("derive", "Makes a project of the programs with names in a list, and sizes them.");
  auto choice = std::make_shared<Choice>();
  command->add_option("--from", choice->list, "working, affected or clean")->required()->type_name("LIST");
  command->add_option("--name", choice->name, "Name of the new project")->required()->type_name("NAME");
  command
      ->add_option("--limits", choice->limits,
                   "A program with fewer names than S is S, else than M is M, else than L is L, else XL (default: "
                   "proposed from the counts)")
      ->type_name("S,M,L");
  command->add_flag("--json", choice->json, "One JSON object a line");
  command->footer("Examples:\n  tarnsift derive --from affected --name phase-1\n  tarnsift derive --from affected "
                  "--name phase-1 --limits 5,20,50");
  command->callback([choice, &context] { run(context, *choice); });
}

} // namespace app
