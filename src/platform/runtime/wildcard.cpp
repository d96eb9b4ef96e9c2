#include "platform/runtime/wildcard.hpp"

#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace platform {

namespace {

std::string_view nextCharacter(std::string_view text) {
  return firstCodePoints(text, 1);
}

// UTF-8 keeps the order of code points, so characters compare as byte strings.
bool inSet(std::string_view character, std::string_view set) {
  bool found = false;
  while (!set.empty()) {
    const std::string_view low = nextCharacter(set);
    set.remove_prefix(low.size());
    std::string_view high = low;
    if (set.size() > 1 && set.front() == '-') {
      high = nextCharacter(set.substr(1));
      set.remove_prefix(1 + high.size());
      if (high < low) throw PatternError(fmt::format("the range {}-{} runs downward", low, high));
    }
    found = found || (low <= character && character <= high);
  }
  return found;
}

// One element of a pattern other than '*'.
struct Element {
  std::string_view text; // as it stands in the pattern, brackets included
  std::string_view set;  // of a bracketed list, without brackets and '!'
  bool negated = false;
  bool bracketed = false;
};

Element elementAt(std::string_view pattern) {
  if (pattern.front() != '[') return {nextCharacter(pattern), {}, false, false};
  const auto close = pattern.find(']', 1);
  if (close == std::string_view::npos) throw PatternError(fmt::format("the bracket in '{}' is not closed", pattern));
  Element element{pattern.substr(0, close + 1), pattern.substr(1, close - 1), false, true};
  if (element.set.size() > 1 && element.set.front() == '!') {
    element.negated = true;
    element.set.remove_prefix(1);
  }
  return element;
}

bool matches(const Element& element, std::string_view character) {
  if (element.bracketed) return inSet(character, element.set) != element.negated;
  if (element.text == "?") return true;
  if (element.text == "#") return character.size() == 1 && character[0] >= '0' && character[0] <= '9';
  return element.text == character;
}

// Every element is looked at, so that an unusable pattern is refused whatever the text is.
void check(std::string_view pattern) {
  while (!pattern.empty()) {
    const Element element = elementAt(pattern);
    if (element.bracketed) inSet("", element.set);
    pattern.remove_prefix(element.text.size());
  }
}

} // namespace

bool like(std::string_view text, std::string_view pattern) {
  check(pattern);
  std::string_view retryText;
  std::string_view retryPattern;
  bool canRetry = false;
  while (true) {
    if (!pattern.empty() && pattern.front() == '*') {
      pattern.remove_prefix(1);
      retryPattern = pattern;
      retryText = text;
      canRetry = true;
      continue;
    }
    if (!pattern.empty()) {
      const Element element = elementAt(pattern);
      if (element.bracketed && element.set.empty()) {
        pattern.remove_prefix(element.text.size());
        continue;
      }
      if (!text.empty()) {
        const std::string_view character = nextCharacter(text);
        if (matches(element, character)) {
          text.remove_prefix(character.size());
          pattern.remove_prefix(element.text.size());
          continue;
        }
      }
    } else if (text.empty()) {
      return true;
    }
    if (!canRetry || retryText.empty()) return false;
    retryText.remove_prefix(nextCharacter(retryText).size());
    text = retryText;
    pattern = retryPattern;
  }
}

} // namespace platform
