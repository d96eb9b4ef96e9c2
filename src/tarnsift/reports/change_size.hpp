#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace tarnsift {

/// Limits of the change sizes: a count below `s` is "S", else below `m` "M", else below `l` "L", else "XL".
struct SizeLimits {
  std::int32_t s = 0;
  std::int32_t m = 0;
  std::int32_t l = 0;
};

/// The proposal for these counts; counts of 0 take no part.
SizeLimits proposeSizeLimits(std::span<const std::int64_t> counts);
std::string_view changeSize(std::int64_t count, const SizeLimits& limits);

} // namespace tarnsift
