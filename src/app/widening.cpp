#include "app/widening.hpp"

#include <fmt/format.h>

namespace app {

namespace {

constexpr int kAffected = 1;

} // namespace

// What the filter is told here holds for the names that cross a border; it must neither empty the list that they join
// nor take what the analyst sorted elsewhere, nor be offered as the next search.
Widening::Widening(HeadlessSession& session, const std::string& project, const std::string& criterion, Borders borders)
    : m_session(session), m_project(project), m_borders(borders) {
  if (m_borders == Borders::closed) return;
  orvane::OptionDocument& options = m_session.host().options();
  options.overrideForSession("//CASE[@ID='Tarnsift']//BOOL[@NAME='RefreshLists']", "false");
  options.overrideForSession("(//CASE[@ID='Tarnsift']//BOOL[@NAME='OverrideStatus'])[1]", "false");
  options.overrideForSession("//TEXT[@NAME='DefaultSearchName']", criterion);
  readPrograms();
}

// A program whose analysis cannot be read keeps what is within it.
void Widening::readPrograms() {
  std::map<std::string, std::string> keys;
  for (const auto& row : m_session.counts())
    keys.emplace(row.program, row.key);
  for (auto& facts : orvane::programsOf(m_session.host().base(), m_session.host().repository(), m_project, "")) {
    const auto key = keys.find(facts.name);
    if (!facts.verified || key == keys.end()) continue;
    try {
      orvane::Border border(orvane::readStore(facts.analysisFile));
      m_programs.push_back({key->second, std::move(facts), std::move(border), {}, {}, {-1, -1, -1}});
    } catch (const platform::Error& error) {
      fmt::print(stderr, "tarnsift: {}: not followed to other programs: {}\n", facts.name, error.what());
    }
  }
}

// A program whose Affected list did not grow in a round has no new seeds, so the next round leaves it out.
int Widening::run(std::optional<int> rounds) {
  std::vector<std::string> growing;
  for (const auto& program : m_session.counts())
    if (program.counts[kAffected] > 0) growing.push_back(program.key);
  int done = 0;
  while (!growing.empty() && (!rounds || done < *rounds)) {
    const auto before = m_session.counts();
    m_session.select(growing);
    m_session.findSynonyms(kAffected, kAffected);
    ++done;
    if (m_borders == Borders::open) cross();
    const auto after = m_session.counts();
    growing.clear();
    for (std::size_t i = 0; i < after.size(); ++i)
      if (after[i].counts[kAffected] != before[i].counts[kAffected]) growing.push_back(after[i].key);
  }
  return done;
}

void Widening::cross() {
  std::map<std::string, std::array<std::int64_t, 3>> counts;
  for (const auto& row : m_session.counts())
    counts.emplace(row.key, row.counts);
  std::vector<Way> ways;
  for (Program& program : m_programs) {
    const auto& now = counts[program.key];
    if (program.counts == now) continue;
    look(program, ways);
    program.counts = now;
  }
  for (const Way& way : ways)
    take(way);
}

// The ways out of what is newly affected. What came in by some bytes of a slot goes back by no others of it: an item
// that holds a whole record is reached with the field, and must not take all other fields along.
void Widening::look(Program& program, std::vector<Way>& ways) {
  const orvane::StoreData data = orvane::readStore(program.facts.analysisFile);
  std::vector<std::pair<std::uint32_t, std::optional<orvane::SlotName>>> fresh;
  for (const auto& [kvid, decision] : orvane::decisionsOf(program.facts, m_project)) {
    const int found = data.find(kvid);
    if (found < 0 || !decision.status) continue;
    const auto construct = static_cast<std::uint32_t>(found);
    program.listed.insert(construct);
    if (decision.status == kAffected && program.affected.insert(construct).second)
      fresh.emplace_back(construct, orvane::slotIn(decision.comment));
  }
  std::sort(fresh.begin(), fresh.end());
  for (const auto& [construct, cameBy] : fresh)
    for (const orvane::Crossing& crossing : program.border.carriedBy(construct))
      if (crossing.slot != cameBy && m_known.insert(crossing).second) ways.push_back({crossing, program.facts.name});
}

void Widening::take(const Way& way) {
  std::vector<std::string> keys;
  for (Program& program : m_programs) {
    // Within one window the synonym search has its own, finer ways.
    if (program.facts.name == way.from && way.crossing.bytes && !program.border.hasSeveralWindows(way.crossing.slot))
      continue;
    bool isNew = false;
    for (const std::uint32_t construct : program.border.reachedBy(way.crossing))
      isNew = program.listed.insert(construct).second || isNew;
    if (isNew) keys.push_back(program.key);
  }
  if (keys.empty()) return;
  m_session.select(keys);
  m_session.filter(way.crossing.criterion(way.from), kAffected);
}

} // namespace app
