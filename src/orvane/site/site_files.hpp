#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "cobol/token.hpp"
#include "orvane/base_folder.hpp"
#include "orvane/store_format.hpp"

namespace orvane {

/// Where a name of a source leads to.
struct SiteTarget {
  int file = -1;          ///< index into SiteFiles; -1: nowhere, or to several places
  std::uint32_t line = 0; ///< from 1; 0: the page as a whole
  bool operator==(const SiteTarget&) const = default;
};

/// A name that leads somewhere, or stands in a list.
struct SiteLink {
  std::uint32_t line = 0, column = 0, length = 0; ///< from 1; characters
  SiteTarget target;
  int list = -1; ///< Working, Affected, Clean; -1: none
};

/// A source file with a page of its own.
struct SiteFile {
  std::string path; ///< as stored: relative to the base folder with backslashes, native outside it
  std::string native;
  std::string page;       ///< relative to the folder of the pages, slashes; needs no escaping in a URL
  std::uint64_t hash = 0; ///< of the bytes that lie there now
  bool readable = false;
  bool changed = false;    ///< not as some analysis found it, or gone
  std::uint32_t lines = 0; ///< lines that links may lead to
  std::optional<cobol::Format> format;
  int program = -1;                                  ///< the program whose own source it is
  std::vector<int> copiedBy;                         ///< programs
  std::unordered_map<std::uint64_t, SiteLink> links; ///< of a copybook, by place
};

/// All source files of a site. Programs are given one after the other, so only what their copybooks say of links is
/// kept.
class SiteFiles {
 public:
  explicit SiteFiles(const BaseFolder& base) : m_base(base) {}

  /// The file of that stored path, taken in when it is new.
  int take(const std::string& path);
  /// Takes in the files of a program's analysis. Names that stand in copybooks lead somewhere where all programs agree.
  void takeProgram(int program, const StoreData& data);
  /// Gives every file its page; after the last file was taken in.
  void nameAll();

  /// Of each file of the analysis its index here.
  std::vector<int> indexesOf(const StoreData& data) const;
  /// The names of the program's own source that lead somewhere, in text order.
  std::vector<SiteLink> linksOf(const StoreData& data) const;

  std::size_t size() const { return m_files.size(); }
  SiteFile& at(int index) { return m_files[static_cast<std::size_t>(index)]; }
  const SiteFile& at(int index) const { return m_files[static_cast<std::size_t>(index)]; }
  /// Nothing for a path that has no page.
  const SiteFile* find(const std::string& path) const;

 private:
  template<typename Take>
  void eachLink(const StoreData& data, const std::vector<int>& indexes, Take&& take) const;
  const BaseFolder& m_base;
  std::vector<SiteFile> m_files;
  std::unordered_map<std::string, int> m_byPath;
};

} // namespace orvane
