#include "desktop/list_model.hpp"

#include "desktop/icons.hpp"
#include "desktop/twips.hpp"
#include "platform/runtime/text.hpp"

namespace desktop {

namespace {

// Counts, sizes and positions are padded in the model, so that they sort.
bool looksLikeNumber(std::string_view text) {
  text = platform::trimmed(text);
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

QString shown(std::string_view cell) {
  if (looksLikeNumber(cell)) cell = platform::trimmed(cell);
  return QString::fromUtf8(cell.data(), static_cast<qsizetype>(cell.size()));
}

} // namespace

ListModel::ListModel(platform::ListView& list, Icons icons, QObject* parent)
    : QAbstractItemModel(parent), m_list(list), m_icons(icons) {
  refresh();
}

bool ListModel::refresh() {
  std::vector<std::string> now = headers();
  const auto rows = static_cast<int>(m_list.ListItems.Count());
  if (m_version == m_list.rowsVersion() && m_rows == rows && now == m_headers) return false;
  beginResetModel();
  m_version = m_list.rowsVersion();
  m_rows = rows;
  m_headers = std::move(now);
  endResetModel();
  return true;
}

std::vector<std::string> ListModel::headers() const {
  std::vector<std::string> texts;
  for (std::size_t i = 1; i <= m_list.ColumnHeaders.Count(); ++i)
    texts.push_back(m_list.ColumnHeaders.Item(i).Text);
  return texts;
}

const platform::ListItem* ListModel::row(int position) const {
  // A command at work may have taken rows away that the view still asks for.
  if (position < 0 || static_cast<std::size_t>(position) >= m_list.ListItems.Count()) return nullptr;
  return &std::as_const(m_list.ListItems).Item(static_cast<std::size_t>(position) + 1);
}

std::string_view ListModel::cell(int position, int column) const {
  const platform::ListItem* item = row(position);
  if (!item) return {};
  return column == 0 ? std::string_view(item->Text) : item->SubItems(static_cast<std::size_t>(column));
}

// A column is one of numbers when its first filled cell is.
bool ListModel::isNumber(int column) const {
  constexpr int kLooked = 20;
  for (int i = 0; column > 0 && i < std::min(m_rows, kLooked); ++i)
    if (const auto text = cell(i, column); !text.empty()) return looksLikeNumber(text);
  return false;
}

QModelIndex ListModel::index(int row, int column, const QModelIndex& parent) const {
  return hasIndex(row, column, parent) ? createIndex(row, column) : QModelIndex();
}

QModelIndex ListModel::parent(const QModelIndex&) const {
  return {};
}

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : m_rows;
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_headers.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || !row(index.row())) return {};
  switch (role) {
  case Qt::DisplayRole:
  case Qt::ToolTipRole:
    return shown(cell(index.row(), index.column()));
  case Qt::TextAlignmentRole:
    return QVariant::fromValue(
        Qt::Alignment(Qt::AlignVCenter | (isNumber(index.column()) ? Qt::AlignRight : Qt::AlignLeft)));
  case Qt::DecorationRole:
    if (m_icons == Icons::status && index.column() == 0)
      if (const auto* item = row(index.row()); item && item->SmallIcon) return statusIcon(item->SmallIcon);
    return {};
  case Qt::AccessibleDescriptionRole:
    if (const auto* item = row(index.row()); item && item->Selected()) return QStringLiteral("selected");
    return {};
  default:
    return {};
  }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  if (role == Qt::DisplayRole) return text(m_headers[static_cast<std::size_t>(section)]);
  if (role == Qt::TextAlignmentRole)
    return QVariant::fromValue(Qt::Alignment(Qt::AlignVCenter | (isNumber(section) ? Qt::AlignRight : Qt::AlignLeft)));
  return {};
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
  return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren : Qt::NoItemFlags;
}

} // namespace desktop
