#pragma once

#include <QSet>
#include <QTreeView>

#include "desktop/connect_while.hpp"
#include "desktop/list_model.hpp"

namespace desktop {

class QtScreen;

/// A list view on the screen. The marks of the rows and the focused row live in the model: clicks and keys change them
/// there, painting reads them from there.
class ListWidget : public QTreeView {
 public:
  ListWidget(platform::ListView& list, ListModel::Icons icons, QtScreen& screen, QWidget* parent);

  /// Brings the widget to the state of the model: rows, headers, sorting, place, visibility.
  void sync();
  /// Shown in the middle while there are no rows.
  void setHint(const QString& hint) { m_hint = hint; }
  /// Runs after each event that the analyst caused here.
  std::function<void()> afterEvent;
  /// Where a menu asked for by key opens, global.
  QPoint menuPlace() const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  enum class Marking { only, extend, toggle, none };
  void moveFocus(int row, Marking marking);
  void markRange(int from, int to);
  int focusedRow() const;
  int target(const QKeyEvent& event) const;
  void search(const QString& typed);
  void raise(const std::function<void()>& event);
  void place();
  void setUpHeader();
  void syncColumns();

  platform::ListView& m_list;
  QtScreen& m_screen;
  ListModel* m_model;
  QString m_hint;
  Lifetime m_lifetime = makeLifetime();
  QSet<int> m_pressed; ///< keys whose press was seen here; a release without its press is not for this list
  int m_anchor = -1;   ///< row at which an extension begins
  QString m_typed;
  qint64 m_typedAt = 0;
  bool m_syncing = false;
  const platform::ListItem* m_shownRow = nullptr; ///< the row that was scrolled to last
  std::vector<double> m_widths;
};

} // namespace desktop
