#include "desktop/list_widget.hpp"

#include <QDateTime>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "desktop/key_codes.hpp"
#include "desktop/qt_screen.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"
#include "platform/runtime/text.hpp"

namespace desktop {

namespace {

// Rows paint their ground themselves; the cells are text and icon on it.
class Cells final : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    option->textElideMode = Qt::ElideRight;
    constexpr int kInset = 5; // so that texts stand under their headers
    option->rect.adjust(kInset, 0, -kInset, 0);
  }
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex&) const override {
    constexpr int kWidth = 64;
    return {kWidth, option.fontMetrics.height() + kSpace};
  }
};

// A modifier by itself chooses nothing: the way from use to use in the source would start anew.
bool isModifier(int key) {
  return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
         key == Qt::Key_AltGr;
}

} // namespace

ListWidget::ListWidget(platform::ListView& list, ListModel::Icons icons, QtScreen& screen, QWidget* parent)
    : QTreeView(parent), m_list(list), m_screen(screen), m_model(new ListModel(list, icons, this)) {
  const int index = list.Index();
  setObjectName(text(list.Name()) + (index < 0 ? QString() : QString::number(index)));
  setModel(m_model);
  setItemDelegate(new Cells(this));
  setRootIsDecorated(false);
  setItemsExpandable(false);
  setUniformRowHeights(true);
  setAllColumnsShowFocus(true);
  setSelectionMode(NoSelection); // the model's marks are the selection
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollMode(ScrollPerPixel);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setFrameShape(NoFrame);
  setMouseTracking(false);
  setUpHeader();
  m_screen.bind(list, this);
  connectWhile(m_list.Changed, m_lifetime, [this] { place(); });
  place();
}

void ListWidget::setUpHeader() {
  header()->setSectionsClickable(true);
  header()->setSectionsMovable(false);
  header()->setHighlightSections(false);
  header()->setSortIndicatorShown(false);
  header()->setMinimumSectionSize(4 * kSpace);
  connect(header(), &QHeaderView::sectionClicked, this,
          [this](int section) { raise([&] { m_list.ColumnClick.raise(static_cast<std::size_t>(section) + 1); }); });
  // A width that the analyst drags is kept with the header, so that it outlasts other columns coming and going.
  connect(header(), &QHeaderView::sectionResized, this, [this](int section, int, int size) {
    const bool stretched = header()->stretchLastSection() && section == header()->count() - 1;
    if (m_syncing || stretched || static_cast<std::size_t>(section) >= m_list.ColumnHeaders.Count()) return;
    m_list.ColumnHeaders.Item(static_cast<std::size_t>(section) + 1).Width = toTwips(size);
  });
}

void ListWidget::place() {
  const QRect at = toPixels(m_list.Left, m_list.Top, m_list.Width, m_list.Height);
  if (geometry() != at) setGeometry(at);
  if (isVisibleTo(parentWidget()) != m_list.Visible()) setVisible(m_list.Visible());
}

