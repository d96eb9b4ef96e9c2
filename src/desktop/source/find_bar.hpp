#pragma once

#include <vector>

#include <QWidget>

#include "desktop/source/text_area.hpp"

class QLabel;
class QLineEdit;
class QToolButton;

namespace desktop {

/// Finds a text in a TextArea as it is typed, without regard to case. Enter and F3 go on, with Shift back; Esc closes.
class FindBar : public QWidget {
 public:
  explicit FindBar(TextArea& area, QWidget* parent = nullptr);
  void open();
  void step(int direction);
  /// Another text is on view.
  void refresh();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void search();
  void showCurrent();
  void shut();
  TextArea& m_area;
  QLineEdit* m_text;
  QLabel* m_count;
  std::vector<TextMatch> m_matches;
  int m_current = -1;
};

} // namespace desktop
