#pragma once

#include <string>
#include <string_view>

namespace orvane {

/// The text as HTML content or attribute; characters that HTML forbids are shown by their pictures.
std::string htmlText(std::string_view text);
/// The text as part of a URL's path or fragment: everything but letters, digits and -._~:/ as %XX.
std::string urlText(std::string_view text);

/// The head of a page up to its body: character set, title, view port, the shared style sheet at `styleSheet`. The
/// heading shows the caption and the way back to the index at `index`, "" on the index itself.
std::string pageHead(std::string_view title, std::string_view styleSheet);
std::string pageHeading(std::string_view caption, std::string_view project, std::string_view index);

/// Stands in every page of this generator.
inline constexpr const char* kGeneratorMark = "<meta name=\"generator\" content=\"Tarnsift\">";

} // namespace orvane
