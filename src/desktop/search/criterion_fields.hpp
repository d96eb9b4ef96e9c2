#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QWidget>

namespace desktop {

/// The fields of one tab of criteria. Each filled field is a part of the criterion; parts of all tabs must match
/// together.
class CriterionFields : public QWidget {
 public:
  using QWidget::QWidget;
  /// Adds the parts that the fields say, "tab:word argument".
  virtual void addParts(std::vector<std::string>& parts) const = 0;
  /// Takes a part that belongs here into its field; false when it does not.
  virtual bool takePart(const std::string& part) = 0;
  virtual void clear() = 0;
  std::function<void()> onChanged;

 protected:
  void changed() const {
    if (onChanged) onChanged();
  }
};

/// The tabs in order, with their captions: names, declaration, use, across.
struct CriterionTab {
  QString caption;
  CriterionFields* fields;
};
std::vector<CriterionTab> criterionTabs(QWidget* parent);

} // namespace desktop
