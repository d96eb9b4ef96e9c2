#include "app/effort.hpp"

#include <fmt/format.h>

#include "app/progress_line.hpp"
#include "app/reading.hpp"
#include "orvane/program_store.hpp"
#include "orvane/report_texts.hpp"
#include "platform/runtime/text.hpp"
#include "tarnsift/reports/program_metrics.hpp"
#include "tarnsift/store/program_database.hpp"

namespace app {

namespace {

struct Column {
  const char* key; ///< in lower case the key of its heading and in JSON
  const char* attributes;
};

constexpr Column kColumns[] = {
    {"Program", ""},
    {"Size", " GROUP=\"S,M,L,XL\""},
    {"Working", " TYPE=\"number\""},
    {"Affected", " TYPE=\"number\""},
    {"Clean", " TYPE=\"number\""},
    {"Datanames", " TYPE=\"number\""},
    {"Declaration_Share", " TYPE=\"percent\" OF=\"Affected/Datanames\""},
    {"Affected_Usages", " TYPE=\"number\""},
    {"Usages", " TYPE=\"number\""},
    {"Usage_Share", " TYPE=\"percent\" OF=\"Affected_Usages/Usages\""},
};

std::string recordFormat() {
  std::string format = "<LCRecordFormat>";
  for (const Column& column : kColumns)
    format += fmt::format("<{} CAPTION=\"{}\"{}/>", column.key, orvane::ownText(platform::lower(column.key)),
                          column.attributes);
  return format + "</LCRecordFormat>";
}

void writeProgram(orvane::ReportFile& report, const Reading& reading, const orvane::ProgramFacts& program) {
  orvane::StoredAnalysis store(program.analysisFile, orvane::readStore(program.analysisFile));
  const auto metrics = tarnsift::programMetrics(store, tarnsift::statusColumnOf(reading.project));
  const auto lists = orvane::countsOf(program, reading.project);
  const auto object = reading.repository->ObjectById(program.id);
  report.BeginRecord();
  report.Field("Program", program.name);
  report.Field("Size", object ? object->Attribute("ChangeMagnitude") : platform::Value());
  report.Field("Working", lists[0]);
  report.Field("Affected", lists[1]);
  report.Field("Clean", lists[2]);
  report.Field("Datanames", std::int64_t{metrics.declarations});
  report.Field("Declaration_Share", tarnsift::shareText(metrics.declarationShare()));
  report.Field("Affected_Usages", std::int64_t{metrics.affectedUsages});
  report.Field("Usages", std::int64_t{metrics.usages});
  report.Field("Usage_Share", tarnsift::shareText(metrics.usageShare()));
  report.EndRecord();
}

} // namespace

void writeEffort(const Context& context, const std::shared_ptr<orvane::ReportSettings>& settings) {
  const Reading reading(context);
  settings->outputFolder = reading.base.outputFolder();
  settings->projectName = reading.project;
  const platform::Ref<orvane::ReportFile> report(new orvane::ReportFile(settings));
  report->BeginReport(recordFormat(), orvane::ownText("effort"), "");
  const auto programs = orvane::programsOf(reading.base, *reading.repository, reading.project, "");
  ProgressLine progress;
  for (std::size_t i = 0; i < programs.size(); ++i) {
    progress.show("report effort", i, programs.size());
    if (!programs[i].verified) continue;
    try {
      writeProgram(*report, reading, programs[i]);
    } catch (const platform::Error& error) {
      progress.clear();
      fmt::print(stderr, "tarnsift: {}: not in the report: {}\n", programs[i].name, error.what());
    }
  }
  progress.clear();
  report->EndReport("");
}

} // namespace app
