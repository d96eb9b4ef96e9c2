#pragma once

#include <string>
#include <vector>

#include "orvane/base_folder.hpp"
#include "orvane/repository_file.hpp"

namespace orvane {

/// Makes a project: its repository object, its folder and its option document. Throws platform::Error when the name is
/// empty, cannot be a folder's, is taken, or agrees with another project's in its columns.
tarnsift::Ref<tarnsift::RepositoryObject> createProject(const BaseFolder& base, RepositoryFile& repository,
                                                        const std::string& name);

/// All project names, ordered.
std::vector<std::string> projectNames(RepositoryFile& repository);

/// The project that a command means: the one named, else the only one. Throws platform::Error that lists the names.
std::string chooseProject(RepositoryFile& repository, const std::string& named);

} // namespace orvane
