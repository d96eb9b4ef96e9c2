#pragma once

#include <string>
#include <vector>

#include "orvane/report_records.hpp"

namespace orvane {

/// The totals of a report whose record format has a column with the attribute GROUP.
struct ReportTotals {
  struct Row {
    std::string group; ///< value of the group column; "" for records without one
    std::int64_t programs = 0;
    std::vector<platform::Value> values; ///< for each of `columns`: sums of numbers, shares of the sums
  };
  std::size_t groupColumn = 0;
  std::vector<std::size_t> columns; ///< of the report, those with numbers or percentages
  std::vector<Row> rows;            ///< by group in the order that the format names, then others, "" last
  Row total;
};

/// Whether the report has totals.
bool hasTotals(const std::vector<ReportColumn>& columns);
/// Goes through all records. Only for a report that has totals.
ReportTotals totalsOf(const std::vector<ReportColumn>& columns, RecordFile& records);

} // namespace orvane
