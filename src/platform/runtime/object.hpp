#pragma once

#include <atomic>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

namespace platform {

class Value;

/// Base of everything that is handed over between component and host: reference counted, with members that can be
/// called by name at run time.
class Object {
 public:
  Object() = default;
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;
  virtual ~Object() = default;

  void addRef() { ++m_references; }
  void release() {
    if (--m_references == 0) delete this;
  }

  /// Calls the member, a property without arguments or an operation, by its name without regard to case. Arguments are
  /// passed by reference. Throws KeyError when there is no such member.
  virtual Value Invoke(std::string_view member, std::span<Value> arguments);

 private:
  std::atomic<int> m_references{0};
};

/// Counted reference to an Object.
template<typename T>
class Ref {
 public:
  Ref() = default;
  Ref(std::nullptr_t) {}
  Ref(T* object) : m_object(object) { retain(); }
  Ref(const Ref& other) : m_object(other.m_object) { retain(); }
  Ref(Ref&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
  template<typename U>
  requires std::is_convertible_v<U*, T*> Ref(const Ref<U>& other) : m_object(other.get()) { retain(); }
  ~Ref() { drop(); }
  Ref& operator=(Ref other) noexcept {
    std::swap(m_object, other.m_object);
    return *this;
  }

  T* get() const { return m_object; }
  T* operator->() const { return m_object; }
  T& operator*() const { return *m_object; }
  explicit operator bool() const { return m_object != nullptr; }
  friend bool operator==(const Ref& a, const Ref& b) { return a.m_object == b.m_object; }

 private:
  void retain() {
    if (m_object) m_object->addRef();
  }
  void drop() {
    if (m_object) std::exchange(m_object, nullptr)->release();
  }

  T* m_object = nullptr;
};

template<typename T, typename... Arguments>
Ref<T> makeObject(Arguments&&... arguments) {
  return Ref<T>(new T(std::forward<Arguments>(arguments)...));
}

} // namespace platform
