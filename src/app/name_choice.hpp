#pragma once

#include <string>
#include <vector>

#include "app/command_line.hpp"
#include "app/headless_session.hpp"
#include "orvane/program_facts.hpp"

namespace app {

/// Which datanames a command on names means.
struct NameChoice {
  std::string program;            ///< GLOB; "" all
  std::vector<std::string> names; ///< datanames, patterns with `like`, keys with `kvid`
  bool like = false;
  bool kvid = false;

  void addTo(CLI::App& command);
  /// Throws UsageError for a pattern that cannot be used.
  void check() const;
};

/// A dataname of one program.
struct ChosenName {
  std::string kvid;
  std::string name;
};

/// The constructs of a program that are meant; a name that has several takes them all.
std::vector<ChosenName> chosenIn(const NameChoice& choice, const orvane::StoreData& data);

/// Works on names through the window: one program after the other is made current.
class NameWork {
 public:
  NameWork(HeadlessSession& session, const NameChoice& choice);

  struct Program {
    orvane::ProgramFacts facts;
    std::vector<ChosenName> chosen;
  };
  /// Programs with at least one of the names. Throws platform::Error when there is none.
  const std::vector<Program>& programs() const { return m_programs; }

  void makeCurrent(const Program& program);
  /// The list of the current program that holds the name: 0 to 2, -1 none.
  int listOf(const std::string& kvid) const;
  /// Brings a list (0 to 3) to the front with exactly these entries marked and the first of them focused.
  void mark(int list, const std::vector<std::string>& kvids);
  /// Shows names that are in no list in the Synonyms list, as the pane would, without notes.
  void showInSynonyms(const std::vector<ChosenName>& names, const Program& program);
  platform::ListView& view(int list) const;

 private:
  HeadlessSession& m_session;
  std::vector<Program> m_programs;
};

} // namespace app
