#include <fmt/format.h>

#include "orvane/criteria/criterion.hpp"
#include "orvane/criteria/number_range.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"
#include "platform/runtime/value.hpp"
#include "platform/runtime/wildcard.hpp"

namespace orvane {

NumberRange readRange(const std::string& text) {
  try {
    const auto dash = text.find('-');
    NumberRange range;
    range.low = platform::Value(text.substr(0, dash)).asInteger();
    range.high = dash == std::string::npos ? range.low : platform::Value(text.substr(dash + 1)).asInteger();
    if (range.low <= range.high) return range;
  } catch (const platform::Error&) {
    // told below with the whole text
  }
  throw platform::Error(fmt::format("'{}' is no number and no range such as 6-8", text));
}

Criterion levelIs(const std::string& argument) {
  return [range = readRange(argument)](const StoreData& data, std::uint32_t construct) {
    const auto level = data.constructs[construct].level;
    return level > 0 && range.holds(level);
  };
}

Criterion pictureLike(const std::string& argument) {
  const std::string pattern = platform::upper(argument);
  platform::like("", pattern);
  return [pattern](const StoreData& data, std::uint32_t construct) {
    const std::string_view picture = data.text(data.constructs[construct].picture);
    return !picture.empty() && platform::like(picture, pattern);
  };
}

Criterion usageIs(const std::string& argument) {
  const std::string pattern = platform::upper(argument);
  platform::like("", pattern);
  return [pattern](const StoreData& data, std::uint32_t construct) {
    const std::string_view usage = data.text(data.constructs[construct].usage);
    return !usage.empty() && platform::like(usage, pattern);
  };
}

// Constructs without storage have no size.
Criterion sizeIs(const std::string& argument) {
  return [range = readRange(argument)](const StoreData& data, std::uint32_t construct) {
    const ConstructRecord& record = data.constructs[construct];
    return record.offset >= 0 && range.holds(record.size);
  };
}

Criterion kindIs(const std::string& argument) {
  std::vector<std::string> known;
  for (std::uint8_t kind = 0; !kindWord(kind).empty(); ++kind)
    known.emplace_back(kindWord(kind));
  const std::string wanted = platform::lower(argument);
  if (std::find(known.begin(), known.end(), wanted) == known.end())
    throw platform::Error(fmt::format("there is no kind '{}'; there are {}", argument, platform::joined(known, ", ")));
  return [wanted](const StoreData& data, std::uint32_t construct) {
    return kindWord(data.constructs[construct].kind) == wanted;
  };
}

} // namespace orvane
