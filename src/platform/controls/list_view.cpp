#include "platform/controls/list_view.hpp"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

#include "platform/runtime/error.hpp"

namespace platform {

namespace {

const std::string kEmpty;

int compareIgnoringCase(std::string_view a, std::string_view b) {
  const auto fold = [](char c) { return static_cast<unsigned char>(c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c); };
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t i = 0; i < common; ++i)
    if (fold(a[i]) != fold(b[i])) return fold(a[i]) < fold(b[i]) ? -1 : 1;
  return a.size() == b.size() ? 0 : a.size() < b.size() ? -1 : 1;
}

} // namespace

const std::string& ListItem::SubItems(std::size_t index) const {
  return index >= 1 && index <= m_subItems.size() ? m_subItems[index - 1] : kEmpty;
}

void ListItem::setSubItems(std::size_t index, std::string text) {
  if (index == 0) throw KeyError("a row has no sub-column 0");
  if (m_subItems.size() < index) m_subItems.resize(index);
  m_subItems[index - 1] = std::move(text);
}

std::size_t ListItem::Index() const {
  return m_owner->ListItems.positionOf(*this);
}

void ListItem::EnsureVisible() {
  m_owner->m_visibleRow = this;
}

const ColumnHeader& ColumnHeaders::Item(std::size_t position) const {
  if (position == 0 || position > m_headers.size()) throw KeyError(fmt::format("there is no column {}", position));
  return m_headers[position - 1];
}

ColumnHeader& ColumnHeaders::Item(std::size_t position) {
  return const_cast<ColumnHeader&>(std::as_const(*this).Item(position));
}

std::size_t ColumnHeaders::IndexOf(std::string_view key) const {
  for (std::size_t i = 0; i < m_headers.size(); ++i)
    if (!m_headers[i].Key.empty() && equalsIgnoringCase(m_headers[i].Key, key)) return i + 1;
  throw KeyError(fmt::format("there is no column '{}'", key));
}

void ColumnHeaders::Insert(std::size_t position, ColumnHeader header) {
  m_headers.insert(m_headers.begin() + static_cast<std::ptrdiff_t>(position - 1), std::move(header));
}

void ColumnHeaders::Remove(std::size_t position) {
  Item(position);
  m_headers.erase(m_headers.begin() + static_cast<std::ptrdiff_t>(position - 1));
}

// Rows before the first hole stand at their own position; a look behind it closes the holes first.
std::size_t ListItems::slotOf(std::size_t position) const {
  if (position == 0 || position > m_count) throw KeyError(fmt::format("there is no row {}", position));
  if (position - 1 >= m_firstHole) compact();
  return position - 1;
}

std::size_t ListItems::positionOf(const ListItem& item) const {
  compact();
  renumber();
  return item.m_slot + 1;
}

void ListItems::compact() const {
  if (m_firstHole == npos) return;
  m_owner.SelectedItem();
  m_firstWrongNumber = std::min(m_firstWrongNumber, m_firstHole);
  std::erase(m_slots, nullptr);
  m_firstHole = npos;
  renumber();
}

void ListItems::renumber() const {
  for (std::size_t slot = m_firstWrongNumber; slot < m_slots.size(); ++slot)
    if (m_slots[slot]) m_slots[slot]->m_slot = slot; // a hole of a batch stays until it ends
  m_firstWrongNumber = npos;
}

ListItem& ListItems::Item(std::size_t position) {
  return *m_slots[slotOf(position)];
}
const ListItem& ListItems::Item(std::size_t position) const {
  return *m_slots[slotOf(position)];
}

ListItem* ListItems::find(std::string_view key) {
  const auto found = m_byKey.find(key);
  return found == m_byKey.end() ? nullptr : found->second;
}
const ListItem* ListItems::find(std::string_view key) const {
  return const_cast<ListItems*>(this)->find(key);
}

ListItem& ListItems::Item(std::string_view key) {
  if (ListItem* item = find(key)) return *item;
  throw KeyError(fmt::format("the list has no row '{}'", key));
}

