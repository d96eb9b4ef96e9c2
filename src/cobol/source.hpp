#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/diagnostic.hpp"
#include "cobol/options.hpp"
#include "cobol/token.hpp"

namespace cobol {

/// The tokens of a program held in memory; `copybooks` gives texts by upper-case name. Never throws for bad input.
/// A sign in front of a number is a symbol of its own. Inside EXEC text commas and semicolons are symbols, and so is the
/// period (`:A.B` is a qualified name there). The flag areaA is set on the first token of a line only.
TokenStream readTokens(std::string_view text, const Options& options, const std::map<std::string, std::string>& copybooks,
                       Diagnostics& diagnostics);

/// Whether anything says that the text is a COBOL program: a division header or PROGRAM-ID, FUNCTION-ID, CLASS-ID.
bool looksLikeCobol(const TokenStream& stream);

} // namespace cobol
