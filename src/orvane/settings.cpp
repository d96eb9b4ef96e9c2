#include "orvane/settings.hpp"

namespace orvane {

std::string MemorySettings::GetSetting(const std::string& application, const std::string& section,
                                       const std::string& key, const std::string& whenMissing) {
  const auto found = m_values.find(application + "\n" + section + "\n" + key);
  return found == m_values.end() ? whenMissing : found->second;
}

void MemorySettings::SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                                 const std::string& value) {
  m_values[application + "\n" + section + "\n" + key] = value;
}

} // namespace orvane
