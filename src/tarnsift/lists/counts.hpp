#pragma once

#include <array>

#include "platform/controls/list_view.hpp"
#include "platform/dao/dao.hpp"

namespace tarnsift {

/// Change of each list's counter during one command in one program.
using Counters = std::array<std::int64_t, 3>;

/// Sets the three counts of a program's row from its database.
void countRows(platform::ListItem& program, platform::Database& database);
/// Adds the counters to the row's counts.
void addCounters(platform::ListItem& program, const Counters& counters);

} // namespace tarnsift
