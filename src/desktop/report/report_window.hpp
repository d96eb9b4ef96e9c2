#pragma once

#include <functional>
#include <string>

#include <QWidget>

#include "desktop/report/report_model.hpp"
#include "orvane/report_file.hpp"

class QLabel;
class QLineEdit;
class QTableView;

namespace desktop {

/// The place that a row of a report speaks of.
struct ReportPlace {
  std::string program;
  std::string dataname; ///< "" where the row is a source line or a program
  std::string file;     ///< as the analysis keeps it; "" where the row has none
  int line = 0;         ///< from 1
  int column = 0;       ///< from 1
};

/// A finished report on the screen: a table over its records that is sorted, filtered as one types, exported and
/// printed, and from whose rows one jumps to the dataname or the source line.
class ReportWindow : public QWidget {
 public:
  /// `folder` is where exports are offered to go; `jump` shows a place in the main window.
  ReportWindow(orvane::FinishedReport report, std::string folder, std::function<void(const ReportPlace&)> jump,
               QWidget* parent = nullptr);

  ReportModel& model() { return *m_model; }
  /// Writes the report in a format: all rows in their order, whatever the filter. Tells what went wrong.
  void exportTo(orvane::ReportFormat format, const QString& path);
  ReportPlace placeOf(int row) const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* bar();
  void buildTable();
  void fitColumns();
  void readOn();
  void showCount();
  void askAndExport(orvane::ReportFormat format);
  void print();
  void jump();

  std::string m_folder;
  std::function<void(const ReportPlace&)> m_jump;
  ReportModel* m_model;
  QLineEdit* m_filter;
  QLabel* m_count;
  QTableView* m_table;
  bool m_reading = true;
};

} // namespace desktop
