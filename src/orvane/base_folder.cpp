#include "orvane/base_folder.hpp"

#include <algorithm>
#include <filesystem>

#include "orvane/repository_file.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace fs = std::filesystem;

namespace {

fs::path absolutePath(const std::string& path) {
  std::error_code failed;
  fs::path whole = fs::weakly_canonical(path, failed);
  if (failed) throw platform::FileError(path, failed.message());
  return whole;
}

constexpr const char* kSources = "Sources";

} // namespace

BaseFolder BaseFolder::create(const std::string& path) {
  const BaseFolder base(absolutePath(path).string());
  for (const char* folder : {"Projects", "Analysis", kSources, "Output", "Resources"})
    platform::createFolders(base.m_path + "/" + folder);
  createRepositoryFile(base.repositoryFile());
  return base;
}

BaseFolder BaseFolder::open(const std::string& path) {
  BaseFolder base(absolutePath(path).string());
  if (!platform::fileExists(base.repositoryFile()))
    throw platform::Error(base.m_path + ": is no base folder (Orvane.db is missing); make one with 'tarnsift init'");
  return base;
}

std::optional<std::string> BaseFolder::nearest(const std::string& path) {
  for (fs::path at = absolutePath(path); !at.empty(); at = at.parent_path()) {
    if (platform::fileExists((at / "Orvane.db").string())) return at.string();
    if (at == at.root_path()) break;
  }
  return std::nullopt;
}

std::optional<std::string> BaseFolder::relative(const std::string& nativePath) const {
  if (!nativePath.starts_with(m_path + "/")) return std::nullopt;
  std::string inside = nativePath.substr(m_path.size() + 1);
  std::replace(inside.begin(), inside.end(), '/', '\\');
  return inside;
}

std::string BaseFolder::native(const std::string& relativePath) const {
  return platform::nativePath(m_path, relativePath);
}

// A name below Sources/ that is free, or leads to that very folder already.
std::string BaseFolder::placeFor(const std::string& folder) const {
  const std::string stem = fs::path(folder).filename().empty() ? "root" : fs::path(folder).filename().string();
  for (int number = 1;; ++number) {
    const std::string place = m_path + "/" + kSources + "/" + stem + (number == 1 ? "" : "-" + std::to_string(number));
    std::error_code failed;
    if (!fs::exists(fs::symlink_status(place, failed))) return place;
    if (fs::is_symlink(place) && fs::read_symlink(place, failed) == fs::path(folder)) return place;
  }
}

std::string BaseFolder::linkFolder(const std::string& folder) const {
  const std::string whole = absolutePath(folder).string();
  if (!platform::folderExists(whole)) throw platform::FileError(folder, "is no folder");
  if (whole.starts_with(m_path + "/")) return whole;
  const std::string place = placeFor(whole);
  std::error_code failed;
  if (!fs::is_symlink(place)) fs::create_directory_symlink(whole, place, failed);
  if (failed) throw platform::FileError(place, failed.message());
  return place;
}

std::string BaseFolder::copyFolder(const std::string& folder) const {
  const std::string whole = absolutePath(folder).string();
  if (!platform::folderExists(whole)) throw platform::FileError(folder, "is no folder");
  if (whole.starts_with(m_path + "/")) return whole;
  const std::string place = placeFor(whole);
  std::error_code failed;
  fs::copy(whole, place, fs::copy_options::recursive, failed);
  if (failed) {
    platform::removeAll(place); // nothing half written
    throw platform::FileError(place, failed.message());
  }
  return place;
}

} // namespace orvane
