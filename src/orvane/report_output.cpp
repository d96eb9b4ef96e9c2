#include "orvane/report_output.hpp"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iostream>

#include "platform/files/files.hpp"
#include "platform/runtime/error.hpp"

namespace orvane {

namespace fs = std::filesystem;

namespace {

// Opened by its name, standard output would lose what already stands in the file that it leads to.
bool isStandardOutput(const std::string& path) {
  return path == "/dev/stdout";
}

} // namespace

ReportOutput::ReportOutput(std::string path) : m_path(std::move(path)) {
  if (isStandardOutput(m_path)) return;
  std::error_code none;
  const fs::path resolved = fs::canonical(m_path, none);
  m_target = none ? m_path : resolved.string();
  if (platform::folderExists(m_target)) throw platform::FileError(m_path, "is a folder; name a file");
  const bool device = m_path.starts_with("/dev/") || (!none && !fs::is_regular_file(resolved, none));
  if (!device) m_aside = platform::temporaryNameFor(m_target);
  m_file.open(device ? m_target : m_aside, std::ios::binary | std::ios::trunc);
  if (m_file) return;
  m_aside.clear();
  throw platform::FileError(m_path, std::strerror(errno));
}

ReportOutput::~ReportOutput() {
  if (m_aside.empty()) return;
  m_file.close();
  platform::ignoring([&] { platform::removeAll(m_aside); });
}

std::ostream& ReportOutput::stream() {
  return isStandardOutput(m_path) ? std::cout : m_file;
}

void ReportOutput::finish() {
  stream().flush();
  if (!isStandardOutput(m_path)) m_file.close();
  if (!stream())
    throw platform::FileError(m_path, "the report could not be written: " + std::string(std::strerror(errno)));
  if (m_aside.empty()) return;
  std::error_code fresh;
  const auto old = fs::status(m_target, fresh);
  if (fs::exists(old)) fs::permissions(m_aside, old.permissions(), fresh);
  platform::renameFile(m_aside, m_target);
  m_aside.clear();
}

} // namespace orvane
