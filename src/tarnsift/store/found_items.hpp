#pragma once

#include <chrono>
#include <string>

#include "platform/controls/list_view.hpp"
#include "platform/runtime/collection.hpp"

namespace tarnsift {

/// The cache of counts of the programs pane: per program id the rest of its line.
struct FoundItems {
  platform::Collection<std::string> lines;
  std::chrono::system_clock::time_point date{}; ///< last modification of the file; the epoch without a file
};

/// Folder of the component's files of a project, relative to the base folder.
std::string foundItemsFolder(const std::string& projectName);

/// The file of the open project; empty without a file. A repeated id is a KeyError that names the file and the id.
FoundItems readFoundItems();
/// One line for each row of the programs pane, in its order. Creates the file's folder, whose parent must exist.
void writeFoundItems(const platform::ListView& lvPrograms);

} // namespace tarnsift
