#pragma once

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace cobol {

/// A text that lies in an arena or in the program itself. It can't be made of a std::string, which might go before it,
/// and turns into one where one is wanted.
class Text : public std::string_view {
 public:
  constexpr Text() = default;
  constexpr Text(std::string_view kept) : std::string_view(kept) {}
  constexpr Text(const char* literal) : std::string_view(literal) {}
  Text(const std::string&) = delete;
  operator std::string() const { return std::string(data(), size()); }

  friend std::string operator+(std::string before, Text text) { return before.append(text); }
  friend std::string operator+(const char* before, Text text) { return std::string(before).append(text); }
  friend std::string operator+(char before, Text text) { return std::string(1, before).append(text); }
  friend std::string operator+(Text text, std::string_view behind) { return std::string(text).append(behind); }
  friend std::string operator+(Text text, char behind) { return std::string(text).append(1, behind); }
};

/// Keeps texts at fixed addresses until it goes itself: what a program's facts show are views of them.
class TextArena {
 public:
  TextArena() = default;
  TextArena(const TextArena&) = delete;
  TextArena& operator=(const TextArena&) = delete;

  /// A view that lives as long as the arena.
  Text keep(std::string_view text) {
    if (text.empty()) return {};
    char* const place = room(text.size());
    std::memcpy(place, text.data(), text.size());
    return std::string_view(place, text.size());
  }

  /// Where a text of so many bytes is to be written by the caller.
  char* room(std::size_t bytes) {
    if (bytes > static_cast<std::size_t>(m_end - m_next)) open(bytes);
    return std::exchange(m_next, m_next + bytes);
  }

 private:
  static constexpr std::size_t kBlockBytes = 32 * 1024;

  void open(std::size_t atLeast) {
    const auto bytes = atLeast > kBlockBytes ? atLeast : kBlockBytes;
    m_blocks.push_back(std::make_unique_for_overwrite<char[]>(bytes));
    m_next = m_blocks.back().get();
    m_end = m_next + bytes;
  }

  std::vector<std::unique_ptr<char[]>> m_blocks;
  char* m_next = nullptr;
  char* m_end = nullptr; ///< of the block in hand
};

} // namespace cobol
