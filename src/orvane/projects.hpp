#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orvane/base_folder.hpp"
#include "orvane/options.hpp"
#include "orvane/repository_file.hpp"

namespace orvane {

/// Why no project can have a name.
enum class NameFault : int { none, blank, quotes, tooLong, noFolder, controls };
NameFault faultOf(const std::string& name);

/// A project that stands in the way of a name: it has the name already, or its columns have.
struct NameRival {
  std::string project;
  bool sameName = false;
};
std::optional<NameRival> rivalOf(RepositoryFile& repository, const std::string& name);

/// Throws platform::Error in one line when no project can have the name.
void checkProjectName(const std::string& name);
/// Throws platform::Error in one line when another project stands in its way.
void checkNameIsFree(RepositoryFile& repository, const std::string& name);

/// Makes a project: its folder, its option document and its repository object, or nothing of them. With an `origin` it
/// starts with all options of that project but the source paths, else with the template. Throws platform::Error when
/// one of the checks does.
tarnsift::Ref<tarnsift::RepositoryObject> createProject(const BaseFolder& base, RepositoryFile& repository,
                                                        const std::string& name, OptionDocument* origin = nullptr);

/// All project names, ordered.
std::vector<std::string> projectNames(RepositoryFile& repository);

/// The project that a command means: the one named, else the only one. Throws platform::Error that lists the names.
std::string chooseProject(RepositoryFile& repository, const std::string& named);

} // namespace orvane
