#include "orvane/report_records.hpp"

#include <cerrno>
#include <cstdint>
#include <cstring>

#include "platform/runtime/string_table.hpp"
#include "platform/runtime/text.hpp"
#include "platform/xml/xml.hpp"

namespace orvane {

namespace {

constexpr const char* kPlaceKey = "File";
constexpr const char* kCodeKey = "Source";
constexpr const char* kHeadKey = "ProgramName";

// Headings of the columns that the record format does not name itself.
struct OwnHeading {
  std::string_view key;
  const char* english;
  const char* japanese;
  const char* korean;
};
constexpr OwnHeading kOwnHeadings[] = {
    {"program", "Program", "プログラム", "프로그램"},
    {"file", "File", "ファイル", "파일"},
    {"line", "Line", "行", "줄"},
    {"column", "Column", "桁", "열"},
    {"text", "Text", "テキスト", "텍스트"},
    {"marked", "Marked", "該当", "해당"},
};

PlainField ownField(std::string_view key, bool isNumber = false, bool isFlag = false) {
  const auto* heading = std::find_if(std::begin(kOwnHeadings), std::end(kOwnHeadings),
                                     [&](const auto& entry) { return entry.key == key; });
  switch (platform::language()) {
  case platform::Language::Japanese:
    return {std::string(key), heading->japanese, isNumber, isFlag};
  case platform::Language::Korean:
    return {std::string(key), heading->korean, isNumber, isFlag};
  default:
    return {std::string(key), heading->english, isNumber, isFlag};
  }
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
  for (const platform::Node& field : document.documentElement().children())
    columns.push_back(
        {field.name(), field.getAttribute("CAPTION").asText(), field.getAttribute("RAW") == platform::Value("no")});
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
    m_fields.push_back({platform::lower(column.key), column.caption, false, false});
    m_sources.push_back(i);
  }
  if (m_isCode)
    m_fields = {ownField("program"), ownField("file"), ownField("line", true), ownField("text"),
                ownField("marked", false, true)};
  if (m_place != SIZE_MAX) {
    m_fields.insert(m_fields.end(), {ownField("file"), ownField("line", true), ownField("column", true)});
  }
}

std::optional<PlainRow> PlainRows::next() {
  return m_isCode ? nextCodeLine() : nextDataname();
}

// The place is written "file [000042,000008]".
std::optional<PlainRow> PlainRows::nextDataname() {
  const auto record = m_records.next();
  if (!record) return std::nullopt;
  PlainRow row;
  for (const std::size_t source : m_sources)
    row.emplace_back((*record)[source]);
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
