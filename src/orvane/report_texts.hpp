#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// What the host itself puts into reports, in the chosen language: headings of columns that a record format does not
/// name, the words round totals and pictures. Some have placeholders %1, %2. Throws platform::KeyError.
std::string ownText(std::string_view key);

/// Columns that a UTF-8 text takes on a screen, near enough for widths: letters of East Asian scripts take two.
std::size_t displayWidth(std::string_view text);

} // namespace orvane
