#pragma once

#include <QTest>
#include <gtest/gtest.h>

#include "desktop/list_widget.hpp"
#include "desktop/main_window.hpp"
#include "desktop/session.hpp"
#include "orvane/portfolio.hpp"
#include "orvane/settings.hpp"

/// The bank's portfolio, verified, in a real window.
class WorkbenchTest : public ::testing::Test {
 protected:
  WorkbenchTest();
  ~WorkbenchTest() override;

  void open();
  /// Closes the window through its frame and ends the session.
  void close();

  desktop::MainWindow& window() { return *m_session->window(); }
  platform::Form& form() { return m_session->host().window(); }
  orvane::Host& host() { return m_session->host(); }
  desktop::ListWidget& programs() { return list("lvPrograms"); }
  desktop::ListWidget& working() { return list("lvList0"); }
  desktop::ListWidget& affected() { return list("lvList1"); }
  desktop::ListWidget& list(const char* name);
  template<typename W>
  W& widget(const char* name) {
    W* found = window().findChild<W*>(QString::fromLatin1(name));
    if (!found) throw platform::Error(std::string("no widget ") + name);
    return *found;
  }
  QAction& action(const char* name) { return widget<QAction>(name); }
  /// Names in a list as its widget shows them, marked ones with a star, the focused one in brackets.
  std::string picture(desktop::ListWidget& list);
  /// Counts "Working Affected Clean" of a program's row.
  std::string counts(const std::string& program);

  void key(QWidget& on, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
  void click(desktop::ListWidget& on, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier,
             Qt::MouseButton button = Qt::LeftButton);
  /// Filters with that criterion into a list, through the menu.
  void filter(const std::string& criterion, int target);
  /// What the analyst does with the next dialog, box or menu; it must come, and go within the step.
  void next(const std::function<void(QWidget&)>& step);
  bool nextCame() const { return m_nextCame; }

  orvane::Portfolio m_portfolio;
  platform::Ref<orvane::MemorySettings> m_settings;
  std::unique_ptr<desktop::Session> m_session;

 private:
  void bringToFront();
  bool m_nextCame = false;
};
