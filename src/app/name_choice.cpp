#include "app/name_choice.hpp"

#include <fmt/format.h>

#include "platform/runtime/text.hpp"
#include "platform/runtime/wildcard.hpp"

namespace app {

using platform::ListItem;
using platform::ListView;

void NameChoice::addTo(CLI::App& command) {
  command.add_option("NAME", names, "Datanames; a name that has several declarations takes them all")->required();
  command.add_option("--program", program, "Only programs whose name matches")->type_name("GLOB");
  auto* byPattern =
      command.add_flag("--like", like, "NAME is a pattern: * any run, ? one character, # one digit, [..] a set");
  command.add_flag("--kvid", kvid, "NAME is a key as datanames --json shows it")->excludes(byPattern);
}

void NameChoice::check() const {
  if (!like) return;
  try {
    for (const auto& name : names)
      platform::like("", platform::upper(name));
  } catch (const platform::PatternError& error) {
    throw UsageError(error.what());
  }
}

std::vector<ChosenName> chosenIn(const NameChoice& choice, const orvane::StoreData& data) {
  const auto meant = [&](std::string_view kvid, std::string_view name) {
    return std::any_of(choice.names.begin(), choice.names.end(), [&](const std::string& wanted) {
      if (choice.kvid) return platform::equalsIgnoringCase(wanted, kvid);
      return choice.like ? platform::like(name, platform::upper(wanted)) : platform::equalsIgnoringCase(wanted, name);
    });
  };
  std::vector<ChosenName> chosen;
  for (const auto& record : data.constructs) {
    const auto kind = static_cast<cobol::Kind>(record.kind);
    // FILLER and slots are meant only by their key.
    const bool hidden = kind == cobol::Kind::filler || kind == cobol::Kind::callSlot || kind == cobol::Kind::fileSlot;
    if (hidden && !choice.kvid) continue;
    if (meant(data.text(record.kvid), data.text(record.name)))
      chosen.push_back({std::string(data.text(record.kvid)), std::string(data.text(record.name))});
  }
  return chosen;
}

NameWork::NameWork(HeadlessSession& session, const NameChoice& choice) : m_session(session) {
  orvane::Host& host = session.host();
  const std::string project = host.project()->Attribute("Name").asText();
  for (const auto& facts : orvane::programsOf(host.base(), host.repository(), project, choice.program)) {
    if (!facts.verified) continue;
    Program program{facts, chosenIn(choice, orvane::readStore(facts.analysisFile))};
    if (!program.chosen.empty()) m_programs.push_back(std::move(program));
  }
  if (m_programs.empty())
    throw platform::Error(fmt::format("no verified program has a dataname {}", platform::joined(choice.names, " or ")));
}

ListView& NameWork::view(int list) const {
  return m_session.window().get<ListView>("lvList", list);
}

void NameWork::makeCurrent(const Program& program) {
  auto& programs = m_session.window().get<ListView>("lvPrograms");
  programs.setSelectedItem(&programs.ListItems.Item(program.facts.id));
  m_session.act([&] { programs.KeyUp.raise(platform::kKeyReturn, platform::kNoShift); });
}

int NameWork::listOf(const std::string& kvid) const {
  for (int list = 0; list < 3; ++list)
    if (view(list).ListItems.find(kvid)) return list;
  return -1;
}

void NameWork::mark(int list, const std::vector<std::string>& kvids) {
  ListView& entries = view(list);
  entries.selectAll(false);
  entries.setSelectedItem(&entries.ListItems.Item(kvids.front()));
  m_session.act([&] {
    if (list < 3) m_session.window().get<platform::TabStrip>("tsLists").select(static_cast<std::size_t>(list) + 1);
    entries.SetFocus();
    if (list == 3) entries.KeyUp.raise(platform::kKeyReturn, platform::kNoShift);
  });
  for (const auto& kvid : kvids)
    entries.ListItems.Item(kvid).setSelected(true);
}

// What the comment column shows is what a move stores, so a stored comment must stand there.
void NameWork::showInSynonyms(const std::vector<ChosenName>& names, const Program& program) {
  const std::string project = m_session.host().project()->Attribute("Name").asText();
  const orvane::Decisions decisions = orvane::decisionsOf(program.facts, project);
  ListView& synonyms = view(3);
  const ListView::Batch batch(synonyms);
  synonyms.ListItems.Clear();
  const std::size_t comment = synonyms.ColumnHeaders.IndexOf("Comment") - 1;
  for (const auto& name : names) {
    ListItem& row = synonyms.ListItems.Add(name.kvid, name.name);
    if (const auto found = decisions.find(name.kvid); found != decisions.end())
      row.setSubItems(comment, found->second.comment);
  }
}

} // namespace app
