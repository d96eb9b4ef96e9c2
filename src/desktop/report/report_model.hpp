#pragma once

#include <QAbstractTableModel>

#include "orvane/report_rows.hpp"

namespace desktop {

/// The rows of a report for a table view. Reads on in pieces while the window lives, so the first rows show at once.
class ReportModel : public QAbstractTableModel {
 public:
  explicit ReportModel(orvane::FinishedReport report, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  void sort(int column, Qt::SortOrder order) override; ///< column -1: as the report has them

  /// Shows the rows with every word of the text.
  void filter(const QString& text);
  /// Reads the next piece. False when everything was read.
  bool readMore();
  const orvane::ReportRows& rows() const { return m_rows; }
  /// Position of a field by its key; -1: the report has none.
  int fieldNamed(std::string_view key) const;
  bool isCode() const { return m_marked >= 0; } ///< rows are source lines

 private:
  template<typename Work>
  void changing(Work work);
  orvane::ReportRows m_rows;
  int m_marked; ///< the field that says whether a source line holds a usage
  int m_code;   ///< the field with the source text
};

/// Share of a percentage cell for the bar behind it, 0 to 1.
inline constexpr int kShareRole = Qt::UserRole + 1;

} // namespace desktop
