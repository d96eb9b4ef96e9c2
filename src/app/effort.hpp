#pragma once

#include <string>

#include "app/command_line.hpp"
#include "orvane/report_file.hpp"

namespace app {

/// Writes the effort sheet of a project: per program its change size, counts and shares, with totals by size. Only
/// looks; a program that cannot be read is told on stderr and left out. `settings` say where to and in which format.
void writeEffort(const Context& context, const std::shared_ptr<orvane::ReportSettings>& settings);

} // namespace app
