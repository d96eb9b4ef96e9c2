#pragma once

#include <functional>

#include "orvane/base_folder.hpp"
#include "orvane/repository_file.hpp"
#include "tarnsift/session/host.hpp"

namespace orvane {

/// What HostFactory makes for each window, and the dialogs of a derived project.
struct WindowParts {
  std::function<tarnsift::Ref<tarnsift::KVWorkSpace>()> workspace;
  std::function<tarnsift::Ref<tarnsift::KVSource>()> source;
  std::function<tarnsift::Ref<tarnsift::Splitter>()> splitter;
  std::function<tarnsift::Ref<tarnsift::ReportWriter>()> reportWriter;
  std::function<tarnsift::Ref<tarnsift::SizeClassDialog>()> sizeClassDialog;
  std::function<std::string()> askProjectName; ///< "" when given up
  std::function<void(const std::string& title)> showAbout;
};

/// Registers the small global objects of the host under their names: RepositoryAccess, ProductPaths, ProductStrings,
/// CaptionText, FileProbe, ListViewSorter, MathTools, ProjectFactory, HostFactory.
void registerHostObjects(const BaseFolder& base, const tarnsift::Ref<tarnsift::Repository>& repository,
                         WindowParts parts);

/// Takes them out of the table again: nothing of a host is reached once it has gone.
void unregisterHostObjects();

} // namespace orvane