void ListWidget::sync() {
  m_syncing = true;
  const int scrolled = verticalScrollBar()->value();
  const bool fresh = m_model->refresh();
  if (fresh) {
    m_anchor = -1;
    syncColumns();
    doItemsLayout(); // the bar's range is that of the new rows only then
    verticalScrollBar()->setValue(scrolled);
  }
  const auto column = m_list.sortColumn();
  header()->setSortIndicatorShown(column.has_value());
  if (column)
    header()->setSortIndicator(static_cast<int>(*column) - 1,
                               m_list.sortDescending() ? Qt::DescendingOrder : Qt::AscendingOrder);
  const int row = focusedRow();
  if (currentIndex().row() != row) {
    const QModelIndex index = row < 0 ? QModelIndex() : m_model->index(row, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    if (row >= 0) scrollTo(index);
  }
  if (const auto* wanted = m_list.visibleRow(); wanted && wanted != m_shownRow) {
    m_shownRow = wanted;
    scrollTo(m_model->index(static_cast<int>(wanted->Index()) - 1, 0));
  }
  viewport()->update();
  m_syncing = false;
}

void ListWidget::syncColumns() {
  header()->setStretchLastSection(!m_model->endsWithNumbers());
  const auto& headers = m_list.ColumnHeaders;
  for (std::size_t i = 1; i <= headers.Count(); ++i) {
    constexpr int kDefaultWidth = 112;
    const auto& width = headers.Item(i).Width;
    setColumnWidth(static_cast<int>(i) - 1,
                   width ? std::max(header()->minimumSectionSize(), toPixels(*width)) : kDefaultWidth);
  }
}

int ListWidget::focusedRow() const {
  const platform::ListItem* item = m_list.SelectedItem();
  return item ? static_cast<int>(item->Index()) - 1 : -1;
}

// What happens in a handler is the component's; what it changed shows at once.
void ListWidget::raise(const std::function<void()>& event) {
  event();
  if (afterEvent) afterEvent();
}

void ListWidget::markRange(int from, int to) {
  m_list.selectAll(false);
  for (int row = std::min(from, to); row <= std::max(from, to); ++row)
    m_list.ListItems.Item(static_cast<std::size_t>(row) + 1).setSelected(true);
}

void ListWidget::moveFocus(int row, Marking marking) {
  if (row < 0 || row >= static_cast<int>(m_list.ListItems.Count())) return;
  platform::ListItem& item = m_list.ListItems.Item(static_cast<std::size_t>(row) + 1);
  const bool wasMarked = item.Selected();
  if (m_anchor < 0 || m_anchor >= static_cast<int>(m_list.ListItems.Count())) m_anchor = std::max(0, focusedRow());
  if (marking == Marking::only) m_list.selectAll(false);
  if (marking == Marking::extend)
    markRange(m_anchor, row);
  else
    m_anchor = row;
  m_list.setSelectedItem(&item);
  if (marking == Marking::none) item.setSelected(wasMarked);
  if (marking == Marking::toggle) item.setSelected(!wasMarked);
  const QModelIndex index = m_model->index(row, 0);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  scrollTo(index);
  viewport()->update();
}

// The row that a key leads to, or -1.
int ListWidget::target(const QKeyEvent& event) const {
  const int count = m_model->rowCount();
  const int row = focusedRow();
  const int page = std::max(1, viewport()->height() / std::max(1, rowHeight(m_model->index(0, 0))) - 1);
  switch (event.key()) {
  case Qt::Key_Up:
    return std::max(0, row - 1);
  case Qt::Key_Down:
    return std::min(count - 1, row + 1);
  case Qt::Key_PageUp:
    return std::max(0, row - page);
  case Qt::Key_PageDown:
    return std::min(count - 1, row + page);
  case Qt::Key_Home:
    return 0;
  case Qt::Key_End:
    return count - 1;
  default:
    return -1;
  }
}

void ListWidget::keyPressEvent(QKeyEvent* event) {
  m_pressed.insert(event->key());
  const bool shift = event->modifiers() & Qt::ShiftModifier, ctrl = event->modifiers() & Qt::ControlModifier;
  if (m_model->rowCount() > 0) {
    if (const int row = target(*event); row >= 0)
      return moveFocus(row, shift ? Marking::extend : ctrl ? Marking::none : Marking::only);
    const bool searching = !m_typed.isEmpty() && QDateTime::currentMSecsSinceEpoch() - m_typedAt < 1000;
    if (event->key() == Qt::Key_Space && !searching)
      return moveFocus(std::max(0, focusedRow()), ctrl ? Marking::toggle : shift ? Marking::extend : Marking::only);
    const QString typed = event->text();
    if (!typed.isEmpty() && typed[0].isPrint() && !ctrl && !(event->modifiers() & Qt::AltModifier))
      return search(typed);
  }
  if (event->key() == Qt::Key_Left || event->key() == Qt::Key_Right) {
    QScrollBar* bar = horizontalScrollBar();
    constexpr int kStep = 40;
    return bar->setValue(bar->value() + (event->key() == Qt::Key_Left ? -kStep : kStep));
  }
  if (event->key() == Qt::Key_F10 || event->key() == Qt::Key_Menu) return event->accept();
  event->ignore();
}

// Characters typed without a pause lead to the first name that begins with them, from the focused row on and round.
void ListWidget::search(const QString& typed) {
  constexpr qint64 kPause = 1000; // milliseconds
  const qint64 now = QDateTime::currentMSecsSinceEpoch();
  m_typed = now - m_typedAt < kPause ? m_typed + typed : typed;
  m_typedAt = now;
  const std::string wanted = platform::upper(m_typed.toStdString());
  const int count = m_model->rowCount();
  const int first = std::max(0, focusedRow()) + (m_typed.size() == 1 ? 1 : 0);
  for (int i = 0; i < count; ++i) {
    const int row = (first + i) % count;
    const auto* item = m_model->row(row);
    if (item && platform::upper(item->Text.substr(0, wanted.size())) == wanted) return moveFocus(row, Marking::only);
  }
}

void ListWidget::keyReleaseEvent(QKeyEvent* event) {
  if (event->isAutoRepeat()) return;
  if (!m_pressed.remove(event->key()) || isModifier(event->key())) return;
  const bool menuKey = event->key() == Qt::Key_Menu; // asks for what Shift+F10 asks for
  const int code = menuKey ? platform::kKeyF10 : keyCodeOf(event->key());
  const int shift = menuKey ? platform::kShift : shiftStateOf(event->modifiers());
  raise([&] { m_list.KeyUp.raise(code, shift); });
}

void ListWidget::mousePressEvent(QMouseEvent* event) {
  const int row = indexAt(event->position().toPoint()).row();
  const bool shift = event->modifiers() & Qt::ShiftModifier, ctrl = event->modifiers() & Qt::ControlModifier;
  if (row < 0) {
    if (!shift && !ctrl) m_list.selectAll(false);
    return;
  }
  if (event->button() == Qt::RightButton) {
    const auto* item = m_model->row(row);
    return moveFocus(row, item && item->Selected() ? Marking::none : Marking::only);
  }
  if (event->button() == Qt::LeftButton)
    moveFocus(row, shift ? Marking::extend : ctrl ? Marking::toggle : Marking::only);
}

// Dragging over rows marks them.
void ListWidget::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton) || event->modifiers() & Qt::ControlModifier || m_anchor < 0) return;
  const int row = indexAt(event->position().toPoint()).row();
  if (row >= 0 && row != focusedRow()) moveFocus(row, Marking::extend);
}

