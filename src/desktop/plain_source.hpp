#pragma once

#include <QPlainTextEdit>

#include "desktop/connect_while.hpp"
#include "orvane/host.hpp"

namespace desktop {

/// The source pane as plain text: the file of the current object with its line in sight.
class PlainSource final : public QPlainTextEdit {
 public:
  PlainSource(orvane::Host& host, QWidget* parent);

 private:
  void show();
  orvane::Host& m_host;
  Lifetime m_lifetime = makeLifetime();
};

} // namespace desktop
