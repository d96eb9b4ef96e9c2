#pragma once

#include <string>

#include "app/command_line.hpp"
#include "orvane/verification.hpp"

namespace app {

/// Verifies a project with a progress line and tells on stdout and stderr how it went.
orvane::VerifyResult verifyAndTell(const orvane::BaseFolder& base, orvane::RepositoryFile& repository,
                                   const std::string& project, int jobs, bool force);

} // namespace app
