#pragma once

#include <cstdint>
#include <vector>

namespace desktop {

/// Where counts stand on a line of pixels: in equal steps, or by their logarithm where a few counts tower over the
/// rest.
class CountAxis {
 public:
  CountAxis() = default;
  /// For counts from 0; `highest` is to be on the axis as well.
  CountAxis(std::vector<std::int64_t> counts, std::int64_t highest);

  void setPixels(double left, double right);
  double pixelOf(double count) const; ///< held between the ends
  double countAt(double pixel) const;
  bool logarithmic() const { return m_logarithmic; }
  /// Round counts to write below the axis, at least so many pixels apart.
  std::vector<std::int64_t> ticks(double apart) const;

 private:
  double scaled(double count) const;
  bool m_logarithmic = false;
  double m_highest = 1;
  double m_left = 0;
  double m_right = 1;
};

} // namespace desktop
