#include <nlohmann/json.hpp>

#include "orvane/report_file.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

std::string csvField(const PlainField& field, const platform::Value& value) {
  std::string text = platform::toValidUtf8(value.asText());
  if (field.isNumber || field.isFlag) return text;
  if (!text.empty() && std::string_view("=+-@").find(text.front()) != std::string_view::npos) text.insert(0, 1, '\'');
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  return "\"" + platform::replaceAll(std::move(text), "\"", "\"\"") + "\"";
}

nlohmann::ordered_json jsonValue(const PlainField& field, const platform::Value& value) {
  if (value.isNull()) return nullptr;
  if (field.isNumber) return value.asInteger();
  if (field.isFlag) return value.asBool();
  return platform::toValidUtf8(value.asText());
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
    nlohmann::ordered_json object;
    for (std::size_t i = 0; i < fields.size(); ++i)
      object[fields[i].key] = jsonValue(fields[i], (*row)[i]);
    out << object.dump() << "\n";
  }
}

} // namespace orvane
