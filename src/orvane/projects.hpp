#pragma once

#include <string>
#include <vector>

#include "orvane/base_folder.hpp"
#include "orvane/options.hpp"
#include "orvane/repository_file.hpp"

namespace orvane {

/// Throws platform::Error in one line when no project can have the name: it is blank or too long, has quotes or control
/// characters, or cannot be a folder's.
void checkProjectName(const std::string& name);
/// Throws platform::Error in one line when the name is taken or agrees with another project's in its columns.
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
