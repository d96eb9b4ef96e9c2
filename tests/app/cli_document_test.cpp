#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

#include "app/command.hpp"
#include "platform/runtime/text.hpp"

namespace {

struct Section {
  std::set<std::string> options;
  std::set<std::string> keys;
};

// The sections "### `command …`" of docs/cli.md with the options and JSON keys of their tables.
std::map<std::string, Section> documented() {
  std::map<std::string, Section> sections;
  std::istringstream lines(platform::readText(TARNSIFT_SOURCE_DIR "/docs/cli.md"));
  std::string command;
  bool inKeys = false;
  for (std::string line; std::getline(lines, line);) {
    std::smatch match;
    if (std::regex_match(line, match, std::regex("### `([a-z-]+).*`"))) {
      command = match[1];
      sections[command];
    } else if (line.starts_with("## ")) {
      command.clear();
    } else if (line.starts_with("| key ")) {
      inKeys = true;
    } else if (line.starts_with("| option ")) {
      inKeys = false;
    } else if (!command.empty() && line.starts_with("| `")) {
      const std::string cell = line.substr(0, line.find('|', 2));
      const std::regex word(inKeys ? "`([a-z_]+)`" : "`(--[a-z-]+)");
      for (std::sregex_iterator at(cell.begin(), cell.end(), word), end; at != end; ++at)
        (inKeys ? sections[command].keys : sections[command].options).insert((*at)[1]);
    }
  }
  return sections;
}

std::set<std::string> wordsOf(const std::string& text, const std::string& pattern) {
  std::set<std::string> words;
  const std::regex word(pattern);
  for (std::sregex_iterator at(text.begin(), text.end(), word), end; at != end; ++at)
    words.insert((*at)[1]);
  return words;
}

} // namespace

using CliDocument = CommandTest;

TEST_F(CliDocument, NamesEveryCommandAndOptionOfTheProgramAndNoOther) {
  const std::string help = good("--help").out;
  const auto sections = documented();
  std::set<std::string> named;
  for (const auto& [command, section] : sections)
    named.insert(command);
  EXPECT_EQ(wordsOf(help.substr(help.find("Subcommands:"), help.find("Examples:") - help.find("Subcommands:")),
                    "\n  ([a-z-]+) "),
            named);
  for (const auto& [command, section] : sections) {
    const std::string own = good(command + " --help").out;
    auto options = wordsOf(own.substr(0, own.find("Example")), "(?:  |,)(--[a-z-]+)");
    options.erase("--help");
    EXPECT_EQ(options, section.options) << command;
    EXPECT_NE(own.find("Example"), std::string::npos) << command << " shows no example";
  }
}

TEST_F(CliDocument, NamesEveryJsonKeyThatIsPrinted) {
  write("src/ONE.cbl",
        fixedForm("IDENTIFICATION DIVISION.\nPROGRAM-ID. ONE.\nDATA DIVISION.\nWORKING-STORAGE SECTION.\n"
                  "01 A PIC X.\n01 B PIC X.\n01 GONE PIC X.\nPROCEDURE DIVISION.\nMOVE A TO B.\nSTOP RUN.\n"));
  good("init");
  good("add --project p src");
  good("verify");
  good("filter --like GONE --to clean");
  write("src/ONE.cbl",
        platform::replaceAll(platform::readText(m_place.file("src/ONE.cbl")), "01 GONE PIC X.", "01 NEWER PIC 9."));
  good("verify");
  good("move --to working A");
  const auto sections = documented();
  for (const auto& [command, arguments] : std::map<std::string, std::string>{{"programs", ""},
                                                                             {"datanames", ""},
                                                                             {"usages", "A"},
                                                                             {"relations", ""},
                                                                             {"diagnostics", ""},
                                                                             {"carried", ""},
                                                                             {"synonyms-of", "A"},
                                                                             {"columns", ""},
                                                                             {"derive", "--from working --name q"}}) {
    const auto objects = good(command + " --project p --json " + arguments).objects();
    ASSERT_FALSE(objects.empty()) << command;
    for (const auto& object : objects) {
      std::set<std::string> keys;
      for (const auto& [key, value] : object.items())
        keys.insert(key);
      EXPECT_EQ(keys, sections.at(command).keys) << command;
    }
  }
}
