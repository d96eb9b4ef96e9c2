#include "orvane/border.hpp"
#include "orvane/criteria/criterion.hpp"

namespace orvane {

namespace {

// A search asks for one construct of a program after the other; what is reached is worked out at the first.
Criterion reachedAcross(const Crossing& crossing) {
  return [crossing, reached = std::vector<std::uint32_t>()](const StoreData& data, std::uint32_t construct) mutable {
    if (construct == 0) reached = Border(data).reachedBy(crossing);
    return std::binary_search(reached.begin(), reached.end(), construct);
  };
}

} // namespace

Criterion isAcrossCall(const std::string& argument) {
  return reachedAcross(crossingNamed(argument, false));
}

Criterion isAcrossFile(const std::string& argument) {
  return reachedAcross(crossingNamed(argument, true));
}

} // namespace orvane
