// Which format a text has, told from the look of its lines.
#include <algorithm>
#include <map>

#include "cobol/characters.hpp"
#include "cobol/source_text.hpp"

namespace cobol {
namespace {

constexpr std::size_t kLinesLookedAt = 500;
constexpr std::size_t kIndicatorAt = 6; ///< column 7
constexpr std::size_t kMarginAt = 72;
constexpr std::size_t kTagEnd = 80;

/// What the lines looked at have in common.
struct Looks {
  std::size_t lines = 0;
  std::size_t fixedLike = 0;
  std::size_t freeLike = 0;
  std::size_t starred = 0;                     ///< with the indicator `*`
  std::size_t numbered = 0;                    ///< six digits in front
  std::size_t longLines = 0;                   ///< text behind column 72
  std::size_t digitTags = 0;                   ///< of those: nothing but digits in 73–80
  std::map<std::string, std::size_t> prefixes; ///< of the other texts in 73–80
};

constexpr std::size_t kColumnsLookedAt = kTagEnd + 9; ///< a few behind the identification

std::string_view withoutEnd(std::string_view columns) {
  while (!columns.empty() && isBlank(columns.back()))
    columns.remove_suffix(1);
  return columns;
}

// The line with tabs spread, in `room` where it must be changed for that.
std::string_view spread(std::string_view line, bool plain, std::string& room) {
  const std::string_view columns = line.substr(0, kColumnsLookedAt);
  if (plain || isPlain(columns)) return withoutEnd(columns);
  room.clear();
  for (char c : line) {
    if (room.size() >= kColumnsLookedAt) break;
    if (c == '\t')
      room.append(8 - room.size() % 8, ' ');
    else if (startsCharacter(c))
      room += c == '\0' ? ' ' : c;
  }
  return withoutEnd(room);
}

bool isBlank(std::string_view columns) {
  return skipBlanks(columns.data(), columns.data() + columns.size()) == columns.data() + columns.size();
}

bool isIndicator(char c) {
  return c == ' ' || c == '*' || c == '/' || c == '-' || c == 'D' || c == 'd' || c == '$';
}

void lookBehindMargin(std::string_view line, Looks& looks) {
  if (line.size() <= kMarginAt || line.find_first_not_of(' ', kMarginAt) == line.npos) return;
  ++looks.longLines;
  if (line.size() > kTagEnd) return;
  const std::string_view tag = line.substr(kMarginAt);
  if (std::all_of(tag.begin(), tag.end(), [](char c) { return isDigit(c) || c == ' '; }))
    ++looks.digitTags;
  else if (tag.size() >= 3)
    ++looks.prefixes[std::string(tag.substr(0, 3))];
}

void lookAt(std::string_view line, Looks& looks) {
  ++looks.lines;
  const std::string_view sequence = line.substr(0, kIndicatorAt);
  std::size_t digitCount = 0;
  std::size_t blankCount = 0;
  for (const char c : sequence) {
    digitCount += isDigit(c);
    blankCount += c == ' ';
  }
  const std::size_t first = blankCount == sequence.size() ? sequence.npos : sequence.find_first_not_of(' ');
  const char indicator = line.size() > kIndicatorAt ? line[kIndicatorAt] : ' ';
  const bool digits = digitCount == kIndicatorAt;
  const bool blankOrDigits = digitCount + blankCount == sequence.size();
  bool fixedPossible = isIndicator(indicator);
  if (fixedPossible && !blankOrDigits) {
    // One word from column 1 on and an indicator in column 7: a tag of whoever changed the line.
    const std::size_t blank = std::min(sequence.find(' '), sequence.size());
    fixedPossible = line.size() > kIndicatorAt && sequence.find_first_not_of(' ', blank) == sequence.npos;
  }
  const bool comment = first != sequence.npos && sequence.substr(first).starts_with("*>");
  const bool textInFront = first != sequence.npos && !digits && charClass(sequence[first]) <= CharClass::digit;
  if (comment || (textInFront && !fixedPossible)) {
    ++looks.freeLike;
  } else if (fixedPossible) {
    ++looks.fixedLike;
    looks.numbered += digits;
    if (indicator == '*' || indicator == '/')
      ++looks.starred;
    else
      lookBehindMargin(line, looks);
  }
}

// Takes the commonest lines, text or a comment behind a blank sequence number area.
bool lookAtCommon(std::string_view line, Looks& looks) {
  if (line.size() <= kIndicatorAt || !startsWithSixSpaces(line.data())) return false;
  const char indicator = line[kIndicatorAt];
  const bool comment = indicator == '*' || indicator == '/';
  if (!comment && indicator != ' ') return false;
  line = line.substr(0, kColumnsLookedAt);
  const bool holdsText = comment || line.back() > ' ' || !isBlank(line);
  looks.lines += holdsText;
  looks.fixedLike += holdsText;
  looks.starred += comment;
  if (!comment && line.size() > kMarginAt && !isBlank(line.substr(kMarginAt)))
    lookBehindMargin(withoutEnd(line), looks);
  return true;
}

Looks look(const SourceText& source) {
  const std::string_view text = source.text;
  const bool plain = source.traits.plain;
  Looks looks;
  std::string room;
  std::size_t turn = source.traits.returns ? text.find('\r') : text.npos;
  for (std::size_t at = 0, end = 0; at < text.size() && looks.lines < kLinesLookedAt; at = end + 1) {
    if (turn < at) turn = text.find('\r', at);
    end = std::min({text.find('\n', at), turn, text.size()});
    if (plain && lookAtCommon(text.substr(at, end - at), looks)) continue;
    const std::string_view line = spread(text.substr(at, std::min<std::size_t>(end - at, 1000)), plain, room);
    if (!line.empty()) lookAt(line, looks);
  }
  return looks;
}

bool isTagged(const Looks& looks) {
  std::size_t commonest = 0;
  for (const auto& [prefix, count] : looks.prefixes)
    commonest = std::max(commonest, count);
  return std::max(looks.digitTags, commonest) * 10 >= looks.longLines * 6 ||
         (looks.digitTags + commonest) * 10 >= looks.longLines * 6;
}

Format withMargin(const Looks& looks) {
  return looks.longLines * 20 >= looks.lines && looks.longLines > 0 && !isTagged(looks) ? Format::variable
                                                                                        : Format::fixed;
}

} // namespace

Format detectFormat(const SourceText& source, Diagnostics& diagnostics) {
  const Looks looks = look(source);
  const bool free = looks.freeLike * 10 > looks.lines && looks.freeLike > looks.starred;
  if (free && looks.freeLike * 3 < looks.lines) {
    diagnostics.add(Code::FormatGuessed, Severity::information, {0, 1, 1, 0},
                    "the lines are mixed and are read in free format");
  }
  return free ? Format::free : withMargin(looks);
}

Format copiedFormat(const SourceText& source, Format outer) {
  const Looks looks = look(source);
  if (looks.lines == 0) return outer;
  if (outer == Format::free) {
    const bool impossible = looks.freeLike == 0 && looks.starred + looks.numbered > 0;
    return impossible ? withMargin(looks) : outer;
  }
  if (looks.fixedLike == 0 && looks.freeLike > 0) return Format::free;
  return looks.longLines > 0 ? withMargin(looks) : outer;
}

} // namespace cobol
