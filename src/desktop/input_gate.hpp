#pragma once

#include <QObject>

#include "platform/controls/form.hpp"

class QWidget;

namespace desktop {

/// Stands between the analyst and the window: while the form is disabled input for it is dropped, not queued; keys are
/// shown to the form before their widget gets them.
class InputGate final : public QObject {
 public:
  InputGate(platform::Form& form, QWidget& window);
  ~InputGate() override;
  /// Closed at first: a window that is still being filled takes no input.
  void setOpen(bool open) { m_open = open; }
  /// Whether the last input was a key.
  bool byKey() const { return m_byKey; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool concerns(const QObject* watched) const;
  platform::Form& m_form;
  QWidget& m_window;
  bool m_open = false;
  bool m_byKey = false;
};

} // namespace desktop
