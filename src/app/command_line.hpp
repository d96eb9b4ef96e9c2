#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>

#include "orvane/base_folder.hpp"
#include "orvane/repository_file.hpp"

/// The command `tarnsift`: each sub-command adds itself to the parser and runs when it was chosen.
namespace app {

/// What all sub-commands take.
struct Context {
  std::string baseOption;     ///< -C, --base
  std::string projectOption;  ///< --project
  std::string languageOption; ///< --language; empty: the locale's

  /// The base folder named, else the nearest one at or above the current folder. Throws platform::Error without one.
  orvane::BaseFolder base() const;
};

/// Wrong usage that the parser cannot see: exit status 2.
class UsageError : public platform::Error {
 public:
  using platform::Error::Error;
};

/// The project named, else the only one; wrong usage otherwise.
std::string projectOf(const Context& context, orvane::RepositoryFile& repository);

void addInit(CLI::App& app, Context& context);
void addAdd(CLI::App& app, Context& context);
void addVerify(CLI::App& app, Context& context);
void addPrograms(CLI::App& app, Context& context);
void addDatanames(CLI::App& app, Context& context);
void addUsages(CLI::App& app, Context& context);
void addRelations(CLI::App& app, Context& context);
void addDiagnostics(CLI::App& app, Context& context);
void addCarried(CLI::App& app, Context& context);
void addFilter(CLI::App& app, Context& context);
void addSynonyms(CLI::App& app, Context& context);
void addMove(CLI::App& app, Context& context);
void addDelete(CLI::App& app, Context& context);
void addComment(CLI::App& app, Context& context);
void addClear(CLI::App& app, Context& context);
void addUnused(CLI::App& app, Context& context);
void addSynonymsOf(CLI::App& app, Context& context);
void addColumns(CLI::App& app, Context& context);
void addReport(CLI::App& app, Context& context);
void addOpen(CLI::App& app, Context& context);
void addDerive(CLI::App& app, Context& context);
void addUpgradeOptions(CLI::App& app, Context& context);
void addPage(CLI::App& app, Context& context);
void addImpact(CLI::App& app, Context& context);

} // namespace app
