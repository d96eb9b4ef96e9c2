#include <iostream>

#include <fmt/format.h>

#include "app/headless_session.hpp"
#include "app/reading.hpp"
#include "app/text_table.hpp"
#include "orvane/columns.hpp"
#include "orvane/options.hpp"
#include "platform/runtime/text.hpp"

namespace app {

namespace {

void tick(platform::Node& columns, const std::vector<std::string>& names, const char* value) {
  for (const auto& name : names) {
    const int index = orvane::columnIndex(name);
    if (index < 0) {
      std::vector<std::string> known;
      for (const auto& column : orvane::analysisColumns())
        known.emplace_back(column.name);
      throw UsageError(fmt::format("there is no column '{}'; there are {}", name, platform::joined(known, ", ")));
    }
    columns
        .selectSingleNode("CASE[@NAME='" +
                          std::string(orvane::analysisColumns()[static_cast<std::size_t>(index)].name) + "']")
        .setAttribute("CHECKED", value);
  }
}

} // namespace

void addClear(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("clear", "Empties one list, or all three; the comments go too. Asks nothing.");
  struct Choice {
    std::string list, program;
  };
  auto choice = std::make_shared<Choice>();
  command->add_option("--list", choice->list, "working, affected or clean (default: all)")->type_name("LIST");
  command->add_option("--program", choice->program, "Only programs whose name matches")->type_name("GLOB");
  command->footer("Example:\n  tarnsift clear --list working");
  command->callback([choice, &context] {
    const int list = choice->list.empty() ? -1 : listNamed(choice->list);
    HeadlessSession session(context, choice->program);
    const auto before = session.counts();
    if (list < 0)
      session.choose("mnuEditClearAll");
    else
      session.choose("mnuEditClearList", list);
    printChange(before, session.counts());
    session.close();
  });
}

void addUnused(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("unused", "Takes the names of a list that are used nowhere out of it.");
  struct Choice {
    std::string list, program;
  };
  auto choice = std::make_shared<Choice>();
  command->add_option("--from", choice->list, "working, affected or clean")->required()->type_name("LIST");
  command->add_option("--program", choice->program, "Only programs whose name matches")->type_name("GLOB");
  command->footer("Example:\n  tarnsift unused --from working");
  command->callback([choice, &context] {
    const int list = listNamed(choice->list);
    HeadlessSession session(context, choice->program);
    const auto before = session.counts();
    session.choose("mnuFileRemoveUnused", list);
    printChange(before, session.counts());
    session.close();
  });
}

void addColumns(CLI::App& app, Context& context) {
  auto* command =
      app.add_subcommand("columns", "Lists the analysis columns that the lists can show, and chooses them.");
  struct Choice {
    std::vector<std::string> tick, untick;
    bool json = false;
  };
  auto choice = std::make_shared<Choice>();
  command->add_option("--tick", choice->tick, "Show these columns")->type_name("COLUMN");
  command->add_option("--untick", choice->untick, "Show these no more")->type_name("COLUMN");
  command->add_flag("--json", choice->json, "One JSON object a line");
  command->footer("Example:\n  tarnsift columns --tick Picture Size --untick Section");
  command->callback([choice, &context] {
    const Reading reading(context);
    const platform::Ref<orvane::OptionDocument> options(
        new orvane::OptionDocument(orvane::optionFile(reading.base.projectFolder(reading.project))));
    platform::Node columns = options->Document().selectSingleNode(
        "//CASE[@ID='Tarnsift']/LIST[@NAME='Languages']/CASE[@NAME='COBOL']/LIST[@NAME='Columns']");
    tick(columns, choice->tick, "true");
    tick(columns, choice->untick, "false");
    if (!choice->tick.empty() || !choice->untick.empty()) options->Save();
    TextTable table({{"Column"}, {"Type"}, {"Shown"}});
    for (platform::Node column = columns.firstChild(); column; column = column.nextSibling()) {
      const std::string name = column.getAttribute("NAME").asText();
      const int index = orvane::columnIndex(name);
      const bool integer = index >= 0 && orvane::analysisColumns()[static_cast<std::size_t>(index)].isInteger;
      const bool shown = column.getAttribute("CHECKED").asText() == "true";
      if (choice->json)
        printJson({{"column", name}, {"type", integer ? "Integer" : "String"}, {"shown", shown}});
      else
        table.row({name, integer ? "Integer" : "String", shown ? "yes" : ""});
    }
    if (!choice->json) table.print(std::cout);
  });
}

} // namespace app
