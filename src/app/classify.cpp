#include <cstdio>
#include <iostream>

#include <fmt/format.h>
#include <unistd.h>

#include "app/name_choice.hpp"
#include "app/reading.hpp"
#include "app/text_table.hpp"
#include "platform/runtime/string_table.hpp"
#include "platform/runtime/text.hpp"

namespace app {

namespace {

using platform::MenuItem;

// The names of a program by the list that holds them; index 3: in no list.
std::array<std::vector<ChosenName>, 4> byList(const NameWork& work, const NameWork::Program& program) {
  std::array<std::vector<ChosenName>, 4> lists;
  for (const auto& name : program.chosen) {
    const int list = work.listOf(name.kvid);
    lists[static_cast<std::size_t>(list < 0 ? 3 : list)].push_back(name);
  }
  return lists;
}

std::vector<std::string> keysOf(const std::vector<ChosenName>& names) {
  std::vector<std::string> keys;
  for (const auto& name : names)
    keys.push_back(name.kvid);
  return keys;
}

void printDone(const char* what, std::size_t names, std::size_t programs) {
  fmt::print("{} {} name(s) in {} program(s)\n", what, names, programs);
}

void runMove(const Context& context, const NameChoice& choice, int target) {
  HeadlessSession session(context, "");
  NameWork work(session, choice);
  std::size_t moved = 0;
  for (const auto& program : work.programs()) {
    work.makeCurrent(program);
    const auto lists = byList(work, program);
    for (int list = 0; list < 4; ++list) {
      const auto& names = lists[static_cast<std::size_t>(list)];
      if (names.empty() || list == target) continue;
      if (list == 3) work.showInSynonyms(names, program);
      work.mark(list, keysOf(names));
      session.choose("mnuMoveTo", target);
      moved += names.size();
    }
  }
  session.close();
  printDone("moved", moved, work.programs().size());
}

// The one question, with the total; the component's own is then answered with yes.
void confirmDelete(std::size_t total, bool yes) {
  if (yes) return;
  if (::isatty(STDIN_FILENO) == 0)
    throw UsageError(fmt::format("delete would take {} name(s) out of their lists; say --yes", total));
  fmt::print(stderr, "You are about to delete {} dataname(s). Continue? [y/N] ", total);
  std::string answer;
  std::getline(std::cin, answer);
  if (!platform::lower(answer).starts_with("y")) throw platform::Error("nothing was deleted");
}

void runDelete(const Context& context, const NameChoice& choice, bool yes) {
  HeadlessSession session(context, "");
  NameWork work(session, choice);
  std::size_t total = 0;
  std::vector<const NameWork::Program*> held;
  for (const auto& program : work.programs()) {
    work.makeCurrent(program);
    const auto lists = byList(work, program);
    const std::size_t count = lists[0].size() + lists[1].size() + lists[2].size();
    if (count > 0) held.push_back(&program);
    total += count;
  }
  if (total > 0) confirmDelete(total, yes);
  for (const auto* program : held) {
    work.makeCurrent(*program);
    const auto lists = byList(work, *program);
    for (int list = 0; list < 3; ++list) {
      const auto& names = lists[static_cast<std::size_t>(list)];
      if (names.empty()) continue;
      work.mark(list, keysOf(names));
      session.answer(platform::Answer::Ok);
      session.choose("mnuDelete");
    }
  }
  session.close();
  printDone("deleted", total, held.size());
}

void runComment(const Context& context, const NameChoice& choice, const std::string& text) {
  HeadlessSession session(context, "");
  NameWork work(session, choice);
  std::size_t commented = 0;
  session.commentText = text;
  for (const auto& program : work.programs()) {
    work.makeCurrent(program);
    for (const auto& name : program.chosen) {
      int list = work.listOf(name.kvid);
      if (list < 0) {
        work.showInSynonyms({name}, program);
        list = 3;
      }
      work.mark(list, {name.kvid});
      session.choose("mnuComment");
      ++commented;
    }
  }
  session.close();
  printDone("commented", commented, work.programs().size());
}

void runSynonymsOf(const Context& context, const NameChoice& choice, bool json) {
  HeadlessSession session(context, "");
  NameWork work(session, choice);
  TextTable table({{"Program"}, {"Name"}, {"Relative"}, {"List"}, {"Comment"}});
  for (const auto& program : work.programs()) {
    work.makeCurrent(program);
    for (const auto& name : program.chosen) {
      // The view follows a selected entry; a name in no list is shown as one for as long as it takes.
      const int list = work.listOf(name.kvid);
      platform::ListView& entries = work.view(std::max(list, 0));
      if (list < 0) entries.ListItems.Add(name.kvid, name.name);
      entries.setSelectedItem(&entries.ListItems.Item(name.kvid));
      session.act([&] { entries.KeyUp.raise(platform::kKeyReturn, platform::kNoShift); });
      if (list < 0) entries.ListItems.Remove(name.kvid);
      const platform::ListView& synonyms = work.view(3);
      const std::size_t comment = synonyms.ColumnHeaders.IndexOf("Comment") - 1;
      for (std::size_t i = 1; i <= synonyms.ListItems.Count(); ++i) {
        const platform::ListItem& row = synonyms.ListItems.Item(i);
        const std::string status = row.SmallIcon > 0 ? statusWord(row.SmallIcon - 1) : "";
        if (json)
          printJson({{"program", program.facts.name},
                     {"of", name.kvid},
                     {"kvid", row.Key()},
                     {"name", row.Text},
                     {"status", status.empty() ? Json(nullptr) : Json(status)},
                     {"comment", row.SubItems(comment)}});
        else
          table.row({program.facts.name, name.kvid, row.Key(), status, row.SubItems(comment)});
      }
    }
  }
  session.close();
  if (!json) table.print(std::cout);
}

template<typename Run>
void addNameCommand(CLI::App& command, const std::shared_ptr<NameChoice>& choice, Run run) {
  choice->addTo(command);
  command.callback([choice, run] {
    choice->check();
    run();
  });
}

} // namespace

void addMove(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("move", "Puts datanames into a list, from another one or from none.");
  auto choice = std::make_shared<NameChoice>();
  auto to = std::make_shared<std::string>();
  command->add_option("--to", *to, "working, affected or clean")->required()->type_name("LIST");
  command->footer("Examples:\n  tarnsift move --to affected ACCT-NO WS-ACCT\n  tarnsift move --to clean --like "
                  "'FILLER-*' --program 'RPT*'");
  addNameCommand(*command, choice, [=, &context] { runMove(context, *choice, listNamed(*to)); });
}

void addDelete(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("delete", "Takes datanames out of their lists; their comments go too.");
  auto choice = std::make_shared<NameChoice>();
  auto yes = std::make_shared<bool>(false);
  command->add_flag("--yes", *yes, "Do not ask");
  command->footer("Example:\n  tarnsift delete --yes --like '*-OLD'");
  addNameCommand(*command, choice, [=, &context] { runDelete(context, *choice, *yes); });
}

void addComment(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("comment", "Gives datanames a comment.");
  auto choice = std::make_shared<NameChoice>();
  auto text = std::make_shared<std::string>();
  command->add_option("--text", *text, "The comment, stored unchanged")->required();
  command->footer("Example:\n  tarnsift comment ACCT-NO --program PAY --text 'key of the ledger'");
  addNameCommand(*command, choice, [=, &context] { runComment(context, *choice, *text); });
}

void addSynonymsOf(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("synonyms-of", "Shows the direct relatives of datanames and how each is related.");
  auto choice = std::make_shared<NameChoice>();
  auto json = std::make_shared<bool>(false);
  command->add_flag("--json", *json, "One JSON object a line");
  command->footer("Example:\n  tarnsift synonyms-of ACCT-NO --program PAY");
  addNameCommand(*command, choice, [=, &context] { runSynonymsOf(context, *choice, *json); });
}

} // namespace app
