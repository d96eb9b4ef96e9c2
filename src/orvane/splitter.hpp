#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tarnsift/session/host.hpp"

namespace orvane {

/// A rectangle in twips within the window.
struct TwipsRect {
  double left = 0, top = 0, width = 0, height = 0;
  bool operator==(const TwipsRect&) const = default;
};

/// Sizes that a screen chooses for what it draws between the panes, twips.
struct PaneMeasures {
  double sash = 60;      ///< between two panes
  double caption = 285;  ///< height of a caption bar
  double smallest = 600; ///< of a pane's content in each direction while a sash is dragged
};

/// A bar between two panes that the analyst can drag.
struct Sash {
  TwipsRect at;
  bool sideBySide = false; ///< it moves left and right, else up and down
};

/// A pane as a screen draws it: its caption bar on top of its content.
struct PaneFrame {
  std::string key;
  std::string caption;
  TwipsRect captionBar;
  TwipsRect whole; ///< with the caption bar
  bool active = false;
};

/// The panes' geometry without a toolkit: a tree of cuts. A screen draws sashes and caption bars from it. When the
/// whole gets another size, the cuts keep their shares.
class PaneTree : public tarnsift::Splitter {
 public:
  PaneTree();
  ~PaneTree() override;

  tarnsift::SplitterPane& RootPane() override;
  tarnsift::SplitterPane& Panes(const std::string& key) override;
  void setRedraw(bool redraw) override;
  void Arrange() override;
  void Arrange(double left, double top, double width, double height) override;
  std::string SaveLayout() override;
  void LoadLayout(const std::string& layout) override;
  void Release() override;

  /// Takes effect with the next arrangement.
  void setMeasures(const PaneMeasures& measures) { m_measures = measures; }
  /// The panes that show and the sashes between them, as they were arranged last.
  std::vector<PaneFrame> frames();
  std::vector<Sash> sashes();
  /// Puts a sash, by its position in sashes(), to that left or top edge as far as the panes beside it allow; a position
  /// that is not there does nothing. Raises PanesArranged.
  void moveSash(std::size_t position, double edge);
  platform::Event<> Changed; ///< captions or the active pane

  class Pane;

 private:
  friend class Pane;
  void arranged();
  std::unique_ptr<Pane> m_root;
  Pane* m_active = nullptr;
  PaneMeasures m_measures;
  double m_left = 0, m_top = 0, m_width = 0, m_height = 0;
  bool m_redraw = true;
};

} // namespace orvane
