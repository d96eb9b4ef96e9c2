#include "orvane/report_file.hpp"

#include "orvane/report_output.hpp"
#include "platform/files/files.hpp"
#include "platform/runtime/text.hpp"
#include "platform/runtime/wildcard.hpp"

namespace orvane {

namespace {

const char* extensionOf(ReportFormat format) {
  switch (format) {
  case ReportFormat::csv:
    return ".csv";
  case ReportFormat::json:
    return ".json";
  case ReportFormat::xlsx:
    return ".xlsx";
  default:
    return ".html";
  }
}

std::string fileNameFor(const std::string& project, const std::string& title, ReportFormat format) {
  return platform::replaceAll(project + " " + title, "/", "-") + extensionOf(format);
}

} // namespace

void ReportFile::setOutputFolder(const std::string& path) {
  m_settings->outputFolder = platform::nativePath(path);
}

void ReportFile::BeginReport(const std::string& format, const std::string& title, const std::string& styleSheet) {
  m_report = {.title = title,
              .styleSheet = styleSheet,
              .columns = readRecordFormat(format),
              .records = std::make_shared<RecordFile>()};
  m_program.clear();
}

void ReportFile::BeginRecord() {
  m_record.assign(m_report.columns.size(), "");
}

void ReportFile::Field(const std::string& key, const platform::Value& value) {
  for (std::size_t i = 0; i < m_report.columns.size(); ++i)
    if (m_report.columns[i].key == key) m_record[i] = value.asText();
}

// Dataname records name their program; in affected code a head does for the records behind it.
bool ReportFile::wanted() {
  if (m_settings->programPattern.empty()) return true;
  if (m_report.columns.front().key == "Program")
    m_program = m_record.front();
  else if (const auto bold = m_record.front().find("</b>"); bold != std::string::npos)
    m_program = plainText(m_record.front().substr(0, bold));
  return platform::like(platform::upper(m_program), platform::upper(m_settings->programPattern));
}

void ReportFile::EndRecord() {
  if (wanted()) m_report.records->append(m_record);
}

void writeReport(const FinishedReport& report, ReportFormat format, const std::string& path) {
  ReportOutput output(path);
  switch (format) {
  case ReportFormat::csv:
    writeCsv(output.stream(), report.columns, *report.records);
    break;
  case ReportFormat::json:
    writeJson(output.stream(), report.columns, *report.records);
    break;
  case ReportFormat::xlsx:
    writeXlsx(output.stream(), report.title, report.columns, *report.records);
    break;
  default:
    writeHtml(output.stream(), report.title, report.columns, report.styleSheet, *report.records);
  }
  output.finish();
}

void ReportFile::EndReport(const std::string&) {
  auto targets = m_settings->targets;
  if (targets.empty() && !m_settings->show) targets.push_back({});
  for (const auto& target : targets) {
    std::string path = target.file;
    if (path.empty()) {
      platform::createFolders(m_settings->outputFolder);
      path = m_settings->outputFolder + "/" + fileNameFor(m_settings->projectName, m_report.title, target.format);
    }
    writeReport(m_report, target.format, path);
    m_settings->written.push_back(path);
  }
}

// Without a screen the written files are all there is to show.
void ReportFile::Show(platform::Form&) {
  if (m_settings->show && m_report.records) m_settings->show(std::exchange(m_report, {}));
}

} // namespace orvane
