#include "cobol/record_layout.hpp"

namespace cobol {
namespace {

std::int64_t roundUp(std::int64_t value, std::int64_t boundary) {
  if (boundary == 1) return value;
  const auto rest = value % boundary;
  return rest == 0 ? value : saturatingAdd(value, boundary - rest);
}

int boundaryOfSynchronized(const Construct& item, const Options& options) {
  const auto& usage = item.usage;
  const bool natural = options.sync == SyncRule::natural;
  if (usage == "COMP" || usage == "COMP-5") {
    if (item.length <= 1) return 1;
    return item.length == 2 ? 2 : item.length >= 8 && natural ? 8 : 4;
  }
  if (usage == "COMP-1" || usage == "BINARY-LONG" || usage == "POINTER-32" || usage == "FLOAT-BINARY-32") return 4;
  if (usage == "COMP-2" || usage == "FLOAT-BINARY-64") return 8;
  if (usage == "BINARY-SHORT") return 2;
  if (usage == "BINARY-DOUBLE") return natural ? 8 : 4;
  if (usage == "INDEX" || usage == "OBJECT REFERENCE" || usage.ends_with("POINTER"))
    return options.pointerBytes == 8 ? 8 : 4;
  return 1;
}

/// Boundary that SYNCHRONIZED asks for: 1 for items without it.
int boundaryOf(const Construct& item, const Options& options) {
  return (item.flags & synchronized_) == 0 || item.isGroup() ? 1 : boundaryOfSynchronized(item, options);
}

/// Nothing gives the item a place or a boundary of its own.
bool isPlain(const Construct& item) {
  return !item.isGroup() && item.redefines < 0 && (item.flags & synchronized_) == 0 && item.section != Section::report;
}

/// The length of one occurrence is known: pads it when there are several.
void setSize(Construct& item, int boundaryInside) {
  if (item.repeats) item.length = roundUp(item.length, boundaryInside);
  item.size = saturatingMultiply(item.length, item.occurs);
}

} // namespace

void RedefinitionRoots::seek() {
  m_roots.resize(m_analysis.constructs.size());
  for (std::size_t i = 0; i < m_roots.size(); ++i) {
    // A target stands before the item that redefines it.
    const int index = static_cast<int>(i), target = m_analysis.constructs[i].redefines;
    m_roots[i] = target >= 0 && target < index ? m_roots[static_cast<std::size_t>(target)] : index;
  }
}

/// Boundary of the elementary item that an item begins with.
int RecordLayout::boundaryBefore(const Construct& item) const {
  const Construct* first = &item;
  while (first->isGroup())
    first = &at(first->firstChild);
  return boundaryOf(*first, m_options);
}

/// The slack that an item needs belongs to the item before, at the level of the last elementary item of it, so every
/// group that ends there grows; but never a table or a redefinition.
void RecordLayout::grow(int item, std::int64_t slack) {
  while (item >= 0 && at(item).isGroup() && !at(item).repeats && at(item).redefines < 0) {
    at(item).length = saturatingAdd(at(item).length, slack);
    at(item).size = at(item).length;
    int last = -1;
    for (int child = at(item).firstChild; child >= 0; child = at(child).nextSibling)
      if (at(child).redefines < 0) last = child;
    item = last;
  }
}

void RecordLayout::open(int group, std::int64_t position) {
  m_frames.push_back({.group = group, .child = at(group).firstChild, .begin = position, .current = position});
}

/// Lays out the child at hand and those behind it up to the first that is more than plain.
void RecordLayout::passPlain(Frame& frame) {
  int child = frame.child, previous = frame.previous;
  auto current = frame.current;
  while (child >= 0 && isPlain(at(child))) {
    Construct& item = at(child);
    item.position = current;
    item.size = saturatingMultiply(item.length, item.occurs);
    current = saturatingAdd(current, item.size);
    previous = child;
    child = item.nextSibling;
  }
  frame.child = child;
  frame.previous = previous;
  frame.current = current;
}

/// Where the child at hand begins.
std::int64_t RecordLayout::startOf(const Frame& frame, const Construct& item) {
  if (item.redefines >= 0) return startOfRedefinition(frame.child);
  if (item.section == Section::report) {
    // Lines of a report group lie over each other; COLUMN counts from the start of the line.
    if (item.isGroup()) return frame.begin;
    if (item.fixedPosition >= 0) return item.fixedPosition;
    if (item.fixedPosition < -1) return saturatingAdd(frame.current, -item.fixedPosition - 2);
    return frame.current;
  }
  const bool ibm = m_options.sync == SyncRule::ibm;
  const auto start = roundUp(frame.current, ibm ? boundaryBefore(item) : boundaryOf(item, m_options));
  if (ibm && start > frame.current && frame.previous >= 0) grow(frame.previous, start - frame.current);
  return start;
}

std::int64_t RecordLayout::startOfRedefinition(int item) {
  const Construct& root = at(m_roots.of(item));
  if (root.position % boundaryBefore(at(item)) != 0)
    m_diagnostics.add(Code::SyncMisaligned, Severity::warning, at(item).declared,
                      std::string(at(item).name) + " is SYNCHRONIZED but begins where " + std::string(root.name) +
                          " does, off its boundary");
  return root.position;
}

/// The size of the child at hand is known: moves its group on.
void RecordLayout::advance(Frame& frame, int boundaryInside) {
  const Construct& item = at(frame.child);
  const auto end = saturatingAdd(item.position, item.size);
  frame.boundary = std::max(frame.boundary, boundaryInside);
  if (item.redefines >= 0) {
    compare(item, at(m_roots.of(frame.child)));
    frame.current = std::max(frame.current, end);
  } else {
    // A report group's length reaches to the largest column of any line.
    const bool farther = item.section != Section::report || !item.isGroup() || end > frame.current;
    if (farther) frame.current = end;
    frame.previous = frame.child;
  }
  frame.child = item.nextSibling;
}

void RecordLayout::compare(const Construct& item, const Construct& root) {
  if (item.size <= root.size) return;
  m_diagnostics.add(Code::RedefinesLonger, Severity::information, item.declared,
                    std::string(item.name) + " is longer than " + std::string(root.name) + ", which it redefines");
}

/// The group at hand is laid out up to its end; the boundary inside.
int RecordLayout::close() {
  const Frame done = m_frames.back();
  m_frames.pop_back();
  Construct& group = at(done.group);
  group.length = done.current - done.begin;
  if (m_frames.empty() && group.section == Section::report) group.length = std::max(group.length, m_farthest);
  setSize(group, done.boundary);
  return done.boundary;
}

void RecordLayout::layOut(int record) {
  at(record).position = 0;
  if (!at(record).isGroup()) return setSize(at(record), boundaryOf(at(record), m_options));
  open(record, 0);
  m_farthest = 0;
  for (;;) {
    Frame& frame = m_frames.back();
    passPlain(frame);
    int boundary = 1;
    if (frame.child < 0) {
      boundary = close();
      if (m_frames.empty()) return;
    } else {
      Construct& item = at(frame.child);
      item.position = startOf(frame, item);
      if (item.isGroup()) {
        open(frame.child, item.position);
        continue;
      }
      boundary = boundaryOf(item, m_options);
      setSize(item, boundary);
      if (item.section == Section::report) m_farthest = std::max(m_farthest, saturatingAdd(item.position, item.size));
    }
    advance(m_frames.back(), boundary);
  }
}

} // namespace cobol
