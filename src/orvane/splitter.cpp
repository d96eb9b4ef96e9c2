#include "orvane/splitter.hpp"

#include <cmath>
#include <cstdio>
#include <sstream>

#include <fmt/format.h>

#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

constexpr int kSideBySide = 1;

} // namespace

class PaneTree::Pane : public tarnsift::SplitterPane {
 public:
  Pane(PaneTree& tree, std::string key) : m_tree(tree), m_key(std::move(key)) {}

  std::string Key() override { return m_key; }
  float Left() override { return static_cast<float>(m_left); }
  float Top() override { return static_cast<float>(m_top + caption()); }
  float Width() override { return static_cast<float>(m_width); }
  float Height() override { return static_cast<float>(std::max(0.0, m_height - caption())); }
  bool Visible() override { return m_visible; }
  void setVisible(bool visible) override {
    m_visible = visible;
    m_tree.arranged();
  }
  void setCaption(const std::string& caption) override {
    m_caption = caption;
    m_tree.Changed.raise();
  }
  std::string Caption() override { return m_caption; }
  bool IsActive() override { return m_tree.m_active == this; }
  void Activate() override {
    if (m_tree.m_active == this) return;
    m_tree.m_active = this;
    m_tree.Changed.raise();
    m_tree.PaneActivated.raise(*this);
  }
  void setPinned(bool pinned) override { m_pinned = pinned; }
  void Split(int orientation, int, double size, const std::string& first, const std::string& second) override {
    m_orientation = orientation;
    m_size = size;
    m_sizedFor = -1;
    m_first = std::make_unique<Pane>(m_tree, first);
    m_second = std::make_unique<Pane>(m_tree, second);
  }
  SplitterPane& Child(int position) override {
    if (!m_first || position < 1 || position > 2)
      throw platform::KeyError(fmt::format("the pane has no child {}", position));
    return position == 1 ? *m_first : *m_second;
  }

  bool shown() const { return m_first ? m_first->shown() || m_second->shown() : m_visible; }

  void place(double left, double top, double width, double height) {
    m_left = left, m_top = top, m_width = width, m_height = height;
    if (!m_first) return;
    // A hidden child leaves its place to the other.
    if (!m_first->shown()) return m_second->place(left, top, width, height);
    if (!m_second->shown()) return m_first->place(left, top, width, height);
    const bool across = sideBySide();
    const double whole = across ? width : height;
    const double room = std::max(0.0, whole - sash());
    // A stored or given size holds for the first extent that it meets; other extents keep its share.
    if (m_sizedFor < 0) {
      m_size = std::min(std::max(0.0, m_size), room);
      m_sizedFor = room;
      m_share = room > 0 ? m_size / room : 0.5;
    } else if (room != m_sizedFor) {
      m_size = m_share * room;
      const double lowest = m_first->least(across), highest = room - m_second->least(across);
      if (lowest <= highest) m_size = std::clamp(m_size, lowest, highest);
      m_sizedFor = room;
    }
    const double second = std::max(0.0, room - m_size);
    if (across) {
      m_first->place(left, top, m_size, height);
      m_second->place(left + m_size + sash(), top, second, height);
    } else {
      m_first->place(left, top, width, m_size);
      m_second->place(left, top + m_size + sash(), width, second);
    }
  }

  // In the order of the tree: a cut's own sash before those of its children.
  void collect(std::vector<Pane*>& leaves, std::vector<Pane*>& cuts) {
    if (!m_first) {
      if (m_visible) leaves.push_back(this);
      return;
    }
    if (m_first->shown() && m_second->shown()) cuts.push_back(this);
    m_first->collect(leaves, cuts);
    m_second->collect(leaves, cuts);
  }

  PaneFrame frame() const {
    const double bar = std::min(caption(), m_height);
    return {
        m_key, m_caption, {m_left, m_top, m_width, bar}, {m_left, m_top, m_width, m_height}, m_tree.m_active == this};
  }

  Sash sashAt() const {
    if (sideBySide()) return {{m_left + m_size, m_top, sash(), m_height}, true};
    return {{m_left, m_top + m_size, m_width, sash()}, false};
  }

  // The least extent along a direction that keeps every pane inside usable.
  double least(bool across) const {
    if (!shown()) return 0;
    if (!m_first) return m_tree.m_measures.smallest + (across ? 0 : caption());
    const double first = m_first->least(across), second = m_second->least(across);
    if (across != sideBySide()) return std::max(first, second);
    return first + second + (m_first->shown() && m_second->shown() ? sash() : 0);
  }

  void moveSash(double edge) {
    const bool across = sideBySide();
    const double room = std::max(0.0, (across ? m_width : m_height) - sash());
    const double lowest = m_first->least(across), highest = room - m_second->least(across);
    if (lowest > highest) return; // no room to give
    m_size = std::clamp(edge - (across ? m_left : m_top), lowest, highest);
    m_sizedFor = room;
    m_share = room > 0 ? m_size / room : 0.5;
  }

