#include "tarnsift/reports/program_metrics.hpp"

#include "platform/runtime/formats.hpp"
#include "tarnsift/store/program_database.hpp"

namespace tarnsift {

namespace {

float share(std::int32_t part, std::int32_t whole) {
  return whole == 0 ? 0.0F : static_cast<float>(static_cast<double>(part) / static_cast<double>(whole));
}

std::int32_t rowCount(platform::Database& database, const std::string& condition) {
  const auto rows = database.OpenRecordset("select Count(*) as cnt from Constructs" + condition);
  return static_cast<std::int32_t>(rows->Field("cnt").asInteger());
}

} // namespace

float ProgramMetrics::declarationShare() const {
  return share(affected, declarations);
}
float ProgramMetrics::usageShare() const {
  return share(affectedUsages, usages);
}

std::int32_t usagesOfAffected(AnalysisStore& store, const std::string& statusColumn) {
  std::int32_t usages = 0;
  const auto rows = store.Database()->OpenRecordset("select KVID from Constructs where " + statusColumn + " = 1");
  for (; !rows->Eof(); rows->MoveNext()) {
    Ref<StoreConstruct> construct;
    platform::ignoring([&] { construct = store.ObjectById(rows->Field("KVID").asText()); });
    if (construct) usages += static_cast<std::int32_t>(construct->Related("Instances")->Count());
  }
  return usages;
}

ProgramMetrics programMetrics(AnalysisStore& store, const std::string& statusColumn) {
  const std::string isAffected = " where " + statusColumn + " = 1";
  const auto database = store.Database();
  ProgramMetrics metrics;
  metrics.declarations = rowCount(*database, "");
  if (database->hasField("Constructs", statusColumn)) {
    metrics.affected = rowCount(*database, isAffected);
    metrics.affectedUsages = usagesOfAffected(store, statusColumn);
  }
  metrics.usages = static_cast<std::int32_t>(store.SelectByKind("", "VAR")->Count());
  return metrics;
}

std::string shareText(float share) {
  return PadCount(platform::formatPercent(share));
}

} // namespace tarnsift
