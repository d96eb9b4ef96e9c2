#pragma once

#include <functional>
#include <vector>

#include <QWidget>

#include "orvane/source_on_view.hpp"

namespace desktop {

/// The whole file as a strip beside the scroll bar, with a tick for each mark. A click goes to the nearest one.
class MarkBar : public QWidget {
 public:
  explicit MarkBar(QWidget* parent = nullptr);
  void show(std::vector<orvane::SourceMark> marks, int lines);
  QSize sizeHint() const override { return {12, 40}; }
  std::function<void(int)> onChosen; ///< index of the mark

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  double placeOf(const orvane::SourceMark& mark) const;
  int nearest(double y) const;
  std::vector<orvane::SourceMark> m_marks;
  int m_lines = 0;
};

} // namespace desktop
