#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>
#include <memory>

#include "desktop/start/analysis_job.hpp"
#include "orvane/source_survey.hpp"

class QBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace desktop {

/// Asks for what an analysis needs: sources, copybook folders, which it proposes, the base folder and the project's
/// name. The folders are looked through on another thread.
class AnalyseDialog final : public QDialog {
 public:
  explicit AnalyseDialog(QWidget* parent);
  ~AnalyseDialog() override;

  void addSources(const QStringList& paths);
  AnalysisRequest request() const;

  /// Dialogs of the system; "" and {} when given up.
  std::function<QString(QWidget* parent, const QString& title)> askFolder;
  std::function<QStringList(QWidget* parent)> askFiles;

 private:
  struct Survey;
  void addSourcePart(QBoxLayout& column);
  void addCopybookPart(QBoxLayout& column);
  void addPlacePart(QBoxLayout& column);
  void addCopybooks(const QString& folder, bool ticked);
  void dropProposals();
  void survey();
  void takeSurvey();
  void propose();
  void check();
  QString trouble() const;
  std::vector<std::string> tickedFolders() const;

  QListWidget* m_sources;
  QLabel* m_found;
  QListWidget* m_copybooks;
  QLineEdit* m_name;
  QLineEdit* m_base;
  QLabel* m_note;
  QPushButton* m_go;
  std::shared_ptr<Survey> m_survey;              ///< the one under way
  orvane::SourceSurvey m_known;                  ///< the last one that ended
  bool m_nameIsOwn = false, m_baseIsOwn = false; ///< typed by the analyst, no longer proposed
  QTimer m_watch;
};

} // namespace desktop
