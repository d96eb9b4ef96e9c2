#include "tarnsift/reports/status_text.hpp"

#include "platform/runtime/string_table.hpp"
#include "tarnsift/store/program_database.hpp"

namespace tarnsift {

using platform::LoadResString;

std::string statusText(const platform::Value& status) {
  switch (status.asInteger()) {
  case kAccepted:
    return LoadResString(541);
  case kRejected:
    return LoadResString(553);
  default:
    return LoadResString(554);
  }
}

} // namespace tarnsift
