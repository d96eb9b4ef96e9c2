#include "desktop/start/run_dialog.hpp"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "cobol/built_in_records.hpp"
#include "desktop/texts.hpp"
#include "desktop/theme.hpp"
#include "desktop/twips.hpp"

namespace desktop {

RunDialog::RunDialog(AnalysisRequest request, QWidget* parent)
    : QDialog(parent), m_job(std::make_unique<AnalysisJob>(std::move(request))), m_line(new QLabel(this)),
      m_bar(new QProgressBar(this)), m_problems(new QTreeWidget(this)), m_open(new QPushButton(this)),
      m_close(new QPushButton(text(Text::Cancel), this)) {
  setObjectName(QStringLiteral("runDialog"));
  setWindowTitle(text(Text::RunTitle).arg(text(m_job->request().project)));
  m_line->setWordWrap(true);
  m_line->setText(text(Text::RunLooking));
  m_line->setObjectName(QStringLiteral("runLine"));
  m_bar->setRange(0, 0);
  m_bar->setAccessibleName(windowTitle());
  m_problems->setObjectName(QStringLiteral("runProblems"));
  m_problems->setAccessibleName(text(Text::RunProblems));
  m_problems->setHeaderLabels({text(Text::RunProblems), text(Text::RunReason)});
  m_problems->setRootIsDecorated(false);
  m_problems->setUniformRowHeights(true);
  m_problems->hide();
  m_open->setText(text(Text::StartOpen));
  m_open->setObjectName(QStringLiteral("runOpen"));
  m_open->hide();
  m_close->setObjectName(QStringLiteral("runClose"));
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(m_open);
  buttons->addWidget(m_close);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(2 * kSpace, 2 * kSpace, 2 * kSpace, 2 * kSpace);
  column->setSpacing(kSpace);
  column->addWidget(m_line);
  column->addWidget(m_bar);
  column->addWidget(m_problems, 1);
  column->addStretch();
  column->addLayout(buttons);
  setMinimumWidth(480);
  connect(m_open, &QPushButton::clicked, this, &QDialog::accept);
  connect(m_close, &QPushButton::clicked, this, [this] { reject(); });
  constexpr int kBetween = 40; // milliseconds
  connect(&m_watch, &QTimer::timeout, this, [this] { follow(); });
  m_watch.start(kBetween);
}

void RunDialog::follow() {
  const AnalysisJob::State state = m_job->state();
  if (state.finished) return finish(state);
  if (state.total == 0) return;
  m_bar->setRange(0, static_cast<int>(state.total));
  m_bar->setValue(static_cast<int>(state.done));
  if (!m_job->cancelled())
    m_line->setText(text(Text::RunStep).arg(state.done).arg(state.total).arg(text(state.program)));
}

void RunDialog::finish(const AnalysisJob::State& state) {
  m_watch.stop();
  m_over = true;
  if (state.error.empty()) {
    m_project = RecentProject{state.base, state.project};
    listProblems(state.result);
  }
  const bool canOpen = state.error.empty() && state.result.written + state.result.unchanged > 0;
  if (canOpen && m_problems->topLevelItemCount() == 0 && !m_job->cancelled()) return accept();
  m_bar->hide();
  m_line->setText(summary(state));
  m_close->setText(text(Text::Close));
  if (m_problems->topLevelItemCount() > 0) {
    m_problems->show();
    const QPoint middle = geometry().center();
    resize(std::max(width(), 760), std::max(height(), 420));
    move(middle - QPoint(width() / 2, height() / 2));
  }
  m_open->setVisible(canOpen);
  QPushButton* next = canOpen ? m_open : m_close;
  next->setDefault(true);
  next->setFocus();
}

QString RunDialog::summary(const AnalysisJob::State& state) const {
  if (!state.error.empty()) return text(Text::RunFailed).arg(text(state.error));
  const auto ready = state.result.written + state.result.unchanged;
  if (state.result.cancelled) return text(Text::RunStopped).arg(ready).arg(state.result.programs);
  if (state.result.programs == 0) return text(Text::RunNothing);
  return text(Text::RunReady).arg(ready).arg(state.result.programs);
}

void RunDialog::listProblems(const orvane::VerifyResult& result) {
  const auto add = [this](const QString& what, const QString& why) {
    auto* row = new QTreeWidgetItem(m_problems, {what, why});
    row->setToolTip(1, why);
    row->setSizeHint(0, QSize(0, fontMetrics().height() + kSpace));
  };
  for (const auto& problem : result.problems)
    add(text(Text::RunPath), text(problem));
  for (const auto& failure : result.failed)
    add(text(failure.program), text(failure.reason));
  for (const auto& [name, programs] : result.missingCopybooks)
    if (cobol::builtInRecord(name).empty()) // what the system supplies has a stand-in
      add(text(Text::RunNoCopybook).arg(text(name)), text(Text::RunPrograms).arg(programs));
  m_problems->resizeColumnToContents(0);
}

void RunDialog::reject() {
  if (m_over) return QDialog::reject();
  m_job->cancel();
  m_close->setEnabled(false);
  m_line->setText(text(Text::RunStopping));
}

} // namespace desktop
