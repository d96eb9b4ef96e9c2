#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QDialog>

#include "desktop/search/criterion_fields.hpp"
#include "orvane/store_format.hpp"
#include "platform/xml/xml.hpp"

class QLabel;
class QListWidget;
class QPushButton;
class QTabWidget;

namespace desktop {

/// What the search dialog knows of the session.
struct SearchContext {
  platform::Document options;                        ///< of the project: its filter and its saved criteria
  std::function<void()> saveOptions;                 ///< after a criterion was saved or removed
  std::function<void()> editFilter;                  ///< opens the options on the project's filter
  std::function<const orvane::StoreData*()> program; ///< the analysis of the current program, or nothing
  QString programName;
  QString scope; ///< which programs will be searched
};

/// Lets the analyst put a criterion together, by tab, and shows at once what it matches in the current program.
/// Criteria can be saved under a name, edited, and chosen again.
class SearchDialog : public QDialog {
 public:
  SearchDialog(SearchContext context, const std::string& start, QWidget* parent = nullptr);
  /// What was chosen; only when accepted.
  std::string criterion() const;

 private:
  QWidget* filterTab();
  QWidget* savedTab();
  QWidget* preview();
  void show(const std::string& criterion);
  void refresh();
  void listSaved(const QString& current);
  void saveAs();
  void edit();
  void remove();
  std::string composed() const;
  QString selectedSaved() const;

  SearchContext m_context;
  std::vector<CriterionTab> m_fields;
  QTabWidget* m_tabs;
  QLabel* m_patterns;
  QListWidget* m_saved;
  QLabel* m_definition;
  QLabel* m_count;
  QListWidget* m_matches;
  QPushButton* m_apply;
  QPushButton* m_save;
  int m_filterTab = 0;
  int m_savedTab = 0;
};

} // namespace desktop
