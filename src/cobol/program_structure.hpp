#pragma once

#include <cstdint>
#include <vector>

#include "cobol/analysis.hpp"
#include "cobol/data_words.hpp"

namespace cobol {

/// A stretch of the stream that holds declarations of one program, its division or section header included.
struct DeclarationPart {
  enum class Kind : std::uint8_t { environment, data };
  Kind kind{};
  int program = 0;
  std::uint32_t from = 0; ///< first token
  std::uint32_t to = 0;   ///< one behind the last
};

struct ProgramStructure {
  std::vector<DeclarationPart> parts;    ///< in text order
  std::vector<bool> usesCics;            ///< by program: holds an EXEC CICS
  std::vector<bool> usesDli;             ///< by program: holds an EXEC DLI
  std::vector<std::uint32_t> nameTokens; ///< by program: the token of its name, or its first token
  bool declaresExecBlock = false;        ///< the EXEC interface block stands in the text itself
  bool declaresDliBlock = false;         ///< the same for the block of EXEC DLI
};

/// Finds the programs of a stream, one inside the other or one behind the other, and fills Analysis::programs and
/// Analysis::isCobol. A missing END PROGRAM, PROGRAM-ID or division header is supplied.
ProgramStructure findPrograms(const TokenStream& stream, const Words& words, Analysis& analysis,
                              Diagnostics& diagnostics);

} // namespace cobol
