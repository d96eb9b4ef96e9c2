#include "tarnsift/session/engine.hpp"

#include "platform/runtime/application.hpp"
#include "platform/runtime/string_table.hpp"
#include "tarnsift/session/display.hpp"
#include "tarnsift/session/globals.hpp"
#include "tarnsift/session/strings.hpp"
#include "tarnsift/workbench/close.hpp"

namespace tarnsift {

namespace {

constexpr int kRefreshCache = 8;

void openSession(const Value& Frontend) {
  globals().Frontend = Frontend.as<Object>();
  globals().ProjectObject = callFrontend("ProjectObject").as<RepositoryObject>();
  globals().BaseFolder = orvaneName(4);
  platform::App().HelpFile = theProductPaths().HelpFile();
  platform::dbEngine().Idle(kRefreshCache);
  Display(theWindow());
}

void tellFailure(const std::exception& error) {
  if (windowExists()) closeFailed(theWindow());
  // The window may not have opened at all.
  globals().Frontend = {};
  globals().ProjectObject = {};
  const std::string text = theProductStrings().Format(platform::LoadResString(500),
                                                      {platform::App().Title, "\r" + std::string(error.what())});
  platform::screen().messageBox(text, platform::kCritical, platform::App().Title);
}

} // namespace

long TarnsiftEngine::Run(const Value& Frontend, const Value&, const Value&) {
  registerStrings();
  try {
    openSession(Frontend);
  } catch (const std::exception& error) {
    tellFailure(error);
  }
  return 0;
}

Value TarnsiftEngine::Invoke(std::string_view member, std::span<Value> arguments) {
  if (!platform::equalsIgnoringCase(member, "Run")) return Object::Invoke(member, arguments);
  const auto at = [&](std::size_t i) { return i < arguments.size() ? arguments[i] : Value(); };
  return static_cast<std::int64_t>(Run(at(0), at(1), at(2)));
}

} // namespace tarnsift
