#include "desktop/report/report_window.hpp"

#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include "desktop/icons.hpp"
#include "desktop/report/print_table.hpp"
#include "desktop/report/share_delegate.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"

namespace desktop {

namespace {

constexpr int kWidestAtFirst = 420; ///< pixels of a column before the analyst drags it

QToolButton* button(QWidget* parent, const std::string& key, const QString& caption) {
  auto* made = new QToolButton(parent);
  made->setIcon(icon(key));
  made->setText(caption);
  made->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  made->setAutoRaise(true);
  return made;
}

struct ExportChoice {
  orvane::ReportFormat format;
  const char* name;
  const char* extension;
};
constexpr ExportChoice kExports[] = {{orvane::ReportFormat::html, "HTML", "html"},
                                     {orvane::ReportFormat::xlsx, "XLSX", "xlsx"},
                                     {orvane::ReportFormat::csv, "CSV", "csv"},
                                     {orvane::ReportFormat::json, "JSON", "json"}};

} // namespace

ReportWindow::ReportWindow(orvane::FinishedReport report, std::string folder,
                           std::function<void(const ReportPlace&)> jump, QWidget* parent)
    : QWidget(parent, Qt::Window), m_folder(std::move(folder)), m_jump(std::move(jump)),
      m_model(new ReportModel(std::move(report), this)), m_filter(new QLineEdit(this)), m_count(new QLabel(this)),
      m_table(new QTableView(this)) {
  setAttribute(Qt::WA_DeleteOnClose);
  setObjectName(QStringLiteral("reportWindow"));
  setWindowTitle(text(m_model->rows().report().title));
  resize(1080, 680);
  buildTable();
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(bar());
  column->addWidget(m_table, 1);
  m_filter->setFocus();
  fitColumns();
  showCount();
  readOn();
}

QWidget* ReportWindow::bar() {
  auto* bar = new QWidget(this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(kSpace, kSpace, kSpace, kSpace);
  m_filter->setPlaceholderText(text(Text::ReportFilter));
  m_filter->setAccessibleName(text(Text::ReportFilter));
  m_filter->setClearButtonEnabled(true);
  m_filter->addAction(icon("Find"), QLineEdit::LeadingPosition);
  m_filter->setMinimumWidth(320);
  QToolButton* show = button(this, "Open", text(Text::ReportJump));
  show->setToolTip(text(Text::ReportJumpTip));
  QToolButton* out = button(this, "Export", text(Text::ReportExport));
  auto* menu = new QMenu(out);
  for (const ExportChoice& choice : kExports)
    menu->addAction(QString::fromLatin1(choice.name), this, [this, &choice] { askAndExport(choice.format); });
  out->setMenu(menu);
  out->setPopupMode(QToolButton::InstantPopup);
  QToolButton* paper = button(this, "Print", text(Text::ReportPrint));
  row->addWidget(m_filter, 1);
  row->addWidget(m_count);
  row->addStretch(1);
  row->addWidget(show);
  row->addWidget(out);
  row->addWidget(paper);
  connect(m_filter, &QLineEdit::textChanged, this, [this](const QString& text) {
    m_model->filter(text);
    showCount();
  });
  connect(show, &QToolButton::clicked, this, [this] { jump(); });
  connect(paper, &QToolButton::clicked, this, [this] { print(); });
  return bar;
}

void ReportWindow::buildTable() {
  m_table->setModel(m_model);
  m_table->setAccessibleName(windowTitle());
  m_table->setItemDelegate(new ShareDelegate(m_table));
  m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
  m_table->setSelectionMode(QAbstractItemView::SingleSelection);
  m_table->setShowGrid(false);
  m_table->setAlternatingRowColors(!m_model->isCode());
  m_table->setWordWrap(false);
  m_table->setTabKeyNavigation(false);
  m_table->verticalHeader()->hide();
  m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + (m_model->isCode() ? 4 : 8));
  QHeaderView* heads = m_table->horizontalHeader();
  heads->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  heads->setStretchLastSection(true);
  heads->setHighlightSections(false);
  heads->setSortIndicator(-1, Qt::AscendingOrder);
  heads->setSortIndicatorClearable(true);
  m_table->setSortingEnabled(true);
  connect(m_table, &QTableView::activated, this, [this] { jump(); });
}

// From the first rows: looking at all of them would take longer than reading them.
void ReportWindow::fitColumns() {
  m_table->horizontalHeader()->setResizeContentsPrecision(200);
  m_table->resizeColumnsToContents();
  for (int column = 0; column < m_model->columnCount(); ++column)
    m_table->setColumnWidth(column, std::min(m_table->columnWidth(column) + kSpace, kWidestAtFirst));
  if (!m_model->isCode()) return;
  // Source lines take what the other columns leave.
  m_table->horizontalHeader()->setStretchLastSection(false);
  m_table->horizontalHeader()->setSectionResizeMode(m_model->fieldNamed("text"), QHeaderView::Stretch);
}

void ReportWindow::readOn() {
  QTimer::singleShot(0, this, [this] {
    m_reading = m_model->readMore();
    showCount();
    if (m_reading) readOn();
  });
}

void ReportWindow::showCount() {
  const QLocale locale;
  const auto all = static_cast<qlonglong>(m_model->rows().read());
  const auto shown = static_cast<qlonglong>(m_model->rows().count());
  QString count = shown == all ? text(Text::ReportRows).arg(locale.toString(all))
                               : text(Text::ReportRowsOf).arg(locale.toString(shown), locale.toString(all));
  if (m_reading) count += QStringLiteral(" \u2026");
  m_count->setText(count);
}

void ReportWindow::askAndExport(orvane::ReportFormat format) {
  for (const ExportChoice& choice : kExports) {
    if (choice.format != format) continue;
    const QString extension = QString::fromLatin1(choice.extension);
    const QString offered = text(m_folder) + QLatin1Char('/') + windowTitle() + QLatin1Char('.') + extension;
    const QString path =
        QFileDialog::getSaveFileName(this, text(Text::ReportExport), offered,
                                     QStringLiteral("%1 (*.%2)").arg(QString::fromLatin1(choice.name), extension));
    if (!path.isEmpty()) exportTo(format, path);
  }
}

// The records are read from their beginning, so the rest of the rows is read first.
void ReportWindow::exportTo(orvane::ReportFormat format, const QString& path) {
  QApplication::setOverrideCursor(Qt::WaitCursor);
  while (m_reading)
    m_reading = m_model->readMore();
  showCount();
  QString problem;
  try {
    orvane::writeReport(m_model->rows().report(), format, path.toStdString());
  } catch (const platform::Error& error) {
    problem = text(std::string(error.what()));
  }
  QApplication::restoreOverrideCursor();
  if (!problem.isEmpty()) QMessageBox::critical(this, windowTitle(), problem);
}

void ReportWindow::print() {
  QPrinter printer(QPrinter::HighResolution);
  printer.setPageOrientation(QPageLayout::Landscape);
  printer.setDocName(windowTitle());
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() != QDialog::Accepted) return;
  std::vector<int> widths;
  for (int column = 0; column < m_model->columnCount(); ++column)
    widths.push_back(m_table->columnWidth(column));
  printTable(printer, *m_model, windowTitle(), widths);
}

ReportPlace ReportWindow::placeOf(int row) const {
  const auto textOf = [&](std::string_view key) {
    const int field = m_model->fieldNamed(key);
    return field < 0 ? std::string() : m_model->index(row, field).data().toString().toStdString();
  };
  return {.program = textOf("program"),
          .dataname = textOf("dataname"),
          .file = textOf("file"),
          .line = QString::fromStdString(textOf("line")).toInt(),
          .column = QString::fromStdString(textOf("column")).toInt()};
}

void ReportWindow::jump() {
  const QModelIndex index = m_table->currentIndex();
  if (index.isValid() && m_jump) m_jump(placeOf(index.row()));
}

void ReportWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Find)) {
    m_filter->setFocus();
    m_filter->selectAll();
  } else if (event->key() == Qt::Key_Escape && !m_filter->text().isEmpty()) {
    m_filter->clear();
  } else if (event->key() == Qt::Key_Escape) {
    close();
  } else if (event->key() == Qt::Key_Down && m_filter->hasFocus() && m_model->rowCount() > 0) {
    m_table->setFocus();
    m_table->selectRow(0);
  } else {
    QWidget::keyPressEvent(event);
  }
}

} // namespace desktop
