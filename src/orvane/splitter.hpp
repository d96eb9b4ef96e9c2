#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tarnsift/session/host.hpp"

namespace orvane {

/// The panes' geometry without a toolkit: a tree of cuts. A screen draws sashes and caption bars from it.
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

  class Pane;

 private:
  friend class Pane;
  void arranged();
  std::unique_ptr<Pane> m_root;
  Pane* m_active = nullptr;
  double m_left = 0, m_top = 0, m_width = 0, m_height = 0;
  bool m_redraw = true;
};

} // namespace orvane
