#pragma once

#include <string>

#include "platform/dao/dao.hpp"
#include "tarnsift/lists/counts.hpp"
#include "tarnsift/workbench/frmMain.hpp"

namespace tarnsift {

/// Places the construct that the table-type record set stands on in the list `Target`, or takes it out of all (3):
/// counters, the lists on the screen when `OnScreen`, the row. `Note` becomes its comment.
void SetConstructStatus(frmMain& window, platform::Recordset& Table, int Target, Counters& counters, bool OnScreen,
                        const std::string& Note);

} // namespace tarnsift
