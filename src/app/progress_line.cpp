#include "app/progress_line.hpp"

#include <cstdio>

#include <fmt/format.h>
#include <unistd.h>

namespace app {

namespace {
constexpr auto kInterval = std::chrono::milliseconds(80);
constexpr int kWidth = 100;
} // namespace

ProgressLine::ProgressLine() : m_terminal(::isatty(STDERR_FILENO) == 1) {}

void ProgressLine::show(const std::string& text, std::size_t done, std::size_t total) {
  const auto now = std::chrono::steady_clock::now();
  if (!m_terminal || now - m_last < kInterval) return;
  m_last = now;
  m_shown = true;
  fmt::print(stderr, "\r\x1b[K{:.{}}", fmt::format("{} {}/{}", text, done, total), kWidth);
  std::fflush(stderr);
}

void ProgressLine::clear() {
  if (!m_shown) return;
  fmt::print(stderr, "\r\x1b[K");
  std::fflush(stderr);
  m_shown = false;
}

} // namespace app
