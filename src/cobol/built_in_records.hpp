#pragma once

#include <span>
#include <string_view>

#include "cobol/item_tree.hpp"

namespace cobol {

/// The items of a record that a system supplies (SQLCA, SQLDA, DFHAID, DFHBMSCA, DFHEIBLK), its level 01 first; empty
/// for any other name.
std::span<const ItemTree::MadeItem> builtInRecord(std::string_view copybook);

} // namespace cobol
