#pragma once

#include <map>
#include <string>
#include <vector>

#include "cobol/source.hpp"

namespace cobol {

/// A snippet read in memory and what came of it, as text.
struct TokenPicture {
  /// WORD, #number, 'literal', {picture}, symbols and periods as they are, one blank between.
  std::string words;
  /// The same with `<line:column>` behind each, `<file/line:column>` in copybooks.
  std::string places;
  /// The words that carry a flag: A area A, X in EXEC, R replaced, J joined, C continued, L line start, H host
  /// variable.
  std::string flagged(char flag) const;
  /// The words that stand in several places, with all of these as `<line:column+length>`.
  std::string scattered() const;
  /// "Code line:column" of every remark.
  std::vector<std::string> remarks;
  TokenStream stream;
};

TokenPicture pictureOf(const std::string& text, const Options& options = {},
                       const std::map<std::string, std::string>& copybooks = {});

Options inFormat(FormatChoice format);

} // namespace cobol
