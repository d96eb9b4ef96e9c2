#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// "##0.0%": the share times 100 with one digit behind the point; halves round away from zero, so 0.0625 gives "6.3%".
std::string formatPercent(float share);
/// "000000": at least six digits with leading zeros; more digits print in full.
std::string formatSixDigits(std::int64_t number);

} // namespace platform
