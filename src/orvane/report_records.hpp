#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/runtime/value.hpp"

namespace orvane {

enum class FieldKind : std::uint8_t { text, number, percent, flag };

/// A column of a report, from the record format that is handed over. Beside what the component's formats have, a format
/// can tell what a column holds: TYPE="number" or "percent", OF="PART/WHOLE" the columns that a percentage in a row of
/// totals comes from, GROUP="A,B" that totals are made for each value of the column, in this order.
struct ReportColumn {
  std::string key;
  std::string caption;
  bool finishedHtml = false; ///< RAW="no": values are markup already
  FieldKind kind = FieldKind::text;
  std::string shareOf;
  std::string groups;
};
/// The component's own shares have no TYPE and are known by their keys. Throws platform::XmlError for a text that is no
/// record format.
std::vector<ReportColumn> readRecordFormat(const std::string& format);

/// One record: a text for each column of the format, empty where the field was left out.
using ReportRecord = std::vector<std::string>;

/// The records of one report, in a file as they come, so a report of any size takes no memory.
class RecordFile {
 public:
  RecordFile();
  ~RecordFile();
  RecordFile(const RecordFile&) = delete;
  RecordFile& operator=(const RecordFile&) = delete;

  void append(const ReportRecord& record);
  /// Goes back to the first record.
  void rewind();
  std::optional<ReportRecord> next();
  std::size_t count() const { return m_count; }

 private:
  std::FILE* m_file = nullptr;
  std::size_t m_count = 0;
};

/// A report as rows of plain values for CSV, JSON and XLSX: texts, whole numbers, percentages as double (12.5
/// for 12.5%), flags; Null where a number is missing.
struct PlainField {
  std::string key;     ///< never translated
  std::string caption; ///< heading in CSV and XLSX, in the chosen language
  FieldKind kind = FieldKind::text;
};
using PlainRow = std::vector<platform::Value>;

/// Turns records into plain rows: the place of a dataname becomes file, line and column; affected code gives one row a
/// source line with its program and file, without heads and gaps.
class PlainRows {
 public:
  PlainRows(const std::vector<ReportColumn>& columns, RecordFile& records);
  const std::vector<PlainField>& fields() const { return m_fields; }
  std::optional<PlainRow> next();

 private:
  std::optional<PlainRow> nextDataname();
  std::optional<PlainRow> nextCodeLine();
  RecordFile& m_records;
  std::vector<PlainField> m_fields;
  platform::Value valueOf(std::size_t column, const std::string& text) const;
  std::vector<FieldKind> m_kinds;     ///< of the record's columns
  std::vector<std::size_t> m_sources; ///< column of the record for each field
  std::size_t m_place = SIZE_MAX;     ///< column that holds "file [line,column]"
  bool m_isCode = false;
  std::string m_program;
  std::string m_file;
};

/// The share that a percentage shows, 12.5 for "     12.5%"; nothing when it is none.
std::optional<double> percentageOf(std::string_view text);
/// Valid UTF-8 that XML allows: its pictures stand for control characters.
std::string xmlText(std::string_view text);
/// The text of finished HTML: entities turned back, tags gone.
std::string plainText(std::string_view html);

} // namespace orvane
