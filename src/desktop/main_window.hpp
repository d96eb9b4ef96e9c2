#pragma once

#include <QElapsedTimer>
#include <QMainWindow>
#include <QTimer>
#include <memory>
#include <vector>

#include "desktop/connect_while.hpp"
#include "desktop/host_view.hpp"

namespace desktop {

class CoolBar;
class InputGate;
class ListWidget;
class LogPanel;
class Menus;
class PaneArea;
class QtScreen;
class TabStripWidget;

/// The component's window on the screen: one widget for each control of the form, kept in step with the models.
class MainWindow final : public QMainWindow {
 public:
  MainWindow(platform::Form& form, orvane::Host& host, QtScreen& screen, const HostViews& views);
  ~MainWindow() override;

  /// Shows it where it was last and waits until it is on the screen.
  void appear();
  /// Brings all widgets to the state of the models.
  void sync();
  /// The component has filled it: from now on the analyst may work.
  void open();
  /// The component has let the window go: saves its place and hides it.
  void leave();
  /// The window has left.
  std::function<void()> onLeft;

  /// Gives the focus to a pane by its key; a hidden one is left alone.
  void focusPane(const std::string& key);
  /// The menu entry whose command runs; null when none does.
  const platform::MenuItem* commandInWork() const;

 protected:
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void addBars();
  void addLists();
  void addHostViews(const HostViews& views);
  void addShortcuts();
  void follow();
  void tellSize();
  void scheduleSync();
  void pump();
  void popup(platform::MenuItem& menu, double x, double y);
  void stepPane(int by);
  void nameLists();
  tarnsift::SplitterPane* pane(const std::string& key) const;

  platform::Form& m_form;
  orvane::Host& m_host;
  QtScreen& m_screen;
  Lifetime m_lifetime = makeLifetime();
  std::unique_ptr<Menus> m_menus;
  PaneArea* m_area = nullptr;
  CoolBar* m_bar = nullptr;
  TabStripWidget* m_tabs = nullptr;
  std::vector<ListWidget*> m_lists; ///< lvPrograms, then lvList 0 to 3
  std::vector<HostView*> m_hostViews;
  LogPanel* m_log = nullptr;
  std::unique_ptr<InputGate> m_gate;
  QTimer m_syncSoon;
  QElapsedTimer m_lastPump;
  bool m_pumping = false;
  bool m_open = false;
  bool m_left = false;
};

} // namespace desktop
