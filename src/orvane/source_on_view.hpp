#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cobol/shading.hpp"
#include "orvane/base_folder.hpp"
#include "orvane/store_format.hpp"

namespace orvane {

/// What a source view marks of a construct.
enum class MarkKind : std::uint8_t { declaration, read, write, both };

/// A marked piece of a file; places as the analysis keeps them: lines and columns from 1, lengths in characters.
struct SourceMark {
  PlaceRecord place;
  MarkKind kind{};
  bool part = false; ///< a further place of a name that is marked elsewhere: no usage of its own
};

/// The declaration of a construct and all its usages with all places of their names, in the order of files, lines,
/// columns. A place that is several usages is one mark. Nothing for a construct that the analysis does not have.
std::vector<SourceMark> marksOf(const StoreData& data, std::uint32_t construct);

/// A file of a program as it lies now.
struct SourceOnView {
  cobol::ShadedText text;
  bool changed = false; ///< it is not what the analysis saw
  std::string problem;  ///< why there is no text; "" when there is
};

/// Reads and shades a file of an analysis, by its index in there.
SourceOnView readSource(const BaseFolder& base, const cobol::Options& options, const StoreData& data,
                        std::uint32_t file);

} // namespace orvane
