#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QWidget>

#include "cobol/options.hpp"
#include "desktop/source/find_bar.hpp"
#include "desktop/source/mark_bar.hpp"
#include "desktop/source/text_area.hpp"
#include "orvane/base_folder.hpp"
#include "orvane/source_on_view.hpp"
#include "orvane/workspace.hpp"

class QLabel;

namespace desktop {

/// The source of the current program with the declaration and the usages of the current dataname marked. Follows the
/// workspace: a choice shows its declaration, in whatever file it stands.
class SourceView : public QWidget {
 public:
  /// `options` says how files are to be read; it is asked for each file anew.
  SourceView(orvane::BaseFolder base, std::function<cobol::Options()> options, QWidget* parent = nullptr);
  /// The workspace outlives the view, or detach() is called first.
  void attach(orvane::Workspace& workspace);
  void detach() { m_workspace = nullptr; }

  TextArea& area() { return *m_area; }
  /// All marks of the current dataname, in every file of the program.
  const std::vector<orvane::SourceMark>& marks() const { return m_marks; }
  int usageCount() const;
  /// Number of the usage that was gone to last, from 1; 0: none.
  int currentUsage() const;
  void nextUsage() { stepUsage(1); }
  void previousUsage() { stepUsage(-1); }
  void find() { m_find->open(); }

  /// The files of the program on view, and which of them is shown; -1: none.
  const std::vector<QString>& files() const { return m_files; }
  int currentFile() const { return m_file; }
  void showFile(int file);
  /// Shows a line of a file of the program, by its path as the analysis keeps it; an unknown file changes nothing.
  void goTo(const std::string& path, int line, int column);

  std::function<void()> onChanged; ///< another dataname, file or current usage

 private:
  void later(bool chosen);
  void follow(bool chosen);
  void told();
  void showChosen();
  void showText(int file);
  void showMarks();
  void goToMark(int mark);
  void stepUsage(int direction);
  const orvane::StoreData* data() const;

  orvane::BaseFolder m_base;
  std::function<cobol::Options()> m_options;
  orvane::Workspace* m_workspace = nullptr;
  tarnsift::Ref<tarnsift::AnalysisStore> m_store; ///< of the program on view
  std::vector<QString> m_files;
  int m_file = -1;
  std::vector<orvane::SourceMark> m_marks;
  int m_mark = -1;             ///< in m_marks
  std::size_t m_firstHere = 0; ///< the first of m_marks in the file on view
  bool m_pending = false;
  bool m_chosen = false; ///< the pending change is one of the dataname
  QLabel* m_notice;
  TextArea* m_area;
  MarkBar* m_bar;
  FindBar* m_find;
};

} // namespace desktop
