#include "platform/runtime/formats.hpp"

#include <cmath>

#include <fmt/format.h>

namespace platform {

std::string formatPercent(float share) {
  const double tenths = std::round(static_cast<double>(share) * 1000.0);
  return fmt::format("{:.1f}%", tenths / 10.0);
}

std::string formatSixDigits(std::int64_t number) {
  return fmt::format("{}{:06}", number < 0 ? "-" : "", number < 0 ? -number : number);
}

} // namespace platform
