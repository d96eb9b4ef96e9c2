#include "orvane/columns.hpp"

#include "platform/runtime/text.hpp"

namespace orvane {

const std::vector<AnalysisColumn>& analysisColumns() {
  static const std::vector<AnalysisColumn> columns = {
      {"Kind"},  {"Level", true},  {"Section"},        {"Parent"},     {"Record"},       {"Picture"},
      {"Usage"}, {"Offset", true}, {"Position", true}, {"Size", true}, {"Length", true}, {"Occurs", true},
      {"Dims"},  {"Digits", true}, {"Scale", true},    {"Signed"},     {"Redefines"},    {"Value"},
      {"File"},  {"Line", true},   {"Column", true},   {"Flags"},      {"Usages", true},
  };
  return columns;
}

int columnIndex(std::string_view name) {
  const auto& columns = analysisColumns();
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (platform::equalsIgnoringCase(columns[i].name, name)) return static_cast<int>(i);
  return -1;
}

} // namespace orvane
