#include <csignal>
#include <cstdio>
#include <iostream>

#include <fmt/format.h>

#include "app/command_line.hpp"
#include "orvane/projects.hpp"
#include "platform/dao/dao.hpp"
#include "platform/runtime/memory.hpp"
#include "platform/runtime/string_table.hpp"
#include "platform/runtime/text.hpp"

namespace app {

orvane::BaseFolder Context::base() const {
  if (!baseOption.empty()) return orvane::BaseFolder::open(baseOption);
  if (const auto found = orvane::BaseFolder::nearest(".")) return orvane::BaseFolder::open(*found);
  throw platform::Error("no base folder here or above; make one with 'tarnsift init', or name it with -C DIR");
}

std::string projectOf(const Context& context, orvane::RepositoryFile& repository) {
  try {
    return orvane::chooseProject(repository, context.projectOption);
  } catch (const platform::Error& error) {
    throw UsageError(error.what());
  }
}

} // namespace app

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

int fail(int status, const char* text) {
  std::string line = platform::replaceAll(platform::replaceAll(text, "\r", " "), "\n", " ");
  fmt::print(stderr, "tarnsift: {}\n", line);
  return status;
}

void chooseLanguage(const std::string& code) {
  platform::setLanguage(code == "ja"   ? platform::Language::Japanese
                        : code == "ko" ? platform::Language::Korean
                                       : platform::Language::English);
}

int run(int argc, char** argv) {
  CLI::App parser("Finds out which datanames of COBOL programs a change reaches, and where they are used.", "tarnsift");
  app::Context context;
  parser.add_option("-C,--base", context.baseOption, "Base folder (default: the nearest one here or above)")
      ->type_name("DIR");
  parser.add_option("--project", context.projectOption, "Project (default: the only one)")->type_name("NAME");
  parser
      .add_option_function<std::string>(
          "--language",
          [&context](const std::string& code) {
            context.languageOption = code;
            chooseLanguage(code);
          },
          "Language of the window, reports and generated comments: en, ja or ko (default: the locale's)")
      ->type_name("CODE")
      ->check(CLI::IsMember({"en", "ja", "ko"}));
  parser.set_version_flag("--version", "tarnsift " TARNSIFT_VERSION);
  parser.fallthrough();
  parser.require_subcommand(1);
  parser.footer("Examples:\n"
                "  tarnsift impact src/cobol --copybooks src/copy --like '*ACCT*'\n"
                "  tarnsift datanames --status affected --json\n"
                "  tarnsift usages --program CUST* CUST-ID\n"
                "Exit status: 0 done, 1 failed, 2 wrong usage.");
  app::addInit(parser, context);
  app::addAdd(parser, context);
  app::addVerify(parser, context);
  app::addPrograms(parser, context);
  app::addDatanames(parser, context);
  app::addUsages(parser, context);
  app::addRelations(parser, context);
  app::addDiagnostics(parser, context);
  app::addCarried(parser, context);
  app::addFilter(parser, context);
  app::addSynonyms(parser, context);
  app::addMove(parser, context);
  app::addDelete(parser, context);
  app::addComment(parser, context);
  app::addClear(parser, context);
  app::addUnused(parser, context);
  app::addSynonymsOf(parser, context);
  app::addColumns(parser, context);
  app::addReport(parser, context);
  app::addOpen(parser, context);
  app::addDerive(parser, context);
  app::addUpgradeOptions(parser, context);
  app::addPage(parser, context);
  app::addImpact(parser, context);
  try {
    parser.parse(argc, argv);
    std::cout.flush();
    if (!std::cout) return fail(kFailed, "the output could not be written");
    return 0;
  } catch (const CLI::Success& success) { // --help, --version
    return parser.exit(success);
  } catch (const CLI::ParseError& error) {
    return fail(kWrongUsage, (std::string(error.what()) + "; see 'tarnsift --help'").c_str());
  } catch (const app::UsageError& error) {
    return fail(kWrongUsage, error.what());
  } catch (const std::exception& error) {
    return fail(kFailed, error.what());
  }
}

} // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE,
              SIG_IGN); // a reader that goes away is an output that could not be written, not an end in mid-session
  platform::keepFreedMemory();
  const int status = run(argc, argv);
  platform::dbEngine().settle();
  return status;
}
