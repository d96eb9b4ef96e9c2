#pragma once

#include <cstdint>
#include <string>

namespace orvane {

/// "8" or "6-8", both ends included.
struct NumberRange {
  std::int64_t low = 0;
  std::int64_t high = 0;
  bool holds(std::int64_t number) const { return low <= number && number <= high; }
};
/// Throws platform::Error that names the text.
NumberRange readRange(const std::string& text);

} // namespace orvane
