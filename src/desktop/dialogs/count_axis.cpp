#include "desktop/dialogs/count_axis.hpp"

#include <algorithm>
#include <cmath>

namespace desktop {

CountAxis::CountAxis(std::vector<std::int64_t> counts, std::int64_t highest) {
  std::sort(counts.begin(), counts.end());
  const std::int64_t most = counts.empty() ? 0 : counts.back();
  const std::int64_t middle = counts.empty() ? 0 : counts[counts.size() / 2];
  constexpr std::int64_t kTowers = 12;
  m_logarithmic = most > kTowers * std::max<std::int64_t>(middle, 1);
  m_highest = static_cast<double>(std::max(most, highest)) + 1;
}

void CountAxis::setPixels(double left, double right) {
  m_left = left;
  m_right = std::max(right, left + 1);
}

double CountAxis::scaled(double count) const {
  return m_logarithmic ? std::log1p(count) : count;
}

double CountAxis::pixelOf(double count) const {
  const double held = std::clamp(count, 0.0, m_highest);
  return m_left + (m_right - m_left) * scaled(held) / scaled(m_highest);
}

double CountAxis::countAt(double pixel) const {
  const double share = std::clamp((pixel - m_left) / (m_right - m_left), 0.0, 1.0) * scaled(m_highest);
  return m_logarithmic ? std::expm1(share) : share;
}

// 1, 2, 5, 10, 20 …: on an even axis the multiples of one of them, else these themselves.
std::vector<std::int64_t> CountAxis::ticks(double apart) const {
  std::vector<std::int64_t> ticks{0};
  const auto highest = static_cast<std::int64_t>(m_highest);
  for (std::int64_t ten = 1; ten <= highest; ten *= 10) {
    for (const std::int64_t step : {ten, 2 * ten, 5 * ten}) {
      if (step > highest) return ticks;
      if (m_logarithmic) {
        const double at = pixelOf(static_cast<double>(step));
        if (at - pixelOf(static_cast<double>(ticks.back())) >= apart) ticks.push_back(step);
      } else if (pixelOf(static_cast<double>(step)) - m_left >= apart) {
        for (std::int64_t tick = step; tick <= highest; tick += step)
          ticks.push_back(tick);
        return ticks;
      }
    }
  }
  return ticks;
}

} // namespace desktop
