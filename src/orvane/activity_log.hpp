#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tarnsift/session/host.hpp"

namespace orvane {

/// The host's activity log: what went wrong in steps that others go on after, and what long commands did.
class Log : public tarnsift::ActivityLog {
 public:
  void Attach(const tarnsift::Ref<tarnsift::Object>& object) override { m_attached = object; }
  bool Visible() override { return m_visible; }
  void setVisible(bool visible) override {
    m_visible = visible;
    if (onShown) onShown();
  }
  bool Minimized() override { return m_minimized; }
  void setMinimized(bool minimized) override {
    m_minimized = minimized;
    if (onShown) onShown();
  }
  void Write(const std::string& line) override {
    m_lines.push_back(line);
    if (onLine) onLine(line);
  }
  const std::vector<std::string>& lines() const { return m_lines; }
  std::function<void(const std::string&)> onLine;
  std::function<void()> onShown; ///< visibility or size has changed

 private:
  tarnsift::Ref<tarnsift::Object> m_attached;
  std::vector<std::string> m_lines;
  bool m_visible = false;
  bool m_minimized = false;
};

} // namespace orvane
