#pragma once

#include <optional>
#include <string_view>

#include "cobol/keywords.hpp"

namespace cobol {

/// Shape of a register that the compiler declares by itself.
struct RegisterShape {
  std::string_view picture;
  std::string_view usage;
  int bytes;
  int digits;
};
/// The shape of a special register; none for any other word.
std::optional<RegisterShape> registerShape(Keyword word);

/// How a function's result relates to its arguments.
enum class FunctionKind : unsigned char {
  none,       ///< no intrinsic function of that name
  preserving, ///< the result is one of the arguments, perhaps written differently
  length,     ///< only the argument's size counts
  other,
};
FunctionKind functionKind(std::string_view name);

} // namespace cobol
