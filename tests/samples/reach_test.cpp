#include <set>

#include "samples/portfolio.hpp"

namespace samples {
namespace {

using cobol::Construct;

bool shareStorage(const Construct& a, const Construct& b) {
  return a.hasStorage() && b.hasStorage() && a.offset < b.offset + b.size && b.offset < a.offset + a.size;
}

// A caller and its callee have a parameter slot each, of one name.
bool areOneSlot(const Construct& a, const Construct& b) {
  return a.kind == cobol::Kind::callSlot && b.kind == cobol::Kind::callSlot && a.name == b.name;
}

// Elementary datanames that the value of one travels to or from, over the strong relationships and over storage.
std::set<std::string> reachOf(const cobol::Analysis& analysis, const std::string& start) {
  const auto counts = [](const Construct& item) { return !item.isGroup() && item.kind != cobol::Kind::renames; };
  const std::size_t size = analysis.constructs.size();
  std::vector<std::vector<std::size_t>> next(size);
  for (const cobol::Relationship& relation : analysis.relationships) {
    if (cobol::relationKinds()[static_cast<std::size_t>(relation.kind)].affinity != cobol::Affinity::high) continue;
    next[relation.from].push_back(relation.to);
    next[relation.to].push_back(relation.from);
  }
  std::vector<std::size_t> open;
  std::set<std::size_t> reached;
  for (std::size_t i = 0; i < size; ++i) {
    if (analysis.constructs[i].name == start && reached.insert(i).second) open.push_back(i);
  }
  while (!open.empty()) {
    const std::size_t at = open.back();
    open.pop_back();
    for (std::size_t i = 0; i < size; ++i) {
      const Construct& here = analysis.constructs[at];
      if (shareStorage(here, analysis.constructs[i]) || areOneSlot(here, analysis.constructs[i])) next[at].push_back(i);
    }
    for (const std::size_t to : next[at]) {
      if (counts(analysis.constructs[to]) && reached.insert(to).second) open.push_back(to);
    }
  }
  std::set<std::string> names;
  for (const std::size_t i : reached) {
    if (analysis.constructs[i].kind != cobol::Kind::filler) names.insert(analysis.constructs[i].name);
  }
  names.erase(start);
  return names;
}

// From the account number of each program, as read from the text; samples/README.md tells the same.
TEST(Reach, OfTheAccountNumber) {
  struct Case {
    std::string program;
    std::string start;
    std::set<std::string> reached;
  };
  const std::vector<Case> cases = {
      {"BKB010", "CK-ACCT", {"WS-F-ACCT", "TR-ACCOUNT-NUMBER"}},
      {"BKB020",
       "AM-ACCT-NO",
       {"AM-BRANCH", "AM-SERIAL", "AM-CHECK", "SR-ACCOUNT-NUMBER", "SR-CONTRA-ACCT", "DT-ACCOUNT-NUMBER",
        "DT-CONTRA-ACCT", "WS-CURRENT-ACCT", "PP-ACCOUNT"}},
      {"BKB030", "IA-ACCT-NO", {"IA-BRANCH", "IA-SERIAL", "IA-CHECK", "WS-HIGHEST-ACCT"}},
      {"BKB040", "AC-ACCT-NO", {"AC-BRANCH", "AC-SERIAL", "AC-CHECK", "CM-ACCT-ENTRY", "ST-ACCOUNT-NO", "DL-ACCOUNT"}},
      {"BKB050",
       "MA-ACCT-NO",
       {"MA-BRANCH", "MA-SERIAL", "MA-CHECK", "BKB052(1)", "LK-ACCT", "WS-NUMBER", "WS-BRANCH", "WS-REST"}},
      {"BKB080", "RC-ACCT-NO", {"RC-BRANCH", "RC-SERIAL", "RC-CHECK", "HV-ACCOUNT-NO", "WD-ACCOUNT-NUMBER"}},
      {"BKF900", "ACCOUNT-NUMBER", {"LAST-ACCOUNT", "AC-ACCT-NO", "AC-BRANCH", "AC-SERIAL", "AC-CHECK"}},
      {"BKO110", "CA-ACC-KEY", {"WS-ACC-KEY", "ACCNOO", "ACCNOI"}},
      {"BKO120", "CA-ACC-KEY", {"WS-ACCOUNT-KEY", "WJ-ACC-NO", "ACCNOO", "ACCNOI", "WC-ACCT-ENTRY"}},
      {"BKO150", "LK-ACC-KEY", {"WS-BROWSE-ACCT", "NM-ACCT", "OL-ACC-KEY"}},
      {"BKS110", "LP-ACCOUNT", {"WS-LAST-REFUSED"}},
  };
  for (const Case& one : cases)
    EXPECT_EQ(reachOf(analysed(one.program + ".cbl"), one.start), one.reached) << one.program;
}

} // namespace
} // namespace samples
