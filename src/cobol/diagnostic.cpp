#include "cobol/diagnostic.hpp"

#include <iterator>

namespace cobol {
namespace {

constexpr std::uint32_t kKeptPerCode = 1000;
constexpr std::size_t kTextLimit = 200;
constexpr std::string_view kNames[] = {
    "SourceUnreadable", "EncodingGuessed",  "FormatGuessed", "IndicatorUnknown", "LineTooLong",   "LiteralOpen",
    "ContinuationBad",  "CopyMissing",      "CopyCycle",     "CopyDepth",        "ReplaceLimit",  "DirectiveUnknown",
    "ExecOpen",         "DivisionMissing",  "LevelBad",      "PeriodMissing",    "PictureBad",    "PictureMissing",
    "RedefinesUnknown", "RedefinesLonger",  "OccursBad",     "RenamesBad",       "NameDuplicate", "Unresolved",
    "Ambiguous",        "StatementUnknown", "PairsCapped",   "OverlaysCapped",   "BudgetSpent",   "SyncMisaligned",
};
static_assert(std::size(kNames) == static_cast<std::size_t>(Code::SyncMisaligned) + 1);

} // namespace

std::string_view nameOf(Code code) {
  return kNames[static_cast<std::size_t>(code)];
}

void Diagnostics::add(Code code, Severity severity, Position at, std::string text) {
  if (m_counts[static_cast<std::size_t>(code)]++ >= kKeptPerCode) return;
  if (text.size() > kTextLimit) {
    std::size_t cut = kTextLimit;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80)
      --cut; // never inside a character
    text.resize(cut);
  }
  m_all.push_back({code, severity, at, std::move(text)});
}

std::vector<Diagnostic> Diagnostics::take() {
  for (std::size_t code = 0; code < std::size(kNames); ++code) {
    if (m_counts[code] <= kKeptPerCode) continue;
    m_all.push_back({static_cast<Code>(code),
                     Severity::information,
                     {0, 1, 1, 0},
                     std::to_string(m_counts[code] - kKeptPerCode) + " more of these are left out"});
  }
  return std::move(m_all);
}

} // namespace cobol
