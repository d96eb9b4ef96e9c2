#pragma once

#include <QAbstractItemModel>

#include "platform/controls/list_view.hpp"

namespace desktop {

/// Rows of a list view as Qt's views ask for them; nothing is copied. Rows are flat, columns are the headers.
class ListModel : public QAbstractItemModel {
 public:
  enum class Icons { none, status };
  ListModel(platform::ListView& list, Icons icons, QObject* parent);

  /// Tells the views when rows or headers have changed since the last call. True when they were told.
  bool refresh();

  /// The row behind an index, or nothing when it has gone meanwhile.
  const platform::ListItem* row(int position) const;
  /// Whether the last column holds numbers, which would look lost in a wide one.
  bool endsWithNumbers() const { return isNumber(columnCount() - 1); }
  platform::ListView& list() const { return m_list; }

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  std::vector<std::string> headers() const;
  std::string_view cell(int row, int column) const;
  bool isNumber(int column) const;

  platform::ListView& m_list;
  Icons m_icons;
  // What the views were told last.
  std::uint64_t m_version = 0;
  int m_rows = 0;
  std::vector<std::string> m_headers;
};

} // namespace desktop
