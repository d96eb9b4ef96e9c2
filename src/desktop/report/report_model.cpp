#include "desktop/report/report_model.hpp"

#include <algorithm>

#include <QBrush>
#include <QFontDatabase>

#include "desktop/theme.hpp"

namespace desktop {

namespace {

constexpr std::size_t kPiece = 5000;

QString shown(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// Blanks up to the margin would only say that a line goes on.
std::string_view withoutTail(std::string_view line) {
  return line.substr(0, line.find_last_not_of(' ') + 1);
}

} // namespace

ReportModel::ReportModel(orvane::FinishedReport report, QObject* parent)
    : QAbstractTableModel(parent), m_rows(std::move(report)) {
  m_marked = m_code = -1;
  for (std::size_t i = 0; i < m_rows.fields().size(); ++i)
    if (m_rows.fields()[i].kind == orvane::FieldKind::flag) m_marked = static_cast<int>(i);
  if (m_marked >= 0) m_code = fieldNamed("text");
  m_rows.readMore(kPiece);
  m_rows.join();
}

int ReportModel::fieldNamed(std::string_view key) const {
  const auto& fields = m_rows.fields();
  const auto found = std::find_if(fields.begin(), fields.end(), [&](const auto& field) { return field.key == key; });
  return found == fields.end() ? -1 : static_cast<int>(found - fields.begin());
}

int ReportModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.count());
}

int ReportModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(m_rows.fields().size());
}

QVariant ReportModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const auto field = static_cast<std::size_t>(index.column());
  const auto row = static_cast<std::size_t>(index.row());
  const orvane::FieldKind kind = m_rows.fields()[field].kind;
  const bool isNumber = kind == orvane::FieldKind::number || kind == orvane::FieldKind::percent;
  switch (role) {
  case Qt::DisplayRole:
    if (kind == orvane::FieldKind::flag) return m_rows.cell(row, field).empty() ? QString() : QStringLiteral("\u25cf");
    return shown(index.column() == m_code ? withoutTail(m_rows.cell(row, field)) : m_rows.cell(row, field));
  case Qt::ToolTipRole:
    return isNumber ? QVariant() : shown(m_rows.cell(row, field));
  case Qt::TextAlignmentRole:
    return QVariant(isNumber ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignLeft | Qt::AlignVCenter);
  case Qt::FontRole:
    return index.column() == m_code ? QVariant(QFontDatabase::systemFont(QFontDatabase::FixedFont)) : QVariant();
  case Qt::BackgroundRole:
    if (isCode() && !m_rows.cell(row, static_cast<std::size_t>(m_marked)).empty()) return QBrush(theme().mark);
    return {};
  case kShareRole:
    return kind == orvane::FieldKind::percent
               ? QVariant(std::min(1.0, shown(m_rows.cell(row, field)).remove(QLatin1Char('%')).toDouble() / 100))
               : QVariant();
  default:
    return {};
  }
}

QVariant ReportModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
  return shown(m_rows.fields()[static_cast<std::size_t>(section)].caption);
}

template<typename Work>
void ReportModel::changing(Work work) {
  beginResetModel();
  work();
  endResetModel();
}

void ReportModel::sort(int column, Qt::SortOrder order) {
  const std::optional<std::size_t> field = column < 0 ? std::nullopt : std::optional(static_cast<std::size_t>(column));
  changing([&] { m_rows.sort(field, order == Qt::DescendingOrder); });
}

void ReportModel::filter(const QString& text) {
  changing([&] { m_rows.filter(text.toStdString()); });
}

// Unsorted rows join at the end, so the view keeps its place.
bool ReportModel::readMore() {
  const bool more = m_rows.readMore(kPiece);
  const int count = rowCount(), waiting = static_cast<int>(m_rows.waiting());
  if (waiting == 0) return more;
  if (m_rows.isSorted()) {
    changing([&] { m_rows.join(); });
    return more;
  }
  beginInsertRows({}, count, count + waiting - 1);
  m_rows.join();
  endInsertRows();
  return more;
}

} // namespace desktop
