#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "orvane/report_file.hpp"
#include "orvane/report_totals.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

using Json = nlohmann::ordered_json;

std::string csvField(const PlainField& field, const platform::Value& value) {
  if (field.kind == FieldKind::percent && !value.isNull()) return fmt::format("{:.1f}", value.asDouble());
  std::string text = platform::toValidUtf8(value.asText());
  if (field.kind != FieldKind::text) return text;
  if (!text.empty() && std::string_view("=+-@").find(text.front()) != std::string_view::npos) text.insert(0, 1, '\'');
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  return "\"" + platform::replaceAll(std::move(text), "\"", "\"\"") + "\"";
}

Json jsonValue(FieldKind kind, const platform::Value& value) {
  if (value.isNull()) return nullptr;
  switch (kind) {
  case FieldKind::number:
    return value.asInteger();
  case FieldKind::percent:
    return value.asDouble();
  case FieldKind::flag:
    return value.asBool();
  default:
    return platform::toValidUtf8(value.asText());
  }
}

Json totalsRow(const std::vector<ReportColumn>& columns, const ReportTotals& totals, const ReportTotals::Row& row) {
  Json object = {{"programs", row.programs}};
  for (std::size_t i = 0; i < totals.columns.size(); ++i) {
    const ReportColumn& column = columns[totals.columns[i]];
    object[platform::lower(column.key)] = jsonValue(column.kind, row.values[i]);
  }
  return object;
}

} // namespace

void writeCsv(std::ostream& out, const std::vector<ReportColumn>& columns, RecordFile& records) {
  PlainRows rows(columns, records);
  const auto& fields = rows.fields();
  for (std::size_t i = 0; i < fields.size(); ++i)
    out << (i ? "," : "") << csvField({}, platform::Value(fields[i].caption));
  out << "\r\n";
  while (const auto row = rows.next()) {
    for (std::size_t i = 0; i < fields.size(); ++i)
      out << (i ? "," : "") << csvField(fields[i], (*row)[i]);
    out << "\r\n";
  }
}

void writeJson(std::ostream& out, const std::vector<ReportColumn>& columns, RecordFile& records) {
  PlainRows rows(columns, records);
  const auto& fields = rows.fields();
  while (const auto row = rows.next()) {
    Json object;
    for (std::size_t i = 0; i < fields.size(); ++i)
      object[fields[i].key] = jsonValue(fields[i].kind, (*row)[i]);
    out << object.dump() << "\n";
  }
  if (!hasTotals(columns)) return;
  const ReportTotals totals = totalsOf(columns, records);
  Json summary = Json::object();
  for (const ReportTotals::Row& row : totals.rows)
    summary[row.group.empty() ? "none" : platform::toValidUtf8(row.group)] = totalsRow(columns, totals, row);
  summary["total"] = totalsRow(columns, totals, totals.total);
  out << Json{{"summary", summary}}.dump() << "\n";
}

} // namespace orvane
