#include "tarnsift/reports/reports.hpp"

#include "platform/runtime/string_table.hpp"
#include "tarnsift/workbench/popup.hpp"

namespace tarnsift {

void mnuFileReportType_Click(frmMain& window, int Index) {
  switch (Index) {
  case 1:
    return reportDatanames(window, 1, platform::LoadResString(527));
  case 2:
    return reportDatanames(window, 0, platform::LoadResString(528));
  case 3:
    return reportDatanames(window, 2, platform::LoadResString(529));
  case 5:
    return reportAffectedCode(window);
  case 6:
    return reportMetrics(window);
  default:
    return;
  }
}

void popupReport(frmMain& window) {
  popupUnderButton(window, "Report", "mnuFileReport");
}

} // namespace tarnsift
