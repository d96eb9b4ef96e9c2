#include "platform/dao/recordsets.hpp"
#include "platform/dao/sql_text.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace platform {

namespace {

constexpr std::size_t kLargestPage = 1024;

} // namespace

void ColumnNames::readFrom(const Statement& statement, int first) {
  const std::size_t columns = static_cast<std::size_t>(statement.columnCount() - first);
  bool same = columns == m_names.size();
  for (std::size_t i = 0; same && i < columns; ++i)
    same = m_names[i] == statement.columnName(first + static_cast<int>(i));
  if (same) return;
  m_names.clear();
  for (int i = first; i < statement.columnCount(); ++i)
    m_names.emplace_back(statement.columnName(i));
}

std::size_t ColumnNames::find(std::string_view name) const {
  const std::string_view plain = unbracketed(name);
  for (std::size_t i = 0; i < m_names.size(); ++i) {
    if (equalsIgnoringCase(m_names[i], plain)) return i;
  }
  throw KeyError("the record set has no field " + std::string(name));
}

void Page::clear() {
  rows.clear();
  m_cells.clear();
  m_texts.clear();
}

void Page::add(const Statement& statement, std::size_t ordinal) {
  rows.push_back({statement.integer(0), ordinal});
  const int columns = statement.columnCount();
  m_columns = static_cast<std::size_t>(columns - 1);
  for (int i = 1; i < columns; ++i) {
    switch (statement.kind(i)) {
    case FieldKind::null:
      m_cells.emplace_back(Null{});
      break;
    case FieldKind::integer:
      m_cells.emplace_back(statement.integer(i));
      break;
    case FieldKind::number:
      m_cells.emplace_back(statement.number(i));
      break;
    case FieldKind::bytes: {
      const std::string_view bytes = statement.bytes(i);
      m_cells.emplace_back(Text{m_texts.size(), bytes.size()});
      m_texts += bytes;
    }
    }
  }
}

Value Page::value(std::size_t row, std::size_t column) const {
  const auto& cell = m_cells[row * m_columns + column];
  if (const auto* text = std::get_if<Text>(&cell))
    return Value(std::string_view(m_texts).substr(text->begin, text->size));
  if (const auto* integer = std::get_if<std::int64_t>(&cell)) return Value(*integer);
  if (const auto* number = std::get_if<double>(&cell)) return Value(*number);
  return {};
}

UpdatableRecordset::UpdatableRecordset(std::shared_ptr<Connection> connection, std::string table, std::string rowSql)
    : m_connection(std::move(connection)), m_table(std::move(table)), m_rowSql(std::move(rowSql)) {}

void UpdatableRecordset::readFirstPage() {
  m_page.clear();
  markRead();
  readPage(m_page, std::nullopt, m_pageSize);
  startPage();
}

void UpdatableRecordset::startPage() {
  m_at = 0;
  m_place = m_page.rows.empty() ? Place::end : Place::row;
}

void UpdatableRecordset::leaveRow() {
  m_editing = false;
  m_assigned.clear();
  m_place = Place::none;
}

void UpdatableRecordset::MoveNext() {
  requireRow();
  m_editing = false;
  m_assigned.clear();
  const auto changes = m_connection->changes();
  const bool current = changes == m_changesSeen;
  if (current && m_at + 1 < m_page.rows.size()) {
    ++m_at;
    return;
  }
  // Reading ahead pays only as long as nobody writes in the walk.
  m_pageSize = current ? std::min(m_pageSize * 2, kLargestPage) : 1;
  const Page::Row last = m_page.rows[m_at];
  m_page.clear();
  m_changesSeen = changes;
  m_place = Place::none; // should the read fail
  readPage(m_page, last, m_pageSize);
  startPage();
}

Value UpdatableRecordset::Field(std::string_view name) const {
  const std::size_t column = m_columns.find(name);
  requireRow();
  return m_page.value(m_at, column);
}

void UpdatableRecordset::readAnew() {
  const Page::Row row = m_page.rows[m_at];
  const auto changes = m_connection->changes();
  Statement statement(*m_connection, m_rowSql);
  statement.bindInteger(1, row.rowid);
  const bool found = statement.step();
  if (!found) {
    leaveRow();
    fail("the current row is gone");
  }
  m_columns.readFrom(statement, 1);
  m_page.clear();
  m_page.add(statement, row.ordinal);
  m_at = 0;
  m_changesSeen = changes;
}

void UpdatableRecordset::Edit() {
  requireRow();
  m_assigned.clear();
  m_editing = false;
  readAnew();
  m_editing = true;
}

void UpdatableRecordset::setField(std::string_view name, const Value& value) {
  const std::string& column = m_columns.all()[m_columns.find(name)];
  if (!m_editing) fail("a field is assigned without Edit");
  const auto known = std::find_if(m_assigned.begin(), m_assigned.end(),
                                  [&](const auto& assigned) { return assigned.first == column; });
  if (known != m_assigned.end()) {
    known->second = value;
  } else {
    m_assigned.emplace_back(column, value);
  }
}

void UpdatableRecordset::Update() {
  if (!m_editing) fail("Update without Edit");
  if (!m_assigned.empty()) {
    std::string sql = "update " + bracketed(m_table) + " set ";
    int position = 0;
    for (const auto& [column, value] : m_assigned) {
      sql += (position == 0 ? "" : ", ") + bracketed(column) + " = ?" + std::to_string(position + 1);
      ++position;
    }
    Statement statement(*m_connection, sql + " where rowid = ?" + std::to_string(position + 1));
    for (int i = 0; i < position; ++i)
      statement.bind(i + 1, m_assigned[static_cast<std::size_t>(i)].second);
    statement.bindInteger(position + 1, m_page.rows[m_at].rowid);
    statement.step();
    if (m_connection->changedRows() == 0) fail("the current row is gone");
  }
  m_editing = false;
  m_assigned.clear();
  readAnew();
}

void UpdatableRecordset::requireRow() const {
  if (m_place != Place::row) fail("there is no current row");
}

void UpdatableRecordset::fail(const std::string& reason) const {
  m_connection->fail(m_table + ": " + reason);
}

} // namespace platform
