#pragma once

#include <QWidget>

class QComboBox;
class QLabel;
class QToolButton;

namespace desktop {

class SourceView;

/// The bar above the source: the files of the program, how often the dataname is used, and the way from use to use.
class WorkspaceBar : public QWidget {
 public:
  explicit WorkspaceBar(SourceView& view, QWidget* parent = nullptr);
  QSize sizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void refresh();
  SourceView& m_view;
  QComboBox* m_files;
  QLabel* m_usages;
  QWidget* m_legend;
  QToolButton* m_previous;
  QToolButton* m_next;
};

} // namespace desktop
