#include <xlsxwriter.h>

#include <cctype>
#include <cmath>
#include <fstream>

#include "orvane/report_file.hpp"
#include "orvane/report_texts.hpp"
#include "orvane/report_totals.hpp"
#include "orvane/zip_reader.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

constexpr std::string_view kCutMark = " […]";
constexpr std::size_t kCutMarkUnits = 4;
constexpr std::size_t kSheetName = 31; // characters
constexpr std::size_t kNarrowest = 8, kWidest = 60, kWidestCode = 100;
constexpr std::size_t kFilterButton = 3;

[[noreturn]] void failed(const std::string& what) {
  throw platform::Error("the workbook could not be put together in the temporary folder (TMPDIR): " + what);
}

void check(lxw_error error) {
  if (error != LXW_NO_ERROR) failed(lxw_strerror(error));
}

std::size_t bytesOf(char lead) {
  const auto byte = static_cast<unsigned char>(lead);
  return byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
}

// The limit counts UTF-16 units: a character of four bytes is two of them.
std::string cutAt(const std::string& text, std::size_t limit) {
  std::size_t units = 0;
  std::size_t roomForMark = 0; // bytes that still leave room for the mark
  for (std::size_t at = 0; at < text.size(); at += bytesOf(text[at])) {
    units += bytesOf(text[at]) == 4 ? 2 : 1;
    if (units + kCutMarkUnits <= limit) roomForMark = at + bytesOf(text[at]);
    if (units > limit) return text.substr(0, roomForMark).append(kCutMark);
  }
  return text;
}

// Table programs read "_x0041_" in a cell as a letter A.
std::string withoutEscapes(std::string text) {
  for (auto at = text.find("_x"); at != std::string::npos; at = text.find("_x", at + 1)) {
    const std::string_view rest = std::string_view(text).substr(at);
    const auto isHex = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
    if (rest.size() < 7 || rest[6] != '_' || !std::all_of(rest.begin() + 2, rest.begin() + 6, isHex)) continue;
    text.insert(at, "_x005F");
    at += 6;
  }
  return text;
}

std::string sheetName(const std::string& title, std::size_t number) {
  std::string name = xmlText(title);
  for (char& c : name)
    if (std::string_view("[]:*?/\\'").find(c) != std::string_view::npos) c = ' ';
  const std::string suffix = number == 1 ? "" : " (" + std::to_string(number) + ")";
  name = std::string(platform::trimmed(platform::firstCodePoints(name, kSheetName - suffix.size())));
  return (name.empty() ? "1" : name) + suffix;
}

/// A workbook in a file of its own; rows go through to temporary files.
class Workbook {
 public:
  Workbook(const platform::TemporaryFolder& folder, const SheetLimits& limits)
      : m_limits(limits), m_temporary(folder.path()), m_file(folder.file("report.xlsx")) {
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.tmpdir = m_temporary.data();
    m_book = workbook_new_opt(m_file.c_str(), &options);
    if (!m_book) failed("no room for it");
    m_heading = workbook_add_format(m_book);
    format_set_bold(m_heading);
    m_percent = workbook_add_format(m_book);
    format_set_num_format(m_percent, "0.0%");
    m_code = workbook_add_format(m_book);
    format_set_font_name(m_code, "Courier New");
  }
  ~Workbook() {
    if (m_book) lxw_workbook_free(m_book);
  }
  Workbook(const Workbook&) = delete;
  Workbook& operator=(const Workbook&) = delete;

  void beginTable(const std::string& title, std::vector<PlainField> fields) {
    m_title = title;
    m_fields = std::move(fields);
    m_part = 0;
    beginSheet();
  }
  void addRow(const PlainRow& row) {
    if (m_row >= m_limits.rows) {
      endSheet();
      beginSheet();
    }
    m_rowIsEmpty = true;
    for (std::size_t i = 0; i < row.size(); ++i)
      writeCell(i, row[i]);
    ++m_row;
    if (!m_rowIsEmpty) ++m_rowsOfSheets.back();
  }
  void endTable() { endSheet(); }

  /// Gives the finished file. The library doesn't tell when its temporary files run full, so what it made is read back.
  const std::string& finish() {
    const lxw_error error = workbook_close(std::exchange(m_book, nullptr));
    check(error);
    const ZipReader archive(m_file);
    for (std::size_t i = 0; i < m_rowsOfSheets.size(); ++i) {
      const std::string part = "xl/worksheets/sheet" + std::to_string(i + 1) + ".xml";
      static constexpr std::string_view kRowEnd = "</row>";
      std::uint64_t rows = 0;
      std::string tail;
      archive.read(part, [&](std::string_view piece) {
        tail += piece;
        std::size_t at = 0;
        for (auto row = tail.find(kRowEnd); row != std::string::npos; row = tail.find(kRowEnd, at)) {
          ++rows;
          at = row + kRowEnd.size();
        }
        tail.erase(0, std::max(at, tail.size() - std::min(tail.size(), kRowEnd.size() - 1)));
      });
      if (rows != m_rowsOfSheets[i]) failed("the disk is full, or files must not grow so large");
    }
    return m_file;
  }

