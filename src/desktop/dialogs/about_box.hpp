#pragma once

#include <QDialog>

namespace desktop {

/// What the product is, its version, and the libraries that it is built with.
class AboutBox final : public QDialog {
 public:
  AboutBox(const QString& name, QWidget* parent);
};

} // namespace desktop
