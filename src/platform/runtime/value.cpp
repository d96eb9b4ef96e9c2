#include "platform/runtime/value.hpp"

#include <charconv>
#include <cstdlib>

#include <fmt/format.h>

#include "platform/runtime/text.hpp"

namespace platform {

Value Object::Invoke(std::string_view member, std::span<Value>) {
  throw KeyError(fmt::format("no member '{}'", member));
}

std::int64_t Value::asInteger() const {
  if (const auto* number = std::get_if<std::int64_t>(&m_data)) return *number;
  if (const auto* flag = std::get_if<bool>(&m_data)) return *flag ? 1 : 0;
  if (const auto* real = std::get_if<double>(&m_data)) return static_cast<std::int64_t>(*real);
  if (const auto* text = std::get_if<std::string>(&m_data)) {
    const std::string_view digits = trimmed(*text);
    if (digits.empty()) return 0;
    std::int64_t number = 0;
    const auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (code == std::errc{} && end == digits.data() + digits.size()) return number;
    throw Error(fmt::format("'{}' is no whole number", *text));
  }
  if (isNull()) return 0;
  throw Error("an object is no number");
}

double Value::asDouble() const {
  if (const auto* real = std::get_if<double>(&m_data)) return *real;
  if (const auto* text = std::get_if<std::string>(&m_data)) {
    const std::string_view digits = trimmed(*text);
    double number = 0;
    const auto [end, code] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (code == std::errc{} && end == digits.data() + digits.size()) return number;
    if (digits.empty()) return 0;
    throw Error(fmt::format("'{}' is no number", *text));
  }
  return static_cast<double>(asInteger());
}

bool Value::asBool() const {
  if (const auto* text = std::get_if<std::string>(&m_data)) return equalsIgnoringCase(*text, "true");
  if (isNull() || isObject()) return false;
  return asDouble() != 0;
}

std::string Value::asText() const {
  if (const auto* text = std::get_if<std::string>(&m_data)) return *text;
  if (const auto* number = std::get_if<std::int64_t>(&m_data)) return std::to_string(*number);
  if (const auto* flag = std::get_if<bool>(&m_data)) return *flag ? "true" : "false";
  if (const auto* real = std::get_if<double>(&m_data)) return fmt::format("{}", *real);
  if (isNull()) return {};
  throw Error("an object is no text");
}

} // namespace platform
