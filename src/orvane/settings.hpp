#pragma once

#include <map>
#include <string>

#include "tarnsift/session/host.hpp"

namespace orvane {

/// Settings in memory: a headless session never touches the window's layout.
class MemorySettings : public tarnsift::SettingsStore {
 public:
  std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                         const std::string& whenMissing) override;
  void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                   const std::string& value) override;

 private:
  std::map<std::string, std::string> m_values;
};

} // namespace orvane
