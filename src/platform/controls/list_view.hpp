#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/controls/control.hpp"
#include "platform/runtime/text.hpp"

namespace platform {

class ListView;

/// A row. SubItems(1) is the text under the second column header; reading one that was never written gives "".
class ListItem {
 public:
  const std::string& Key() const { return m_key; }
  std::string Text;
  std::string Tag;
  int SmallIcon = 0; ///< 1-based image, 0: none
  const std::string& SubItems(std::size_t index) const;
  void setSubItems(std::size_t index, std::string text);
  bool Selected() const { return m_selected; }
  void setSelected(bool selected) { m_selected = selected; }
  std::size_t Index() const; ///< position from 1
  void EnsureVisible();

 private:
  friend class ListView;
  friend class ListItems;
  std::string m_key;
  std::vector<std::string> m_subItems;
  bool m_selected = false;
  mutable std::size_t m_slot = 0;
  ListView* m_owner = nullptr;
};

struct ColumnHeader {
  std::string Key;
  std::string Text;
  std::optional<double> Width; ///< twips; none: the list view's default
};

/// Column headers, positions from 1; keys compare without regard to case.
class ColumnHeaders {
 public:
  std::size_t Count() const { return m_headers.size(); }
  const ColumnHeader& Item(std::size_t position) const;
  ColumnHeader& Item(std::size_t position);
  /// Position of the header with that key. Throws KeyError when there is none.
  std::size_t IndexOf(std::string_view key) const;
  void Add(ColumnHeader header) { m_headers.push_back(std::move(header)); }
  void Insert(std::size_t position, ColumnHeader header);
  void Remove(std::size_t position);

 private:
  std::vector<ColumnHeader> m_headers;
};

/// The rows of a list view. Positions count from 1. While a ListView::Batch is open removals are linear and sorted
/// insertion waits for its end.
class ListItems {
 public:
  std::size_t Count() const { return m_count; }
  ListItem& Item(std::size_t position);
  const ListItem& Item(std::size_t position) const;
  /// Throws KeyError when there is no such key.
  ListItem& Item(std::string_view key);
  ListItem* find(std::string_view key); ///< nullptr when there is no such key
  const ListItem* find(std::string_view key) const;
  /// Appends, or inserts at the sorted place when the list is sorted. Selects nothing. Throws KeyError when the key is
  /// there already.
  ListItem& Add(std::string key, std::string text, int smallIcon = 0);
  void Remove(std::size_t position);
  void Remove(std::string_view key);
  void Clear();

 private:
  friend class ListItem;
  friend class ListView;
  explicit ListItems(ListView& owner) : m_owner(owner) {}
  std::size_t slotOf(std::size_t position) const;
  std::size_t positionOf(const ListItem& item) const;
  void removeSlot(std::size_t slot);
  void compact() const;
  void renumber() const;
  ListItem* heirAt(std::size_t slot) const;
  bool before(const ListItem& a, const ListItem& b) const;
  void sortAll();
  void endBatch();

  ListView& m_owner;
  mutable std::vector<std::unique_ptr<ListItem>> m_slots; ///< removed rows leave holes until compact()
  mutable std::size_t m_firstHole = npos;
  mutable std::size_t m_firstWrongNumber = npos; ///< slots from here on are not numbered yet
  std::size_t m_count = 0;
  std::size_t m_addedInBatch = 0;
  std::unordered_map<std::string_view, ListItem*, IgnoringCaseHash, IgnoringCaseEqual> m_byKey;
  static constexpr std::size_t npos = static_cast<std::size_t>(-1);
};

/// Ordered rows with unique keys, sub-columns, a multi-selection and one focused row.
class ListView : public Control {
 public:
  ListView(std::string name, int index) : Control(std::move(name), index), ListItems(*this) {}

  platform::ListItems ListItems;
  platform::ColumnHeaders ColumnHeaders;

  /// The focused row. Setting it selects it and touches no other row. When it is removed the row now at its place is
  /// focused, else the last, else none.
  ListItem* SelectedItem();
  const ListItem* SelectedItem() const { return const_cast<ListView*>(this)->SelectedItem(); }
  void setSelectedItem(ListItem* item);
  void selectAll(bool selected); ///< sets the mark of every row

  /// Sorting by a column, 1-based; nullopt: rows stay in order of addition. Stable, by code points without regard to
  /// case.
  void sortBy(std::optional<std::size_t> column, bool descending = false);
  std::optional<std::size_t> sortColumn() const { return m_sortColumn; }
  bool sortDescending() const { return m_descending; }
  /// The row that EnsureVisible was last called for; the screen scrolls to it.
  const ListItem* visibleRow() const { return m_visibleRow; }
  /// Another number whenever rows came, went or changed places; a screen compares it with what it shows.
  std::uint64_t rowsVersion() const { return m_rowsVersion; }

  Event<int, int> KeyUp;                   ///< key code, shift state
  Event<int, int, double, double> MouseUp; ///< button, shift state, x, y
  Event<std::size_t> ColumnClick;          ///< column position from 1

  /// While one lives, changes to the rows are gathered; one change is announced at the end. They nest.
  class Batch {
   public:
    explicit Batch(ListView& list) : m_list(list) { ++m_list.m_batches; }
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;

   private:
    ListView& m_list;
  };

 private:
  friend class platform::ListItems;
  friend class ListItem;
  void rowsChanged();
  ListItem* m_focused = nullptr;
  static constexpr std::size_t kNoSlot = static_cast<std::size_t>(-1);
  std::size_t m_focusGap = kNoSlot; ///< slot of a focused row that went in a batch; its heir is looked for late
  const ListItem* m_visibleRow = nullptr;
  std::optional<std::size_t> m_sortColumn;
  bool m_descending = false;
  int m_batches = 0;
  std::uint64_t m_rowsVersion = 0;
};

} // namespace platform
