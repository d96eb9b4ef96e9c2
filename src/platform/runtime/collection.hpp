#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace platform {

/// Items in order of addition, each under a unique key; keys compare without regard to case.
template<typename T>
class Collection {
 public:
  /// Throws KeyError when the key is there already.
  void Add(T item, std::string key) {
    if (!m_positions.emplace(key, m_items.size()).second) throw KeyError("the key '" + key + "' is there already");
    m_items.push_back(std::move(item));
    m_keys.push_back(std::move(key));
  }
  std::size_t Count() const { return m_items.size(); }
  const T& Item(std::size_t position) const { return m_items.at(position - 1); } ///< from 1
  const std::string& Key(std::size_t position) const { return m_keys.at(position - 1); }
  /// Throws KeyError when there is no such key.
  const T& Item(std::string_view key) const {
    const auto found = m_positions.find(key);
    if (found == m_positions.end()) throw KeyError("there is no key '" + std::string(key) + "'");
    return m_items[found->second];
  }
  auto begin() const { return m_items.begin(); }
  auto end() const { return m_items.end(); }

 private:
  std::vector<T> m_items;
  std::vector<std::string> m_keys;
  std::unordered_map<std::string, std::size_t, IgnoringCaseHash, IgnoringCaseEqual> m_positions;
};

} // namespace platform