 private:
  void beginSheet() {
    m_sheet = workbook_add_worksheet(m_book, sheetName(m_title, ++m_part).c_str());
    if (!m_sheet) failed("a sheet cannot be called '" + m_title + "'");
    m_row = 0;
    m_widths.assign(m_fields.size(), kNarrowest);
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
      writeText(i, m_fields[i].caption, m_heading);
      m_widths[i] = std::max(m_widths[i], displayWidth(m_fields[i].caption) + kFilterButton);
    }
    ++m_row;
    m_rowsOfSheets.push_back(1);
  }

  void endSheet() {
    worksheet_freeze_panes(m_sheet, 1, 0);
    if (!m_fields.empty())
      check(worksheet_autofilter(m_sheet, 0, 0, m_row - 1, static_cast<lxw_col_t>(m_fields.size() - 1)));
    for (std::size_t i = 0; i < m_fields.size(); ++i) {
      const std::size_t widest = isCode(i) ? kWidestCode : kWidest;
      const auto column = static_cast<lxw_col_t>(i);
      check(worksheet_set_column(m_sheet, column, column, static_cast<double>(std::min(m_widths[i], widest) + 1),
                                 nullptr));
    }
  }

  bool isCode(std::size_t field) const { return m_fields[field].key == "text"; }

  void writeCell(std::size_t field, const platform::Value& value) {
    if (value.isNull()) return;
    m_rowIsEmpty = m_rowIsEmpty && value.asText().empty();
    const auto column = static_cast<lxw_col_t>(field);
    switch (m_fields[field].kind) {
    case FieldKind::number:
      return check(worksheet_write_number(m_sheet, m_row, column, value.asDouble(), nullptr));
    case FieldKind::percent:
      return check(worksheet_write_number(m_sheet, m_row, column, std::round(value.asDouble() * 10) / 1000, m_percent));
    case FieldKind::flag:
      return check(worksheet_write_boolean(m_sheet, m_row, column, value.asBool() ? 1 : 0, nullptr));
    default:
      writeText(field, value.asText(), isCode(field) ? m_code : nullptr);
    }
  }

  // Written as a text, so that nothing computes it.
  void writeText(std::size_t field, const std::string& text, lxw_format* format) {
    if (text.empty()) return;
    const std::string cell = cutAt(withoutEscapes(xmlText(text)), m_limits.characters);
    m_widths[field] = std::max(m_widths[field], displayWidth(std::string_view(cell).substr(0, cell.find('\n'))));
    check(worksheet_write_string(m_sheet, m_row, static_cast<lxw_col_t>(field), cell.c_str(), format));
  }

  SheetLimits m_limits;
  std::string m_temporary; // outlives the book, which keeps the pointer
  std::string m_file;
  lxw_workbook* m_book = nullptr;
  lxw_format* m_heading = nullptr;
  lxw_format* m_percent = nullptr;
  lxw_format* m_code = nullptr;
  lxw_worksheet* m_sheet = nullptr;
  std::string m_title;
  std::size_t m_part = 0; ///< number of the table's sheet
  std::vector<PlainField> m_fields;
  std::vector<std::size_t> m_widths;
  std::uint32_t m_row = 0;
  bool m_rowIsEmpty = true; ///< such a row is not in the file
  std::vector<std::uint64_t> m_rowsOfSheets;
};

void addTotals(Workbook& book, const std::vector<ReportColumn>& columns, RecordFile& records) {
  const ReportTotals totals = totalsOf(columns, records);
  const std::string& group = columns[totals.groupColumn].caption;
  std::vector<PlainField> fields = {{"group", group}, {"programs", ownText("programs"), FieldKind::number}};
  for (const std::size_t i : totals.columns)
    fields.push_back({columns[i].key, columns[i].caption, columns[i].kind});
  book.beginTable(ownText("totals"), fields);
  const auto add = [&](const std::string& name, const ReportTotals::Row& row) {
    PlainRow cells = {name, row.programs};
    cells.insert(cells.end(), row.values.begin(), row.values.end());
    book.addRow(cells);
  };
  for (const ReportTotals::Row& row : totals.rows)
    add(row.group.empty() ? ownText("none") : row.group, row);
  add(ownText("total"), totals.total);
  book.endTable();
}

} // namespace

void writeXlsx(std::ostream& out, const std::string& title, const std::vector<ReportColumn>& columns,
               RecordFile& records, const SheetLimits& limits) {
  const platform::TemporaryFolder folder;
  Workbook book(folder, limits);
  PlainRows rows(columns, records);
  book.beginTable(title, rows.fields());
  while (const auto row = rows.next())
    book.addRow(*row);
  book.endTable();
  if (hasTotals(columns)) addTotals(book, columns, records);
  std::ifstream file(book.finish(), std::ios::binary);
  out << file.rdbuf();
}

} // namespace orvane
