#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

namespace platform {

struct Null {
  bool operator==(const Null&) const = default;
};

/// A value of the late-bound world: a field of a record set, an attribute, an argument.
class Value {
 public:
  Value() = default;
  Value(Null) {}
  Value(bool value) : m_value(value) {}
  template <class T>
    requires(std::is_integral_v<T> && !std::is_same_v<T, bool>)
  Value(T value) : m_value(static_cast<std::int64_t>(value)) {}
  Value(double value) : m_value(value) {}
  Value(std::string value) : m_value(std::move(value)) {}
  Value(std::string_view value) : m_value(std::string(value)) {}
  Value(const char* value) : m_value(std::string(value)) {}

  bool isNull() const { return std::holds_alternative<Null>(m_value); }
  std::int64_t asInteger() const;
  double asDouble() const;
  std::string asText() const;
  template <class T>
  const T* getIf() const {
    return std::get_if<T>(&m_value);
  }
  bool operator==(const Value&) const = default;

 private:
  std::variant<Null, bool, std::int64_t, double, std::string> m_value;
};

} // namespace platform