ListItem& ListItems::Add(std::string key, std::string text, int smallIcon) {
  if (find(key)) throw KeyError(fmt::format("the list has a row '{}' already", key));
  m_owner.SelectedItem();
  auto made = std::make_unique<ListItem>();
  ListItem& item = *made;
  item.m_key = std::move(key);
  item.Text = std::move(text);
  item.SmallIcon = smallIcon;
  item.m_owner = &m_owner;
  if (m_owner.m_batches == 0) {
    compact();
    auto place = m_slots.end();
    if (m_owner.m_sortColumn)
      place = std::upper_bound(m_slots.begin(), m_slots.end(), made,
                               [this](const auto& a, const auto& b) { return before(*a, *b); });
    const auto slot = static_cast<std::size_t>(place - m_slots.begin());
    m_slots.insert(place, std::move(made));
    m_firstWrongNumber = std::min(m_firstWrongNumber, slot);
  } else {
    ++m_addedInBatch;
    item.m_slot = m_slots.size();
    m_slots.push_back(std::move(made));
  }
  ++m_count;
  m_byKey.emplace(item.m_key, &item);
  m_owner.rowsChanged();
  return item;
}

void ListItems::Remove(std::size_t position) {
  removeSlot(slotOf(position));
}

void ListItems::Remove(std::string_view key) {
  ListItem& item = Item(key);
  if (m_owner.m_batches == 0) compact();
  renumber();
  removeSlot(item.m_slot);
}

void ListItems::removeSlot(std::size_t slot) {
  ListItem* item = m_slots[slot].get();
  if (m_owner.m_visibleRow == item) m_owner.m_visibleRow = nullptr;
  if (m_owner.m_focused == item) {
    m_owner.m_focused = nullptr;
    m_owner.m_focusGap = slot;
  }
  m_byKey.erase(item->m_key);
  --m_count;
  if (m_owner.m_batches > 0) {
    m_slots[slot].reset();
    m_firstHole = std::min(m_firstHole, slot);
  } else {
    m_slots[slot].reset();
    m_owner.SelectedItem();
    m_slots.erase(m_slots.begin() + static_cast<std::ptrdiff_t>(slot));
    m_firstWrongNumber = std::min(m_firstWrongNumber, slot);
  }
  m_owner.rowsChanged();
}

// The next row takes the focus; without one the last, without any row none.
ListItem* ListItems::heirAt(std::size_t slot) const {
  ListItem* heir = nullptr;
  for (std::size_t next = slot + 1; next < m_slots.size() && !heir; ++next)
    heir = m_slots[next].get();
  for (std::size_t previous = slot; previous > 0 && !heir; --previous)
    heir = m_slots[previous - 1].get();
  return heir;
}

void ListItems::Clear() {
  m_owner.m_focused = nullptr;
  m_owner.m_focusGap = ListView::kNoSlot;
  m_owner.m_visibleRow = nullptr;
  m_byKey.clear();
  m_slots.clear();
  m_count = 0;
  m_addedInBatch = 0;
  m_firstHole = npos;
  m_firstWrongNumber = npos;
  m_owner.rowsChanged();
}

bool ListItems::before(const ListItem& a, const ListItem& b) const {
  const std::size_t column = *m_owner.m_sortColumn;
  const auto textOf = [column](const ListItem& item) -> std::string_view {
    return column == 1 ? item.Text : item.SubItems(column - 1);
  };
  const int order = compareIgnoringCase(textOf(a), textOf(b));
  return m_owner.m_descending ? order > 0 : order < 0;
}

void ListItems::sortAll() {
  compact();
  if (m_owner.m_sortColumn)
    std::stable_sort(m_slots.begin(), m_slots.end(), [this](const auto& a, const auto& b) { return before(*a, *b); });
  m_firstWrongNumber = 0;
  renumber();
}

void ListItems::endBatch() {
  compact();
  if (m_addedInBatch > 0 && m_owner.m_sortColumn) sortAll();
  m_addedInBatch = 0;
}

ListItem* ListView::SelectedItem() {
  if (m_focusGap != kNoSlot) m_focused = ListItems.heirAt(std::exchange(m_focusGap, kNoSlot));
  return m_focused;
}

void ListView::setSelectedItem(ListItem* item) {
  m_focusGap = kNoSlot;
  m_focused = item;
  if (item) item->setSelected(true);
  Changed.raise();
}

void ListView::selectAll(bool selected) {
  for (std::size_t i = 1; i <= ListItems.Count(); ++i)
    ListItems.Item(i).setSelected(selected);
  Changed.raise();
}

void ListView::sortBy(std::optional<std::size_t> column, bool descending) {
  m_sortColumn = column;
  m_descending = descending;
  ListItems.sortAll();
  rowsChanged();
}

void ListView::rowsChanged() {
  ++m_rowsVersion;
  if (m_batches == 0) Changed.raise();
}

ListView::Batch::~Batch() {
  if (--m_list.m_batches > 0) return;
  m_list.ListItems.endBatch();
  m_list.rowsChanged();
}

} // namespace platform
