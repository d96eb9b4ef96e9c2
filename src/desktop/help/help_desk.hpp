#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

namespace desktop {

class HelpWindow;

/// Opens the user guide: at a page, for what the component asks, and for what has the focus when F1 is pressed.
class HelpDesk final : public QObject {
 public:
  HelpDesk();
  void show(const QString& page);
  /// Commands of the component: 11 the contents, 1 the page of the context.
  void show(int command, int context);
  HelpWindow* window() const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QPointer<QWidget> m_window;
};

/// The one of this process; made at the first call, which needs the application.
HelpDesk& helpDesk();

} // namespace desktop
