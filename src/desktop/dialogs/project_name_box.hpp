#pragma once

#include <QDialog>

#include "orvane/repository_file.hpp"

class QLabel;
class QLineEdit;
class QPushButton;

namespace desktop {

/// Asks for the name of a new project. While no project can have it, the reason stands below it and OK is off.
class ProjectNameBox final : public QDialog {
 public:
  ProjectNameBox(orvane::RepositoryFile& repository, QWidget* parent);

  /// Without blanks at its ends.
  std::string name() const;

 private:
  void check();
  QString reason() const;
  orvane::RepositoryFile& m_repository;
  QLineEdit* m_edit;
  QLabel* m_reason;
  QPushButton* m_ok;
};

} // namespace desktop
