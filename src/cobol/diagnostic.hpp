#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/position.hpp"

namespace cobol {

enum class Code : std::uint8_t {
  SourceUnreadable,
  EncodingGuessed,
  FormatGuessed,
  IndicatorUnknown,
  LineTooLong,
  LiteralOpen,
  ContinuationBad,
  CopyMissing,
  CopyCycle,
  CopyDepth,
  ReplaceLimit,
  DirectiveUnknown,
  ExecOpen,
  DivisionMissing,
  LevelBad,
  PeriodMissing,
  PictureBad,
  PictureMissing,
  RedefinesUnknown,
  RedefinesLonger,
  OccursBad,
  RenamesBad,
  NameDuplicate,
  Unresolved,
  Ambiguous,
  StatementUnknown,
  PairsCapped,
  OverlaysCapped,
  BudgetSpent,
  SyncMisaligned,
};

enum class Severity : char { information = 'I', warning = 'W', error = 'E' };

/// One remark of the analyser; an error means that parts are missing, never that there is no result.
struct Diagnostic {
  Code code{};
  Severity severity = Severity::warning;
  Position at;
  std::string text; ///< at most 200 characters

  bool operator==(const Diagnostic&) const = default;
};

/// The code's name as it stands above, e.g. "CopyMissing".
std::string_view nameOf(Code code);

/// Collects the remarks of one program: at most 1000 of a code are kept, the rest is only counted.
class Diagnostics {
 public:
  void add(Code code, Severity severity, Position at, std::string text);
  const std::vector<Diagnostic>& all() const { return m_all; }
  /// Hands them over, and behind them for each code that had more how many these were.
  std::vector<Diagnostic> take();
  /// How many were added for the code, those not kept included.
  std::uint32_t count(Code code) const { return m_counts[static_cast<std::size_t>(code)]; }

 private:
  std::vector<Diagnostic> m_all;
  std::uint32_t m_counts[32]{};
};

} // namespace cobol
