#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/copy_library.hpp"
#include "cobol/diagnostic.hpp"
#include "cobol/options.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// Reads a source with everything that it copies. Never throws for bad input: an unreadable file gives a stream with
/// the end token alone and SourceUnreadable. Positions are the physical ones of the file that a token stands in.
///
/// A sign in front of a number is a symbol of its own. Inside EXEC text commas and semicolons are symbols, and so is
/// the period (`:A.B` is a qualified name there). areaA is set on the first token of a line only. The header words of
/// the comment paragraphs (AUTHOR …) are tokens, their texts are not. EXEC SQL INCLUDE, COPY and REPLACE leave no
/// tokens of their own.
TokenStream readTokens(const std::string& path, const Options& options, CopyLibrary& library, Diagnostics& diagnostics);

/// The same for texts in memory; `copybooks` gives texts by upper-case name or `LIBRARY/NAME`.
TokenStream readTokens(std::string_view text, const Options& options,
                       const std::map<std::string, std::string>& copybooks, Diagnostics& diagnostics);

/// Whether anything says that the text is a COBOL program: a division header or PROGRAM-ID, FUNCTION-ID, CLASS-ID.
bool looksLikeCobol(const TokenStream& stream);

/// The physical lines of a file decoded to UTF-8, without their ends (LF, CRLF or a lone CR), numbered as the tokens
/// are. Nothing when the file cannot be read; then `error`, if given, says why.
std::vector<std::string> readLines(const std::string& path, const Options& options, std::string* error = nullptr);

} // namespace cobol
