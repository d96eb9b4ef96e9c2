#pragma once

#include <vector>

#include <QString>

class QAbstractItemModel;
class QPrinter;

namespace desktop {

/// Prints a table page by page: title, headings and page number on each. Columns share the width of the page as
/// `widths` do; a text that does not fit its cell is cut with an ellipsis.
void printTable(QPrinter& printer, const QAbstractItemModel& model, const QString& title,
                const std::vector<int>& widths);

} // namespace desktop
