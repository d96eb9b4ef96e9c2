#include "orvane/report_rows.hpp"

#include <algorithm>
#include <cstdlib>
#include <numeric>

#include <fmt/format.h>

#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

char fold(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::string foldedText(std::string_view text) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), fold);
  return result;
}

std::string shown(const platform::Value& value, FieldKind kind) {
  if (value.isNull()) return "";
  switch (kind) {
  case FieldKind::percent:
    return fmt::format("{:.1f}%", value.asDouble());
  case FieldKind::flag:
    return value.asBool() ? "1" : "";
  default:
    return value.asText();
  }
}

} // namespace

ReportRows::ReportRows(FinishedReport report)
    : m_report(std::move(report)), m_rows(m_report.columns, *m_report.records) {
  m_report.records->rewind();
}

std::string_view ReportRows::cellOf(Row row, std::size_t field) const {
  const std::size_t at = row * fields().size() + field;
  const std::uint64_t from = at == 0 ? 0 : m_cellEnds[at - 1] + 1;
  return std::string_view(m_texts).substr(from, m_cellEnds[at] - from);
}

std::string_view ReportRows::folded(Row row) const {
  const std::uint64_t from = row == 0 ? 0 : m_ends[row - 1];
  return std::string_view(m_folded).substr(from, m_ends[row] - from);
}

void ReportRows::add(const PlainRow& row) {
  for (std::size_t field = 0; field < fields().size(); ++field) {
    m_texts += shown(row[field], fields()[field].kind);
    m_cellEnds.push_back(m_texts.size());
    m_texts += '\n';
  }
  m_folded += foldedText(std::string_view(m_texts).substr(m_folded.size()));
  m_ends.push_back(m_texts.size());
}

bool ReportRows::readMore(std::size_t count) {
  const std::size_t before = read();
  bool more = true;
  while (more && read() < before + count) {
    const std::optional<PlainRow> row = m_rows.next();
    if (row)
      add(*row);
    else
      more = false;
  }
  for (std::size_t row = before; row < read(); ++row)
    if (passes(static_cast<Row>(row))) m_waiting.push_back(static_cast<Row>(row));
  return more;
}

void ReportRows::join() {
  if (isSorted()) {
    order();
    return show();
  }
  m_shown.insert(m_shown.end(), m_waiting.begin(), m_waiting.end());
  m_waiting.clear();
}

bool ReportRows::passes(Row row) const {
  const std::string_view text = folded(row);
  return std::all_of(m_words.begin(), m_words.end(),
                     [&](const std::string& word) { return text.find(word) != text.npos; });
}

void ReportRows::filter(std::string_view text) {
  m_words.clear();
  const std::string all = foldedText(text);
  for (std::size_t at = 0; at < all.size();) {
    const std::size_t end = std::min(all.find(' ', at), all.size());
    if (end > at) m_words.push_back(all.substr(at, end - at));
    at = end + 1;
  }
  show();
}

void ReportRows::show() {
  m_shown.clear();
  m_waiting.clear();
  for (std::size_t i = 0; i < read(); ++i)
    if (const Row row = m_order.empty() ? static_cast<Row>(i) : m_order[i]; passes(row)) m_shown.push_back(row);
}

void ReportRows::sort(std::optional<std::size_t> field, bool descending) {
  m_sortField = field;
  m_descending = descending;
  order();
  show();
}

void ReportRows::order() {
  m_order.clear();
  if (!m_sortField) return;
  m_order.resize(read());
  std::iota(m_order.begin(), m_order.end(), Row(0));
  const auto by = [&](const auto& keys) {
    if (m_descending)
      std::stable_sort(m_order.begin(), m_order.end(), [&](Row a, Row b) { return keys[b] < keys[a]; });
    else
      std::stable_sort(m_order.begin(), m_order.end(), [&](Row a, Row b) { return keys[a] < keys[b]; });
  };
  const FieldKind kind = fields()[*m_sortField].kind;
  if (kind == FieldKind::number || kind == FieldKind::percent) {
    std::vector<double> keys(read());
    for (Row row = 0; row < keys.size(); ++row)
      keys[row] = std::strtod(cellOf(row, *m_sortField).data(), nullptr);
    return by(keys);
  }
  std::vector<std::string_view> keys(read());
  for (Row row = 0; row < keys.size(); ++row) {
    const std::string_view text = cellOf(row, *m_sortField);
    keys[row] = std::string_view(m_folded).substr(static_cast<std::size_t>(text.data() - m_texts.data()), text.size());
  }
  by(keys);
}

} // namespace orvane
