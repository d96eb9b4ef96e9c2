#include "platform/dao/recordsets.hpp"
#include "platform/runtime/error.hpp"

namespace platform {

namespace {

/// Rows that are in memory already.
class RowsRecordset final : public Recordset {
 public:
  RowsRecordset(std::vector<std::string> columns, std::vector<std::vector<Value>> rows) : m_rows(std::move(rows)) {
    m_columns.set(std::move(columns));
  }

  bool Eof() const override { return m_at >= m_rows.size(); }
  void MoveNext() override {
    requireRow();
    ++m_at;
  }
  std::int64_t RecordCount() override { return static_cast<std::int64_t>(m_rows.size()); }
  std::vector<std::string> fieldNames() const override { return m_columns.all(); }
  Value Field(std::string_view name) const override {
    const std::size_t column = m_columns.find(name);
    requireRow();
    return m_rows[m_at].at(column);
  }
  void setIndex(std::string_view) override { refuse("has no Index"); }
  void Seek(std::string_view, const Value&) override { refuse("has no Seek"); }
  bool NoMatch() const override { return false; }
  void Edit() override { refuse("cannot be changed"); }
  void setField(std::string_view, const Value&) override { refuse("cannot be changed"); }
  void Update() override { refuse("cannot be changed"); }

 private:
  void requireRow() const {
    if (Eof()) refuse("has no current row");
  }
  [[noreturn]] static void refuse(const std::string& what) {
    throw DatabaseError("record set", "", "a set of finished rows " + what);
  }

  ColumnNames m_columns;
  std::vector<std::vector<Value>> m_rows;
  std::size_t m_at = 0;
};

} // namespace

std::unique_ptr<Recordset> rowsRecordset(std::vector<std::string> columns, std::vector<std::vector<Value>> rows) {
  return std::make_unique<RowsRecordset>(std::move(columns), std::move(rows));
}

} // namespace platform
