#include "orvane/projects.hpp"

#include <fmt/format.h>

#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/store/program_database.hpp"

namespace orvane {

namespace {

constexpr std::size_t kLongestName = 200; // bytes; the folder's name must fit a file system

// A project's programs are members; its source paths would bring the origin's others in at the next verification.
platform::Document startingOptions(OptionDocument* origin) {
  if (!origin) return optionTemplate();
  platform::Document options = platform::Document::loadText(origin->savedText());
  setAnalysisStrings(options, "SourcePaths", {});
  return options;
}

} // namespace

NameFault faultOf(const std::string& name) {
  if (platform::trimmed(name).empty()) return NameFault::blank;
  if (name.find_first_of("'\"") != std::string::npos) return NameFault::quotes;
  if (name.size() > kLongestName) return NameFault::tooLong;
  if (name == "." || name == ".." || name.find_first_of("/\\") != std::string::npos) return NameFault::noFolder;
  for (const char c : name)
    if (static_cast<unsigned char>(c) < 0x20) return NameFault::controls;
  return NameFault::none;
}

std::optional<NameRival> rivalOf(RepositoryFile& repository, const std::string& name) {
  for (const std::string& other : projectNames(repository)) {
    if (platform::equalsIgnoringCase(other, name)) return NameRival{other, true};
    if (platform::equalsIgnoringCase(tarnsift::EscapeColumnName(other), tarnsift::EscapeColumnName(name)))
      return NameRival{other, false};
  }
  return std::nullopt;
}

void checkProjectName(const std::string& name) {
  switch (faultOf(name)) {
  case NameFault::blank:
    throw platform::Error("a project needs a name");
  case NameFault::quotes:
    throw platform::Error(fmt::format("the project name {} has quotes in it, which no project can have", name));
  case NameFault::tooLong:
    throw platform::Error(fmt::format("the project name is longer than {} bytes", kLongestName));
  case NameFault::noFolder:
    throw platform::Error(fmt::format("the project name '{}' cannot be a folder's: no / or \\ in it", name));
  case NameFault::controls:
    throw platform::Error("a project name has no control characters");
  case NameFault::none:
    break;
  }
}

void checkNameIsFree(RepositoryFile& repository, const std::string& name) {
  const auto rival = rivalOf(repository, name);
  if (!rival) return;
  if (rival->sameName) throw platform::Error(fmt::format("there is a project '{}' already", rival->project));
  throw platform::Error(fmt::format(
      "the name '{}' is too like that of project '{}': their first 48 characters are the same", name, rival->project));
}

std::vector<std::string> projectNames(RepositoryFile& repository) {
  std::vector<std::string> names;
  for (auto projects = repository.SelectObjects(kProjectType, "", "Name"); !projects->AtEnd(); projects->MoveNext())
    names.push_back(projects->Current()->Attribute("Name").asText());
  return names;
}

tarnsift::Ref<tarnsift::RepositoryObject> createProject(const BaseFolder& base, RepositoryFile& repository,
                                                        const std::string& name, OptionDocument* origin) {
  checkProjectName(name);
  checkNameIsFree(repository, name);
  const std::string folder = base.projectFolder(name);
  const bool wasThere = platform::folderExists(folder);
  try {
    platform::createFolders(folder);
    startingOptions(origin).save(optionFile(folder));
    return repository.createObject(kProjectType, name);
  } catch (const platform::Error&) {
    if (!wasThere) platform::ignoring([&] { platform::removeAll(folder); });
    throw;
  }
}

std::string chooseProject(RepositoryFile& repository, const std::string& named) {
  const auto names = projectNames(repository);
  if (!named.empty()) {
    for (const auto& name : names)
      if (platform::equalsIgnoringCase(name, named)) return name;
    throw platform::Error(fmt::format("there is no project '{}'; there are: {}", named,
                                      names.empty() ? "none" : platform::joined(names, ", ")));
  }
  if (names.size() == 1) return names.front();
  if (names.empty()) throw platform::Error("there is no project yet; make one with 'tarnsift add --project NAME PATH'");
  throw platform::Error(
      fmt::format("there are several projects, name one with --project: {}", platform::joined(names, ", ")));
}

} // namespace orvane
