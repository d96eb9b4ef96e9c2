#pragma once

#include <string>
#include <string_view>

namespace tarnsift {

/// The text as HTML content: & < > " and ' replaced by their entities.
std::string EscapeHtml(std::string_view text);

} // namespace tarnsift
