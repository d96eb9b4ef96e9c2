#include "orvane/report_totals.hpp"

#include <map>

#include "platform/runtime/formats.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

struct Sums {
  std::int64_t programs = 0;
  std::vector<std::int64_t> columns;
  void add(const std::vector<ReportColumn>& format, const ReportRecord& record) {
    ++programs;
    columns.resize(format.size());
    for (std::size_t i = 0; i < format.size(); ++i)
      if (format[i].kind == FieldKind::number) columns[i] += platform::Value(record[i]).asInteger();
  }
};

std::size_t columnNamed(const std::vector<ReportColumn>& columns, std::string_view key) {
  const auto at = std::find_if(columns.begin(), columns.end(), [&](const auto& column) { return column.key == key; });
  if (at == columns.end()) throw platform::Error("the record format has no column " + std::string(key));
  return static_cast<std::size_t>(at - columns.begin());
}

ReportTotals::Row rowOf(const std::string& group, const Sums& sums, const std::vector<ReportColumn>& format,
                        const std::vector<std::size_t>& columns) {
  ReportTotals::Row row{group, sums.programs, {}};
  for (const std::size_t i : columns) {
    if (format[i].kind == FieldKind::number) {
      row.values.emplace_back(sums.columns[i]);
      continue;
    }
    const std::vector<std::string> of = platform::splitAt(format[i].shareOf, '/');
    if (of.size() != 2) {
      row.values.emplace_back();
      continue;
    }
    const auto part = static_cast<double>(sums.columns[columnNamed(format, of[0])]);
    const auto whole = static_cast<double>(sums.columns[columnNamed(format, of[1])]);
    // rounded as the rows are
    const auto share = whole == 0 ? 0.0F : static_cast<float>(part / whole);
    row.values.emplace_back(percentageOf(platform::formatPercent(share)).value_or(0));
  }
  return row;
}

} // namespace

bool hasTotals(const std::vector<ReportColumn>& columns) {
  return std::any_of(columns.begin(), columns.end(), [](const auto& column) { return !column.groups.empty(); });
}

ReportTotals totalsOf(const std::vector<ReportColumn>& columns, RecordFile& records) {
  ReportTotals totals;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (!columns[i].groups.empty()) totals.groupColumn = i;
    if (columns[i].kind == FieldKind::number || columns[i].kind == FieldKind::percent) totals.columns.push_back(i);
  }
  std::map<std::string, Sums> groups;
  Sums all;
  all.columns.resize(columns.size());
  records.rewind();
  while (const auto record = records.next()) {
    groups[(*record)[totals.groupColumn]].add(columns, *record);
    all.add(columns, *record);
  }
  const auto take = [&](const std::string& name) {
    if (auto group = groups.extract(name)) totals.rows.push_back(rowOf(name, group.mapped(), columns, totals.columns));
  };
  for (const std::string& name : platform::splitAt(columns[totals.groupColumn].groups, ','))
    take(name);
  for (auto other = groups.upper_bound(""); other != groups.end(); other = groups.upper_bound(""))
    take(std::string(other->first));
  take("");
  totals.total = rowOf("", all, columns, totals.columns);
  return totals;
}

} // namespace orvane
