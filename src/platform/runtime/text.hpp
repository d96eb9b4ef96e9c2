#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// One fold of case everywhere: ASCII letters only. Texts are UTF-8.
std::string upper(std::string_view text);
std::string lower(std::string_view text);
bool equalsIgnoringCase(std::string_view a, std::string_view b);
std::string_view trimmed(std::string_view text); ///< blanks at both ends off
std::string replaceAll(std::string text, std::string_view what, std::string_view by);
std::vector<std::string> splitAt(std::string_view text, char separator); ///< "" gives one empty piece
std::string joined(const std::vector<std::string>& pieces, std::string_view separator);
/// The first `count` code points of a UTF-8 text; a byte that is no valid UTF-8 counts as one.
std::string_view firstCodePoints(std::string_view text, std::size_t count);
std::size_t countCodePoints(std::string_view text);
/// Valid UTF-8 as it stands; every byte that is not part of a valid sequence becomes U+FFFD.
std::string toValidUtf8(std::string_view text);

struct IgnoringCaseHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const;
};
struct IgnoringCaseEqual {
  using is_transparent = void;
  bool operator()(std::string_view a, std::string_view b) const { return equalsIgnoringCase(a, b); }
};

/// Fills %1, %2, … with the values; a placeholder without a value stays.
std::string fillTemplate(std::string_view text, const std::vector<std::string>& values);

} // namespace platform
