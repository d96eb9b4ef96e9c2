#pragma once

#include <fstream>
#include <ostream>
#include <string>

namespace orvane {

/// Where a report goes: standard output ("/dev/stdout"), a device, or a file that takes its place only when it is
/// whole.
class ReportOutput {
 public:
  /// Throws platform::FileError when it is a folder or cannot be made.
  explicit ReportOutput(std::string path);
  /// What was not finished leaves nothing; a file that was there stays as it was.
  ~ReportOutput();
  ReportOutput(const ReportOutput&) = delete;
  ReportOutput& operator=(const ReportOutput&) = delete;

  std::ostream& stream();
  /// Throws platform::FileError when something could not be written.
  void finish();

 private:
  std::string m_path;   ///< as the user knows it
  std::string m_target; ///< the file itself where the path is a link
  std::string m_aside;  ///< what is written; "" when it goes straight to its place
  std::ofstream m_file;
};

} // namespace orvane
