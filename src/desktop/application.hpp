#pragma once

#include <QApplication>
#include <string>

namespace desktop {

/// The Qt application with the window's look. An error that no handler took is shown and ends the event, not the
/// program.
class Application final : public QApplication {
 public:
  Application(int& argc, char** argv, const std::string& themeChoice);
  bool notify(QObject* receiver, QEvent* event) override;
};

/// What to open; empty texts mean what was open last.
struct Opening {
  std::string base;
  std::string project;
  bool start = false; ///< the start page, whatever was open
};

/// Shows the window of a project, or the start page, and runs until it is closed. Gives the exit status: 0, or 1 with
/// one line on stderr and in a box when it could not be opened.
int openWindow(const Opening& opening);

} // namespace desktop
