#include "platform/runtime/formats.hpp"
#include "platform/runtime/string_table.hpp"
#include "tarnsift/reports/report_program.hpp"
#include "tarnsift/reports/reports.hpp"
#include "tarnsift/reports/status_text.hpp"
#include "tarnsift/search/program_work.hpp"
#include "tarnsift/workbench/progress.hpp"

namespace tarnsift {

namespace {

using platform::formatSixDigits;
using platform::LoadResString;

std::string recordFormat(int Status) {
  const auto column = [](const std::string& key, const std::string& caption) {
    return "<" + key + " CAPTION=\"" + caption + "\"/>";
  };
  const std::string file =
      theProductStrings().Format("%1 [%2,%3]", {LoadResString(550), LoadResString(551), LoadResString(552)});
  return "<LCRecordFormat>" + column("Program", LoadResString(539)) + column("Dataname", LoadResString(547)) +
         (Status == 0 ? column("Status", LoadResString(548)) : "") + column("Comment", LoadResString(549)) +
         column("File", file) + "</LCRecordFormat>";
}

// The counts on the screen decide whether a program is opened.
std::int64_t shownCount(const platform::ListItem& program, int Status) {
  if (Status != 0) return countOf(program.SubItems(static_cast<std::size_t>(Status) + 1));
  return countOf(program.SubItems(1)) + countOf(program.SubItems(2)) + countOf(program.SubItems(3));
}

void writeRow(frmMain& window, const platform::ListItem& program, const platform::Recordset& row,
              StoreConstruct& construct, int Status) {
  ReportWriter& writer = *window.ReportWriter;
  writer.BeginRecord();
  writer.Field("Program", program.Text);
  writer.Field("Dataname", row.Field("Name"));
  writer.Field("Comment", NullToText(row.Field(globals().ClassificationColumn)));
  writer.Field("File", construct.FileName() + " [" + formatSixDigits(construct.Line()) + "," +
                           formatSixDigits(construct.Column()) + "]");
  if (Status == 0) writer.Field("Status", statusText(row.Field(globals().StatusColumn)));
  writer.EndRecord();
}

void writeProgram(frmMain& window, const platform::ListItem& program, int Status) {
  const OpenStore store(program);
  const auto rows = store->Database()->OpenRecordset("select * from Constructs where " + globals().StatusColumn +
                                                     (Status == 0 ? "is not null" : " = " + std::to_string(Status)));
  std::size_t lost = 0;
  for (; !rows->Eof(); rows->MoveNext()) {
    Ref<StoreConstruct> construct;
    platform::ignoring([&] { construct = store->ObjectById(rows->Field("KVID").asText()); });
    if (construct)
      writeRow(window, program, *rows, *construct, Status);
    else
      ++lost;
  }
  if (lost > 0)
    window.ActivityLog->Write(program.Text + ": " + std::to_string(lost) +
                              " name(s) are not in its analysis; verify it again");
}

} // namespace

void reportDatanames(frmMain& window, int Status, const std::string& title) {
  window.ReportWriter->BeginReport(recordFormat(Status), title, "");
  StartProgress(window, theProductStrings().Format(LoadResString(517), {title}),
                static_cast<int>(window.lvPrograms.ListItems.Count()));
  for (std::size_t i = 1; i <= window.lvPrograms.ListItems.Count(); ++i) {
    const platform::ListItem& program = window.lvPrograms.ListItems.Item(i);
    StartStep(window, program.Text);
    if (shownCount(program, Status) != 0)
      reportProgram(window, program, [&] { writeProgram(window, program, Status); });
    FinishStep(window, 1);
  }
  FinishProgress(window);
  window.ReportWriter->EndReport("");
  window.ReportWriter->Show(window);
}

} // namespace tarnsift
