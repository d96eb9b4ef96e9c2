#pragma once

#include <string>

#include "tarnsift/session/globals.hpp"

namespace tarnsift {

/// The attribute of the first node that the XPath finds from OptionsRoot; "" without such a node or attribute.
inline std::string optionValue(const std::string& path, const char* attribute = "VALUE") {
  const platform::Node node = globals().OptionsRoot.selectSingleNode(path);
  return node ? node.getAttribute(attribute).asText() : "";
}

/// Whether a BOOL is on: its VALUE equals "true", case counts.
inline bool optionIsOn(const std::string& path) {
  return optionValue(path) == "true";
}

} // namespace tarnsift
