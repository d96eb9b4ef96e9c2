#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvane {

/// The folder that holds everything: Orvane.db, Projects/, Analysis/, Sources/ (links and copies), Output/, Resources/.
/// Paths inside it are relative with backslashes wherever they are stored.
class BaseFolder {
 public:
  /// Makes a base folder with its sub-folders and an empty repository. What is there already stays.
  static BaseFolder create(const std::string& path);
  /// Throws platform::Error when it is no base folder.
  static BaseFolder open(const std::string& path);
  /// The nearest base folder at or above a path.
  static std::optional<std::string> nearest(const std::string& path);

  const std::string& path() const { return m_path; } ///< native, absolute, no separator at its end
  std::string repositoryFile() const { return m_path + "/Orvane.db"; }
  std::string projectFolder(const std::string& name) const { return m_path + "/Projects/" + name; }
  std::string analysisFolder() const { return m_path + "/Analysis"; }
  std::string outputFolder() const { return m_path + "/Output"; }

  /// A native path below the base folder as it is stored; nothing when it lies outside.
  std::optional<std::string> relative(const std::string& nativePath) const;
  std::string native(const std::string& relativePath) const;
  /// Makes a folder of sources reachable below the base folder and gives its native path there: a link below Sources/,
  /// made once per folder. A folder that lies below the base folder already is given as it is.
  std::string linkFolder(const std::string& folder) const;
  /// The same with a copy of the folder's files.
  std::string copyFolder(const std::string& folder) const;

 private:
  explicit BaseFolder(std::string path) : m_path(std::move(path)) {}
  std::string placeFor(const std::string& folder) const;
  std::string m_path;
};

} // namespace orvane
