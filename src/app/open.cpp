#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

#include <fmt/format.h>

#include "app/command_line.hpp"
#include "orvane/product.hpp"
#include "platform/files/files.hpp"

namespace app {

namespace {

// The window's program is another one, so that no other command loads its toolkit.
std::string windowProgram() {
  const std::string folder = orvane::programFolder();
  for (const std::string& place : {folder + "/tarnsift-window", folder + "/../libexec/tarnsift/tarnsift-window"})
    if (platform::fileExists(place)) return place;
  throw platform::Error("this installation has no window: tarnsift-window is not beside the program");
}

bool set(const char* variable) {
  const char* value = std::getenv(variable);
  return value && *value;
}

void requireDisplay() {
  if (!set("DISPLAY") && !set("WAYLAND_DISPLAY") && !set("QT_QPA_PLATFORM"))
    throw platform::Error("there is no display: neither DISPLAY nor WAYLAND_DISPLAY is set");
}

} // namespace

void addOpen(CLI::App& app, Context& context) {
  auto* command = app.add_subcommand("open", "Opens the workbench in a window.");
  auto theme = std::make_shared<std::string>();
  command->add_option("--theme", *theme, "light or dark (default: the system's)")
      ->type_name("NAME")
      ->check(CLI::IsMember({"light", "dark"}));
  auto start = std::make_shared<bool>(false);
  command->add_flag("--start", *start, "Shows the start page: recent projects, and a new one from a folder of sources");
  command->footer("Example:\n  tarnsift open --project bank");
  command->callback([theme, start, &context] {
    const std::string program = windowProgram();
    requireDisplay();
    std::vector<std::string> words{program};
    const auto add = [&](const char* option, const std::string& value) {
      if (!value.empty()) words.insert(words.end(), {option, value});
    };
    add("--base", context.baseOption);
    add("--project", context.projectOption);
    add("--theme", *theme);
    if (*start) words.emplace_back("--start");
    add("--language", context.languageOption);
    std::vector<char*> arguments;
    for (std::string& one : words)
      arguments.push_back(one.data());
    arguments.push_back(nullptr);
    ::execv(program.c_str(), arguments.data());
    throw platform::Error(fmt::format("{} cannot be started: {}", program, std::strerror(errno)));
  });
}

} // namespace app
