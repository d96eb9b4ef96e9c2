#pragma once

#include <QDialog>
#include <array>
#include <vector>

#include "desktop/dialogs/size_picture.hpp"

class QGridLayout;
class QLabel;
class QPushButton;
class QSpinBox;

namespace desktop {

/// Asks for the limits of the change sizes and shows how many programs each class gets. Limits out of order are told
/// and cannot be accepted.
class SizeClassesBox final : public QDialog {
 public:
  /// `caption` says what is counted; without counts there is no picture.
  SizeClassesBox(const QString& caption, const tarnsift::SizeLimits& proposed, const std::vector<std::int64_t>& counts,
                 QWidget* parent);

  tarnsift::SizeLimits limits() const;

 private:
  void addFields(QGridLayout& grid);
  void setLimits(const tarnsift::SizeLimits& limits);
  void follow();
  std::vector<std::int64_t> m_counts;
  tarnsift::SizeLimits m_proposed;
  SizePicture* m_picture = nullptr;
  std::array<QSpinBox*, 3> m_fields{};
  std::array<QLabel*, 4> m_shares{};
  QLabel* m_rest = nullptr;
  QLabel* m_reason = nullptr;
  QPushButton* m_ok = nullptr;
};

} // namespace desktop
