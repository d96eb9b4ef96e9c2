#pragma once

#include <functional>
#include <nlohmann/json.hpp>
#include <string>

#include "app/command_line.hpp"
#include "orvane/program_facts.hpp"

namespace app {

using Json = nlohmann::ordered_json;

/// A project open for reading: no lock is taken, commands that write may run beside.
struct Reading {
  explicit Reading(const Context& context);
  orvane::BaseFolder base;
  platform::Ref<orvane::RepositoryFile> repository;
  std::string project;

  /// Runs `look` for each verified program that matches the pattern; one whose analysis cannot be read is told on
  /// stderr. Throws platform::Error at the end when there was such a one.
  void eachProgram(const std::string& pattern,
                   const std::function<void(const orvane::ProgramFacts&, const orvane::StoreData&)>& look) const;
};

/// One JSON object on a line of stdout.
void printJson(const Json& object);
/// A place as JSON keys `file`, `line`, `column`.
void putPlace(Json& object, const orvane::StoreData& data, const orvane::PlaceRecord& place);
/// "file:line:column", the file without its folders.
std::string shortPlace(const orvane::StoreData& data, const orvane::PlaceRecord& place);

/// The word of a list status; "" for none.
std::string statusWord(const std::optional<int>& status);

} // namespace app
