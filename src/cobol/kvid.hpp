#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/analysis.hpp"

namespace cobol {

/// Gives every construct its key: program path, a colon, the full COBOL qualification from the outermost name in.
/// Unique in the analysis; stable when text moves, is renumbered or gets other pictures. Call it when all constructs
/// are made. Gives those whose path was taken before, in declaration order; they carry `#2`, `#3` …. Only `A-Z 0-9 - _
/// . : / # ~ ^ + @ ! ? ( ) =` occur; every other byte is `=HH`.
std::vector<std::uint32_t> nameConstructs(Analysis& analysis);

/// Of a key longer than `longest`: its first 120 characters, `~` and 16 hexadecimal digits of a hash of all of it.
void shortenKey(std::string& key, std::size_t longest);

/// 64-bit FNV-1a, the same for ever: keys and shapes are kept from analysis to analysis.
std::uint64_t lastingHash(std::string_view text);

/// The text in the key alphabet.
std::string keyText(std::string_view text);

} // namespace cobol
