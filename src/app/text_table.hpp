#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace app {

/// A table for people: columns as wide as their widest cell, numbers to the right.
class TextTable {
 public:
  struct Column {
    std::string heading;
    bool toTheRight = false;
  };
  explicit TextTable(std::vector<Column> columns) : m_columns(std::move(columns)) {}
  void row(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }
  bool empty() const { return m_rows.empty(); }
  /// With a line between the heading and the rows; the last `totals` rows stand below another.
  void print(std::ostream& out, std::size_t totals = 0) const;

 private:
  std::vector<Column> m_columns;
  std::vector<std::vector<std::string>> m_rows;
};

} // namespace app
