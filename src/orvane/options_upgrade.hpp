#pragma once

#include <string>
#include <vector>

#include "orvane/base_folder.hpp"
#include "orvane/repository_file.hpp"

namespace orvane {

/// What became of a project's option document.
struct OptionUpgrade {
  enum class Outcome {
    upgraded,  ///< had the older shape, has pages now
    completed, ///< had pages; options that it lacked were added
    current,   ///< not touched
    missing,   ///< there is none: the defaults hold
    left       ///< not touched because of `reason`
  };
  std::string project;
  Outcome outcome = Outcome::current;
  std::string reason; ///< one line: unreadable, or in use
};

/// Brings the option documents of all projects up: the component's Tarnsift.UprgadeOptions first, which stops at the
/// first project that needs nothing, then each onto the template. Projects that another process holds are left alone.
/// Only for a process without a window. Throws platform::Error when the base folder is held.
std::vector<OptionUpgrade> upgradeOptions(const BaseFolder& base, const tarnsift::Ref<RepositoryFile>& repository);

} // namespace orvane
