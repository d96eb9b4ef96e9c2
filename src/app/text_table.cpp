#include "app/text_table.hpp"

#include <algorithm>

#include "platform/runtime/text.hpp"

namespace app {

namespace {

std::string padded(const std::string& text, std::size_t width, bool toTheRight) {
  const std::size_t length = platform::countCodePoints(text);
  const std::string blanks(width > length ? width - length : 0, ' ');
  return toTheRight ? blanks + text : text + blanks;
}

} // namespace

void TextTable::print(std::ostream& out, std::size_t totals) const {
  std::vector<std::size_t> widths;
  for (const Column& column : m_columns)
    widths.push_back(platform::countCodePoints(column.heading));
  for (const auto& row : m_rows)
    for (std::size_t i = 0; i < row.size(); ++i)
      widths[i] = std::max(widths[i], platform::countCodePoints(row[i]));
  const auto line = [&](const auto& cellOf) {
    std::string text;
    for (std::size_t i = 0; i < m_columns.size(); ++i)
      text += (i ? "  " : "") + padded(cellOf(i), widths[i], m_columns[i].toTheRight);
    out << text.substr(0, text.find_last_not_of(' ') + 1) << '\n';
  };
  const auto rule = [&] { line([&](std::size_t i) { return std::string(widths[i], '-'); }); };
  line([&](std::size_t i) { return m_columns[i].heading; });
  rule();
  for (std::size_t r = 0; r < m_rows.size(); ++r) {
    if (totals > 0 && r + totals == m_rows.size()) rule();
    line([&](std::size_t i) { return i < m_rows[r].size() ? m_rows[r][i] : std::string(); });
  }
}

} // namespace app
