#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "cobol/analysis.hpp"

namespace orvane {

// The analysis file `*.kva`: a head, tables of fixed records, one table of texts, a checksum. Little-endian; written
// whole.

using TextId = std::uint32_t; ///< index into StoreData::texts

struct FileRecord {
  TextId path = 0; ///< relative to the base folder, backslashes; native when it lies outside
  TextId encoding = 0;
  std::uint64_t size = 0;
  std::uint64_t hash = 0;
  std::uint32_t lines = 0;
  std::uint32_t format = 0;
};

struct PlaceRecord {
  std::uint32_t file = 0, line = 0, column = 0, length = 0;
};

struct ConstructRecord {
  std::int64_t offset = 0, size = 0, position = 0, length = 0;
  TextId kvid = 0, name = 0, picture = 0, usage = 0, value = 0, dims = 0;
  std::int32_t parent = -1, record = -1, redefines = -1;
  std::int32_t level = 0, digits = 0, scale = 0;
  std::uint32_t occurs = 1, flags = 0;
  PlaceRecord declared;
  std::uint32_t firstInstance = 0, instances = 0; ///< all instances, usages first, each part in text order
  std::uint32_t usages = 0;
  std::uint8_t kind = 0, section = 0, isSigned = 0, repeats = 0;
};

struct InstanceRecord {
  std::uint32_t construct = 0;
  PlaceRecord place;
  TextId verb = 0;
  std::uint16_t access = 0;  ///< letter of cobol::Access
  std::uint16_t further = 0; ///< list of StoreData::further: the other places of the name's text
};

struct RelationRecord {
  std::uint32_t from = 0, to = 0, kind = 0;
  std::uint32_t firstSite = 0, sites = 0;
};

struct NamedPlaceRecord {
  TextId kindWord = 0, name = 0;
  PlaceRecord place;
};

struct DiagnosticRecord {
  std::uint32_t code = 0, severity = 0;
  PlaceRecord place;
  TextId text = 0;
};

struct CopyRecord {
  TextId name = 0, library = 0;
  std::int32_t file = -1;
  PlaceRecord place;
};

/// A whole analysis file in memory.
struct StoreData {
  std::uint64_t generation = 0; ///< the same number stands in the program's database
  std::uint32_t statements = 0, statementsUnderstood = 0;
  std::vector<FileRecord> files;
  std::vector<ConstructRecord> constructs;
  std::vector<std::uint32_t> byKvid; ///< constructs in the order of their KVIDs
  std::vector<InstanceRecord> instances;
  std::vector<std::uint32_t> furtherEnds; ///< by list: one behind its last place; list 0 is empty
  std::vector<PlaceRecord> furtherPlaces;
  std::vector<RelationRecord> relations;
  std::vector<PlaceRecord> sites;
  std::vector<NamedPlaceRecord> places;
  std::vector<DiagnosticRecord> diagnostics;
  std::vector<CopyRecord> copies;
  std::vector<std::uint32_t> textEnds;
  std::string textBytes;

  std::string_view text(TextId id) const {
    const std::uint32_t from = id == 0 ? 0 : textEnds[id - 1];
    return std::string_view(textBytes).substr(from, textEnds[id] - from);
  }
  /// Where the name of an instance goes on: later parts of a continued name, operands that replaced a part of it.
  std::span<const PlaceRecord> further(const InstanceRecord& instance) const {
    if (instance.further == 0) return {};
    const std::uint32_t from = furtherEnds[instance.further - 1u];
    return std::span(furtherPlaces).subspan(from, furtherEnds[instance.further] - from);
  }
  /// Index of the construct with that key; -1 when there is none.
  int find(std::string_view kvid) const;
};

/// Packs an analysis; `storedPath` turns a native path into the one that is stored.
StoreData packAnalysis(const cobol::Analysis& analysis, std::uint64_t generation,
                       const std::function<std::string(const std::string&)>& storedPath);

/// The file's bytes, and back; also those of the earlier format, which has no further places. Damaged bytes are a
/// platform::Error that names the file.
std::string storeBytes(const StoreData& data);
StoreData readStoreBytes(std::string_view bytes, const std::string& path);
StoreData readStore(const std::string& path);

/// Words for kinds and sections as columns show them: "group", "item", "condition", "slot" …; "working-storage" …
std::string_view kindWord(std::uint8_t kind);
std::string_view sectionWord(std::uint8_t section);
/// The letters of the construct's flags.
std::string flagLetters(std::uint32_t flags);

} // namespace orvane
