#pragma once

#include <span>

#include "platform/runtime/string_table.hpp"

namespace tarnsift {

/// The component's numbered string table in one language, ids ascending.
std::span<const platform::StringEntry> englishStrings();

} // namespace tarnsift
