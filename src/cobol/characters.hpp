#pragma once

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace cobol {

enum class CharClass : std::uint8_t { blank, letter, digit, hyphen, quote, period, comma, symbol };

constexpr std::array<CharClass, 256> makeCharClasses() {
  std::array<CharClass, 256> table{};
  for (int c = 0; c < 256; ++c) {
    CharClass sort = CharClass::symbol;
    if (c <= ' ' || c == 0x7F)
      sort = CharClass::blank;
    else if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c >= 0x80)
      sort = CharClass::letter;
    else if (c >= '0' && c <= '9')
      sort = CharClass::digit;
    else if (c == '_' || c == '$' || c == '#' || c == '@')
      sort = CharClass::letter;
    else if (c == '-')
      sort = CharClass::hyphen;
    else if (c == '\'' || c == '"')
      sort = CharClass::quote;
    else if (c == '.')
      sort = CharClass::period;
    else if (c == ',' || c == ';')
      sort = CharClass::comma;
    table[static_cast<std::size_t>(c)] = sort;
  }
  return table;
}
inline constexpr auto kCharClasses = makeCharClasses();

constexpr CharClass charClass(char c) {
  return kCharClasses[static_cast<unsigned char>(c)];
}
constexpr bool isBlank(char c) {
  return charClass(c) == CharClass::blank;
}
constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
/// A letter, digit, hyphen or one of `_ $ # @` and everything above 0x7F.
constexpr bool isWordChar(char c) {
  const CharClass sort = charClass(c);
  return sort == CharClass::letter || sort == CharClass::digit || sort == CharClass::hyphen;
}
constexpr char toUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
}
/// The text in capitals, as far as its letters are those of ASCII.
inline std::string upper(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    c = toUpper(c);
  return result;
}
/// What holds for all bytes of a text.
struct TextTraits {
  bool ascii = true;    ///< nothing above 0x7F
  bool plain = true;    ///< every byte is a column of its own: ASCII without tab and zero
  bool returns = false; ///< some byte is a carriage return
};
/// Each look goes over the bytes on its own, many in one step.
inline TextTraits traitsOf(std::string_view text) {
  unsigned char all = 0;
  for (const char c : text)
    all = static_cast<unsigned char>(all | static_cast<unsigned char>(c));
  const auto has = [text](char c) { return text.find(c) != std::string_view::npos; };
  const bool ascii = all < 0x80;
  return {.ascii = ascii, .plain = ascii && !has('\t') && !has('\0'), .returns = has('\r')};
}
inline bool isPlain(std::string_view text) {
  return traitsOf(text).plain;
}
/// Of every byte that a word may hold its capital, else 0.
inline constexpr auto kWordCapitals = [] {
  std::array<char, 256> table{};
  for (int c = 0; c < 256; ++c) {
    const char byte = static_cast<char>(c);
    if (isWordChar(byte)) table[static_cast<std::size_t>(c)] = toUpper(byte);
  }
  return table;
}();
/// Eight bytes at once, in the steps over blanks.
inline constexpr std::uint64_t kEightSpaces = 0x2020202020202020U;
inline constexpr std::uint32_t kFourSpaces = 0x20202020U;
/// Whether eight spaces stand here; eight bytes can be read.
inline bool startsWithSpaces(const char* at) {
  std::uint64_t eight;
  std::memcpy(&eight, at, 8);
  return eight == kEightSpaces;
}
/// Whether six spaces stand here: the sequence number area of most lines; six bytes can be read.
inline bool startsWithSixSpaces(const char* at) {
  std::uint32_t four, lastFour;
  std::memcpy(&four, at, 4);
  std::memcpy(&lastFour, at + 2, 4);
  return four == kFourSpaces && lastFour == kFourSpaces;
}
/// The first byte in [from, to) that is no space, else `to`.
inline const char* skipSpaces(const char* from, const char* to) {
  for (std::uint64_t eight; to - from >= 8; from += 8) {
    std::memcpy(&eight, from, 8);
    if (eight == kEightSpaces) continue;
    if constexpr (std::endian::native == std::endian::little) return from + std::countr_zero(eight ^ kEightSpaces) / 8;
    break;
  }
  while (from < to && *from == ' ')
    ++from;
  return from;
}
/// The first byte in [from, to) that is no blank, else `to`.
inline const char* skipBlanks(const char* from, const char* to) {
  from = skipSpaces(from, to);
  while (from < to && isBlank(*from))
    ++from;
  return from;
}
/// The first byte of a character, not a later one of several.
constexpr bool startsCharacter(char c) {
  return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
}

} // namespace cobol
