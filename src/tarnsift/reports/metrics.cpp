#include <optional>

#include "platform/runtime/string_table.hpp"
#include "tarnsift/reports/program_metrics.hpp"
#include "tarnsift/reports/report_program.hpp"
#include "tarnsift/reports/reports.hpp"
#include "tarnsift/search/program_work.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift {

namespace {

using platform::LoadResString;

void writeRecord(ReportWriter& writer, const platform::ListItem& program, const ProgramMetrics& metrics) {
  writer.BeginRecord();
  writer.Field("Program", program.Text);
  writer.Field("Declarations", shareText(metrics.declarationShare()));
  writer.Field("Usages", shareText(metrics.usageShare()));
  writer.EndRecord();
}

} // namespace

void reportMetrics(frmMain& window) {
  window.ReportWriter->BeginReport("<LCRecordFormat><Program CAPTION=\"" + LoadResString(539) +
                                       "\"/><Declarations CAPTION=\"" + LoadResString(545) + "\"/><Usages CAPTION=\"" +
                                       LoadResString(546) + "\"/></LCRecordFormat>",
                                   LoadResString(520), "");
  StartProgress(window, LoadResString(521), static_cast<int>(window.lvPrograms.ListItems.Count()));
  for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i) {
    const platform::ListItem& program = window.lvPrograms.ListItems.Item(i);
    StartStep(window, program.Text);
    std::optional<OpenStore> store; // every program's, whatever its counts; closed behind its step
    reportProgram(window, program, [&] {
      store.emplace(program);
      writeRecord(*window.ReportWriter, program, programMetrics(*store->operator->(), globals().StatusColumn));
    });
    FinishStep(window, 1);
  }
  FinishProgress(window);
  window.ReportWriter->EndReport("");
  window.ReportWriter->Show(window);
}

} // namespace tarnsift
