#include "orvane/report_records.hpp"

#include <cerrno>
#include <charconv>
#include <cstdint>
#include <cstring>

#include "orvane/report_texts.hpp"
#include "platform/runtime/text.hpp"
#include "platform/xml/xml.hpp"

namespace orvane {

namespace {

constexpr const char* kPlaceKey = "File";
constexpr const char* kCodeKey = "Source";
constexpr const char* kHeadKey = "ProgramName";

// The shares of the metrics report and their keys in JSON.
constexpr std::pair<std::string_view, const char*> kShares[] = {{"Declarations", "declaration_share"},
                                                                {"Usages", "usage_share"}};

PlainField ownField(const char* key, FieldKind kind = FieldKind::text) {
  return {key, ownText(key), kind};
}

FieldKind kindOf(const platform::Node& field) {
  const std::string type = field.getAttribute("TYPE").asText();
  if (type == "number") return FieldKind::number;
  return type == "percent" ? FieldKind::percent : FieldKind::text;
}

[[noreturn]] void failed(const char* what) {
  throw platform::FileError(what, std::strerror(errno));
}

std::string between(const std::string& text, std::string_view from, std::string_view to) {
  const auto start = text.find(from);
  if (start == std::string::npos) return {};
  const auto begin = start + from.size();
  const auto end = text.rfind(to);
  return end == std::string::npos || end < begin ? std::string() : text.substr(begin, end - begin);
}

} // namespace

std::vector<ReportColumn> readRecordFormat(const std::string& format) {
  const platform::Document document = platform::Document::loadText(format);
  std::vector<ReportColumn> columns;
  bool typed = false;
  for (const platform::Node& field : document.documentElement().children()) {
    columns.push_back({field.name(), field.getAttribute("CAPTION").asText(),
                       field.getAttribute("RAW") == platform::Value("no"), kindOf(field),
                       field.getAttribute("OF").asText(), field.getAttribute("GROUP").asText()});
    typed = typed || columns.back().kind != FieldKind::text;
  }
  for (ReportColumn& column : columns)
    for (const auto& share : kShares)
      if (!typed && column.key == share.first) column.kind = FieldKind::percent;
  return columns;
}

RecordFile::RecordFile() : m_file(std::tmpfile()) {
  if (!m_file) failed("temporary report file");
}

RecordFile::~RecordFile() {
  if (m_file) std::fclose(m_file);
}

void RecordFile::append(const ReportRecord& record) {
  const auto put = [this](const void* data, std::size_t size) {
    if (size > 0 && std::fwrite(data, size, 1, m_file) != 1) failed("temporary report file");
  };
  const auto fields = static_cast<std::uint32_t>(record.size());
  put(&fields, sizeof fields);
  for (const std::string& field : record) {
    const auto length = static_cast<std::uint32_t>(field.size());
    put(&length, sizeof length);
    put(field.data(), field.size());
  }
  ++m_count;
}

void RecordFile::rewind() {
  if (std::fflush(m_file) != 0) failed("temporary report file");
  std::rewind(m_file);
}

std::optional<ReportRecord> RecordFile::next() {
  std::uint32_t fields = 0;
  if (std::fread(&fields, sizeof fields, 1, m_file) != 1) return std::nullopt;
  ReportRecord record(fields);
  for (std::string& field : record) {
    std::uint32_t length = 0;
    if (std::fread(&length, sizeof length, 1, m_file) != 1) failed("temporary report file");
    field.resize(length);
    if (length > 0 && std::fread(field.data(), length, 1, m_file) != 1) failed("temporary report file");
  }
  return record;
}

PlainRows::PlainRows(const std::vector<ReportColumn>& columns, RecordFile& records) : m_records(records) {
  m_records.rewind();
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const ReportColumn& column = columns[i];
    m_kinds.push_back(column.kind);
    if (column.key == kHeadKey) continue;
    if (column.key == kCodeKey) {
      m_isCode = true;
      continue;
    }
    if (column.key == "LineNo") continue;
    if (column.key == kPlaceKey) {
      m_place = i;
      continue;
    }
    m_fields.push_back({platform::lower(column.key), column.caption, column.kind});
    for (const auto& [share, jsonKey] : kShares)
      if (column.kind == FieldKind::percent && column.key == share) m_fields.back().key = jsonKey;
    m_sources.push_back(i);
  }
  if (m_isCode)
    m_fields = {ownField("program"), ownField("file"), ownField("line", FieldKind::number), ownField("text"),
                ownField("marked", FieldKind::flag)};
  if (m_place != SIZE_MAX) {
    m_fields.insert(m_fields.end(),
                    {ownField("file"), ownField("line", FieldKind::number), ownField("column", FieldKind::number)});
  }
}

