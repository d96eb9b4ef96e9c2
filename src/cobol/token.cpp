#include "cobol/token.hpp"

#include <algorithm>
#include <limits>

namespace cobol {
namespace {

constexpr std::size_t kPlaceLimit = 64;

} // namespace

void addPlace(std::vector<Position>& places, const Position& place) {
  if (std::find(places.begin(), places.end(), place) != places.end()) return;
  if (!places.empty()) {
    Position& last = places.back();
    if (last.file == place.file && last.line == place.line && last.column + last.length == place.column) {
      last.length += place.length;
      return;
    }
  }
  if (places.size() < kPlaceLimit) places.push_back(place);
}

std::uint16_t FurtherPlaces::add(const std::vector<Position>& places) {
  if (places.empty()) return 0;
  if (const auto known = m_numbers.find(places); known != m_numbers.end()) return known->second;
  if (m_lists.size() > std::numeric_limits<std::uint16_t>::max()) return 0;
  const auto number = static_cast<std::uint16_t>(m_lists.size());
  m_lists.push_back(places);
  m_numbers.emplace(places, number);
  return number;
}

} // namespace cobol