  Pane* find(const std::string& key) {
    if (!m_first) return platform::equalsIgnoringCase(m_key, key) && !key.empty() ? this : nullptr;
    Pane* found = m_first->find(key);
    return found ? found : m_second->find(key);
  }

  // "(orientation size first second)" for a cut, "key+" or "key-" for a shown or hidden pane.
  std::string text() const {
    if (!m_first) return m_key + (m_visible ? "+" : "-");
    return fmt::format("({} {:.0f} {} {})", m_orientation, m_size, m_first->text(), m_second->text());
  }

  void read(std::istringstream& in, int depth) {
    constexpr int kDeepest = 16;
    in >> std::ws;
    if (depth > kDeepest) throw platform::Error("the stored layout nests too deep");
    if (in.peek() == '(') {
      in.get();
      int orientation = 0;
      double size = 0;
      if (!(in >> orientation >> size) || orientation < 1 || orientation > 2 || !std::isfinite(size))
        throw platform::Error("the stored layout is not one");
      Split(orientation, 2, size, "", "");
      m_first->read(in, depth + 1);
      m_second->read(in, depth + 1);
      if ((in >> std::ws).get() != ')') throw platform::Error("the stored layout is not one");
      return;
    }
    std::string word;
    while (in.peek() != ' ' && in.peek() != ')' && in.peek() != std::char_traits<char>::eof())
      word += static_cast<char>(in.get());
    if (word.size() < 2 || (word.back() != '+' && word.back() != '-'))
      throw platform::Error("the stored layout is not one");
    m_visible = word.back() == '+';
    m_key = word.substr(0, word.size() - 1);
  }

 private:
  bool sideBySide() const { return m_orientation == kSideBySide; }
  double sash() const { return m_tree.m_measures.sash; }
  double caption() const { return m_tree.m_measures.caption; }
  PaneTree& m_tree;
  std::string m_key;
  std::string m_caption;
  double m_left = 0, m_top = 0, m_width = 0, m_height = 0;
  bool m_visible = true;
  bool m_pinned = false;
  int m_orientation = 0;
  double m_size = 0;      // of the first child
  double m_sizedFor = -1; // the room that m_size was made for; -1: none yet
  double m_share = 0.5;   // of the first child in the room
  std::unique_ptr<Pane> m_first;
  std::unique_ptr<Pane> m_second;
};

PaneTree::PaneTree() : m_root(std::make_unique<Pane>(*this, "")) {}
PaneTree::~PaneTree() = default;

tarnsift::SplitterPane& PaneTree::RootPane() {
  return *m_root;
}

tarnsift::SplitterPane& PaneTree::Panes(const std::string& key) {
  if (Pane* pane = m_root->find(key)) return *pane;
  throw platform::KeyError("the splitter has no pane '" + key + "'");
}

void PaneTree::setRedraw(bool redraw) {
  m_redraw = redraw;
}

void PaneTree::Arrange() {
  arranged();
}

void PaneTree::Arrange(double left, double top, double width, double height) {
  m_left = left, m_top = top, m_width = std::max(0.0, width), m_height = std::max(0.0, height);
  arranged();
}

void PaneTree::arranged() {
  if (!m_redraw) return;
  m_root->place(m_left, m_top, m_width, m_height);
  PanesArranged.raise();
}

std::vector<PaneFrame> PaneTree::frames() {
  std::vector<Pane*> leaves, cuts;
  m_root->collect(leaves, cuts);
  std::vector<PaneFrame> frames;
  for (const Pane* leaf : leaves)
    if (!leaf->frame().key.empty()) frames.push_back(leaf->frame());
  return frames;
}

std::vector<Sash> PaneTree::sashes() {
  std::vector<Pane*> leaves, cuts;
  m_root->collect(leaves, cuts);
  std::vector<Sash> sashes;
  for (const Pane* cut : cuts)
    sashes.push_back(cut->sashAt());
  return sashes;
}

void PaneTree::moveSash(std::size_t position, double edge) {
  std::vector<Pane*> leaves, cuts;
  m_root->collect(leaves, cuts);
  if (position >= cuts.size()) return;
  cuts[position]->moveSash(edge);
  arranged();
}

std::string PaneTree::SaveLayout() {
  return m_root->text();
}

void PaneTree::LoadLayout(const std::string& layout) {
  auto fresh = std::make_unique<Pane>(*this, "");
  std::istringstream in(layout);
  fresh->read(in, 0);
  for (const char* key : {"Programs", "Lists", "Synonyms", "Source"})
    if (!fresh->find(key)) throw platform::Error(std::string("the stored layout has no pane ") + key);
  m_root = std::move(fresh);
  m_active = nullptr;
}

void PaneTree::Release() {
  m_root = std::make_unique<Pane>(*this, "");
  m_active = nullptr;
}

} // namespace orvane
