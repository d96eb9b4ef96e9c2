#include "cobol/analysis.hpp"
#include "orvane/criteria/criterion.hpp"

namespace orvane {

namespace {

std::span<const InstanceRecord> usagesOf(const StoreData& data, std::uint32_t construct) {
  const ConstructRecord& record = data.constructs[construct];
  return std::span(data.instances).subspan(record.firstInstance, record.usages);
}

bool allUsagesAre(const StoreData& data, std::uint32_t construct, cobol::Access access) {
  const auto usages = usagesOf(data, construct);
  return !usages.empty() && std::all_of(usages.begin(), usages.end(), [&](const InstanceRecord& usage) {
    return usage.access == static_cast<std::uint32_t>(access);
  });
}

} // namespace

Criterion isUnused(const std::string&) {
  return [](const StoreData& data, std::uint32_t construct) { return data.constructs[construct].usages == 0; };
}

Criterion isReadOnly(const std::string&) {
  return
      [](const StoreData& data, std::uint32_t construct) { return allUsagesAre(data, construct, cobol::Access::read); };
}

Criterion isWrittenOnly(const std::string&) {
  return [](const StoreData& data, std::uint32_t construct) {
    return allUsagesAre(data, construct, cobol::Access::write);
  };
}

Criterion isInFileRecord(const std::string&) {
  return [](const StoreData& data, std::uint32_t construct) {
    return data.constructs[construct].section == static_cast<std::uint8_t>(cobol::Section::file);
  };
}

// Relations are sorted by their first end.
Criterion isPassedToCall(const std::string&) {
  return [](const StoreData& data, std::uint32_t construct) {
    const auto from =
        std::lower_bound(data.relations.begin(), data.relations.end(), construct,
                         [](const RelationRecord& relation, std::uint32_t end) { return relation.from < end; });
    for (auto relation = from; relation != data.relations.end() && relation->from == construct; ++relation)
      if (relation->kind == static_cast<std::uint32_t>(cobol::RelationKind::Argument)) return true;
    return false;
  };
}

Criterion isInEmbeddedStatement(const std::string&) {
  return [](const StoreData& data, std::uint32_t construct) {
    const auto usages = usagesOf(data, construct);
    return std::any_of(usages.begin(), usages.end(),
                       [&](const InstanceRecord& usage) { return data.text(usage.verb) == "EXEC"; });
  };
}

} // namespace orvane
