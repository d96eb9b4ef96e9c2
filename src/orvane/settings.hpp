#pragma once

#include <map>
#include <string>
#include <tuple>

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

/// Settings of one user in a JSON file, application → section → key → text. A file that is missing or damaged gives the
/// defaults.
class FileSettings : public tarnsift::SettingsStore {
 public:
  explicit FileSettings(std::string file) : m_file(std::move(file)) { read(); }
  std::string GetSetting(const std::string& application, const std::string& section, const std::string& key,
                         const std::string& whenMissing) override;
  /// Writes the whole file anew with what other windows have saved meanwhile. Where it cannot be written the value
  /// holds until this window closes.
  void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                   const std::string& value) override;

 private:
  using Key = std::tuple<std::string, std::string, std::string>;
  void read();
  std::string text() const;
  std::string m_file;
  std::map<Key, std::string> m_values;
};

/// The settings file of this user: tarnsift/settings.json below XDG_CONFIG_HOME, else below ~/.config.
std::string userSettingsFile();

} // namespace orvane
