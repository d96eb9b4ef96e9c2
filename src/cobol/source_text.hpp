#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/characters.hpp"
#include "cobol/diagnostic.hpp"
#include "cobol/options.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// A file decoded to UTF-8, without byte order mark and without the end marks behind its text.
struct SourceText {
  std::string text;
  TextTraits traits; ///< of the text
  SourceFile file;   ///< path, size, hash, encoding; lines and format are still open
};

/// The bytes of a file; nothing when it cannot be read or is larger than 1 GiB.
std::optional<std::string> readBytes(const std::string& path);

/// Tells contents apart, for SourceFile::hash; eight bytes a step, as every file of a run goes through it.
std::uint64_t contentHash(std::string_view bytes);

/// Decodes the bytes of a file as the options say. Records of 80 without line ends are cut into lines.
SourceText decode(std::string bytes, const Options& options, Diagnostics& diagnostics);

/// The physical lines of a decoded text without their ends (LF, CRLF or a lone CR), numbered as the tokens are.
std::vector<std::string> splitLines(std::string_view text);

/// What the lines of a text say of their format, seen over the first 500 that are not blank.
Format detectFormat(const SourceText& source, Diagnostics& diagnostics);

/// The format of a copybook: that of the text which copies it, unless its own lines exclude that.
Format copiedFormat(const SourceText& source, Format outer);

} // namespace cobol
