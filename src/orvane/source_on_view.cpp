#include "orvane/source_on_view.hpp"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <tuple>

#include "cobol/source_text.hpp"
#include "orvane/fingerprint.hpp"

namespace orvane {

namespace {

auto orderOf(const PlaceRecord& place) {
  return std::tuple(place.file, place.line, place.column);
}

MarkKind kindOf(std::uint32_t access) {
  switch (static_cast<cobol::Access>(access)) {
  case cobol::Access::write:
    return MarkKind::write;
  case cobol::Access::both:
    return MarkKind::both;
  default:
    return MarkKind::read;
  }
}

} // namespace

std::vector<SourceMark> marksOf(const StoreData& data, std::uint32_t construct) {
  if (construct >= data.constructs.size()) return {};
  const ConstructRecord& record = data.constructs[construct];
  std::vector<SourceMark> marks;
  if (record.declared.line > 0) marks.push_back({record.declared, MarkKind::declaration});
  for (std::uint32_t i = 0; i < record.instances; ++i) {
    const InstanceRecord& instance = data.instances[record.firstInstance + i];
    const bool isUsage = i < record.usages;
    if (!isUsage && instance.access != static_cast<std::uint16_t>(cobol::Access::declare)) continue;
    const MarkKind kind = isUsage ? kindOf(instance.access) : MarkKind::declaration;
    if (isUsage) marks.push_back({instance.place, kind});
    for (const PlaceRecord& place : data.further(instance))
      marks.push_back({place, kind, true});
  }
  std::stable_sort(marks.begin(), marks.end(),
                   [](const SourceMark& a, const SourceMark& b) { return orderOf(a.place) < orderOf(b.place); });
  std::vector<SourceMark> merged;
  for (const SourceMark& mark : marks) {
    if (merged.empty() || orderOf(merged.back().place) != orderOf(mark.place)) {
      merged.push_back(mark);
    } else if (merged.back().part != mark.part) {
      if (merged.back().part) merged.back() = mark;
    } else if (MarkKind& kind = merged.back().kind; kind != MarkKind::declaration && kind != mark.kind) {
      kind = MarkKind::both;
    }
  }
  return merged;
}

SourceOnView readSource(const BaseFolder& base, const cobol::Options& options, const StoreData& data,
                        std::uint32_t file) {
  SourceOnView view;
  if (file >= data.files.size()) {
    view.problem = "the program has no such file";
    return view;
  }
  const FileRecord& record = data.files[file];
  const std::string path = nativePathOf(base, std::string(data.text(record.path)));
  std::optional<std::string> bytes = cobol::readBytes(path);
  if (!bytes) {
    view.problem = path + ": " + std::strerror(errno);
    return view;
  }
  view.changed = cobol::contentHash(*bytes) != record.hash;
  cobol::Diagnostics remarks;
  const cobol::SourceText text = cobol::decode(std::move(*bytes), options, remarks);
  view.text = cobol::shade(text.text, static_cast<cobol::Format>(record.format));
  return view;
}

} // namespace orvane
