#pragma once

#include <string>
#include <string_view>

namespace tarnsift {

/// Cuts off and gives what stands before the first separator; `s` keeps what stands behind it, or nothing without one.
inline std::string Split(std::string& s, std::string_view sep = ";") {
  const auto at = s.find(sep);
  std::string head = s.substr(0, at);
  s = at == std::string::npos ? "" : s.substr(at + sep.size());
  return head;
}

} // namespace tarnsift
