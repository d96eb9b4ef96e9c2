#pragma once

#include <string>

#include "platform/runtime/value.hpp"

namespace tarnsift {

/// The word for a status as reports and pages show it: Affected, Clean, else Working, in the chosen language.
std::string statusText(const platform::Value& status);

} // namespace tarnsift
