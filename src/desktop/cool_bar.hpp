#pragma once

#include <QLabel>
#include <QProgressBar>
#include <QWidget>

#include "desktop/connect_while.hpp"
#include "desktop/tool_bar.hpp"
#include "platform/controls/bars.hpp"

namespace desktop {

/// The top bar: the toolbar, and at its right end, while a long command runs, what it does and how far it is.
class CoolBar final : public QWidget {
 public:
  CoolBar(platform::CoolBar& bar, platform::Toolbar& buttons, platform::ProgressBar& progress, platform::Form& form,
          QWidget* parent);

  void sync();
  ToolBar& toolBar() { return *m_tools; }

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void arrange();
  platform::CoolBar& m_bar;
  platform::Toolbar& m_buttons;
  platform::ProgressBar& m_progress;
  ToolBar* m_tools;
  QLabel* m_action;
  QProgressBar* m_meter;
};

} // namespace desktop
