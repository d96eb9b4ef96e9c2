#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>
#include <optional>

#include "desktop/start/analysis_job.hpp"
#include "desktop/start/recent_projects.hpp"

class QLabel;
class QProgressBar;
class QPushButton;
class QTreeWidget;

namespace desktop {

/// Runs an analysis and shows how it goes; at its end what is wrong with the sources. Accepted: the project shall be
/// opened. A run without trouble is accepted by itself.
class RunDialog final : public QDialog {
 public:
  RunDialog(AnalysisRequest request, QWidget* parent);

  /// What was analysed; nothing when it could not be.
  const std::optional<RecentProject>& project() const { return m_project; }
  /// While it runs: asks it to stop.
  void reject() override;

 private:
  void follow();
  void finish(const AnalysisJob::State& state);
  void listProblems(const orvane::VerifyResult& result);
  QString summary(const AnalysisJob::State& state) const;

  std::unique_ptr<AnalysisJob> m_job;
  std::optional<RecentProject> m_project;
  QTimer m_watch;
  QLabel* m_line;
  QProgressBar* m_bar;
  QTreeWidget* m_problems;
  QPushButton* m_open;
  QPushButton* m_close;
  bool m_over = false;
};

} // namespace desktop
