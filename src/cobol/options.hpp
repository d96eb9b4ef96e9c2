#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace cobol {

enum class Dialect : std::uint8_t { ibm, gnu, mf };
enum class FormatChoice : std::uint8_t { detect, fixed, variable, free };
enum class DebugLines : std::uint8_t { automatic, code, comment };
enum class BinarySize : std::uint8_t { by2_4_8, by1_2_4_8, by1to8 };
enum class SyncRule : std::uint8_t { ibm, natural };
enum class SameArea : std::uint8_t { vsam, never, always };

/// What the analyser is told from outside. The defaults are those of the dialect ibm.
struct Options {
  Dialect dialect = Dialect::ibm;
  FormatChoice format = FormatChoice::detect;
  DebugLines debugLines = DebugLines::automatic;
  BinarySize binarySize = BinarySize::by2_4_8;
  SyncRule sync = SyncRule::ibm;
  SameArea sameArea = SameArea::vsam;
  bool comp5Small = false;                       ///< COMP-5 of one or two digits takes one byte
  int pointerBytes = 4;                          ///< 4 or 8; INDEX items as well
  bool conditionStorage = false;                 ///< level 88 gets the range of its item
  bool allBranches = false;                      ///< keep every branch of conditional compilation
  std::size_t wordLimit = 50'000'000;            ///< words of a program with its copybooks; the rest is left out
  std::string encoding = "auto";                 ///< auto, UTF-8, ISO-8859-1
  std::string ebcdic = "auto";                   ///< auto, never, or a code page name
  std::vector<std::string> copybookFolders = {}; ///< searched in this order
  std::vector<std::string> copyExtensions = {"", ".cpy", ".cbl", ".cob", ".inc", ".copy", ".dcl", ".txt"};
};

/// The options with the other defaults of that dialect; `format`, folders and encoding stay.
Options withDialect(Options options, Dialect dialect);

} // namespace cobol
