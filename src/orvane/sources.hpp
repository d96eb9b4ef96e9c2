#pragma once

#include <string>
#include <vector>

#include "orvane/base_folder.hpp"
#include "orvane/options.hpp"
#include "orvane/repository_file.hpp"

namespace orvane {

enum class TakeSources { link, copy };

/// What registering found.
struct SourcesFound {
  std::vector<std::string> added;    ///< names of the programs that are new in the project
  std::size_t known = 0;             ///< programs that were in it already
  std::vector<std::string> problems; ///< one line each: paths that are gone or cannot be looked through
};

/// Whether the name of a file ends in one of the extensions of COBOL programs.
bool hasSourceExtension(const std::string& name);

/// Takes sources into a project. `paths` are native: folders where sources lie, or single files, which are taken
/// whatever their names. Folders are linked below the base folder, or copied into it, and remembered with the copybook
/// folders in the option document, which is saved. Of a folder's files those with a COBOL extension or none are taken;
/// copybook folders below it are left out. A path that is missing or unreadable is a platform::Error and nothing is
/// registered.
SourcesFound addSources(const BaseFolder& base, RepositoryFile& repository,
                        const tarnsift::Ref<tarnsift::RepositoryObject>& project, OptionDocument& options,
                        const std::vector<std::string>& paths, const std::vector<std::string>& copybookFolders,
                        TakeSources how = TakeSources::link);

/// Looks through the remembered paths again and registers what is new. Trouble with a path is a problem of the result.
SourcesFound refreshSources(const BaseFolder& base, RepositoryFile& repository,
                            const tarnsift::Ref<tarnsift::RepositoryObject>& project,
                            const platform::Document& options);

/// The analyser's options of a project with its copybook folders as native paths.
cobol::Options readingOptions(const BaseFolder& base, const platform::Document& options);

} // namespace orvane
