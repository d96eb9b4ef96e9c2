#pragma once

#include <string_view>

namespace platform {

/// The wildcard match of the whole text, case-sensitive: `?` one character, `*` any run, `#` one digit, `[abc]`,
/// `[a-z]` one of a set, `[!abc]` one outside it; `[]` matches the empty text. Characters are code points. Throws
/// PatternError for a bracket that is not closed and for a range that runs downward.
bool like(std::string_view text, std::string_view pattern);

} // namespace platform