std::optional<PlainRow> PlainRows::next() {
  return m_isCode ? nextCodeLine() : nextDataname();
}

platform::Value PlainRows::valueOf(std::size_t column, const std::string& text) const {
  if (m_kinds[column] == FieldKind::text) return text;
  if (text.empty()) return {};
  if (m_kinds[column] == FieldKind::number) return platform::Value(text).asInteger();
  const auto share = percentageOf(text);
  return share ? platform::Value(*share) : platform::Value();
}

// The place is written "file [000042,000008]".
std::optional<PlainRow> PlainRows::nextDataname() {
  const auto record = m_records.next();
  if (!record) return std::nullopt;
  PlainRow row;
  for (const std::size_t source : m_sources)
    row.push_back(valueOf(source, (*record)[source]));
  if (m_place == SIZE_MAX) return row;
  const std::string& place = (*record)[m_place];
  const auto bracket = place.rfind(" [");
  const auto comma = place.rfind(',');
  if (bracket == std::string::npos || comma == std::string::npos || comma < bracket || place.back() != ']') {
    row.insert(row.end(), {platform::Value(place), platform::Value(), platform::Value()});
    return row;
  }
  row.emplace_back(place.substr(0, bracket));
  row.emplace_back(platform::Value(place.substr(bracket + 2, comma - bracket - 2)).asInteger());
  row.emplace_back(platform::Value(place.substr(comma + 1, place.size() - comma - 2)).asInteger());
  return row;
}

// Columns: ProgramName, Source, LineNo. A head names the program, the file, or both; a gap has no line number.
std::optional<PlainRow> PlainRows::nextCodeLine() {
  while (const auto record = m_records.next()) {
    const std::string& head = (*record)[0];
    const std::string& source = (*record)[1];
    const std::string& number = (*record)[2];
    if (!head.empty()) {
      if (const std::string program = between(head, "<b style=\"font-size: 12pt\">", "</b>"); !program.empty())
        m_program = plainText(program);
      m_file = std::string(platform::trimmed(plainText(between(head, " &nbsp;[", "]"))));
    } else if (!number.empty()) {
      const bool marked = source.starts_with("<b>") && source.ends_with("</b>");
      return PlainRow{m_program, m_file, platform::Value(number).asInteger(), plainText(source), marked};
    }
  }
  return std::nullopt;
}

std::optional<double> percentageOf(std::string_view text) {
  text = platform::trimmed(text);
  if (!text.ends_with('%')) return std::nullopt;
  text.remove_suffix(1);
  double share = 0;
  const auto [end, code] = std::from_chars(text.data(), text.data() + text.size(), share);
  if (code != std::errc{} || end != text.data() + text.size()) return std::nullopt;
  return share;
}

std::string xmlText(std::string_view text) {
  const std::string valid = platform::toValidUtf8(text);
  std::string result;
  result.reserve(valid.size());
  for (std::size_t i = 0; i < valid.size(); ++i) {
    const char c = valid[i];
    const std::string_view three = std::string_view(valid).substr(i, 3);
    if (const auto code = static_cast<unsigned char>(c); code < 0x20 && c != '\t' && c != '\n' && c != '\r') {
      result += {'\xE2', '\x90', static_cast<char>(0x80 + code)};
    } else if (three == "\xEF\xBF\xBE" || three == "\xEF\xBF\xBF") {
      result += "\xEF\xBF\xBD";
      i += 2;
    } else {
      result += c;
    }
  }
  return result;
}

std::string plainText(std::string_view html) {
  std::string text;
  bool inTag = false;
  for (const char c : html) {
    if (c == '<')
      inTag = true;
    else if (c == '>' && inTag)
      inTag = false;
    else if (!inTag)
      text += c;
  }
  for (const auto& [entity, plain] :
       {std::pair("&lt;", "<"), {"&gt;", ">"}, {"&quot;", "\""}, {"&rsquo;", "'"}, {"&nbsp;", " "}, {"&amp;", "&"}})
    text = platform::replaceAll(std::move(text), entity, plain);
  return text;
}

} // namespace orvane
