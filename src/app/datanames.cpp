#include <iostream>

#include "app/headless_session.hpp"
#include "app/reading.hpp"
#include "app/text_table.hpp"
#include "orvane/columns.hpp"
#include "orvane/program_store.hpp"
#include "platform/runtime/text.hpp"
#include "platform/runtime/wildcard.hpp"

namespace app {

namespace {

struct Choice {
  std::string program;
  std::string like;
  std::string status;
  bool json = false;
};

// any: in some list; none: in no list; "": all.
bool statusWanted(const Choice& choice, const std::optional<int>& status) {
  if (choice.status.empty()) return true;
  if (choice.status == "any") return status.has_value();
  if (choice.status == "none") return !status;
  return status == listNamed(choice.status);
}

Json numberOrNull(bool present, std::int64_t number) {
  return present ? Json(number) : Json(nullptr);
}
Json textOrNull(std::string_view text) {
  return text.empty() ? Json(nullptr) : Json(std::string(text));
}

Json jsonOf(const std::string& program, const orvane::StoreData& data, const orvane::ConstructRecord& record,
            const orvane::Decision& decision) {
  const bool stored = record.offset >= 0 && record.kind <= static_cast<std::uint8_t>(cobol::Kind::renames);
  Json object = {{"program", program},
                 {"kvid", std::string(data.text(record.kvid))},
                 {"name", std::string(data.text(record.name))},
                 {"kind", std::string(orvane::kindWord(record.kind))},
                 {"level", numberOrNull(record.level > 0, record.level)},
                 {"picture", textOrNull(data.text(record.picture))},
                 {"usage", textOrNull(data.text(record.usage))},
                 {"offset", numberOrNull(stored, record.offset)},
                 {"position", numberOrNull(stored, record.position)},
                 {"size", numberOrNull(stored, record.size)}};
  putPlace(object, data, record.declared);
  object["usages"] = record.usages;
  object["status"] = textOrNull(statusWord(decision.status));
  object["comment"] = textOrNull(decision.comment);
  return object;
}

void listProgram(const Choice& choice, const Reading& reading, const orvane::ProgramFacts& program,
                 const orvane::StoreData& data, TextTable& table) {
  const orvane::Decisions decisions = orvane::decisionsOf(program, reading.project);
  for (const auto& record : data.constructs) {
    if (!choice.like.empty() && !platform::like(data.text(record.name), choice.like)) continue;
    const auto found = decisions.find(std::string(data.text(record.kvid)));
    const orvane::Decision decision = found == decisions.end() ? orvane::Decision{} : found->second;
    if (!statusWanted(choice, decision.status)) continue;
    if (choice.json) {
      printJson(jsonOf(program.name, data, record, decision));
      continue;
    }
    const bool stored = record.offset >= 0 && record.kind <= static_cast<std::uint8_t>(cobol::Kind::renames);
    table.row({program.name, std::string(data.text(record.name)), record.level > 0 ? std::to_string(record.level) : "",
               std::string(data.text(record.picture)), std::string(data.text(record.usage)),
               stored ? std::to_string(record.position) : "", stored ? std::to_string(record.size) : "",
               std::to_string(record.usages), shortPlace(data, record.declared), statusWord(decision.status),
               decision.comment});
  }
}

} // namespace

void addDatanames(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("datanames", "Lists datanames with their declaration, list and comment.");
  auto choice = std::make_shared<Choice>();
  command->add_option("--program", choice->program, "Only programs whose name matches")->type_name("GLOB");
  command
      ->add_option("--like", choice->like, "Only names that match: * any run, ? one character, # one digit, [..] a set")
      ->type_name("PATTERN");
  command->add_option("--status", choice->status, "Only names of a list, of any, or of none")
      ->check(CLI::IsMember({"working", "affected", "clean", "any", "none"}));
  command->add_flag("--json", choice->json, "One JSON object a line");
  command->footer("Examples:\n  tarnsift datanames --like '*ACCT*'\n  tarnsift datanames --status affected --json");
  command->callback([choice, &context] {
    choice->like = platform::upper(choice->like);
    platform::like("", choice->like); // a broken pattern is refused before anything is printed
    const Reading reading(context);
    TextTable table({{"Program"},
                     {"Name"},
                     {"Level", true},
                     {"Picture"},
                     {"Usage"},
                     {"Position", true},
                     {"Size", true},
                     {"Usages", true},
                     {"Declared at"},
                     {"List"},
                     {"Comment"}});
    reading.eachProgram(choice->program, [&](const auto& program, const auto& data) {
      listProgram(*choice, reading, program, data, table);
    });
    if (!choice->json) table.print(std::cout);
  });
}

} // namespace app
