#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/runtime/error.hpp"
#include "platform/runtime/object.hpp"

namespace platform {

/// The absent value.
using Null = std::monostate;

/// The one value type of late-bound calls, record fields and attributes. Null is the default and equals only Null.
class Value {
 public:
  Value() = default;
  Value(Null) {}
  Value(bool value) : m_data(value) {}
  Value(int value) : m_data(std::int64_t{value}) {}
  Value(std::int64_t value) : m_data(value) {}
  Value(double value) : m_data(value) {}
  Value(std::string value) : m_data(std::move(value)) {}
  Value(std::string_view value) : m_data(std::string(value)) {}
  Value(const char* value) : m_data(std::string(value)) {}
  template<typename T>
  Value(const Ref<T>& object) : m_data(Ref<Object>(object)) {}

  bool isNull() const { return std::holds_alternative<std::monostate>(m_data); }
  bool isText() const { return std::holds_alternative<std::string>(m_data); }
  /// The value when it is of exactly that type, else nullptr.
  template<typename T>
  const T* getIf() const {
    return std::get_if<T>(&m_data);
  }
  bool isObject() const { return std::holds_alternative<Ref<Object>>(m_data); }

  /// Null and "" are 0; a text must be a number. Throws Error otherwise.
  std::int64_t asInteger() const;
  double asDouble() const;
  /// True for true, any number but 0, and the text "true" in any case.
  bool asBool() const;
  /// Null gives the empty text, Booleans "true" and "false".
  std::string asText() const;
  /// The object as that interface; an empty reference for Null. Throws Error when it is something else.
  template<typename T>
  Ref<T> as() const {
    if (isNull()) return {};
    auto* held = std::get_if<Ref<Object>>(&m_data);
    if (!held || !*held) return {};
    auto* object = dynamic_cast<T*>(held->get());
    if (!object) throw Error("an object does not have the interface that was asked for");
    return Ref<T>(object);
  }

  bool operator==(const Value& other) const { return m_data == other.m_data; }

 private:
  std::variant<std::monostate, bool, std::int64_t, double, std::string, Ref<Object>> m_data;
};

} // namespace platform
