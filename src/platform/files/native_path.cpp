#include <dirent.h>

#include <memory>

#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"

namespace platform {

namespace {

bool isSeparator(char c) {
  return c == '\\' || c == '/';
}

/// The first name of the folder, in sorted order, that equals `name` without regard to case; `name` itself where none
/// does.
std::string nameInFolder(const std::string& folder, const std::string& name) {
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(::opendir(folder.empty() ? "." : folder.c_str()), &::closedir);
  std::string best;
  while (const dirent* entry = entries ? ::readdir(entries.get()) : nullptr) {
    const std::string_view candidate = entry->d_name;
    if (equalsIgnoringCase(candidate, name) && (best.empty() || candidate < best)) best = candidate;
  }
  return best.empty() ? name : best;
}

} // namespace

std::string nativePath(const std::string& basePath, std::string_view backslashPath, CaseRule rule) {
  std::string path = basePath;
  while (path.size() > 1 && path.ends_with('/'))
    path.pop_back();
  for (std::size_t begin = 0; begin < backslashPath.size();) {
    std::size_t end = begin;
    while (end < backslashPath.size() && !isSeparator(backslashPath[end]))
      ++end;
    std::string part(backslashPath.substr(begin, end - begin));
    begin = end + 1;
    if (part.empty() || part == ".") continue;
    const std::string below = path.empty() || path.ends_with('/') ? path : path + "/";
    if (rule == CaseRule::ignore && !fileExists(below + part) && !folderExists(below + part)) {
      part = nameInFolder(path, part);
    }
    path = below + part;
  }
  return path;
}

std::string nativePath(std::string_view backslashPath) {
  std::string path(backslashPath);
  std::replace(path.begin(), path.end(), '\\', '/');
  return path;
}

} // namespace platform
