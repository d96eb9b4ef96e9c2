#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace orvane {

/// What lies in folders of sources before a project knows them.
struct SourceSurvey {
  struct Folder {
    std::string path;          ///< native, canonical
    std::string root;          ///< the named folder that it was found in
    std::size_t cobol = 0;     ///< files with a COBOL extension
    std::size_t bare = 0;      ///< files without extension
    std::size_t copybooks = 0; ///< files with a copybook's extension
  };
  std::vector<Folder> folders;              ///< those with such files
  std::vector<std::string> files;           ///< single files that were named
  std::vector<std::string> copybookFolders; ///< where copybooks seem to lie: below the named folders or beside them
  std::vector<std::string> problems;        ///< one line each: what cannot be looked through
};

/// Looks through folders and files. A folder counts as one of copybooks when it is called so (copy, cpy, copybooks …)
/// or holds copybooks and no programs. Hidden folders are left out. Ends early once `cancel` is true.
SourceSurvey surveySources(const std::vector<std::string>& paths, const std::atomic<bool>* cancel = nullptr);

/// How many programs addSources would take with those copybook folders.
std::size_t programCount(const SourceSurvey& survey, const std::vector<std::string>& copybookFolders);

} // namespace orvane
