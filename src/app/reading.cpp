#include "app/reading.hpp"

#include <iostream>

#include <fmt/format.h>

#include "platform/runtime/text.hpp"

namespace app {

Reading::Reading(const Context& context)
    : base(context.base()), repository(new orvane::RepositoryFile(base.repositoryFile())) {
  project = projectOf(context, *repository);
}

void Reading::eachProgram(
    const std::string& pattern,
    const std::function<void(const orvane::ProgramFacts&, const orvane::StoreData&)>& look) const {
  std::size_t failed = 0;
  for (const auto& program : orvane::programsOf(base, *repository, project, pattern)) {
    if (!program.verified) continue;
    try {
      look(program, orvane::readStore(program.analysisFile));
    } catch (const platform::Error& error) {
      fmt::print(stderr, "tarnsift: {}: left out: {}\n", program.name, error.what());
      ++failed;
    }
  }
  if (failed > 0) throw platform::Error(fmt::format("{} program(s) could not be read; run 'tarnsift verify'", failed));
}

void printJson(const Json& object) {
  std::cout << object.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

void putPlace(Json& object, const orvane::StoreData& data, const orvane::PlaceRecord& place) {
  object["file"] =
      place.file < data.files.size() ? Json(std::string(data.text(data.files[place.file].path))) : Json(nullptr);
  object["line"] = place.line;
  object["column"] = place.column;
}

std::string shortPlace(const orvane::StoreData& data, const orvane::PlaceRecord& place) {
  const std::string_view path = place.file < data.files.size() ? data.text(data.files[place.file].path) : "";
  return fmt::format("{}:{}:{}", path.substr(path.rfind('\\') + 1), place.line, place.column);
}

std::string statusWord(const std::optional<int>& status) {
  static constexpr const char* kWords[] = {"working", "affected", "clean"};
  return status && *status >= 0 && *status < 3 ? kWords[*status] : "";
}

} // namespace app
