#pragma once

#include <QStyledItemDelegate>

namespace desktop {

/// Draws a percentage with a bar of its length behind the digits.
class ShareDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

} // namespace desktop
