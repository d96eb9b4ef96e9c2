#pragma once

#include <span>

#include "platform/runtime/string_table.hpp"

namespace tarnsift {

/// The component's numbered string table in one language, ids ascending. All three have the same ids and the same
/// placeholders.
std::span<const platform::StringEntry> englishStrings();
std::span<const platform::StringEntry> japaneseStrings();
std::span<const platform::StringEntry> koreanStrings();

/// Makes the three the string tables that LoadResString reads.
void registerStrings();

} // namespace tarnsift
