#include "orvane/settings.hpp"

#include <cstdlib>

#include <nlohmann/json.hpp>

#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"

namespace orvane {

using nlohmann::json;

std::string MemorySettings::GetSetting(const std::string& application, const std::string& section,
                                       const std::string& key, const std::string& whenMissing) {
  const auto found = m_values.find(application + "\n" + section + "\n" + key);
  return found == m_values.end() ? whenMissing : found->second;
}

void MemorySettings::SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                                 const std::string& value) {
  m_values[application + "\n" + section + "\n" + key] = value;
}

std::string FileSettings::GetSetting(const std::string& application, const std::string& section, const std::string& key,
                                     const std::string& whenMissing) {
  const auto found = m_values.find({application, section, key});
  return found == m_values.end() ? whenMissing : found->second;
}

void FileSettings::SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                               const std::string& value) {
  platform::ignoring([this] { read(); });
  m_values[{application, section, key}] = value;
  platform::ignoring([this] {
    platform::createFolders(m_file.substr(0, m_file.rfind('/')));
    platform::WriteFileAtomically(m_file, text());
  });
}

void FileSettings::read() {
  if (!platform::fileExists(m_file)) return;
  constexpr std::uint64_t kLargest = 1 << 20;
  std::string contents;
  if (!platform::ignoring([&] { contents = platform::readText(m_file, kLargest); })) return;
  const json document = json::parse(contents, nullptr, false);
  if (!document.is_object()) return;
  for (const auto& [application, sections] : document.items())
    if (sections.is_object())
      for (const auto& [section, keys] : sections.items())
        if (keys.is_object())
          for (const auto& [key, value] : keys.items())
            if (value.is_string()) m_values[{application, section, key}] = value.get<std::string>();
}

std::string FileSettings::text() const {
  json document = json::object();
  for (const auto& [key, value] : m_values)
    document[std::get<0>(key)][std::get<1>(key)][std::get<2>(key)] = value;
  return document.dump(2, ' ', false, json::error_handler_t::replace) + "\n";
}

std::string userSettingsFile() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  if (config && *config == '/') return std::string(config) + "/tarnsift/settings.json";
  const char* home = std::getenv("HOME");
  return std::string(home && *home ? home : "") + "/.config/tarnsift/settings.json";
}

} // namespace orvane
