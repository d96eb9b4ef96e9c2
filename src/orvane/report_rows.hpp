#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "orvane/report_records.hpp"

namespace orvane {

/// A finished report: what every format and the screen are made of.
struct FinishedReport {
  std::string title;
  std::string styleSheet;
  std::vector<ReportColumn> columns;
  std::shared_ptr<RecordFile> records;
};

/// The rows of a report as a table on the screen: read in pieces, sorted, filtered. Rows and fields count from 0.
class ReportRows {
 public:
  explicit ReportRows(FinishedReport report);

  const std::vector<PlainField>& fields() const { return m_rows.fields(); }
  /// Reads up to that many further rows; those that pass the filter wait. False when there are no more.
  bool readMore(std::size_t count);
  std::size_t waiting() const { return m_waiting.size(); }
  /// Shows the rows that wait: at the end, or at their places when the table is sorted.
  void join();
  bool isSorted() const { return m_sortField.has_value(); }
  std::size_t read() const { return m_ends.size(); }              ///< rows read so far
  std::size_t count() const { return m_shown.size(); }            ///< of them those that pass the filter
  std::size_t total() const { return m_report.records->count(); } ///< records; a row may take several

  /// The text of a cell as a reader sees it; numbers as digits, percentages as "12.5%", flags as "1" or "".
  std::string_view cell(std::size_t row, std::size_t field) const { return cellOf(m_shown[row], field); }

  /// Shows the rows that hold every word of the text, in any column and any case. "" shows all.
  void filter(std::string_view text);
  /// By a field's text without regard to case, numbers by value; stable. nullopt: as the report has them.
  void sort(std::optional<std::size_t> field, bool descending);

  const FinishedReport& report() const { return m_report; }

 private:
  using Row = std::uint32_t;
  std::string_view cellOf(Row row, std::size_t field) const;
  std::string_view folded(Row row) const;
  bool passes(Row row) const;
  void add(const PlainRow& row);
  void order();
  void show();

  FinishedReport m_report;
  PlainRows m_rows;
  std::string m_texts;  ///< all cells one behind the other, a line feed behind each
  std::string m_folded; ///< the same in one case
  std::vector<std::uint64_t> m_cellEnds;
  std::vector<std::uint64_t> m_ends; ///< of rows
  std::vector<Row> m_order;          ///< all rows as sorted; empty: as read
  std::vector<Row> m_shown;
  std::vector<Row> m_waiting;
  std::vector<std::string> m_words;
  std::optional<std::size_t> m_sortField;
  bool m_descending = false;
};

} // namespace orvane
