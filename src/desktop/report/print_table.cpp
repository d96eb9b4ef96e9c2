#include "desktop/report/print_table.hpp"

#include <algorithm>
#include <numeric>

#include <QAbstractItemModel>
#include <QPainter>
#include <QPrinter>

namespace desktop {

namespace {

// One printing run: where the pen stands on the page.
class TablePrint {
 public:
  TablePrint(QPrinter& printer, const QAbstractItemModel& model, const QString& title, const std::vector<int>& widths)
      : m_printer(printer), m_model(model), m_title(title), m_painter(&printer) {
    QFont font;
    font.setPointSizeF(8);
    m_painter.setFont(font);
    m_page = m_painter.viewport();
    m_lineHeight = m_painter.fontMetrics().height() * 5 / 4;
    const double sum = std::max(1, std::accumulate(widths.begin(), widths.end(), 0));
    double left = m_page.left();
    for (const int width : widths) {
      m_lefts.push_back(left);
      left += m_page.width() * width / sum;
    }
    m_lefts.push_back(m_page.right());
  }

  void run() {
    beginPage();
    for (int row = 0; row < m_model.rowCount(); ++row) {
      if (m_top + m_lineHeight > m_page.bottom() - m_lineHeight) {
        m_printer.newPage();
        beginPage();
      }
      for (int column = 0; column < m_model.columnCount(); ++column) {
        const QModelIndex index = m_model.index(row, column);
        cell(column, index.data().toString(), Qt::Alignment(index.data(Qt::TextAlignmentRole).toInt()));
      }
      m_top += m_lineHeight;
    }
  }

 private:
  void cell(int column, const QString& text, Qt::Alignment alignment) {
    const auto at = static_cast<std::size_t>(column);
    const QRectF box(m_lefts[at] + m_lineHeight / 4, m_top, m_lefts[at + 1] - m_lefts[at] - m_lineHeight / 2,
                     m_lineHeight);
    m_painter.drawText(box, static_cast<int>(alignment) | Qt::TextSingleLine,
                       m_painter.fontMetrics().elidedText(text, Qt::ElideRight, static_cast<int>(box.width())));
  }

  void beginPage() {
    ++m_number;
    m_top = m_page.top();
    QFont bold = m_painter.font(), plain = bold;
    bold.setBold(true);
    m_painter.setFont(bold);
    m_painter.drawText(QRectF(m_page.left(), m_top, m_page.width(), m_lineHeight), Qt::AlignLeft, m_title);
    m_top += 2 * m_lineHeight;
    for (int column = 0; column < m_model.columnCount(); ++column)
      cell(column, m_model.headerData(column, Qt::Horizontal).toString(), Qt::AlignLeft | Qt::AlignVCenter);
    m_painter.setFont(plain);
    m_top += m_lineHeight;
    m_painter.drawLine(QPointF(m_page.left(), m_top), QPointF(m_page.right(), m_top));
    m_painter.drawText(QRectF(m_page.left(), m_page.bottom() - m_lineHeight, m_page.width(), m_lineHeight),
                       Qt::AlignRight | Qt::AlignBottom, QString::number(m_number));
  }

  QPrinter& m_printer;
  const QAbstractItemModel& m_model;
  QString m_title;
  QPainter m_painter;
  QRect m_page;
  std::vector<double> m_lefts;
  double m_lineHeight = 0;
  double m_top = 0;
  int m_number = 0;
};

} // namespace

void printTable(QPrinter& printer, const QAbstractItemModel& model, const QString& title,
                const std::vector<int>& widths) {
  TablePrint(printer, model, title, widths).run();
}

} // namespace desktop