void ListWidget::mouseReleaseEvent(QMouseEvent* event) {
  const QPointF at = event->position();
  const int button = buttonOf(event->button()), shift = shiftStateOf(event->modifiers());
  raise([&] { m_list.MouseUp.raise(button, shift, toTwips(at.x()), toTwips(at.y())); });
}

void ListWidget::focusInEvent(QFocusEvent* event) {
  QTreeView::focusInEvent(event);
  if (event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason) return;
  raise([this] { m_screen.focusTaken(m_list); });
}

void ListWidget::focusOutEvent(QFocusEvent* event) {
  m_pressed.clear();
  QTreeView::focusOutEvent(event);
  viewport()->update();
}

void ListWidget::drawRow(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto* item = m_model->row(index.row());
  if (!item) return;
  if (item->Selected()) painter->fillRect(option.rect, hasFocus() ? theme().selected : theme().selectedIdle);
  QTreeView::drawRow(painter, option, index);
  if (!hasFocus() || index.row() != currentIndex().row()) return;
  painter->setPen(theme().accent);
  painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
}

void ListWidget::paintEvent(QPaintEvent* event) {
  QTreeView::paintEvent(event);
  if (m_model->rowCount() > 0 || m_hint.isEmpty()) return;
  QPainter painter(viewport());
  painter.setPen(theme().muted);
  const QRect room = viewport()->rect().adjusted(2 * kSpace, kSpace, -2 * kSpace, -kSpace);
  painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, m_hint);
}

QPoint ListWidget::menuPlace() const {
  const QRect row = visualRect(currentIndex());
  const QRect seen = viewport()->rect();
  const QPoint at =
      row.isValid() && seen.intersects(row) ? QPoint(seen.left() + 3 * kSpace, row.bottom()) : seen.topLeft();
  return viewport()->mapToGlobal(at);
}

} // namespace desktop
