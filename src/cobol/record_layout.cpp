#include "cobol/record_layout.hpp"

namespace cobol {
namespace {

std::int64_t roundUp(std::int64_t value, std::int64_t boundary) {
  const auto rest = value % boundary;
  return rest == 0 ? value : saturatingAdd(value, boundary - rest);
}

} // namespace

std::int64_t saturatingMultiply(std::int64_t a, std::int64_t b) {
  if (a == 0 || b == 0) return 0;
  return a > kOffsetLimit / b ? kOffsetLimit : a * b;
}

int boundaryOf(const Construct& item, const Options& options) {
  if ((item.flags & synchronized_) == 0 || item.isGroup()) return 1;
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

std::vector<int> redefinitionRoots(const Analysis& analysis) {
  std::vector<int> roots(analysis.constructs.size());
  for (std::size_t i = 0; i < roots.size(); ++i) {
    // A target stands before the item that redefines it.
    const int target = analysis.constructs[i].redefines;
    roots[i] =
        target >= 0 && target < static_cast<int>(i) ? roots[static_cast<std::size_t>(target)] : static_cast<int>(i);
  }
  return roots;
}

RecordLayout::RecordLayout(Analysis& analysis, const Options& options, Diagnostics& diagnostics)
    : m_analysis(analysis), m_options(options), m_diagnostics(diagnostics), m_roots(redefinitionRoots(analysis)) {}

int RecordLayout::firstBoundary(int item) const {
  while (at(item).isGroup())
    item = at(item).firstChild;
  return boundaryOf(at(item), m_options);
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

std::int64_t RecordLayout::startOf(int item) {
  Frame& frame = m_frames.back();
  Construct& construct = at(item);
  if (construct.redefines >= 0) {
    const auto start = at(rootOf(item)).position;
    if (start % firstBoundary(item) != 0)
      m_diagnostics.add(Code::SyncMisaligned, Severity::warning, construct.declared,
                        std::string(construct.name) + " is SYNCHRONIZED but begins where " +
                            std::string(at(rootOf(item)).name) + " does, off its boundary");
    return start;
  }
  if (construct.section == Section::report) {
    // Lines of a report group lie over each other; COLUMN counts from the start of the line.
    if (construct.isGroup()) return frame.begin;
    if (construct.fixedPosition >= 0) return construct.fixedPosition;
    if (construct.fixedPosition < -1) return saturatingAdd(frame.current, -construct.fixedPosition - 2);
    return frame.current;
  }
  const bool ibm = m_options.sync == SyncRule::ibm;
  const int boundary = ibm ? firstBoundary(item) : construct.isGroup() ? 1 : boundaryOf(construct, m_options);
  const auto start = roundUp(frame.current, boundary);
  if (ibm && start > frame.current && frame.previous >= 0) grow(frame.previous, start - frame.current);
  return start;
}

/// The item's length is known: pads it when it repeats and moves its group on.
void RecordLayout::close(int item, int boundaryInside) {
  Construct& construct = at(item);
  if (construct.repeats) construct.length = roundUp(construct.length, boundaryInside);
  construct.size = saturatingMultiply(construct.length, construct.occurs);
  if (!m_frames.empty()) advance(item, boundaryInside);
}

void RecordLayout::advance(int item, int boundaryInside) {
  Frame& frame = m_frames.back();
  const Construct& construct = at(item);
  const auto end = saturatingAdd(construct.position, construct.size);
  frame.boundary = std::max(frame.boundary, boundaryInside);
  if (construct.redefines >= 0) {
    const int root = rootOf(item);
    if (construct.size > at(root).size)
      m_diagnostics.add(Code::RedefinesLonger, Severity::information, construct.declared,
                        std::string(construct.name) + " is longer than " + std::string(at(root).name) +
                            ", which it redefines");
    frame.current = std::max(frame.current, end);
  } else if (construct.section == Section::report) {
    // A group's length reaches to the largest column of any line.
    frame.current = construct.isGroup() ? std::max(frame.current, end) : end;
    frame.previous = item;
  } else {
    frame.current = end;
    frame.previous = item;
  }
  frame.child = construct.nextSibling;
}

void RecordLayout::layOut(int record) {
  at(record).position = 0;
  if (!at(record).isGroup()) return close(record, boundaryOf(at(record), m_options));
  open(record, 0);
  std::int64_t farthest = 0; // of report lines, whose columns may run backwards
  while (!m_frames.empty()) {
    Frame& frame = m_frames.back();
    if (frame.child < 0) {
      const Frame done = frame;
      m_frames.pop_back();
      Construct& group = at(done.group);
      group.length = done.current - done.begin;
      if (group.section == Section::report && done.group == record) group.length = std::max(group.length, farthest);
      close(done.group, done.boundary);
      continue;
    }
    const int child = frame.child;
    Construct& construct = at(child);
    construct.position = startOf(child);
    if (construct.isGroup()) {
      open(child, construct.position);
    } else {
      close(child, boundaryOf(construct, m_options));
      farthest = std::max(farthest, saturatingAdd(construct.position, construct.size));
    }
  }
}

} // namespace cobol
