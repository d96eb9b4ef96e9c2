#pragma once

#include <string>
#include <string_view>

#include "platform/files/files.hpp"
#include "tarnsift/session/sitemint_generator.hpp"

namespace tarnsift {

/// The page at work: every write is a line that ends with CR LF.
class PageFile {
 public:
  explicit PageFile(const std::string& path) : m_file(path) {}
  void line(std::string_view text) {
    m_file.write(text);
    m_file.write("\r\n");
  }
  /// Lines that a PageLines gathered.
  void lines(const std::string& text) { m_file.write(text); }
  void finish() { m_file.finish(); }

 private:
  platform::WholeFile m_file;
};

/// Lines of one program, gathered before any of them is written, so that what cannot be read leaves no half of it.
class PageLines {
 public:
  void line(std::string_view text) {
    m_text += text;
    m_text += "\r\n";
  }
  const std::string& text() const { return m_text; }

 private:
  std::string m_text;
};

inline constexpr const char* kTableHead = "<table border=\"0\" class=\"flat\" width=\"100%\" >";

/// The table of figures, a row a program.
void writeMetrics(PageFile& page);
/// The table of datanames of a list, of all three lists for 0.
void writeList(PageFile& page, int list, SitemintGenerator& generator);

} // namespace tarnsift
