#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvane {

/// One analysis column of a construct: the same in the store, the options, the column choice and JSON.
struct AnalysisColumn {
  std::string_view name;
  bool isInteger = false;
};
/// All of them, in the order in which they are offered. None is called Comment.
const std::vector<AnalysisColumn>& analysisColumns();
/// Position in analysisColumns(), letters without regard to case; -1 when unknown.
int columnIndex(std::string_view name);

} // namespace orvane
