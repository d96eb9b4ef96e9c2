#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "orvane/report_records.hpp"
#include "orvane/report_rows.hpp"
#include "tarnsift/session/host.hpp"

namespace orvane {

enum class ReportFormat { html, csv, json, xlsx };

/// Where the next reports go. Without targets: onto the screen where there is one, else HTML in the output folder.
struct ReportSettings {
  struct Target {
    ReportFormat format = ReportFormat::html;
    std::string file; ///< native; "": in the output folder, named after project and title
  };
  std::string outputFolder;
  std::string projectName;
  std::vector<Target> targets;
  std::string programPattern;               ///< wildcard; only records of programs that match, "" all
  std::vector<std::string> written;         ///< files written, newest last
  std::function<void(FinishedReport)> show; ///< of the screen
};

/// Collects a report's records and writes it in the formats asked for.
class ReportFile : public tarnsift::ReportWriter {
 public:
  explicit ReportFile(std::shared_ptr<ReportSettings> settings) : m_settings(std::move(settings)) {}

  void setOutputFolder(const std::string& path) override;
  void BeginReport(const std::string& format, const std::string& title, const std::string& styleSheet) override;
  void BeginRecord() override;
  void Field(const std::string& key, const platform::Value& value) override;
  void EndRecord() override;
  void EndReport(const std::string& text) override;
  void Show(platform::Form& owner) override;

 private:
  bool wanted();
  std::shared_ptr<ReportSettings> m_settings;
  FinishedReport m_report;
  ReportRecord m_record;
  std::string m_program; ///< of the records at hand, where only heads name it
};

/// Writes a finished report whole to a file, native. Throws platform::Error; then what was there before stays.
void writeReport(const FinishedReport& report, ReportFormat format, const std::string& path);

/// The writers: the same records, one format each. HTML goes through the style sheet (the product's own when empty).
void writeHtml(std::ostream& out, const std::string& title, const std::vector<ReportColumn>& columns,
               const std::string& styleSheet, RecordFile& records);
/// RFC 4180, UTF-8. A text that begins with = + - or @ gets an apostrophe in front, so that no table program computes
/// it.
void writeCsv(std::ostream& out, const std::vector<ReportColumn>& columns, RecordFile& records);
/// One object a line; of a report with totals the last one has them under "summary".
void writeJson(std::ostream& out, const std::vector<ReportColumn>& columns, RecordFile& records);

/// How large a sheet and a cell can be.
struct SheetLimits {
  std::uint32_t rows = 1048576;   ///< with the headings; what is more goes on in a further sheet
  std::size_t characters = 32767; ///< UTF-16 units; a longer text is cut and ends in a mark
};
/// A workbook; texts stay texts, numbers are numbers; totals are a sheet of their own. Throws platform::Error when it
/// could not be put together.
void writeXlsx(std::ostream& out, const std::string& title, const std::vector<ReportColumn>& columns,
               RecordFile& records, const SheetLimits& limits = {});

} // namespace orvane
