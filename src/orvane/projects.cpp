#include "orvane/projects.hpp"

#include <fmt/format.h>

#include "orvane/options.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/store/program_database.hpp"

namespace orvane {

namespace {

constexpr std::size_t kLongestName = 200; // bytes; the folder's name must fit a file system

void checkName(const std::string& name) {
  if (platform::trimmed(name).empty()) throw platform::Error("a project needs a name");
  if (name.size() > kLongestName)
    throw platform::Error(fmt::format("the project name is longer than {} bytes", kLongestName));
  if (name == "." || name == ".." || name.find_first_of("/\\") != std::string::npos)
    throw platform::Error(fmt::format("the project name '{}' cannot be a folder's: no / or \\ in it", name));
  for (const char c : name)
    if (static_cast<unsigned char>(c) < 0x20) throw platform::Error("a project name has no control characters");
}

} // namespace

std::vector<std::string> projectNames(RepositoryFile& repository) {
  std::vector<std::string> names;
  for (auto projects = repository.SelectObjects(kProjectType, "", "Name"); !projects->AtEnd(); projects->MoveNext())
    names.push_back(projects->Current()->Attribute("Name").asText());
  return names;
}

tarnsift::Ref<tarnsift::RepositoryObject> createProject(const BaseFolder& base, RepositoryFile& repository,
                                                        const std::string& name) {
  checkName(name);
  for (const std::string& other : projectNames(repository)) {
    if (platform::equalsIgnoringCase(other, name))
      throw platform::Error(fmt::format("there is a project '{}' already", other));
    if (platform::equalsIgnoringCase(tarnsift::EscapeColumnName(other), tarnsift::EscapeColumnName(name)))
      throw platform::Error(fmt::format(
          "the name '{}' is too like that of project '{}': their first 48 characters are the same", name, other));
  }
  platform::createFolders(base.projectFolder(name));
  platform::Document options = optionTemplate();
  options.save(optionFile(base.projectFolder(name)));
  return repository.createObject(kProjectType, name);
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
