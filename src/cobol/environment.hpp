#pragma once

#include <unordered_map>

#include "cobol/analysis.hpp"
#include "cobol/data_words.hpp"
#include "cobol/picture.hpp"

namespace cobol {

/// What the environment division of one program leaves for its data division.
struct Environment {
  PictureRules pictures;
  std::unordered_map<NameId, int> files; ///< file name to index in Analysis::dataFiles
};

/// Reads the tokens [from, to) of an environment division: pictures' rules, switches (constructs), files with the
/// references of their clauses, shared record areas.
void readEnvironment(const TokenStream& stream, const Words& words, std::uint32_t from, std::uint32_t to, int program,
                     const Options& options, Environment& environment, Analysis& analysis);

} // namespace cobol
