#include "orvane/criteria/criterion.hpp"

#include <fmt/format.h>

#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"

namespace orvane {

namespace {

constexpr CriterionKind kKinds[] = {
    {"Names", "", "pattern", "Names:*ACCT*", false, namesLike},
    {"Declaration", "Level", "level number or range", "Declaration:Level 1-5", false, levelIs},
    {"Declaration", "Picture", "pattern", "Declaration:Picture 9(6)", false, pictureLike},
    {"Declaration", "Usage", "usage or pattern", "Declaration:Usage COMP-3", false, usageIs},
    {"Declaration", "Size", "bytes or range", "Declaration:Size 6-8", false, sizeIs},
    {"Declaration", "Kind", "kind", "Declaration:Kind call-slot", true, kindIs},
    {"Use", "Unused", "", "Use:Unused", false, isUnused},
    {"Use", "ReadOnly", "", "Use:ReadOnly", false, isReadOnly},
    {"Use", "WrittenOnly", "", "Use:WrittenOnly", false, isWrittenOnly},
    {"Use", "FileRecord", "", "Use:FileRecord", false, isInFileRecord},
    {"Use", "Call", "", "Use:Call", false, isPassedToCall},
    {"Use", "Embedded", "", "Use:Embedded", false, isInEmbeddedStatement},
    {"Across", "call", "parameter", "Across:call SUB(1) at 1-8", true, isAcrossCall},
    {"Across", "file", "file", "Across:file ACCTMST at 9-16", true, isAcrossFile},
};

constexpr std::string_view kAnd = " & ";

bool isHidden(const ConstructRecord& record) {
  const auto kind = static_cast<cobol::Kind>(record.kind);
  return kind == cobol::Kind::filler || kind == cobol::Kind::callSlot || kind == cobol::Kind::fileSlot;
}

std::string knownNames() {
  std::vector<std::string> names;
  for (const auto& kind : kKinds)
    names.emplace_back(kind.example);
  return platform::joined(names, ", ");
}

struct Part {
  Criterion matches;
  bool asksForKind;
};

Part partNamed(const std::string& name) {
  const auto colon = name.find(':');
  const std::string tab = name.substr(0, colon);
  const std::string rest = colon == std::string::npos ? "" : name.substr(colon + 1);
  const auto blank = rest.find(' ');
  for (const CriterionKind& kind : kKinds) {
    if (!platform::equalsIgnoringCase(kind.tab, tab)) continue;
    if (!kind.word.empty() && !platform::equalsIgnoringCase(kind.word, rest.substr(0, blank))) continue;
    const std::string argument = kind.word.empty()            ? rest
                                 : blank == std::string::npos ? ""
                                                              : std::string(platform::trimmed(rest.substr(blank)));
    if (argument.empty() != kind.argument.empty())
      throw platform::Error(kind.argument.empty() ? fmt::format("the criterion '{}' takes nothing more", name)
                                                  : fmt::format("the criterion '{}' needs a {}, as in {}", name,
                                                                kind.argument, kind.example));
    return {kind.make(argument), kind.asksForKind};
  }
  throw platform::Error(fmt::format("there is no criterion '{}'; examples of all: {}", name, knownNames()));
}

} // namespace

std::span<const CriterionKind> criterionKinds() {
  return kKinds;
}

std::string joinedCriteria(const std::vector<std::string>& parts) {
  return platform::joined(parts, kAnd);
}

std::vector<std::string> criterionParts(const std::string& name) {
  std::vector<std::string> parts;
  for (std::size_t at = 0; at <= name.size();) {
    const std::size_t end = std::min(name.find(kAnd, at), name.size());
    parts.push_back(name.substr(at, end - at));
    at = end + kAnd.size();
  }
  return parts;
}

Criterion criterionNamed(const std::string& name) {
  std::vector<Criterion> parts;
  bool asksForKind = false;
  for (const std::string& one : criterionParts(name)) {
    Part part = partNamed(one);
    parts.push_back(std::move(part.matches));
    asksForKind = asksForKind || part.asksForKind;
  }
  // A criterion may expect to be asked for every construct in turn, so no part is left out.
  return [parts = std::move(parts), asksForKind](const StoreData& data, std::uint32_t construct) {
    bool all = asksForKind || !isHidden(data.constructs[construct]);
    for (const Criterion& matches : parts)
      all = matches(data, construct) && all;
    return all;
  };
}

} // namespace orvane
