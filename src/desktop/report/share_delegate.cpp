#include "desktop/report/share_delegate.hpp"

#include <QPainter>

#include "desktop/report/report_model.hpp"
#include "desktop/theme.hpp"

namespace desktop {

void ShareDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const QVariant share = index.data(kShareRole);
  if (share.isValid() && share.toDouble() > 0) {
    const QRect cell = option.rect.adjusted(3, 3, -3, -3);
    QColor colour = theme().affected;
    colour.setAlpha(60);
    painter->fillRect(QRectF(cell.left(), cell.top(), cell.width() * share.toDouble(), cell.height()), colour);
  }
  QStyledItemDelegate::paint(painter, option, index);
}

} // namespace desktop
