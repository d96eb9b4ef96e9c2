#pragma once

#include <cmath>

#include <QPoint>
#include <QRect>
#include <QString>
#include <string>

/// The one place where the models' units become the screen's: 15 twips are one device-independent pixel.
namespace desktop {

inline constexpr double kTwipsPerPixel = 15;

inline int toPixels(double twips) {
  return static_cast<int>(std::lround(twips / kTwipsPerPixel));
}
inline double toTwips(double pixels) {
  return pixels * kTwipsPerPixel;
}
/// Both edges are rounded, so that neighbours meet.
inline QRect toPixels(double left, double top, double width, double height) {
  const QPoint first(toPixels(left), toPixels(top));
  const QPoint behind(toPixels(left + width), toPixels(top + height));
  return {first.x(), first.y(), behind.x() - first.x(), behind.y() - first.y()};
}

inline QString text(const std::string& utf8) {
  return QString::fromStdString(utf8);
}

} // namespace desktop
