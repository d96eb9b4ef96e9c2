#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "orvane/store_format.hpp"

namespace orvane {

/// What programs meet at: a parameter of a called program, `SUB(1)`, `PROG(CA)`, or a file by its assigned name.
struct SlotName {
  bool isFile = false;
  std::string name; ///< upper case
  auto operator<=>(const SlotName&) const = default;
};

/// Bytes from the start of what a slot carries: 0-based, `last` is one behind.
struct SlotBytes {
  std::int64_t first = 0, last = 0;
  auto operator<=>(const SlotBytes&) const = default;
};

/// A way over the border: bytes of a slot, or all of it.
struct Crossing {
  SlotName slot;
  std::optional<SlotBytes> bytes;
  auto operator<=>(const Crossing&) const = default;

  /// The criterion that finds what it reaches, "Across:file ACCTMST with BKB020 at 9-16"; `program` is where it comes
  /// from.
  std::string criterion(const std::string& program) const;
};

/// Where a crossing came from, as a comment "… Across:file ACCTMST with BKB020 at 9-16 …" tells it: "file ACCTMST with
/// BKB020".
/// "" for another comment.
std::string originIn(std::string_view comment);
/// The slot of such a comment.
std::optional<SlotName> slotIn(std::string_view comment);
/// Reads "ACCTMST with BKB020 at 9-16", the argument of the criterion. Throws platform::Error for bytes that are no
/// range.
Crossing crossingNamed(const std::string& argument, bool isFile);

/// The data of a program that other programs see through its slots. A slot's windows are the items that are passed:
/// arguments and parameters, the records of a file, and the areas that these are read into or written from. The slots
/// of dynamic calls, `?(k)`, are left out: nothing tells where they lead.
class Border {
 public:
  explicit Border(const StoreData& data);

  /// What an affected construct takes across: the bytes that it holds in each window, every occurrence of a table
  /// element. A slot, or a whole record of a file, takes all of its slot; a whole argument reaches the slot by its
  /// relation.
  std::vector<Crossing> carriedBy(std::uint32_t construct) const;

  /// Constructs that a crossing reaches, ascending. With bytes: those that lie exactly there; in a program that has
  /// none, the elementary items that overlap them, so that the value is not lost. Without: the slot, and the records of
  /// a file. FILLER is never reached.
  std::vector<std::uint32_t> reachedBy(const Crossing& crossing) const;

  /// Whether the slot joins several places of this program: parameters of a contained program, two calls of the same
  /// one.
  bool hasSeveralWindows(const SlotName& slot) const;

 private:
  struct Piece {
    SlotBytes bytes;
    std::uint32_t construct = 0;
    bool isElementary = false;
    bool isFiller = false;
  };
  struct Window {
    SlotName slot;
    std::int64_t base = 0, size = 0;
    std::vector<std::uint32_t> attached; ///< passed items themselves, to be told from fields of the same bytes
    std::vector<Piece> pieces;           ///< by bytes
  };
  void addWindow(const StoreData& data, const SlotName& slot, std::uint32_t attached);
  void fill(const StoreData& data, const std::vector<std::uint32_t>& byOffset, Window& window) const;

  std::vector<Window> m_windows;
  std::vector<std::pair<SlotName, std::uint32_t>> m_slots;   ///< slot constructs
  std::vector<std::pair<SlotName, std::uint32_t>> m_records; ///< record and the file it belongs to
};

} // namespace orvane
