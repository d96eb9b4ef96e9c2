#pragma once

#include "cobol/analysis.hpp"
#include "cobol/environment.hpp"
#include "cobol/item_tree.hpp"
#include "cobol/token_cursor.hpp"

namespace cobol {

/// Where a description is read: one program's data division.
struct DescriptionContext {
  const TokenStream& stream;
  TokenCursor& cursor;
  int program;
  Environment& environment;
  ItemTree& items;
  Analysis& analysis;
  Diagnostics& diagnostics;
};

/// Reads an FD, SD, RD or CD from its first word to its period, fills or adds its DataFile and opens it in the item
/// tree, so that the records that follow are its own. Of a CD the implied record with its fields is made as well.
void readFileDescription(DescriptionContext& context);

} // namespace cobol
