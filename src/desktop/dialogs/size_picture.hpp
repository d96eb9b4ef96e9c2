#pragma once

#include <QWidget>
#include <array>
#include <functional>
#include <map>

#include "desktop/dialogs/count_axis.hpp"
#include "tarnsift/reports/change_size.hpp"

namespace desktop {

/// The classes of a change, from the smallest.
inline constexpr std::array<const char*, 4> kSizeNames = {"S", "M", "L", "XL"};
using SizeShares = std::array<int, kSizeNames.size()>;

/// How many of the counts fall into each class.
SizeShares sharesOf(const std::vector<std::int64_t>& counts, const tarnsift::SizeLimits& limits);
/// "12 programs" in the window's language.
QString programsText(int count);

/// A small picture of how programs fall into the classes: a bar for the programs of about the same count, and the three
/// limits as lines that can be dragged. With the focus, Left and Right move a line (with Shift by ten), Up and Down
/// choose it. A line that is moved here never passes another.
class SizePicture final : public QWidget {
 public:
  SizePicture(std::vector<std::int64_t> counts, const tarnsift::SizeLimits& limits, QWidget* parent);

  void setLimits(const tarnsift::SizeLimits& limits);
  std::function<void(const tarnsift::SizeLimits&)> onMoved;
  /// The colour of a class, by its place in kSizeNames.
  static QColor colourOf(std::size_t size);
  /// Where the line of a limit stands, in this widget.
  QPoint lineAt(std::size_t limit) const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct Bar {
    double x = 0;
    double width = 0;
    SizeShares programs{};
  };
  std::array<std::int32_t, 3> limits() const { return {m_limits.s, m_limits.m, m_limits.l}; }
  double lineOf(std::int32_t limit) const;
  int nearestLine(double x) const; ///< -1: none so near that it is meant
  void moveLine(std::size_t line, std::int64_t to);
  std::map<std::int64_t, Bar> bars() const;
  void paintGround(QPainter& painter) const;
  void paintBars(QPainter& painter) const;
  void paintAxis(QPainter& painter) const;
  void paintLines(QPainter& painter) const;
  void describe();

  std::vector<std::int64_t> m_counts;
  tarnsift::SizeLimits m_limits;
  CountAxis m_axis;
  std::size_t m_active = 0;
  bool m_dragging = false;
};

} // namespace desktop
