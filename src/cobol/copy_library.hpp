#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/interner.hpp"
#include "cobol/options.hpp"
#include "cobol/scanner.hpp"
#include "cobol/text_block.hpp"

namespace cobol {

/// The words of a copybook with names of their own; shared and unchangeable.
struct CopyText {
  TextBlock block;
  Interner names;
};

/// Finds and keeps copybooks for all programs of a run. Safe for several threads. A folder is listed once, a file is
/// read and split once for each way of reading it.
class CopyLibrary {
 public:
  /// `extensions` are tried in that order behind the name as written.
  explicit CopyLibrary(std::vector<std::string> folders,
                       std::vector<std::string> extensions = Options().copyExtensions);
  /// Texts by upper-case name, or by `LIBRARY/NAME`; no files are read.
  explicit CopyLibrary(std::map<std::string, std::string> texts);
  ~CopyLibrary();
  CopyLibrary(const CopyLibrary&) = delete;
  CopyLibrary& operator=(const CopyLibrary&) = delete;

  /// Where the copybook lies: a name with folders relative to the text that copies it, then each folder of the list
  /// (its subfolder `library` first), last the folder of the text that copies it. Upper and lower case are one; of
  /// files that differ in case only the exact one is taken or else the first by name, and `rival` then gets the next.
  std::optional<std::string> find(std::string_view name, std::string_view library, const std::string& includerPath,
                                  std::string* rival = nullptr);

  /// The words of a found copybook; `outer` is how the text that copies it is read.
  std::shared_ptr<const CopyText> read(const std::string& path, const ScanSettings& outer, const Options& options);

 private:
  struct State;
  std::optional<std::string> search(std::string_view name, std::string_view library, const std::string& includerPath,
                                    std::string* rival);
  std::optional<std::string> findIn(const std::string& folder, const std::string& name, std::string* rival);
  std::optional<std::string> findText(std::string_view name, std::string_view library) const;

  std::vector<std::string> m_folders;
  std::vector<std::string> m_extensions;
  bool m_inMemory = false;
  std::map<std::string, std::string> m_texts;
  std::unique_ptr<State> m_state;
};

} // namespace cobol
