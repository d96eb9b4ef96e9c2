#pragma once

#include <string>
#include <vector>

#include "tarnsift/session/host.hpp"

namespace desktop {

struct RecentProject {
  std::string base; ///< native, absolute
  std::string project;
  bool operator==(const RecentProject&) const = default;
};

/// The projects that were open, the last one first; at most twelve.
std::vector<RecentProject> recentProjects(tarnsift::SettingsStore& settings);
/// Puts one in front; it is what `tarnsift open` opens by itself.
void rememberProject(const RecentProject& opened, tarnsift::SettingsStore& settings);
/// Takes one off the list. Its files stay.
void forgetProject(const RecentProject& gone, tarnsift::SettingsStore& settings);

} // namespace desktop
