#include "tarnsift/reports/change_size.hpp"

#include <algorithm>

namespace tarnsift {

SizeLimits proposeSizeLimits(std::span<const std::int64_t> counts) {
  constexpr std::int64_t kAboveAll = 999999;
  std::int64_t lowest = kAboveAll;
  std::int64_t highest = 0;
  for (const std::int64_t count : counts) {
    if (count == 0) continue;
    lowest = std::min(lowest, count);
    highest = std::max(highest, count);
  }
  const std::int64_t s = lowest + (lowest < highest ? 1 : 0);
  return {static_cast<std::int32_t>(s), static_cast<std::int32_t>((s + highest) / 2),
          static_cast<std::int32_t>(highest)};
}

std::string_view changeSize(std::int64_t count, const SizeLimits& limits) {
  if (count < limits.s) return "S";
  if (count < limits.m) return "M";
  if (count < limits.l) return "L";
  return "XL";
}

} // namespace tarnsift
