#pragma once

#include <map>
#include <optional>
#include <set>
#include <unordered_set>
#include <vector>

#include "app/headless_session.hpp"
#include "orvane/border.hpp"
#include "orvane/program_facts.hpp"

namespace app {

enum class Borders { closed, open };

/// Widens the Affected lists of a session: the synonym search from Affected to Affected, and what that reached carried
/// over calls and files into the other programs, until nothing changes.
class Widening {
 public:
  /// The session must have been opened with a program selection. `criterion` stays the project's default search.
  Widening(HeadlessSession& session, const std::string& project, const std::string& criterion, Borders borders);
  /// At most `rounds` rounds, unless nothing is given. Gives how many were needed.
  int run(std::optional<int> rounds);

 private:
  struct Program {
    std::string key;
    orvane::ProgramFacts facts;
    orvane::Border border;
    std::unordered_set<std::uint32_t> listed;   ///< constructs that are in a list
    std::unordered_set<std::uint32_t> affected; ///< those of Affected whose ways over the border are known
    std::array<std::int64_t, 3> counts{-1, -1, -1};
  };
  struct Way {
    orvane::Crossing crossing;
    std::string from;
  };
  void readPrograms();
  void cross();
  void look(Program& program, std::vector<Way>& ways);
  void take(const Way& way);

  HeadlessSession& m_session;
  std::string m_project;
  Borders m_borders;
  std::vector<Program> m_programs;
  std::set<orvane::Crossing> m_known;
};

} // namespace app
