#include "orvane/named_criteria.hpp"

#include <algorithm>

#include <fmt/format.h>

#include "platform/runtime/error.hpp"
#include "platform/runtime/text.hpp"
#include "platform/runtime/wildcard.hpp"

namespace orvane {

namespace {

using platform::Node;

constexpr const char* kFilters = "//CASE[@ID='Tarnsift']/LIST[@NAME='Pages']/CASE[@NAME='Filters']";
constexpr const char* kPatterns = "/LIST[@NAME='FilterTypes']/CASE[@NAME='Patterns']";

Node savedGroup(const platform::Document& options) {
  return options.selectSingleNode(std::string(kFilters) + "/GROUP[@NAME='SavedCriteria']");
}

bool isSaved(const std::string& name) {
  return platform::equalsIgnoringCase(std::string_view(name).substr(0, kSavedCriterion.size()), kSavedCriterion);
}

Node savedNamed(const Node& group, std::string_view name) {
  for (Node entry = group ? group.firstChild() : Node(); entry; entry = entry.nextSibling())
    if (platform::equalsIgnoringCase(entry.getAttribute("NAME").asText(), name)) return entry;
  return {};
}

std::vector<std::string> ticked(const Node& list) {
  std::vector<std::string> texts;
  for (Node entry = list ? list.firstChild() : Node(); entry; entry = entry.nextSibling())
    if (entry.getAttribute("CHECKED").asText() == "true" && !entry.getAttribute("VALUE").asText().empty())
      texts.push_back(platform::upper(entry.getAttribute("VALUE").asText()));
  return texts;
}

} // namespace

std::vector<SavedCriterion> savedCriteria(const platform::Document& options) {
  std::vector<SavedCriterion> all;
  const Node group = savedGroup(options);
  for (Node entry = group ? group.firstChild() : Node(); entry; entry = entry.nextSibling())
    all.push_back({entry.getAttribute("NAME").asText(), entry.getAttribute("VALUE").asText()});
  return all;
}

void saveCriterion(platform::Document& options, const SavedCriterion& criterion) {
  const std::string name(platform::trimmed(criterion.name));
  if (name.empty() || name.find('\'') != std::string::npos)
    throw platform::Error("a criterion needs a name without quotes");
  if (isSaved(criterion.definition)) throw platform::Error("a saved criterion cannot be made of another one");
  criterionNamed(criterion.definition);
  Node group = savedGroup(options);
  if (!group) throw platform::Error("the project's options have no place for criteria");
  Node entry = savedNamed(group, name);
  const bool isNew = !entry;
  if (isNew) entry = options.createElement("TEXT");
  entry.setAttribute("NAME", name);
  entry.setAttribute("CAPTION", name);
  entry.setAttribute("VALUE", criterion.definition);
  if (isNew) group.appendChild(entry);
}

void removeCriterion(platform::Document& options, const std::string& name) {
  Node group = savedGroup(options);
  if (const Node entry = savedNamed(group, name)) group.removeChild(entry);
}

PatternFilter patternFilter(const platform::Document& options) {
  const std::string patterns = std::string(kFilters) + kPatterns;
  return {ticked(options.selectSingleNode(patterns + "/GROUP[@NAME='PositiveFilters']/STRINGS")),
          ticked(options.selectSingleNode(patterns + "/STRINGS[@NAME='NameNegative']"))};
}

Criterion projectCriterion(const platform::Document& options, const std::string& name) {
  if (isSaved(name)) {
    const std::string saved = name.substr(kSavedCriterion.size());
    const Node entry = savedNamed(savedGroup(options), saved);
    if (!entry) throw platform::Error(fmt::format("the project has no saved criterion '{}'", saved));
    return criterionNamed(entry.getAttribute("VALUE").asText());
  }
  if (!platform::equalsIgnoringCase(name, kProjectFilter)) return criterionNamed(name);
  const PatternFilter filter = patternFilter(options);
  if (filter.like.empty() && filter.unlike.empty())
    throw platform::Error("the project's filter has no ticked pattern; add some under Define Filter");
  Criterion all = criterionNamed("Names:*");
  return [filter, all](const StoreData& data, std::uint32_t construct) {
    const std::string_view dataname = data.text(data.constructs[construct].name);
    const auto matches = [&](const std::string& pattern) { return platform::like(dataname, pattern); };
    return all(data, construct) &&
           (filter.like.empty() || std::any_of(filter.like.begin(), filter.like.end(), matches)) &&
           std::none_of(filter.unlike.begin(), filter.unlike.end(), matches);
  };
}

} // namespace orvane
