#include "platform/runtime/text.hpp"

#include <cstdint>

namespace platform {

namespace {

char upperOf(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
char lowerOf(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The length of the valid UTF-8 sequence at the start of the text, 0 when there is none.
std::size_t sequenceLength(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  std::size_t length = lead < 0x80                   ? 1
                       : lead >= 0xC2 && lead < 0xE0 ? 2
                       : (lead & 0xF0) == 0xE0       ? 3
                       : lead >= 0xF0 && lead < 0xF5 ? 4
                                                     : 0;
  if (length == 0 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i)
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  if (length > 1) {
    const auto second = static_cast<unsigned char>(text[1]);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool outside = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
    if (overlong || outside) return 0;
  }
  return length;
}

} // namespace

std::string upper(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    c = upperOf(c);
  return result;
}

std::string lower(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    c = lowerOf(c);
  return result;
}

bool equalsIgnoringCase(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (upperOf(a[i]) != upperOf(b[i])) return false;
  return true;
}

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string replaceAll(std::string text, std::string_view what, std::string_view by) {
  for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
    text.replace(at, what.size(), by);
  return text;
}

std::vector<std::string> splitAt(std::string_view text, char separator) {
  std::vector<std::string> pieces;
  std::size_t start = 0;
  for (std::size_t at = text.find(separator); at != std::string_view::npos; at = text.find(separator, start)) {
    pieces.emplace_back(text.substr(start, at - start));
    start = at + 1;
  }
  pieces.emplace_back(text.substr(start));
  return pieces;
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
  std::string result;
  for (const auto& piece : pieces) {
    if (&piece != &pieces.front()) result += separator;
    result += piece;
  }
  return result;
}

std::string_view firstCodePoints(std::string_view text, std::size_t count) {
  std::size_t at = 0;
  for (; count > 0 && at < text.size(); --count)
    at += std::max<std::size_t>(1, sequenceLength(text.substr(at)));
  return text.substr(0, at);
}

std::size_t countCodePoints(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++count)
    at += std::max<std::size_t>(1, sequenceLength(text.substr(at)));
  return count;
}

std::string toValidUtf8(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = sequenceLength(text);
    if (length == 0)
      result += "\xEF\xBF\xBD";
    else
      result += text.substr(0, length);
    text.remove_prefix(std::max<std::size_t>(1, length));
  }
  return result;
}

std::size_t IgnoringCaseHash::operator()(std::string_view text) const {
  std::uint64_t hash = 14695981039346656037ULL;
  for (const char c : text)
    hash = (hash ^ static_cast<unsigned char>(upperOf(c))) * 1099511628211ULL;
  return static_cast<std::size_t>(hash ^ (hash >> 32));
}

std::string fillTemplate(std::string_view text, const std::vector<std::string>& values) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool placeholder = text[i] == '%' && i + 1 < text.size() && text[i + 1] >= '1' && text[i + 1] <= '9';
    const std::size_t number = placeholder ? static_cast<std::size_t>(text[i + 1] - '1') : values.size();
    if (number < values.size()) {
      result += values[number];
      ++i;
    } else {
      result += text[i];
    }
  }
  return result;
}

} // namespace platform
